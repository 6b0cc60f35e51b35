#include "displays/desktop/shown_text.h"

#include <QFontMetrics>
#include <QPainter>
#include <QTextLayout>
#include <QToolTip>
#include <algorithm>
#include <limits>

namespace desktop {
namespace {

constexpr int kToolTipWidth = 400;
constexpr std::size_t kNoLimit = std::numeric_limits<std::size_t>::max();

QStringList Paragraphs(QString text) {
  text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
  text.replace('\r', '\n');
  text.replace(QChar::LineSeparator, '\n');
  text.replace(QChar::ParagraphSeparator, '\n');
  text.replace('\t', ' ');
  return text.split('\n');
}

Qt::LayoutDirection DirectionOf(const QString& text) {
  return text.isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight;
}

// The position in the paragraph at which each of its lines starts when it is wrapped.
std::vector<int> LineStarts(const QString& paragraph, const QFont& font, int width) {
  QTextLayout layout(paragraph, font);
  QTextOption option;
  option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
  option.setTextDirection(DirectionOf(paragraph));
  layout.setTextOption(option);
  std::vector<int> starts;
  layout.beginLayout();
  for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
    line.setLineWidth(width);
    starts.push_back(line.textStart());
  }
  layout.endLayout();
  if (starts.empty()) starts.push_back(0);
  return starts;
}

TextBlock FitLines(const QString& text, const QFont& font, int width, std::size_t most) {
  const QFontMetrics metrics(font);
  const QStringList paragraphs = Paragraphs(text);
  TextBlock block;
  for (const QString& paragraph : paragraphs) {
    const Qt::LayoutDirection direction = DirectionOf(paragraph);
    const std::vector<int> starts = LineStarts(paragraph, font, width);
    for (std::size_t i = 0; i < starts.size(); ++i) {
      const bool last_line = i + 1 == starts.size();
      const bool full = block.lines.size() + 1 == most;
      if (!full) {
        const int end = last_line ? static_cast<int>(paragraph.size()) : starts[i + 1];
        block.lines.push_back({paragraph.mid(starts[i], end - starts[i]), direction});
        continue;
      }
      const bool text_ends = last_line && &paragraph == &paragraphs.back();
      QString rest = paragraph.mid(starts[i]);
      if (last_line && !text_ends) rest += QChar(0x2026);
      block.lines.push_back({metrics.elidedText(rest, Qt::ElideRight, width), direction});
      block.cut = !text_ends;
      return block;
    }
  }
  return block;
}

}  // namespace

QString ToQString(const std::string& utf8) { return QString::fromStdString(utf8); }

QString OneLine(const QString& text) { return Paragraphs(text).join(' '); }

TextBlock FitText(const QString& text, const QFont& font, const QSize& size) {
  const int lines = std::max(1, size.height() / QFontMetrics(font).lineSpacing());
  return FitLines(text, font, size.width(), static_cast<std::size_t>(lines));
}

int TextHeight(const QString& text, const QFont& font, int width) {
  const auto block = FitLines(text, font, width, kNoLimit);
  return static_cast<int>(block.lines.size()) * QFontMetrics(font).lineSpacing();
}

void DrawBlock(QPainter& painter, const QRect& rect, const TextBlock& block) {
  const int height = painter.fontMetrics().lineSpacing();
  QRect line_rect(rect.left(), rect.top(), rect.width(), height);
  for (const TextLine& line : block.lines) {
    painter.setLayoutDirection(line.direction);
    painter.drawText(line_rect,
                     Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine | Qt::TextDontClip,
                     line.text);
    line_rect.translate(0, height);
  }
}

bool IsCut(const QString& text, const QFont& font, int width) {
  return QFontMetrics(font).horizontalAdvance(OneLine(text)) > width;
}

// It is made into markup, so that none of it is read as such, and into lines here: Qt's label
// leaves room for more than there are.
void ShowToolTip(const QString& text, const QPoint& position, QWidget* widget) {
  QStringList lines;
  for (const TextLine& line : FitLines(text, QToolTip::font(), kToolTipWidth, kNoLimit).lines) {
    lines.push_back(line.text);
  }
  const QString whole = lines.join('\n').toHtmlEscaped();
  const QString markup = QStringLiteral("<p style='white-space:pre'>%1</p>");
  QToolTip::showText(position, text.isEmpty() ? QString() : markup.arg(whole), widget);
}

}  // namespace desktop
