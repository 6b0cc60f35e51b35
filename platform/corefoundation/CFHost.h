#pragma once

// What a host and its tests need of CoreFoundation besides the plug-in's operations.

#include <string>

#include "platform/corefoundation/CoreFoundation.h"

#pragma GCC visibility push(default)

// The bundle in the folder `path`. Null where there is no such folder; release with CFRelease.
CFBundleRef CFBundleCreateWithPath(const std::string& path);

// Where the bundle's module stands: Contents/Linux/ and the executable's name of its Info.plist, or
// the bundle's own name without extension where that says nothing.
std::string CFBundleGetExecutablePath(CFBundleRef bundle);

// Objects that have not been released, literals not counted. Leak tests compare it.
CFIndex CFGetLiveObjectCount();

#pragma GCC visibility pop
