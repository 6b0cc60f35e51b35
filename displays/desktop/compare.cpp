#include "displays/desktop/compare.h"

#include <QImage>
#include <QPainter>
#include <algorithm>
#include <cstdlib>
#include <stdexcept>

#include "displays/desktop/shown_text.h"

namespace desktop {
namespace {

// Of 255. Other versions of what draws round colours at the edges of letters in another way.
constexpr int kOverlooked = 16;
constexpr int kGap = 12;
constexpr int kAroundMark = 4;
constexpr QColor kMark(0xd8, 0x10, 0x10);
constexpr QColor kPale(0xff, 0xff, 0xff, 0xb0);

QImage Load(const std::string& file) {
  const QImage image(ToQString(file));
  if (image.isNull()) throw std::runtime_error("cannot read the picture " + file);
  return image.convertToFormat(QImage::Format_RGB32);
}

bool Differ(QRgb a, QRgb b) {
  return std::max({std::abs(qRed(a) - qRed(b)), std::abs(qGreen(a) - qGreen(b)),
                   std::abs(qBlue(a) - qBlue(b))}) > kOverlooked;
}

// The pixels that differ, as a picture that is transparent elsewhere; what only one of the two has
// differs.
QImage MarksOf(const QImage& before, const QImage& after) {
  QImage marks(before.size().expandedTo(after.size()), QImage::Format_ARGB32);
  marks.fill(Qt::transparent);
  for (int y = 0; y < marks.height(); ++y) {
    for (int x = 0; x < marks.width(); ++x) {
      const bool both = before.valid(x, y) && after.valid(x, y);
      if (!both || Differ(before.pixel(x, y), after.pixel(x, y))) marks.setPixelColor(x, y, kMark);
    }
  }
  return marks;
}

// What holds all the marks; nothing if there are none.
QRect Around(const QImage& marks) {
  QRect around;
  for (int y = 0; y < marks.height(); ++y) {
    for (int x = 0; x < marks.width(); ++x) {
      if (qAlpha(marks.pixel(x, y)) > 0) around |= QRect(x, y, 1, 1);
    }
  }
  return around;
}

QImage SideBySide(const QImage& before, const QImage& after, const QImage& marks) {
  const int step = marks.width() + kGap;
  QImage all(3 * step - kGap, marks.height(), QImage::Format_RGB32);
  all.fill(Qt::gray);
  QPainter painter(&all);
  painter.drawImage(0, 0, before);
  painter.drawImage(step, 0, after);
  painter.drawImage(2 * step, 0, after);
  painter.translate(2 * step, 0);
  painter.fillRect(marks.rect(), kPale);
  painter.drawImage(0, 0, marks);
  painter.setPen(kMark);
  painter.drawRect(Around(marks).adjusted(-kAroundMark, -kAroundMark, kAroundMark, kAroundMark));
  return all;
}

}  // namespace

bool LookTheSame(const std::string& before, const std::string& after,
                 const std::string& difference) {
  const QImage old_picture = Load(before);
  const QImage new_picture = Load(after);
  const QImage marks = MarksOf(old_picture, new_picture);
  if (Around(marks).isNull()) return true;
  if (!SideBySide(old_picture, new_picture, marks).save(ToQString(difference), "PNG")) {
    throw std::runtime_error("cannot write " + difference);
  }
  return false;
}

}  // namespace desktop
