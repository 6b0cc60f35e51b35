#include "displays/desktop/preview_window.h"

#include <QAccessible>
#include <QApplication>
#include <QCloseEvent>
#include <QFontDatabase>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPainter>
#include <QRegularExpression>
#include <QScreen>
#include <QScrollBar>
#include <QShortcut>
#include <QVBoxLayout>
#include <algorithm>
#include <cstdint>
#include <variant>

#include "displays/desktop/render.h"
#include "displays/desktop/shown_text.h"
#include "displays/protocol/messages.h"

namespace desktop {
namespace {

using display::Json;

constexpr QSize kUsualSize(980, 720);
constexpr int kPageMargin = 16;
constexpr int kBetweenCalls = 22;
constexpr int kBelowHeading = 6;
constexpr int kTitleMargin = 5;
constexpr int kAdviceWidth = 260;  // at least
constexpr int kBar = 4;            // at the left of advice
constexpr int kScrollStep = 24;

// Both are seen on light and on dark backgrounds.
constexpr QColor kWarning(0xc9, 0x82, 0x00);
constexpr QColor kError(0xd0, 0x3a, 0x3a);

QString TextOf(const Json& object, const char* key) {
  return ToQString(object.at(key).get<std::string>());
}

QString Count(std::size_t count, const char* one, const char* several) {
  return QString::number(count) + QLatin1Char(' ') + QLatin1String(count == 1 ? one : several);
}

// A picture or a text that Tab stops at, so that a user without a pointer comes to it and a screen
// reader tells it. It shows that it has the focus.
class Stop : public QLabel {
 public:
  Stop() {
    setTextFormat(Qt::PlainText);
    setFocusPolicy(Qt::TabFocus);
  }

 protected:
  void paintEvent(QPaintEvent* event) override {
    QLabel::paintEvent(event);
    if (!hasFocus()) return;
    QPainter painter(this);
    painter.setPen(QPen(palette().color(QPalette::Highlight), 2));
    painter.drawRect(rect().adjusted(1, 1, -1, -1));
  }
};

// A text behind a coloured bar.
class Marked : public Stop {
 public:
  explicit Marked(const QColor& bar) : bar_(bar) {
    setWordWrap(true);
    setTextInteractionFlags(Qt::TextSelectableByMouse);
    setFocusPolicy(Qt::TabFocus);
    setContentsMargins(kBar + 8, 4, 4, 4);
  }

 protected:
  void paintEvent(QPaintEvent* event) override {
    QPainter(this).fillRect(0, 0, kBar, height(), bar_);
    Stop::paintEvent(event);
  }

 private:
  QColor bar_;
};

// With places at which a line can end in words that are longer than any that is meant to be read.
QString Breakable(const QString& text) {
  static const QRegularExpression long_part(QStringLiteral("(\\S{60})"));
  QString result = text;
  return result.replace(long_part, QStringLiteral("\\1\u200b"));
}

// What a script that ended early says, as it is.
QLabel* MakeError(const QString& error) {
  auto* label = new Marked(kError);
  label->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  label->setText(Breakable(error));
  label->setAccessibleName(error);
  return label;
}

// What a user would read in the dialog, for those who cannot see its picture.
QString TextsOf(const display::Description& dialog) {
  QStringList texts;
  const auto add = [&](const std::string& text) {
    if (!text.empty()) texts.push_back(OneLine(ToQString(text)));
  };
  if (const auto* window = std::get_if<display::Window>(&dialog)) {
    for (const display::Control& control : window->controls) {
      if (control.visible && !control.is_cancel) add(control.text.value_or(""));
    }
  } else {
    const auto& alert = std::get<display::Alert>(dialog);
    add(alert.message);
    add(alert.explanation);
    for (const auto& button : {alert.default_button, alert.cancel_button, alert.other_button}) {
      add(button.value_or(""));
    }
  }
  return texts.join(QStringLiteral(", "));
}

// A screen reader would tell of a label, even of an empty one.
QWidget* MakeTitle(const display::Description& dialog) {
  const auto* window = std::get_if<display::Window>(&dialog);
  const bool is_empty = !window || window->title.empty();
  auto* title = is_empty ? new QWidget : new QLabel(OneLine(ToQString(window->title)));
  title->setFixedHeight(title->fontMetrics().height() + 2 * kTitleMargin);
  title->setMinimumWidth(1);  // a long one is cut, as it is in a window
  if (auto* label = qobject_cast<QLabel*>(title)) {
    label->setTextFormat(Qt::PlainText);
    label->setAlignment(Qt::AlignCenter);
  }
  return title;
}

// As a window: its title, which stands in the frame that no picture shows, and what is in it.
QWidget* MakeDialog(const Json& call, const display::Description& dialog, const Picture& picture) {
  auto* frame = new QFrame;
  frame->setFrameShape(QFrame::StyledPanel);
  frame->setBackgroundRole(QPalette::Mid);
  frame->setAutoFillBackground(true);
  auto* layout = new QVBoxLayout(frame);
  layout->setContentsMargins(1, 1, 1, 1);
  layout->setSpacing(0);
  layout->addWidget(MakeTitle(dialog));
  auto* content = new Stop;
  content->setPixmap(picture.pixels);
  content->setAccessibleName(QStringLiteral("dialog ") + TextOf(call, "name"));
  content->setAccessibleDescription(TextsOf(dialog));
  layout->addWidget(content);
  frame->setFixedSize(frame->sizeHint().expandedTo(content->sizeHint()));
  frame->setFixedWidth(content->sizeHint().width() + 2 + 2 * frame->frameWidth());
  return frame;
}

QString PlaceOf(const Json& advice) {
  if (!advice.contains("line")) return {};
  return QStringLiteral("line %1, column %2 · ")
      .arg(advice.at("line").get<int>())
      .arg(advice.at("column").get<int>());
}

// With the order of what is quoted kept to itself: a quoted text may turn that of all behind it.
QString Isolated(QString sentence) {
  static const QRegularExpression quoted(QStringLiteral("\"(.*?)\"(?=[ ,:;.)]|$)"));
  return sentence.replace(quoted, QStringLiteral("\"\u2068\\1\u2069\""));
}

QWidget* MakeAdvice(const Json& advice) {
  auto* text = new Marked(kWarning);
  const QString name = TextOf(advice, "advice");
  text->setTextFormat(Qt::RichText);
  text->setText(QStringLiteral("<div dir=\"ltr\"><b>%1</b></div><div>%2</div>"
                               "<div><small>%3%4</small></div>")
                    .arg(Isolated(TextOf(advice, "sentence")).toHtmlEscaped(),
                         TextOf(advice, "reason").toHtmlEscaped(), PlaceOf(advice), name));
  text->setAccessibleName(TextOf(advice, "sentence") + QStringLiteral(": ") +
                          TextOf(advice, "reason") + QStringLiteral(", ") + PlaceOf(advice) + name);
  return text;
}

// Its heading, its dialog if it showed one, and the advice at the right of that.
QLayout* MakeCall(const Json& call, const std::optional<display::Description>& dialog,
                  const Picture& picture) {
  auto* layout = new QVBoxLayout;
  layout->setSpacing(kBelowHeading);
  auto* heading = new QLabel(TextOf(call, "call"));
  heading->setTextFormat(Qt::PlainText);
  layout->addWidget(heading);
  auto* row = new QHBoxLayout;
  row->setSpacing(kPageMargin);
  if (dialog) row->addWidget(MakeDialog(call, *dialog, picture), 0, Qt::AlignTop);
  auto* column = new QVBoxLayout;
  for (const Json& advice : call.at("advice")) column->addWidget(MakeAdvice(advice));
  column->addStretch();
  row->addLayout(column, 1);
  column->addItem(new QSpacerItem(kAdviceWidth, 0));
  layout->addLayout(row);
  return layout;
}

// Of the screen, if that is smaller.
QSize SizeOnScreen() {
  return kUsualSize.boundedTo(QGuiApplication::primaryScreen()->availableSize() * 9 / 10);
}

// Scrolls by keys whatever it holds.
class Area : public QScrollArea {
 public:
  Area() {
    setWidgetResizable(true);
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::StrongFocus);
    verticalScrollBar()->setSingleStep(kScrollStep);
    setAccessibleName(QStringLiteral("dialogs"));
  }

 protected:
  void keyPressEvent(QKeyEvent* event) override {
    QScrollBar& bar = *verticalScrollBar();
    if (event->key() == Qt::Key_Home) return bar.setValue(bar.minimum());
    if (event->key() == Qt::Key_End) return bar.setValue(bar.maximum());
    QScrollArea::keyPressEvent(event);
  }
};

}  // namespace

PreviewWindow::PreviewWindow(int fd)
    : connection_(fd, [this](std::string_view line) { Receive(line); }),
      summary_(new QLabel),
      area_(new Area),
      watch_([] { EndWithMessage("another program has removed the preview's window"); }) {
  setFont(QFontDatabase::systemFont(QFontDatabase::GeneralFont));
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(0);
  layout->addWidget(area_, 1);
  summary_->setMargin(kTitleMargin);
  summary_->setIndent(kPageMargin - kTitleMargin);
  layout->addWidget(summary_);
  for (const auto& keys : {QKeySequence(QKeySequence::Close), QKeySequence(QKeySequence::Quit)}) {
    connect(new QShortcut(keys, this), &QShortcut::activated, this, &QWidget::close);
  }
  connect(area_->verticalScrollBar(), &QScrollBar::valueChanged, this, [this](int value) {
    if (!filling_) place_ = value;
  });
  redrawing_.setSingleShot(true);
  connect(&redrawing_, &QTimer::timeout, this, [this] { Show(script_); });
  resize(SizeOnScreen());
  const QSize screen = QGuiApplication::primaryScreen()->size();
  connection_.Send(display::protocol::ReadyLine({{0, 0, static_cast<std::int16_t>(screen.height()),
                                                  static_cast<std::int16_t>(screen.width())}}));
}

void PreviewWindow::Receive(std::string_view line) {
  if (closed_) return;
  script_ = display::ParseJson(line);
  connection_.Send(display::ToText(Json::object({{"cut", Show(script_)}})) + "\n");
  if (isVisible()) return;
  show();
  activateWindow();
  watch_.Watch(winId());
  area_->setFocus();
}

// Which texts of each call's dialog are cut.
Json PreviewWindow::Show(const Json& script) {
  const QString error = TextOf(script, "error");
  auto* content = new QWidget;
  auto* layout = new QVBoxLayout(content);
  layout->setContentsMargins(kPageMargin, kPageMargin, kPageMargin, kPageMargin);
  layout->setSpacing(kBetweenCalls);
  QLabel* shown_error = error.isEmpty() ? nullptr : MakeError(error);
  if (shown_error) layout->addWidget(shown_error);
  Json cut = Json::array();
  std::size_t dialogs = 0;
  std::size_t pieces = 0;
  for (const Json& call : script.at("calls")) {
    std::optional<display::Description> dialog;
    Picture picture;
    if (!call.at("dialog").is_null()) {
      dialog = display::DescriptionFromJson(call.at("dialog"));
      picture = DrawDialog(*dialog);
      ++dialogs;
    }
    pieces += call.at("advice").size();
    layout->addLayout(MakeCall(call, dialog, picture));
    cut.push_back(Json::array());
    for (const QString& text : picture.cut_texts) cut.back().push_back(text.toStdString());
  }
  layout->addStretch(1);
  Fill(content, shown_error ? 0 : place_);

  setWindowTitle(TextOf(script, "file"));
  summary_->setText((error.isEmpty() ? QString() : QStringLiteral("up to the error: ")) +
                    Count(dialogs, "dialog", "dialogs") + QStringLiteral(", ") +
                    Count(pieces, "piece of advice", "pieces of advice"));
  if (shown_error) {
    QAccessibleEvent alert(shown_error, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
  }
  return cut;
}

// In place of what was there, at that place, or as near to it as there is something. The user has
// not scrolled to there, and comes back to where that was.
void PreviewWindow::Fill(QWidget* content, int place) {
  const bool had_focus = area_->widget() && area_->widget()->isAncestorOf(focusWidget());
  filling_ = true;
  area_->setWidget(content);
  QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
  area_->verticalScrollBar()->setValue(place);
  filling_ = false;
  if (had_focus) area_->setFocus();
}

// Pictures have the colours and the font of their time. Qt first tells each widget of the others.
void PreviewWindow::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  const bool looks_differ =
      event->type() == QEvent::PaletteChange || event->type() == QEvent::ApplicationFontChange;
  if (!looks_differ || script_.is_null()) return;
  redrawing_.start();
}

// The host ends the program: one that ended by itself while the host writes would look like one
// that has crashed.
void PreviewWindow::closeEvent(QCloseEvent* event) {
  watch_.Watch(0);
  event->accept();
  if (closed_) return;
  closed_ = true;
  connection_.Send("{\"closed\": true}\n");
}

}  // namespace desktop
