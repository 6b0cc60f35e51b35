// A program that loads one library and prints a number: bare_program LIBRARY

#include <dlfcn.h>

#include <iostream>

int main(int argc, char** argv) {
  if (argc != 2 || !dlopen(argv[1], RTLD_NOW | RTLD_LOCAL)) return 1;
  std::cout << 220 << '\n';
}
