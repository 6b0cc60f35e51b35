#include "workbench/observers.h"

#include <algorithm>
#include <filesystem>

#include "displays/scripted/answers.h"
#include "platform/carbon/display_json.h"
#include "workbench/child_program.h"

namespace workbench {
namespace {

constexpr const char* kPasswordPlaceholder = "<password>";
constexpr const char* kPainter = "tarvo-desktop";

std::string ToLine(const display::Description& dialog) {
  return display::ToJson(dialog).dump(-1, ' ', false, display::Json::error_handler_t::replace);
}

std::string CaptionOf(const display::Description& dialog) {
  const auto* window = std::get_if<display::Window>(&dialog);
  std::string caption = window ? window->title : std::get<display::Alert>(dialog).message;
  std::replace_if(
      caption.begin(), caption.end(), [](char sign) { return sign == '\r' || sign == '\n'; }, ' ');
  return caption;
}

}  // namespace

void DescriptionLog::Opened(const display::Description& dialog) { file_.Write(ToLine(dialog)); }

void Recording::Opened(const display::Description& dialog) {
  const std::string caption = CaptionOf(dialog);
  file_.Write("# dialog " + std::to_string(++count_) + (caption.empty() ? "" : ": " + caption));
}

void Recording::Answered(const display::Action& action, bool secret) {
  display::Action written = action;
  if (secret && !with_passwords_) written.text = kPasswordPlaceholder;
  file_.Write(display::FormatAnswer(written));
}

Screenshots::Screenshots(const std::string& folder) : folder_(folder) {
  std::error_code error;
  std::filesystem::create_directories(folder, error);
  if (error) throw Failure(Status::kUsage, "cannot make " + folder + ": " + error.message());
}

void Screenshots::Opened(const display::Description& dialog) {
  const std::string file = folder_ + "/" + std::to_string(++count_) + ".png";
  const std::string painter = ProgramFolder() + "/" + kPainter;
  if (!RunChild({painter, "--render", file}, ToLine(dialog) + "\n")) {
    throw Failure(Status::kWrong, "cannot draw " + file + " with " + painter);
  }
}

}  // namespace workbench
