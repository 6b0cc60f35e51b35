#pragma once

#include <cstdint>

// Answers the initialisation message: registers the functions and gives the dialog state its
// starting values. 51 when the plug-in is ready; -1 when it refuses FileMaker's interface version,
// or cannot have memory for its results.
std::int32_t Do_HostInit(std::int16_t version);

// Answers the shutdown message: unregisters the functions. The dialog state stays as it is.
void Do_HostShutdown();
