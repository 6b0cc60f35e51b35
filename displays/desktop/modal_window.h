#pragma once

#include <QAccessible>
#include <QStringList>
#include <QWidget>
#include <QWindow>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include "displays/desktop/control_view.h"
#include "displays/desktop/key_grace.h"
#include "platform/carbon/display.h"

namespace desktop {

// What dialogs and alerts share as windows: they stand above all others and stay until the host
// closes them, Tab walks through their controls in our order, and Return, Escape and the window
// manager's close request are reported whatever has the focus. What they do is the host's to
// decide.
//
// A window is filled for one dialog after another, since filling it is faster than making a new one
// on the screen.
class ModalWindow : public QWidget {
 public:
  using Report = std::function<void(const display::Action&)>;

  ModalWindow();

  // Shows and activates the window, which now reports what the user does.
  void Present(Report report);

  // Takes the window off the screen at once and empties it, so that a screen reader finds nothing
  // in it. What was in it is deleted when no handler of it is running.
  virtual void Dismiss();

  // The texts that are shown cut short, whole.
  QStringList CutTexts() const;

  // The role and the description that a screen reader is given.
  virtual QAccessible::Role AccessibleRole() const = 0;

 protected:
  // Reports what the user did, after the edits that were made before it.
  void Send(const display::Action& action);

  // What the title bar shows, and what the window goes by in task bars.
  void SetTitle(const QString& title, const QString& name);

  void AddView(ControlView* view) { content_.views.push_back(view); }

  // The order of Tab; hidden and disabled widgets in it are passed over.
  void SetTabOrder(std::vector<QWidget*> order) { content_.tab_order = std::move(order); }
  void AddToTabOrder(QWidget* widget) { content_.tab_order.push_back(widget); }

  bool event(QEvent* event) override;
  bool focusNextPrevChild(bool next) override;
  bool eventFilter(QObject* object, QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;

 private:
  bool HandleKey(QKeyEvent& key);
  bool PassToFirstInput(QKeyEvent& key);
  bool Repeats(const QKeyEvent& key) const;
  bool ShowCutText(const QObject* object, const QPoint& position);
  bool BelongsTo(ControlView& text, const QWidget* control) const;
  void ShowCutTextsOfFocus();
  void DropNativeWindow();
  void StandAboveHostWindow();

  // All that belongs to one dialog.
  struct Content {
    Report report;
    std::vector<ControlView*> views;  // in order of creation; Qt owns the widgets
    std::vector<QWidget*> tab_order;
    KeyGrace grace;
    bool menu_takes_key = false;  // the key that Qt has announced is for an open menu
    int released_key = 0;         // the last key that was released
    quint64 released_at = 0;      // by the screen's clock
  };

  Content content_;
  std::unique_ptr<QWindow> host_window_;
};

}  // namespace desktop
