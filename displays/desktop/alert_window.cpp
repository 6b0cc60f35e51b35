#include "displays/desktop/alert_window.h"

#include <QGuiApplication>
#include <QPainter>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <algorithm>
#include <utility>

#include "displays/desktop/alert_icon.h"
#include "displays/desktop/look.h"
#include "displays/desktop/text.h"

namespace desktop {
namespace {

constexpr int kWidth = 440;
constexpr int kMargin = 20;
constexpr int kIcon = 48;
constexpr int kTextLeft = kMargin + kIcon + 16;
constexpr int kBetweenTexts = 8;
constexpr int kBetweenButtons = 8;
constexpr int kButtonRow = 46;  // with what is below
constexpr int kTitleBar = 40;   // room for the window manager's

display::Control ButtonControl(int number, const std::string& text) {
  display::Control control;
  control.kind = display::ControlKind::kButton;
  control.id = display::ButtonId(number);
  control.text = text;
  control.is_default = number == 1;
  return control;
}

}  // namespace

// The message over the explanation, as high as they need to be.
class AlertWindow::Texts : public QWidget {
 public:
  Texts(const display::Alert& alert, int width)
      : message_(ToQString(alert.message)), explanation_(ToQString(alert.explanation)) {
    resize(width, NeededHeight(width));
  }

  int NeededHeight(int width) const {
    const int below =
        explanation_.isEmpty() ? 0 : kBetweenTexts + TextHeight(explanation_, SmallFont(), width);
    return MessageHeight(width) + below;
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    painter.setPen(palette().color(QPalette::WindowText));
    DrawText(painter, MessageFont(), 0, message_);
    const int message = MessageHeight(width());
    if (!explanation_.isEmpty()) {
      DrawText(painter, SmallFont(), message ? message + kBetweenTexts : 0, explanation_);
    }
  }

 private:
  int MessageHeight(int width) const {
    return message_.isEmpty() ? 0 : TextHeight(message_, MessageFont(), width);
  }

  void DrawText(QPainter& painter, const QFont& font, int top, const QString& text) {
    const QRect rect(0, top, width(), height());
    painter.setFont(font);
    DrawBlock(painter, rect, FitText(text, font, rect.size()));
  }

  QString message_;
  QString explanation_;
};

AlertWindow::AlertWindow(const display::Alert& alert, Report report)
    : ModalWindow(std::move(report)) {
  setWindowTitle(QStringLiteral(" "));  // none; Qt would show the program's name
  setAccessibleName(ToQString(alert.message));
  setAccessibleDescription(ToQString(alert.explanation));
  AddButton(1, alert.default_button);
  AddButton(2, alert.cancel_button);
  AddButton(3, alert.other_button);
  tab_order_ = buttons_;
  LayOut(alert);
  SetTabOrder(tab_order_);
  if (!buttons_.empty()) buttons_.front()->setFocus();
}

void AlertWindow::AddButton(int number, const std::optional<std::string>& text) {
  if (!text) return;
  const display::Control control = ButtonControl(number, *text);
  ControlView* view = MakeControlView(control, this, [this](const auto& action) { Send(action); });
  view->Update(control);
  view->Widget()->resize(view->Widget()->sizeHint());
  AddView(view);
  buttons_.push_back(view->Widget());
  if (number == 3) other_ = view->Widget();
}

void AlertWindow::LayOut(const display::Alert& alert) {
  const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
  const int least_width = std::max(kWidth, ButtonRowWidth() + 2 * kMargin);
  const int around_texts = 2 * kMargin + kButtonRow;
  QScrollArea* texts = AddTexts(alert, least_width - kTextLeft - kMargin,
                                screen.height() - kTitleBar - around_texts);

  // One or two lines stand at the middle of the icon, more begin at its top.
  const int body = std::max(texts->height(), kIcon);
  (new AlertIcon(alert.type, this))->move(kMargin, kMargin);
  texts->move(kTextLeft, kMargin + (body - texts->height()) / 2);

  const int width = kTextLeft + texts->width() + kMargin;
  const int height = body + around_texts;
  PlaceButtons(width, height - kButtonRow);
  setFixedSize(width, height);
  setGeometry(screen.left() + (screen.width() - width) / 2,
              screen.top() + (screen.height() - height) / 3, width, height);
}

// The texts at that width, no higher than `most`: then they scroll, by keys as well.
QScrollArea* AlertWindow::AddTexts(const display::Alert& alert, int width, int most) {
  auto* texts = new Texts(alert, width);
  const bool scrolls = texts->height() > most;
  auto* area = new QScrollArea(this);
  area->setFrameShape(QFrame::NoFrame);
  area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  area->viewport()->setAutoFillBackground(false);
  area->setWidget(texts);
  texts->setAutoFillBackground(false);
  area->resize(width + (scrolls ? style()->pixelMetric(QStyle::PM_ScrollBarExtent) : 0),
               std::min(texts->height(), most));
  if (scrolls) tab_order_.push_back(area);
  return area;
}

int AlertWindow::ButtonRowWidth() const {
  int width = -kBetweenButtons;
  for (const QWidget* button : buttons_) width += button->width() + kBetweenButtons;
  return width;
}

// The default button is rightmost, cancel beside it, the other one at the left.
void AlertWindow::PlaceButtons(int width, int top) {
  int right = width - kMargin;
  for (QWidget* button : buttons_) {
    const bool other = button == other_;
    button->move(other ? kMargin : right - button->width(), top);
    right -= button->width() + kBetweenButtons;
  }
}

}  // namespace desktop
