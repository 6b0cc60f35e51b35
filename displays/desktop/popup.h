#pragma once

#include <QComboBox>
#include <QListView>
#include <QTimer>

#include "displays/desktop/control_view.h"
#include "displays/desktop/typed_search.h"
#include "platform/carbon/display.h"

namespace desktop {

// A pop-up button: shows one item of its menu and opens the whole menu.
class Popup : public QComboBox, public ControlView {
 public:
  Popup(const display::Control& control, QWidget* parent, const Report& report);

  QWidget* Widget() override { return this; }
  void Update(const display::Control& control) override;
  QString CutText() const override;

  void showPopup() override;

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void paintEvent(QPaintEvent*) override;
  void wheelEvent(QWheelEvent* event) override;

 private:
  void TellItem(int item) const;
  void ChooseForeign(int item);
  QRect TextRect() const;

  TypedSearch<QListView>* menu_;
  QTimer opened_;  // ends at once, when the menu is there
};

}  // namespace desktop
