#pragma once

#include "plugin/frame/external_function.h"

// The plug-in's version, the number 220, whatever the parameter holds.
TarvoFunction Do_TarvoDialogVersion;
