#include "workbench/observers.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "calculation/interruption.h"
#include "displays/protocol/display_json.h"
#include "displays/scripted/answers.h"
#include "displays/scripted/dialog_name.h"
#include "displays/scripted/names.h"
#include "workbench/child_program.h"
#include "workbench/failure.h"

namespace workbench {
namespace {

// The project's display can also draw a dialog into a file. Carbon, which starts it to show
// dialogs, tells no host what it is called.
constexpr const char* kPainter = "tarvo-desktop";

}  // namespace

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

Screenshots::Screenshots(const std::string& folder) : folder_(folder) {
  std::error_code error;
  std::filesystem::create_directories(folder, error);
  if (error) throw Failure(Status::kUsage, "cannot make " + folder + ": " + error.message());
  // The pictures of a run before would look like those of this one.
  for (const auto& file : std::filesystem::directory_iterator(folder, error)) {
    const std::string name = file.path().filename();
    const std::size_t digits = name.find_first_not_of("0123456789");
    if (digits > 0 && name.substr(std::min(digits, name.size())) == ".png") {
      std::filesystem::remove(file.path(), error);
    }
  }
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
