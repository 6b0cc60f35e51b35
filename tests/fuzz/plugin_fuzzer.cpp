// A life of the plug-in from bytes: calls of its functions, and a user in the dialogs that they
// open. After every call the dialog state must be whole and nothing may be left over.

#include <stdexcept>

#include "platform/carbon/CarbonHost.h"
#include "platform/corefoundation/CFHost.h"
#include "platform/fmwrapper/FMHost.h"
#include "plugin/state/dialog_state.h"
#include "tests/fuzz/bytes.h"
#include "tests/support/whole_state.h"

extern "C" void FMExternCallProc(FMX_ExternCallPtr call);

namespace {

void Require(bool holds, const char* what) {
  if (!holds) throw std::logic_error(what);
}

// Does anything that a user, or a display that has lost its way, can do.
class FuzzedUser : public display::Display {
 public:
  explicit FuzzedUser(Bytes& bytes) : bytes_(bytes) {}

  Rect MainScreen() override { return {0, 0, 1080, 1920}; }

  bool Open(const display::Description&) override {
    actions_left_ = 30;
    is_open_ = bytes_.Below(16) != 15;
    return is_open_;
  }

  std::optional<display::Action> NextAction() override {
    if (bytes_.AtEnd() || actions_left_-- == 0) return std::nullopt;
    display::Action action;
    action.kind = static_cast<display::Action::Kind>(bytes_.Below(12));
    action.number = bytes_.Below(34) - 1;
    action.item = bytes_.Below(8) - 1;
    action.x = bytes_.Below(4) == 0 ? bytes_.Take() * 100 - 5000 : display::kRowMiddle;
    if (bytes_.Below(2) == 0) action.text = "typed | text é";
    return action;
  }

  void Change(std::size_t, const display::Control& control) override {
    Require(!control.value || (*control.min <= *control.value && *control.value <= *control.max),
            "a value lies outside its limits");
  }
  void Reject(const std::string& reason) override {
    Require(!reason.empty(), "rejected for nothing");
  }
  void Close() override { is_open_ = false; }

  bool is_open() const { return is_open_; }

 private:
  Bytes& bytes_;
  int actions_left_ = 0;
  bool is_open_ = false;
};

// The bundle's folder needs no texts: what matters is the order of registration.
void SendMessage(std::uint8_t message) {
  static FMX_ExternCallBlock<std::uintptr_t> block{};
  block.version = 200;
  block.message = message;
  FMExternCallProc(&block);
}

// What the standard dialog leaves once it has got to its end.
void RequireClearedPresets(const std::u16string& result) {
  if (result.starts_with(u"$$")) return;
  Require(iFieldCount == 0, "fields are left");
  for (CFStringRef* text : gPreEnters) Require(CFStringGetLength(*text) == 0, "a text is left");
  Require(kCanEscape == 0 && gUsePosition == 0 && gXpos == -1 && gYpos == -1, "a preset is left");
}

void CallFunction(Bytes& bytes, const FuzzedUser& user) {
  const auto& functions = fmx::host::Functions();
  const auto& function =
      functions[static_cast<std::size_t>(bytes.Below(static_cast<int>(functions.size())))];
  const auto outcome = fmx::host::Evaluate(function, {{kFMX_TextType, bytes.Text(), 3}});
  Require(outcome.error == 0, "an error code");
  Require(outcome.result.type == kFMX_NumberType || outcome.result.locale == 3, "a locale is lost");
  Require(!user.is_open(), "a dialog is left open");
  if (const char* broken = BrokenState()) throw std::logic_error(broken);
  if (function.id == 2) RequireClearedPresets(outcome.result.text);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Bytes bytes(data, size);
  FuzzedUser user(bytes);
  carbon::SetDisplay(&user);
  SendMessage(kFMXT_Init);
  static const std::size_t in_first_life = fmx::host::Functions().size();
  Require(in_first_life > 0 && fmx::host::Functions().size() == in_first_life,
          "functions are missing");
  while (!bytes.AtEnd()) CallFunction(bytes, user);
  SendMessage(kFMXT_Shutdown);
  Require(fmx::host::Functions().empty(), "functions are left");
  carbon::SetDisplay(nullptr);
  return 0;
}
