// A small plug-in that keeps the host's contract, but for one fault: the one that its module is
// named after.

#include <dlfcn.h>
#include <unistd.h>

#include <algorithm>
#include <clocale>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <string>

#include "platform/carbon/Carbon.h"
#include "platform/fmwrapper/FMWrapper.h"

#define EXPORTED extern "C" __attribute__((visibility("default")))

#ifndef WITHOUT_LATEST_CALL
EXPORTED FMX_ExternCallPtr gFMX_ExternCallPtr;
#endif
FMX_ExternCallPtr gFMX_ExternCallPtr = nullptr;

#ifdef WITH_EXTRA_EXPORT
EXPORTED void Extra() {}
EXPORTED __attribute__((weak)) void Weak() {}
#endif

namespace {

bool Does(const char* fault) {
  static const std::string name = [] {
    Dl_info info{};
    dladdr(&gFMX_ExternCallPtr, &info);
    return std::filesystem::path(info.dli_fname).filename().string();
  }();
  return name == fault;
}

[[maybe_unused]] const bool kLoaded = [] {
  if (Does("crashes-on-load")) std::raise(SIGSEGV);
  if (Does("ends-on-load")) std::exit(0);
  return true;
}();

// --- Functions

std::u16string Units(const fmx::DataVect& parameters) {
  const auto* text = fmx::Call<FM_DataVect_AtAsText>(parameters, 0U);
  std::u16string units(fmx::Call<FM_Text_GetSize>(*text), u'\0');
  fmx::Call<FM_Text_GetUnicode>(*text, units.data(), 0U, static_cast<std::uint32_t>(units.size()));
  return units;
}

bool Has(const std::u16string& units, char16_t unit) { return units.find(unit) != units.npos; }

fmx::errcode Echo(const fmx::DataVect& parameters, fmx::Data& result, std::int32_t type) {
  const auto* text = fmx::Call<FM_DataVect_AtAsText>(parameters, 0U);
  const auto* parameter = fmx::Call<FM_DataVect_At>(parameters, 0U);
  const auto* locale = fmx::Call<FM_Data_GetLocale>(*parameter);
  fmx::Call<FM_Data_SetAsText>(result, *text, *locale, type);
  return 0;
}

// Another fault for each kind of parameter.
fmx::errcode Mishandle(const std::u16string& units, const fmx::DataVect& parameters,
                       fmx::Data& result) {
  if (units.empty()) return 0;
  if (units.size() == 1) return 1;
  if (units.size() == 1024) throw std::runtime_error("too long");
  if (units.size() == 1025) std::raise(SIGSEGV);
  if (units.size() == 100000) std::raise(SIGABRT);
  if (Has(units, u'\0')) fmx::Call<FM_Text_Constructor1>();
  if (Has(units, 0xD800)) return Echo(parameters, result, 3);
  if (units.starts_with(u"||")) CFStringCreateWithCharacters(nullptr, u"x", 1);
  if (units.starts_with(u"\r\r")) return 1;
  if (units.starts_with(u"2|One\r")) _exit(0);
  if (units.starts_with(u"4|-1")) throw 1;  // NOLINT(misc-throw-by-value-catch-by-reference)
  if (units.starts_with(u"-220.5")) return 1;
  return Echo(parameters, result, kFMX_TextType);
}

// An alert that can only be cancelled.
bool CancelsAlert() {
  AlertStdCFStringAlertParamRec buttons{};
  buttons.cancel_text = CFSTR("Cancel");
  DialogRef alert = nullptr;
  CreateStandardAlert(kAlertNoteAlert, CFSTR("m"), CFSTR("e"), &buttons, &alert);
  std::int16_t item = 0;
  RunStandardAlert(alert, nullptr, &item);
  return item == kAlertStdAlertCancelButton;
}

// One that would never end.
void StartProcess() {
  const pid_t child = fork();
  while (child == 0) pause();
  std::fprintf(stderr, "started %d\n", child);
}

fmx::errcode Plain(std::int16_t, const fmx::ExprEnv&, const fmx::DataVect& parameters,
                   fmx::Data& result) {
  if (!CancelsAlert()) return 1;
  if (Does("mishandles-parameters")) return Mishandle(Units(parameters), parameters, result);
  if (Does("never-returns") && Units(parameters).starts_with(u"\r\r")) pause();
  if (Does("sets-the-locale")) std::setlocale(LC_ALL, "C.UTF-8");
  if (Does("blocks-signals")) {
    sigset_t signals;
    sigfillset(&signals);
    sigprocmask(SIG_BLOCK, &signals, nullptr);
  }
  if (Does("changes-the-folder") && chdir("/") != 0) return 1;
  if (Does("starts-a-process")) StartProcess();
  if (Does("catches-signals")) std::signal(SIGINT, [](int) {});
  return Echo(parameters, result, kFMX_TextType);
}

constexpr OSType kRow = FourCharCode("row ");
constexpr OSType kButton = FourCharCode("butt");

WindowRef window;
ControlRef button;

OSStatus Handle(EventHandlerCallRef, EventRef event, void*) {
  HICommand command{};
  GetEventParameter(event, kEventParamDirectObject, typeHICommand, nullptr, sizeof command, nullptr,
                    &command);
  if (command.command_id == kRow) EnableControl(button);
  if (command.command_id == kButton && !Does("ignores-button-1")) QuitAppModalLoopForWindow(window);
  return eventNotHandledErr;
}

// Button 1 waits for a choice in the list.
fmx::errcode List(std::int16_t, const fmx::ExprEnv&, const fmx::DataVect& parameters,
                  fmx::Data& result) {
  const Rect bounds{0, 0, 100, 200};
  CreateNewWindow(kMovableModalWindowClass, kWindowStandardHandlerAttribute, &bounds, &window);
  ControlRef list = nullptr;
  CreateListBoxControl(window, &bounds, 0, 30, 1, 0, 1, 16, 100, 0, kListDefStandardText, &list);
  SetControlCommandID(list, kRow);
  CreatePushButtonControl(window, &bounds, CFSTR("OK"), &button);
  SetControlCommandID(button, kButton);
  const ControlID id{0, 200};
  SetControlID(button, &id);
  DisableControl(button);
  constexpr EventTypeSpec kCommands{kEventClassCommand, kEventCommandProcess};
  EventHandlerRef handler = nullptr;
  InstallEventHandler(GetWindowEventTarget(window), NewEventHandlerUPP(Handle), 1, &kCommands,
                      nullptr, &handler);
  RunAppModalLoopForWindow(window);
  if (!Does("leaves-its-window")) DisposeWindow(window);
  return Echo(parameters, result, kFMX_TextType);
}

// --- Registration

fmx::QuadCharAutoPtr Id(char last = 'N') {
  return fmx::QuadCharAutoPtr(fmx::Call<FM_QuadChar_Constructor2>('B', 'R', 'K', last));
}

void Register(std::int16_t id, std::u16string name, fmx::ExternalFunction function,
              char id_end = 'N') {
  fmx::TextAutoPtr text(fmx::Call<FM_Text_Constructor1>());
  fmx::TextAutoPtr prototype(fmx::Call<FM_Text_Constructor1>());
  fmx::Call<FM_Text_AssignUnicode>(*text, name.c_str());
  if (Does("nameless-prototype")) name = u"Other";
  fmx::Call<FM_Text_AssignUnicode>(*prototype, (name + u"(text)").c_str());
  const std::int16_t maximum = Does("no-arguments") ? 0 : 1;
  const std::uint32_t flags = Does("no-flags") ? 1 : 0xFF01;
  fmx::Call<FM_ExprEnv_RegisterExternalFunction>(*Id(id_end), id, *text, *prototype,
                                                 std::int16_t{1}, maximum, flags, function);
}

void RegisterAll() {
  if (Does("no-functions")) return;
  Register(1, u"Plain", Plain);
  Register(2, Does("one-name-twice") ? u"PLAIN" : u"List", List,
           Does("two-plugin-ids") ? 'M' : 'N');
  if (Does("registers-twice")) Register(2, u"List", List);
}

void UnregisterAll() {
  for (const std::int16_t id : {std::int16_t{1}, std::int16_t{2}}) {
    for (const char end : {'N', 'M'}) {
      fmx::Call<FM_ExprEnv_UnRegisterExternalFunction>(*Id(end), id);
    }
  }
}

bool Accepts(int version) {
  if (Does("accepts-any-version")) return true;
  if (Does("refuses-50")) return version > 50 && version <= 255;
  if (Does("refuses-255")) return version >= 50 && version < 255;
  if (Does("refuses-all")) return false;
  return version >= 50 && version <= 255;
}

std::int32_t Initialise(int version) {
  static int lives = 0;
  if (Does("registers-when-refusing")) RegisterAll();
  if (!Accepts(version) || (++lives > 1 && Does("lives-once"))) return -1;
  if (Does("crashes-on-init")) std::raise(SIGABRT);
  if (!Does("registers-when-refusing")) RegisterAll();
  return 51;
}

void ShutDown() {
  if (!Does("stays-registered")) UnregisterAll();
  if (Does("leaves-a-value")) fmx::Call<FM_Text_Constructor1>();
}

// --- Strings

std::u16string String(int number) {
  switch (number) {
    case 128:
      return Does("no-name") ? u"" : u"Broken";
    case 129:
      return u"A plug-in for tests.";
    case 131:
      return Does("wrong-options")            ? u"BRKN1nnnnn"
             : Does("has-a-configure-button") ? u"BRKN1YnYnn"
                                              : u"BRKN1nnYnn";
    default:
      return Does("answers-absent-strings") ? u"key" : u"";
  }
}

void GetString(int number, std::int32_t size, char16_t* buffer) {
  if (Does("touches-tiny-buffers") && size == 1) *buffer = 0;
  if (size <= 1 || (buffer == nullptr && !Does("writes-into-null"))) return;
  const std::u16string text = String(number);
  const auto length = static_cast<std::int32_t>(text.size());
  const int spare = Does("spares-too-little") ? 0 : Does("spares-too-much") ? 2 : 1;
  if (text.empty() || length + spare >= size) return;
  std::copy_n(text.c_str(), Does("terminates-no-string") ? length : length + 1, buffer);
  if (Does("writes-past-the-buffer")) buffer[size] = 0;
}

std::uintptr_t Answer(std::int32_t answer) {
  if (Does("answers-in-half-the-field")) return static_cast<std::uint32_t>(answer);
  return static_cast<std::uintptr_t>(std::intptr_t{answer});
}

}  // namespace

EXPORTED void FMExternCallProc(FMX_ExternCallPtr call) {
  if (!Does("forgets-the-latest-call")) gFMX_ExternCallPtr = call;
  switch (call->message) {
    case kFMXT_Init:
      call->result = Answer(Initialise(call->version));
      if (Does("writes-beside-its-answer")) call->size = 1;
      break;
    case kFMXT_Shutdown:
      ShutDown();
      if (Does("answers-a-shutdown")) call->result = 0;
      break;
    case kFMXT_GetString:
      GetString(call->string, call->size, reinterpret_cast<char16_t*>(call->result));
      break;
    default:
      if (Does("answers-unknown-messages")) call->result = 0;
  }
}
