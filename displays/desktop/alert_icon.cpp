#include "displays/desktop/alert_icon.h"

#include <QPainter>
#include <QPainterPath>
#include <cmath>
#include <numbers>

namespace desktop {
namespace {

constexpr int kSize = 48;

const QColor kStopRed(0xd6, 0x33, 0x3b);
const QColor kNoteBlue(0x2f, 0x7d, 0xd8);
const QColor kCautionYellow(0xf6, 0xc0, 0x2c);
const QColor kPlainGrey(0x76, 0x80, 0x8c);

QPainterPath Octagon() {
  QPolygonF polygon;
  for (int corner = 0; corner < 8; ++corner) {
    const double angle = (corner + 0.5) * std::numbers::pi / 4;
    polygon << QPointF(24 + 22.5 * std::cos(angle), 24 + 22.5 * std::sin(angle));
  }
  QPainterPath path;
  path.addPolygon(polygon);
  path.closeSubpath();
  return path;
}

QPainterPath Triangle() {
  QPainterPath path;
  path.addPolygon(QPolygonF({{24, 6}, {44, 42}, {4, 42}}));
  path.closeSubpath();
  return path;
}

QPainterPath Circle() {
  QPainterPath path;
  path.addEllipse(QPointF(24, 24), 21.5, 21.5);
  return path;
}

QPainterPath SpeechBubble() {
  QPainterPath path;
  path.addRoundedRect(QRectF(3, 6, 42, 30), 7, 7);
  QPainterPath tail;
  tail.addPolygon(QPolygonF({{13, 34}, {26, 34}, {13, 45}}));
  tail.closeSubpath();
  return path.united(tail);
}

void Fill(QPainter& painter, const QPainterPath& shape, const QColor& color) {
  QPen rim(color, 2);
  rim.setJoinStyle(Qt::RoundJoin);
  painter.setPen(rim);
  painter.setBrush(color);
  painter.drawPath(shape);
}

// A bar and a dot: an exclamation mark with the bar above, an i with the dot above.
void DrawMark(QPainter& painter, const QColor& color, QPointF from, QPointF to, QPointF dot) {
  painter.setPen(QPen(color, 5, Qt::SolidLine, Qt::RoundCap));
  painter.drawLine(from, to);
  painter.setPen(Qt::NoPen);
  painter.setBrush(color);
  painter.drawEllipse(dot, 3, 3);
}

void DrawStop(QPainter& painter) {
  Fill(painter, Octagon(), kStopRed);
  DrawMark(painter, Qt::white, {24, 12}, {24, 26}, {24, 35});
}

void DrawNote(QPainter& painter) {
  Fill(painter, Circle(), kNoteBlue);
  DrawMark(painter, Qt::white, {24, 22}, {24, 35}, {24, 13});
}

void DrawCaution(QPainter& painter) {
  Fill(painter, Triangle(), kCautionYellow);
  DrawMark(painter, QColor(0x3a, 0x2c, 0x00), {24, 19}, {24, 29}, {24, 37});
}

void DrawPlain(QPainter& painter) {
  Fill(painter, SpeechBubble(), kPlainGrey);
  painter.setPen(QPen(Qt::white, 3, Qt::SolidLine, Qt::RoundCap));
  painter.drawLine(QPointF(12, 16), QPointF(36, 16));
  painter.drawLine(QPointF(12, 25), QPointF(28, 25));
}

}  // namespace

AlertIcon::AlertIcon(int type, QWidget* parent) : QWidget(parent), type_(type) {
  setFixedSize(kSize, kSize);
}

QIcon ProgramIcon() {
  QPixmap picture(kSize, kSize);
  picture.fill(Qt::transparent);
  QPainter painter(&picture);
  painter.setRenderHint(QPainter::Antialiasing);
  DrawPlain(painter);
  painter.end();
  return picture;
}

void AlertIcon::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  switch (type_) {
    case 0:
      return DrawStop(painter);
    case 1:
      return DrawNote(painter);
    case 2:
      return DrawCaution(painter);
    default:
      return DrawPlain(painter);
  }
}

}  // namespace desktop
