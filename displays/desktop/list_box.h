#pragma once

#include <QListWidget>

#include "displays/desktop/control_view.h"
#include "platform/carbon/display.h"

namespace desktop {

// The list. Clicks and keys are reported; the selection is drawn as the host says.
class ListBox : public QListWidget, public ControlView {
 public:
  ListBox(const display::Control& control, QWidget* parent, Report report);

  QWidget* Widget() override { return this; }
  void Update(const display::Control& control) override;

 protected:
  QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex&,
                                                       const QEvent*) const override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent*) override {}
  void mouseReleaseEvent(QMouseEvent*) override {}
  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  void ReportForeignSelection(const QItemSelection& added, const QItemSelection& removed);
  void Choose(display::Action::Kind kind, int row, int x);
  int RowAfterKey(const QKeyEvent& key) const;

  Report report_;
  bool updating_ = false;  // the selection changes because the host says so
};

}  // namespace desktop
