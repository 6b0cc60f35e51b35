#include "bench/loaded_plugin.h"

#include <stdexcept>

#include "platform/carbon/CarbonHost.h"
#include "platform/corefoundation/CFHost.h"

extern "C" void FMExternCallProc(FMX_ExternCallPtr call);

namespace bench {

const fmx::host::Function& Function(std::u16string_view name) {
  static FMX_ExternCallBlock<std::uintptr_t> block{};
  if (block.bundle == 0) {
    block.version = 200;
    block.bundle = reinterpret_cast<std::uintptr_t>(CFBundleCreateWithPath(PLUGIN_BUNDLE));
    FMExternCallProc(&block);
  }
  for (const auto& function : fmx::host::Functions()) {
    if (function.name == name) return function;
  }
  throw std::invalid_argument("no such function");
}

Call::Call(std::u16string_view name, std::u16string_view parameter) : function_(Function(name)) {
  parameters_.values.push_back({kFMX_TextType, {std::u16string(parameter)}, {0}});
}

void Call::operator()() {
  fmx::Data result;
  function_.function(function_.id, environment_, parameters_, result);
}

QuickUser::QuickUser(int fields, std::string text) : fields_(fields), text_(std::move(text)) {
  carbon::SetDisplay(this);
}

QuickUser::~QuickUser() { carbon::SetDisplay(nullptr); }

bool QuickUser::Open(const display::Description&) {
  next_ = 1;
  return true;
}

std::optional<display::Action> QuickUser::NextAction() {
  display::Action action;
  action.kind = display::Action::Kind::kPress;
  action.number = 1;
  if (next_ <= fields_) {
    action.kind = display::Action::Kind::kEnter;
    action.number = next_++;
    action.text = text_;
  }
  return action;
}

void LeaveInFields(const std::string& text) {
  const QuickUser user(4, text);
  Call(u"TarvoDialog", u"4|m|OK||||a|b|c|d|")();
}

}  // namespace bench
