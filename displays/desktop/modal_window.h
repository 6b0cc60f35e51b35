#pragma once

#include <QAccessible>
#include <QWidget>
#include <QWindow>
#include <functional>
#include <memory>
#include <vector>

#include "displays/desktop/control_view.h"
#include "platform/carbon/display.h"

namespace desktop {

// What dialogs and alerts share as windows: they stand above all others and stay until the host
// closes them, Tab walks through their controls in our order, and Return, Escape and the window
// manager's close request are reported wherever the focus is. Nothing is decided here.
class ModalWindow : public QWidget {
 public:
  using Report = std::function<void(const display::Action&)>;

  explicit ModalWindow(Report report);

  // Shows and activates the window.
  virtual void Present();

  // The role and the description that a screen reader is given.
  virtual QAccessible::Role AccessibleRole() const = 0;

 protected:
  // Reports what the user did, after the edits that were made before it.
  void Send(const display::Action& action);

  void AddView(ControlView* view) { views_.push_back(view); }

  // The order of Tab; hidden and disabled widgets in it are passed over.
  void SetTabOrder(std::vector<QWidget*> order) { tab_order_ = std::move(order); }

  bool focusNextPrevChild(bool next) override;
  bool eventFilter(QObject* object, QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;

 private:
  bool HandleKey(const QKeyEvent& key);
  bool Repeats(const QKeyEvent& key) const;
  bool ShowCutText(const QObject* object, const QPoint& position);
  void StandAboveHostWindow();

  Report report_;
  std::vector<ControlView*> views_;  // in order of creation; Qt owns the widgets
  std::vector<QWidget*> tab_order_;
  std::unique_ptr<QWindow> host_window_;
  bool key_is_menus_ = false;
  int released_key_ = 0;     // the last one
  quint64 released_at_ = 0;  // by the screen's clock
};

// Closing takes the window off the screen at once and deletes it when no handler of it is running.
struct WindowCloser {
  void operator()(ModalWindow* window) const;
};
using WindowPointer = std::unique_ptr<ModalWindow, WindowCloser>;

}  // namespace desktop
