#include "displays/terminal/layout.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace terminal {
namespace {

using display::Control;
using display::ControlKind;

constexpr double kRowHeight = 15;  // of a line of text, in pixels
constexpr double kColumnWidth = 6.8;
constexpr int kFrame = 1;
constexpr int kButtonEdges = 4;  // two at either side of the text
constexpr int kLeastHeight = 3;  // of a message or a list, until nothing else gives way

bool IsHigh(const Control& control) {
  return IsMessage(control) || control.kind == ControlKind::kList;
}

int Rounded(double number) { return static_cast<int>(std::lround(number)); }

double MiddleOf(const Rect& rect) { return (rect.top + rect.bottom) / 2.0; }

// The controls that stand side by side.
struct Band {
  std::vector<std::size_t> controls;
  double middle = 0;  // in pixels
  int gap = 0;        // blank rows above
  int height = 1;
  int least = 1;   // the height that it can be made
  int wanted = 1;  // the height with which nothing of it scrolls
};

class Builder {
 public:
  Builder(const display::Window& window, int rows, int columns)
      : window_(window), content_width_(window.content.right - window.content.left) {
    width_ = std::min(Rounded(content_width_ / kColumnWidth), columns - 2 * kFrame);
    width_ = std::max(width_, 1);
    MakeBands();
    Fit(rows - 2 * kFrame);
  }

  int Width() const { return width_; }

  int Height() const {
    return std::accumulate(bands_.begin(), bands_.end(), below_,
                           [](int sum, const Band& band) { return sum + band.gap + band.height; });
  }

  std::vector<Area> Areas() const {
    std::vector<Area> areas(window_.controls.size());
    int row = 0;
    for (const Band& band : bands_) {
      row += band.gap;
      for (const std::size_t index : band.controls) {
        areas[index] = AreaOf(window_.controls[index], row, band.height);
      }
      WidenButtons(band, areas);
      row += band.height;
    }
    return areas;
  }

 private:
  int Column(double pixels) const {
    return std::clamp(Rounded(pixels * width_ / content_width_), 0, width_);
  }

  Area AreaOf(const Control& control, int row, int height) const {
    int left = Column(control.rect.left);
    int right = Column(control.rect.right);
    switch (control.kind) {
      case ControlKind::kCheckBox:
      case ControlKind::kRadio:
        left = Column(control.rect.left + 1);  // in line with the other inputs
        right = left + 3;                      // [x]
        break;
      case ControlKind::kEdit:
      case ControlKind::kPassword:
        left = Column(control.rect.left - 4);  // the frame stands outside of the rectangle
        break;
      case ControlKind::kStatic:
        if (!IsMessage(control)) right = std::min(right, Column(control.rect.right + 6) - 1);
        break;
      default:
        break;
    }
    return {row, left, IsHigh(control) ? height : 1, std::max(std::min(right, width_) - left, 1)};
  }

  // A button that is too narrow for its text grows into what is free at its left, then at its
  // right.
  void WidenButtons(const Band& band, std::vector<Area>& areas) const {
    for (const std::size_t index : band.controls) {
      const Control& control = window_.controls[index];
      if (control.kind != ControlKind::kButton) continue;
      Area& own = areas[index];
      int free_left = 0;
      int free_right = width_;
      for (const std::size_t other : band.controls) {
        const Area& area = areas[other];
        if (area.column < own.column) free_left = std::max(free_left, area.column + area.width + 1);
        if (area.column > own.column) free_right = std::min(free_right, area.column - 1);
      }
      const int wanted = WidthOf(OneLine(control.text.value_or(""))) + kButtonEdges;
      const int right = own.column + own.width;
      own.column = std::min(own.column, std::max(right - wanted, free_left));
      own.width = std::max(right, std::min(own.column + wanted, free_right)) - own.column;
    }
  }

  void MakeBands() {
    std::vector<std::size_t> order;
    for (std::size_t i = 0; i < window_.controls.size(); ++i) {
      if (IsSeen(window_.controls[i])) order.push_back(i);
    }
    const auto middle = [this](std::size_t index) {
      return MiddleOf(window_.controls[index].rect);
    };
    std::stable_sort(order.begin(), order.end(), [&](std::size_t left, std::size_t right) {
      return middle(left) < middle(right);
    });
    for (const std::size_t index : order) {
      if (bands_.empty() || middle(index) - bands_.back().middle > kRowHeight / 2) {
        bands_.push_back({.controls = {}, .middle = middle(index)});
      }
      bands_.back().controls.push_back(index);
    }
    PlaceBands();
  }

  // Rows as the description has them.
  void PlaceBands() {
    int next = 0;
    for (Band& band : bands_) {
      int top = static_cast<int>(band.middle / kRowHeight);
      for (const std::size_t index : band.controls) {
        const Control& control = window_.controls[index];
        if (!IsHigh(control)) continue;
        top = static_cast<int>(control.rect.top / kRowHeight);
        const int height = Rounded((control.rect.bottom - control.rect.top) / kRowHeight);
        band.height = std::max({band.height, height, 1});
        band.wanted = std::max(band.wanted, WantedHeight(control, height));
        band.least = std::min(kLeastHeight, band.wanted);
      }
      band.gap = std::max(top - next, 0);
      next += band.gap + band.height;
    }
    const int whole = Rounded((window_.content.bottom - window_.content.top) / kRowHeight);
    below_ = std::max(whole - next, 0);
  }

  // The rows of a list do not count: it scrolls as a matter of course.
  int WantedHeight(const Control& control, int height) const {
    if (control.kind == ControlKind::kList) return height;
    const int width = AreaOf(control, 0, 1).width;
    return static_cast<int>(Wrap(control.text.value_or(""), width).size());
  }

  void Fit(int room) {
    for (Band& band : bands_) {
      band.height += std::clamp(band.wanted - band.height, 0, std::max(room - Height(), 0));
    }
    const auto shrink = [&](int& size, int least) {
      size -= std::clamp(Height() - room, 0, std::max(size - least, 0));
    };
    shrink(below_, 0);
    for (Band& band : bands_) shrink(band.height, band.wanted);
    std::for_each(bands_.rbegin(), bands_.rend(), [&](Band& band) { shrink(band.gap, 0); });
    std::for_each(bands_.rbegin(), bands_.rend(),
                  [&](Band& band) { shrink(band.height, band.least); });
    for (Band& band : bands_) shrink(band.height, 1);
  }

  const display::Window& window_;
  double content_width_;
  int width_ = 1;
  int below_ = 0;  // blank rows below the last band
  std::vector<Band> bands_;
};

// Where something of that size begins: as far from the one end as the description's position is on
// the main screen, in proportion.
int Start(int position, int size, int screen, int cells, int cell_screen) {
  const double room = std::max(screen - size, 1);
  const int cell_room = std::max(cell_screen - cells, 0);
  return std::clamp(Rounded(position / room * cell_room), 0, cell_room);
}

}  // namespace

Layout LayOut(const display::Window& window, int rows, int columns) {
  const Builder builder(window, rows, columns);
  const Rect& content = window.content;
  Layout layout;
  layout.areas = builder.Areas();
  layout.height = builder.Height();
  layout.frame.height = std::min(layout.height + 2 * kFrame, rows);
  layout.frame.width = std::min(builder.Width() + 2 * kFrame, columns);
  layout.frame.row = Start(content.top, content.bottom - content.top, kMainScreen.bottom,
                           layout.frame.height, rows);
  layout.frame.column = Start(content.left, content.right - content.left, kMainScreen.right,
                              layout.frame.width, columns);
  return layout;
}

bool IsSeen(const Control& control) { return control.visible && !control.is_cancel; }

bool IsMessage(const Control& control) {
  return control.kind == ControlKind::kStatic && control.id < control_id::Label(1);
}

}  // namespace terminal
