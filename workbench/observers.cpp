#include "workbench/observers.h"

#include <filesystem>
#include <map>
#include <system_error>

#include "calculation/interruption.h"
#include "displays/protocol/display_json.h"
#include "displays/scripted/answers.h"
#include "displays/scripted/dialog_name.h"
#include "displays/scripted/names.h"
#include "workbench/child_program.h"
#include "workbench/failure.h"

namespace workbench {
void DescriptionLog::Opened(const display::Description& dialog) {
  file_.Write(display::FormatDescription(dialog));
}

void Recording::Opened(const display::Description& dialog) {
  dialog_ = dialog;
  file_.Write(display::FormatDialogLine(++count_, display::FullNameOf(dialog)));
}

void Recording::Acted(const display::Action& action, bool secret) {
  display::Action written = action;
  if (secret && !with_passwords_) written.text = kPasswordPlaceholder;
  const auto names = by_number_ ? display::Names() : display::NamesFor(action, dialog_);
  file_.Write(display::FormatAnswer(written, names));
}

std::vector<std::filesystem::path> PicturesIn(const std::string& folder) {
  std::multimap<unsigned long, std::filesystem::path> pictures;
  std::error_code error;
  for (const auto& file : std::filesystem::directory_iterator(folder, error)) {
    const std::string name = file.path().stem();
    const bool is_number = !name.empty() && name.size() < 9 &&
                           name.find_first_not_of("0123456789") == std::string::npos;
    if (is_number && file.path().extension() == ".png") {
      pictures.emplace(std::stoul(name), file.path());
    }
  }
  std::vector<std::filesystem::path> ordered;
  for (const auto& picture : pictures) ordered.push_back(picture.second);
  return ordered;
}

Screenshots::Screenshots(const std::string& folder) : folder_(folder) {
  std::error_code error;
  std::filesystem::create_directories(folder, error);
  if (error) throw Failure(Status::kUsage, "cannot make " + folder + ": " + error.message());
  // The pictures of a run before would look like those of this one.
  for (const auto& picture : PicturesIn(folder)) std::filesystem::remove(picture, error);
}

void Screenshots::Opened(const display::Description& dialog) {
  const std::string file = folder_ + "/" + std::to_string(++count_) + ".png";
  const std::string painter = FindCompanion(kPainter);
  if (!RunChild({painter, "--render", file}, display::FormatDescription(dialog) + "\n")) {
    if (calculation::interruption) return;  // the painter heeds it too
    throw Failure(Status::kWrong, "cannot draw " + file + " with " + painter);
  }
}

}  // namespace workbench
