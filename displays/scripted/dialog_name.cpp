#include "displays/scripted/dialog_name.h"

#include <algorithm>
#include <variant>

namespace display {
namespace {

// The first static text that says something.
std::string MessageOf(const Window& window) {
  const auto message =
      std::find_if(window.controls.begin(), window.controls.end(), [](const Control& control) {
        return control.kind == ControlKind::kStatic && control.text && !control.text->empty();
      });
  return message == window.controls.end() ? "" : *message->text;
}

std::string MessageOf(const Alert& alert) { return alert.explanation; }

std::string CaptionOf(const Window& window) { return window.title; }

std::string CaptionOf(const Alert& alert) { return alert.message; }

}  // namespace

std::string OnOneLine(std::string text) {
  std::replace_if(
      text.begin(), text.end(), [](char sign) { return sign == '\r' || sign == '\n'; }, ' ');
  return text;
}

std::string NameOf(const Description& dialog) {
  return std::visit(
      [](const auto& shown) {
        const std::string caption = CaptionOf(shown);
        return OnOneLine(caption.empty() ? MessageOf(shown) : caption);
      },
      dialog);
}

std::string FullNameOf(const Description& dialog) {
  return std::visit(
      [](const auto& shown) {
        const std::string caption = CaptionOf(shown);
        const std::string message = MessageOf(shown);
        return OnOneLine(caption + (caption.empty() || message.empty() ? "" : ": ") + message);
      },
      dialog);
}

}  // namespace display
