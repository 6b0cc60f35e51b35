// A module that has no entry point.

extern "C" __attribute__((visibility("default"))) int nothing_of_use;
int nothing_of_use = 0;
