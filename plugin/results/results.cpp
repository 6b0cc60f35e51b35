#include "plugin/results/results.h"

#include <cstdint>

#include "platform/fmwrapper/FMWrapper.h"
#include "plugin/frame/external_function.h"
#include "plugin/results/result_text.h"
#include "plugin/state/byte_buffer.h"
#include "plugin/state/dialog_state.h"

fmx::errcode Do_TarvoLastValue(std::int16_t /*function_id*/, const fmx::ExprEnv& /*environment*/,
                               const fmx::DataVect& parameters, fmx::Data& result) {
  return ReturnText(parameters, result, ComposeDialogResult() ? TextOf(myreturntext) : kNoMemory);
}

fmx::errcode Do_TarvoV1(std::int16_t /*function_id*/, const fmx::ExprEnv& /*environment*/,
                        const fmx::DataVect& parameters, fmx::Data& result) {
  return ReturnText(parameters, result, TextOf(Field1));
}

fmx::errcode Do_TarvoV2(std::int16_t /*function_id*/, const fmx::ExprEnv& /*environment*/,
                        const fmx::DataVect& parameters, fmx::Data& result) {
  return ReturnText(parameters, result, TextOf(Field2));
}

fmx::errcode Do_TarvoV3(std::int16_t /*function_id*/, const fmx::ExprEnv& /*environment*/,
                        const fmx::DataVect& parameters, fmx::Data& result) {
  return ReturnText(parameters, result, TextOf(Field3));
}

fmx::errcode Do_TarvoV4(std::int16_t /*function_id*/, const fmx::ExprEnv& /*environment*/,
                        const fmx::DataVect& parameters, fmx::Data& result) {
  return ReturnText(parameters, result, TextOf(Field4));
}

fmx::errcode Do_TarvoLC(std::int16_t /*function_id*/, const fmx::ExprEnv& /*environment*/,
                        const fmx::DataVect& parameters, fmx::Data& result) {
  return ReturnText(parameters, result, TextOf(FieldLC));
}
