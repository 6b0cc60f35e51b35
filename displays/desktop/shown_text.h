#pragma once

#include <QString>
#include <string>
#include <vector>

class QFont;
class QPainter;
class QPoint;
class QRect;
class QSize;
class QWidget;

// Text is only text: nothing here reads markup or a mnemonic out of it.
namespace desktop {

QString ToQString(const std::string& utf8);

// The text as one line: line ends and tabs become blanks.
QString OneLine(const QString& text);

struct TextLine {
  QString text;
  Qt::LayoutDirection direction;
};

struct TextBlock {
  std::vector<TextLine> lines;
  bool cut = false;  // the end did not fit and is elided
};

// Breaks text at CR, LF and CR LF and wraps it to the width; lines that would stand below the
// height are left out, but never the first. The last line is elided if text is left out.
TextBlock FitText(const QString& text, const QFont& font, const QSize& size);

// The height that the text needs at that width to be shown whole.
int TextHeight(const QString& text, const QFont& font, int width);

// Draws the lines from the top of the rectangle in the painter's font and pen. Text starts at the
// side from which its script runs.
void DrawBlock(QPainter& painter, const QRect& rect, const TextBlock& block);

// Whether the text on one line is wider than that.
bool IsCut(const QString& text, const QFont& font, int width);

// Shows the whole text at a place of the screen, wrapped; nothing if it is empty.
void ShowToolTip(const QString& text, const QPoint& position, QWidget* widget);

}  // namespace desktop
