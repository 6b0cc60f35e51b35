#pragma once

// What the last dialog left, any number of times until the next dialog replaces it. None of these
// reads its parameter; it serves the result's locale alone.

#include "platform/fmwrapper/FMWrapper.h"

// The composed result text.
fmx::errcode Do_TarvoLastValue(std::int16_t function_id, const fmx::ExprEnv& environment,
                               const fmx::DataVect& parameters, fmx::Data& result);

// The value of one field.
fmx::errcode Do_TarvoV1(std::int16_t function_id, const fmx::ExprEnv& environment,
                        const fmx::DataVect& parameters, fmx::Data& result);
fmx::errcode Do_TarvoV2(std::int16_t function_id, const fmx::ExprEnv& environment,
                        const fmx::DataVect& parameters, fmx::Data& result);
fmx::errcode Do_TarvoV3(std::int16_t function_id, const fmx::ExprEnv& environment,
                        const fmx::DataVect& parameters, fmx::Data& result);
fmx::errcode Do_TarvoV4(std::int16_t function_id, const fmx::ExprEnv& environment,
                        const fmx::DataVect& parameters, fmx::Data& result);

// How the dialog ended.
fmx::errcode Do_TarvoLC(std::int16_t function_id, const fmx::ExprEnv& environment,
                        const fmx::DataVect& parameters, fmx::Data& result);
