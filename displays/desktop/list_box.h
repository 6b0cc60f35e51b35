#pragma once

#include <QListWidget>
#include <vector>

#include "displays/desktop/control_view.h"
#include "displays/desktop/dialog_style.h"
#include "displays/desktop/typed_search.h"
#include "platform/carbon/display.h"

namespace desktop {

// The list. Clicks and keys are reported; the selection is drawn as the host says. Qt knows the
// rows that hold a line, up to the last one, and so do keys and screen readers. The empty rows
// below are the pointer's alone.
class ListBox : public TypedSearch<QListWidget>, public ControlView {
 public:
  ListBox(const display::Control& control, QWidget* parent, Report report);

  QWidget* Widget() override { return this; }
  void Update(const display::Control& control) override;
  QString CutText() const override;

 protected:
  QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex&,
                                                       const QEvent*) const override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent*) override {}
  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void updateGeometries() override;

 private:
  void ReportForeignSelection(const QItemSelection& added, const QItemSelection& removed);
  void Choose(display::Action::Kind kind, int row, int x);
  void ChooseAll();
  int RowAt(const QMouseEvent& event) const;
  int RowAfterKey(const QKeyEvent& key) const;

  Report report_;
  int rows_ = 0;
  int row_height_;
  LineDelegate* lines_;
  int chosen_ = -1;                  // the row that was reported last
  std::vector<int> selected_empty_;  // rows without a line
  bool updating_ = false;            // the selection changes because the host says so
};

}  // namespace desktop
