#pragma once

#include <cstddef>
#include <vector>

#include "displays/desktop/control_view.h"
#include "displays/desktop/modal_window.h"
#include "platform/carbon/display.h"

namespace desktop {

// A dialog at its place on the screen with its controls at theirs.
class DialogWindow : public ModalWindow {
 public:
  // Its rectangles and their sides are the host's, in every language.
  DialogWindow() { setLayoutDirection(Qt::LeftToRight); }

  // Fills the empty window.
  void Fill(display::Window description);

  void Dismiss() override;

  // Control `index` now is as described. The focus moves only if the host has moved it.
  void Change(std::size_t index, const display::Control& control);

  QAccessible::Role AccessibleRole() const override { return QAccessible::Dialog; }

 protected:
  bool event(QEvent* event) override;

 private:
  QString Name() const;
  QPoint ContentPlace() const;
  void Place();
  void Show(std::size_t index);
  void OrderTabs();
  void NameInputs();
  QWidget* InputOf(int label) const;

  display::Window description_;
  std::vector<ControlView*> views_;  // of each control; null if it has never been visible
  bool placed_ = false;
};

}  // namespace desktop
