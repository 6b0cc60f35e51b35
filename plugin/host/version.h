#pragma once

#include "platform/fmwrapper/FMWrapper.h"

// The plug-in's version, the number 220, whatever the parameter holds.
fmx::errcode Do_TarvoDialogVersion(std::int16_t function_id, const fmx::ExprEnv& environment,
                                   const fmx::DataVect& parameters, fmx::Data& result);
