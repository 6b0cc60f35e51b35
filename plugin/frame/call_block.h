#pragma once

#include "platform/corefoundation/CoreFoundation.h"
#include "platform/fmwrapper/FMWrapper.h"

// The call block of FileMaker's latest call; null until the first.
extern "C" __attribute__((visibility("default"))) FMX_ExternCallPtr gFMX_ExternCallPtr;

// The plug-in's own bundle, which the call block names.
CFBundleRef PluginBundle();
