#pragma once

// What a host and its tests need of CoreFoundation besides the plug-in's operations.

#include <string>

#include "platform/corefoundation/CoreFoundation.h"

#pragma GCC visibility push(default)

// The bundle in the folder `path`. Null if there is no such folder; release with CFRelease.
CFBundleRef CFBundleCreateWithPath(const std::string& path);

// The path of the bundle's module: Contents/Linux/ and the executable's name that its Info.plist
// gives, or the bundle's own name without extension if that gives none.
std::string CFBundleGetExecutablePath(CFBundleRef bundle);

// Objects that have not been released, literals not counted. Leak tests compare it.
CFIndex CFGetLiveObjectCount();

#pragma GCC visibility pop
