#include <cstdint>
#include <new>
#include <optional>
#include <string>
#include <utility>

#include "platform/carbon/Carbon.h"
#include "platform/carbon/active_display.h"
#include "platform/carbon/display.h"
#include "platform/carbon/objects.h"
#include "platform/carbon/refusal.h"
#include "platform/carbon/shown_dialog.h"
#include "platform/carbon/text_conversion.h"
#include "platform/corefoundation/CoreFoundation.h"
#include "platform/corefoundation/encoding.h"

namespace carbon {
namespace {

constexpr CFString kOk{{CFObject::Kind::kLiteral, 0}, u"OK", 2};

std::optional<std::string> ButtonText(CFStringRef text) {
  if (text == nullptr) return std::nullopt;
  return ToUtf8(ToUtf16(text));
}

bool HasButton(const display::Alert& alert, int number) {
  return (number == 1 && alert.default_button) || (number == 2 && alert.cancel_button) ||
         (number == 3 && alert.other_button);
}

// The number of the button that an action presses; 0 if it presses none.
int PressedButton(const display::Alert& alert, const display::Action& action) {
  switch (action.kind) {
    case display::Action::Kind::kPress:
      return action.number;
    case display::Action::Kind::kReturn:
      return HasButton(alert, alert.return_button) ? alert.return_button : 0;
    case display::Action::Kind::kEscape:
    case display::Action::Kind::kClose:
      return HasButton(alert, alert.escape_button) ? alert.escape_button : 0;
    default:
      return 0;
  }
}

// Refuses an action that an alert cannot do.
Refusal Check(const display::Alert& alert, const display::Action& action) {
  using Kind = display::Action::Kind;
  switch (action.kind) {
    case Kind::kPress:
      if (HasButton(alert, action.number)) return kAccepted;
      return "there is no button " + std::to_string(action.number);
    case Kind::kReturn:
    case Kind::kEscape:
    case Kind::kClose:
    case Kind::kTab:
      return kAccepted;
    default:
      return "an alert has buttons alone";
  }
}

int RunAlertLoop(const display::Alert& alert) {
  display::Display& display = ActiveDisplay();
  const ShownDialog dialog(display, alert);
  if (!dialog.IsShown()) return 0;
  while (const std::optional<display::Action> action = display.NextAction()) {
    if (const Refusal refusal = Check(alert, *action)) {
      display.Reject(*refusal);
    } else if (const int button = PressedButton(alert, *action); button != 0) {
      return button;
    }
  }
  return 0;
}

}  // namespace
}  // namespace carbon

constinit const CFStringRef kAlertDefaultOKText = &carbon::kOk;

OSStatus CreateStandardAlert(std::int16_t type, CFStringRef message, CFStringRef explanation,
                             const AlertStdCFStringAlertParamRec* parameters,
                             DialogRef* alert) try {
  display::Alert object{type,
                        carbon::ToUtf8(carbon::ToUtf16(message)),
                        carbon::ToUtf8(carbon::ToUtf16(explanation)),
                        carbon::ButtonText(parameters->default_text),
                        carbon::ButtonText(parameters->cancel_text),
                        carbon::ButtonText(parameters->other_text)};
  if (parameters->default_button != 0) object.return_button = parameters->default_button;
  if (parameters->cancel_button != 0) object.escape_button = parameters->cancel_button;
  object.position = parameters->position;
  object.movable = parameters->movable != 0;
  object.help_button = parameters->help_button != 0;
  object.flags = static_cast<int>(parameters->flags);
  return carbon::AddTo(carbon::AllObjects().alerts, std::move(object), alert);
} catch (const std::bad_alloc&) {
  *alert = nullptr;
  return memFullErr;
}

OSStatus RunStandardAlert(DialogRef alert, void* /*event_filter*/, std::int16_t* item) {
  *item = 0;
  const auto object = carbon::AllObjects().alerts.Find(alert);
  carbon::AllObjects().alerts.Remove(alert);
  return carbon::ApplyTo(object, [item](const display::Alert& held) {
    *item = static_cast<std::int16_t>(carbon::RunAlertLoop(held));
    return *item == 0 ? OSStatus{eventLoopQuitErr} : OSStatus{noErr};
  });
}
