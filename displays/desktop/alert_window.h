#pragma once

#include <optional>
#include <string>
#include <vector>

#include "displays/desktop/modal_window.h"
#include "platform/carbon/display.h"

namespace desktop {

// The platform's alert: an icon, a message in bold over its explanation, and one to three buttons.
// It grows with its texts and scrolls them only if they are taller than the screen.
class AlertWindow : public ModalWindow {
 public:
  // Fills the empty window.
  void Fill(const display::Alert& alert);

  void Dismiss() override;

  QAccessible::Role AccessibleRole() const override { return QAccessible::AlertMessage; }

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void AddButton(int number, const std::optional<std::string>& text, bool is_default);
  void LayOut(const display::Alert& alert);
  QWidget* AddTexts(const display::Alert& alert, int width, int most);
  int ButtonRowWidth() const;
  void PlaceButtons(int width, int top);
  void Mirror(int width);

  QString copied_;                 // by Control-C
  std::vector<QWidget*> buttons_;  // default, cancel, other, those that exist
  QWidget* other_ = nullptr;
};

}  // namespace desktop
