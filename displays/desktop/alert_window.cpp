#include "displays/desktop/alert_window.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QLocale>
#include <QPainter>
#include <QScreen>
#include <QScrollArea>
#include <algorithm>
#include <utility>

#include "displays/desktop/alert_icon.h"
#include "displays/desktop/control_view.h"
#include "displays/desktop/dialog_style.h"
#include "displays/desktop/host_window.h"
#include "displays/desktop/shown_text.h"
#include "platform/carbon/control_ids.h"

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

constexpr int kOverParent = 0xB00A;

// What an alert stands over: the host's window if it is to and the host names one, else the main
// screen.
QRect ParentRect(const display::Alert& alert) {
  const auto parent = alert.position == kOverParent ? HostWindowRect() : std::nullopt;
  return parent.value_or(QGuiApplication::primaryScreen()->availableGeometry());
}

// The screen that the middle of `rect` is on, else the main one.
QScreen* ScreenOf(const QRect& rect) {
  QScreen* screen = QGuiApplication::screenAt(rect.center());
  return screen ? screen : QGuiApplication::primaryScreen();
}

// `rect` moved as far as it must be to lie inside `screen`, below the title bar.
QRect Inside(const QRect& screen, QRect rect) {
  const auto between = [](int least, int place, int most) {
    return std::max(least, std::min(place, most));
  };
  rect.moveTo(between(screen.left(), rect.left(), screen.right() + 1 - rect.width()),
              between(screen.top() + kTitleBar, rect.top(), screen.bottom() + 1 - rect.height()));
  return rect;
}

// From right to left if the user's language or that of the message runs so.
Qt::LayoutDirection DirectionFor(const display::Alert& alert) {
  const bool message = ToQString(alert.message).isRightToLeft();
  return message ? Qt::RightToLeft : QLocale().textDirection();
}

display::Control ButtonControl(int number, const std::string& text, bool is_default) {
  display::Control control;
  control.kind = display::ControlKind::kButton;
  control.id = control_id::Button(number);
  control.text = text;
  control.is_default = is_default;
  return control;
}

// One of an alert's texts, as high as it needs to be. It is a label so that a screen reader can go
// to it, and belongs to the window, which is told with it already.
class AlertText : public QLabel {
 public:
  AlertText(const std::string& text, const QFont& font, int width, QWidget* parent, QWidget* window)
      : QLabel(parent), text_(ToQString(text)) {
    setFont(font);
    setBuddy(window);
    setAccessibleName(text_);
    resize(width, TextHeight(text_, font, width));
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    painter.setPen(palette().color(QPalette::WindowText));
    DrawBlock(painter, rect(), FitText(text_, font(), size()));
  }

 private:
  QString text_;
};

// The message over the explanation.
QWidget* MakeTexts(const display::Alert& alert, int width, QWidget* window) {
  auto* texts = new QWidget;
  int height = 0;
  for (const auto& [text, font] :
       {std::pair{&alert.message, MessageFont()}, std::pair{&alert.explanation, SmallFont()}}) {
    if (text->empty()) continue;
    auto* label = new AlertText(*text, font, width, texts, window);
    label->move(0, height == 0 ? 0 : height + kBetweenTexts);
    height = label->geometry().bottom() + 1;
  }
  texts->resize(width, height);
  return texts;
}

}  // namespace

void AlertWindow::Fill(const display::Alert& alert) {
  SetTitle({}, OneLine(ToQString(alert.message)));
  QStringList texts{ToQString(alert.message), ToQString(alert.explanation)};
  texts.removeAll(QString());
  copied_ = texts.join(QStringLiteral("\n\n"));
  // In one, since newer screen readers tell no description of an alert.
  setAccessibleName(texts.join(u' '));
  AddButton(1, alert.default_button, alert.return_button == 1);
  AddButton(2, alert.cancel_button, alert.return_button == 2);
  AddButton(3, alert.other_button, alert.return_button == 3);
  SetTabOrder(buttons_);
  setLayoutDirection(DirectionFor(alert));
  LayOut(alert);
  if (!buttons_.empty()) buttons_.front()->setFocus();
}

void AlertWindow::Dismiss() {
  ModalWindow::Dismiss();
  buttons_.clear();
  other_ = nullptr;
}

// Copies the texts, which nothing can select.
void AlertWindow::keyPressEvent(QKeyEvent* event) {
  if (!event->matches(QKeySequence::Copy)) return ModalWindow::keyPressEvent(event);
  QGuiApplication::clipboard()->setText(copied_);
}

void AlertWindow::AddButton(int number, const std::optional<std::string>& text, bool is_default) {
  if (!text) return;
  const display::Control control = ButtonControl(number, *text, is_default);
  ControlView* view = MakeControlView(control, this, [this](const auto& action) { Send(action); });
  view->Update(control);
  view->Widget()->resize(view->Widget()->sizeHint());
  AddView(view);
  buttons_.push_back(view->Widget());
  if (number == 3) other_ = view->Widget();
}

void AlertWindow::LayOut(const display::Alert& alert) {
  const QRect parent = ParentRect(alert);
  const QRect screen = ScreenOf(parent)->availableGeometry();
  const int least_width = std::max(kWidth, ButtonRowWidth() + 2 * kMargin);
  const int around_texts = 2 * kMargin + kButtonRow;
  QWidget* texts = AddTexts(alert, least_width - kTextLeft - kMargin,
                            screen.height() - kTitleBar - around_texts);

  // One or two lines stand at the middle of the icon, more begin at its top.
  const int body = std::max(texts->height(), kIcon);
  (new AlertIcon(alert.type, this))->move(kMargin, kMargin);
  texts->move(kTextLeft, kMargin + (body - texts->height()) / 2);

  const int width = kTextLeft + texts->width() + kMargin;
  const int height = body + around_texts;
  PlaceButtons(width, height - kButtonRow);
  if (layoutDirection() == Qt::RightToLeft) Mirror(width);
  setFixedSize(width, height);
  setGeometry(Inside(screen, {parent.left() + (parent.width() - width) / 2,
                              parent.top() + (parent.height() - height) / 3, width, height}));
}

// The texts at that width, before the buttons for a screen reader. If they are higher than
// `most` they scroll, by keys as well.
QWidget* AlertWindow::AddTexts(const display::Alert& alert, int width, int most) {
  QWidget* texts = MakeTexts(alert, width, this);
  if (texts->height() <= most) {
    texts->setParent(this);
    texts->lower();
    return texts;
  }
  auto* area = new QScrollArea(this);
  area->setFrameShape(QFrame::NoFrame);
  area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  area->viewport()->setAutoFillBackground(false);
  area->setWidget(texts);
  texts->setAutoFillBackground(false);
  area->resize(width + style()->pixelMetric(QStyle::PM_ScrollBarExtent), most);
  area->lower();
  AddToTabOrder(area);
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

// Everything changes sides.
void AlertWindow::Mirror(int width) {
  for (auto* child : findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
    child->move(width - child->x() - child->width(), child->y());
  }
}

}  // namespace desktop
