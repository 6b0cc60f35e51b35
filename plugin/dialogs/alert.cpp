#include <cstdint>
#include <cstdio>

#include "platform/carbon/Carbon.h"
#include "platform/corefoundation/CoreFoundation.h"
#include "platform/fmwrapper/FMWrapper.h"
#include "plugin/dialogs/dialogs.h"
#include "plugin/frame/external_function.h"
#include "plugin/frame/string_objects.h"
#include "plugin/state/byte_buffer.h"
#include "plugin/state/dialog_state.h"

namespace {

// The positions of the items in the parameter.
enum Position : CFIndex { kKind, kMessage, kExplanation, kDefault, kCancel, kOther };

// The kinds "0" to "3" are the platform's types; any other text gives the type after them.
std::int16_t AlertType(CFStringRef kind) {
  const CFStringRef names[] = {CFSTR("0"), CFSTR("1"), CFSTR("2"), CFSTR("3")};
  std::int16_t type = kAlertStopAlert;
  for (const CFStringRef name : names) {
    if (AreEqual(kind, name)) break;
    ++type;
  }
  return type;
}

CFStringRef TextOrNone(CFStringRef text) { return IsEmpty(text) ? nullptr : text; }

// An alert always has a button: without a default and a cancel text the default button says OK.
AlertStdCFStringAlertParamRec AlertParameters(CFArrayRef items) {
  AlertStdCFStringAlertParamRec parameters{};
  parameters.version = kStdCFStringAlertVersionOne;
  parameters.default_text = TextOrNone(ItemAt(items, kDefault));
  parameters.cancel_text = TextOrNone(ItemAt(items, kCancel));
  parameters.other_text = TextOrNone(ItemAt(items, kOther));
  if (parameters.default_text == nullptr && parameters.cancel_text == nullptr) {
    parameters.default_text = kAlertDefaultOKText;
  }
  parameters.default_button = kAlertStdAlertOKButton;
  parameters.cancel_button = kAlertStdAlertCancelButton;
  parameters.position = kWindowAlertPositionParentWindow;
  return parameters;
}

std::int16_t ShowAlert(CFArrayRef items) {
  const AlertStdCFStringAlertParamRec parameters = AlertParameters(items);
  DialogRef alert = nullptr;
  std::int16_t button = 0;
  InitCursor();
  CreateStandardAlert(AlertType(ItemAt(items, kKind)), ItemAt(items, kMessage),
                      ItemAt(items, kExplanation), &parameters, &alert);
  RunStandardAlert(alert, nullptr, &button);
  return button;
}

// Of the recorded results only FieldLC changes.
void RunAlert(CFStringRef parameter, fmx::Text& result) {
  const auto items = Split(parameter, CFSTR("|"));
  if (!items) return SetResult(result, kNoMemory);
  const std::int16_t button = ShowAlert(items.get());
  ResizeEmptied(FieldLC, kResultSize);
  std::snprintf(FieldLC.bytes, FieldLC.capacity, "%i", button);
  SetResult(result, FieldLC.bytes);
}

}  // namespace

fmx::errcode Do_TarvoAlert(std::int16_t /*function_id*/, const fmx::ExprEnv& /*environment*/,
                           const fmx::DataVect& parameters, fmx::Data& result) {
  return RunBounded(parameters, result, RunAlert);
}
