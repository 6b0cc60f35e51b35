#pragma once

#include <QIcon>
#include <QWidget>

namespace desktop {

// The icon of an alert, painted at whatever scale the screen has: 0 stop, 1 note, 2 caution, any
// other plain.
class AlertIcon : public QWidget {
 public:
  AlertIcon(int type, QWidget* parent);

 protected:
  void paintEvent(QPaintEvent*) override;

 private:
  int type_;
};

// The program's own, for its windows in task bars and switchers.
QIcon ProgramIcon();

}  // namespace desktop
