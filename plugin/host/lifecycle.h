#pragma once

#include <cstdint>

// Handles the initialisation message: registers the functions and gives the dialog state its
// starting values. Returns 51 if the plug-in is ready; -1 if it refuses FileMaker's interface
// version, or if memory for its results runs out.
std::int32_t Do_HostInit(std::int16_t version);

// Handles the shutdown message: unregisters the functions. The dialog state stays as it is.
void Do_HostShutdown();
