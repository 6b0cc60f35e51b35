// A plug-in that does what a plug-in should not do, one thing a function.

#include <unistd.h>

#include <cstdio>
#include <stdexcept>

#include "platform/fmwrapper/FMWrapper.h"

namespace {

fmx::errcode Throws(std::int16_t, const fmx::ExprEnv&, const fmx::DataVect&, fmx::Data&) {
  throw std::runtime_error("out of order");
}

fmx::errcode Fails(std::int16_t, const fmx::ExprEnv&, const fmx::DataVect&, fmx::Data&) {
  return 5;
}

// Never ends, whatever signals come; says so again and again.
fmx::errcode Waits(std::int16_t, const fmx::ExprEnv&, const fmx::DataVect&, fmx::Data&) {
  while (true) {
    std::fputs("waiting\n", stderr);
    sleep(1);
  }
}

// What a preview tells its window of a dialog, had it opened one.
fmx::errcode Prints(std::int16_t, const fmx::ExprEnv&, const fmx::DataVect&, fmx::Data&) {
  std::puts(R"({"call":"OddPrint","dialog":{}})");
  std::fflush(stdout);
  return 0;
}

// Hands back its last parameter.
fmx::errcode Last(std::int16_t function_id, const fmx::ExprEnv&, const fmx::DataVect& parameters,
                  fmx::Data& result) {
  const auto last = static_cast<std::uint32_t>(function_id - 3);
  const fmx::Text* text = fmx::Call<FM_DataVect_AtAsText>(parameters, last);
  const fmx::Data* data = fmx::Call<FM_DataVect_At>(parameters, last);
  const fmx::Locale* locale = fmx::Call<FM_Data_GetLocale>(*data);
  fmx::Call<FM_Data_SetAsText>(result, *text, *locale, kFMX_TextType);
  return 0;
}

void Register(std::int16_t id, const char16_t* name, std::int16_t arguments,
              fmx::ExternalFunction function) {
  const fmx::QuadCharAutoPtr plugin_id(fmx::Call<FM_QuadChar_Constructor2>('O', 'D', 'D', '1'));
  const fmx::TextAutoPtr text(fmx::Call<FM_Text_Constructor1>());
  fmx::Call<FM_Text_AssignUnicode>(*text, name);
  fmx::Call<FM_ExprEnv_RegisterExternalFunction>(*plugin_id, id, *text, *text, arguments, arguments,
                                                 0xFF01U, function);
}

}  // namespace

extern "C" __attribute__((visibility("default"))) void FMExternCallProc(FMX_ExternCallPtr call) {
  if (call->message == kFMXT_Shutdown) throw std::runtime_error("will not go");
  if (call->message != kFMXT_Init) return;
  if (call->version == 77) throw std::runtime_error("no good year");
  if (call->version == 78) return;  // without a result
  Register(1, u"OddThrow", 1, Throws);
  Register(2, u"OddFail", 1, Fails);
  Register(3, u"OddWait", 0, Waits);
  Register(4, u"OddSecond ", 2, Last);
  Register(5, u"OddPrint", 0, Prints);
  call->result = 51;
}
