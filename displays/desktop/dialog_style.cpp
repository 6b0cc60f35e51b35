#include "displays/desktop/dialog_style.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QFontDatabase>
#include <QHelpEvent>
#include <QPainter>
#include <QProxyStyle>
#include <QStyleFactory>
#include <QStyleOption>
#include <QToolTip>
#include <algorithm>
#include <cmath>

#include "displays/desktop/colours.h"
#include "displays/desktop/shown_text.h"

namespace desktop {
namespace {

constexpr int kFontPixels = 11;
constexpr int kMessagePixels = 13;
constexpr int kScrollBarWidth = 17;
constexpr int kLeastThumb = 24;
constexpr int kThumbInset = 4;
constexpr int kListFrame = 2;
constexpr double kRadius = 4;
constexpr int kBezelInset = 3;  // a button's bezel is lower than its rectangle, above and below
constexpr double kToggleSize = 15;
constexpr int kToolTipMargin = 6;

// The families of the desktop's font if Qt does not know them.
QStringList& Families() {
  static QStringList families;
  return families;
}

QFont SystemFont(int pixels) {
  QFont font = QFontDatabase::systemFont(QFontDatabase::GeneralFont);
  if (!Families().isEmpty()) font.setFamilies(Families());
  font.setPixelSize(pixels);
  return font;
}

// The colours of one widget in the state that it is in.
struct Colors {
  explicit Colors(const QWidget& widget) : Colors(widget, widget.isEnabled()) {}
  Colors(const QWidget& widget, bool enabled)
      : palette(widget.palette()), group(enabled ? QPalette::Active : QPalette::Disabled) {}
  QColor Of(QPalette::ColorRole role) const { return palette.color(group, role); }
  QColor Border() const { return BorderColour(palette, group); }
  QColor Accent() const { return palette.color(QPalette::Active, QPalette::Highlight); }
  bool Dark() const { return Of(QPalette::Window).lightness() < 128; }

  QPalette palette;
  QPalette::ColorGroup group;
};

// In a window that is only drawn no widget ever has the focus.
bool ShowsFocus(const QWidget& widget) {
  const QWidget& window = *widget.window();
  return widget.hasFocus() ||
         (window.testAttribute(Qt::WA_DontShowOnScreen) && window.focusWidget() == &widget);
}

// A rounded rectangle whose border lies inside `rect`.
void DrawRounded(QPainter& painter, const QRectF& rect, const QColor& fill, const QColor& border,
                 double width = 1, double radius = kRadius) {
  const double half = width / 2;
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(border, width));
  painter.setBrush(fill);
  painter.drawRoundedRect(rect.adjusted(half, half, -half, -half), radius, radius);
}

QColor PressedOrHovered(const QColor& color, const QAbstractButton& button) {
  if (button.isDown()) return color.darker(115);
  return button.underMouse() && button.isEnabled() ? color.lighter(105) : color;
}

QColor ButtonFill(const QWidget& button, bool is_default) {
  const Colors colors(button);
  if (is_default && button.isEnabled()) return colors.Accent().darker(115);  // its text is white
  const QColor raised = colors.Dark() ? Mix(colors.Of(QPalette::Button), Qt::white, 0.08)
                                      : Mix(colors.Of(QPalette::Button), Qt::white, 0.65);
  return button.isEnabled() ? raised : colors.Of(QPalette::Window);
}

void DrawFocusRing(QPainter& painter, const QWidget& toggle, const QRectF& around, double radius) {
  if (!ShowsFocus(toggle)) return;
  DrawRounded(painter, around.adjusted(-2.5, -2.5, 2.5, 2.5), Qt::transparent,
              Colors(toggle).Accent(), 1.5, radius + 2);
}

QRectF ToggleRect(const QWidget& toggle) {
  const double margin = (toggle.height() - kToggleSize) / 2;
  return {margin, margin, kToggleSize, kToggleSize};
}

struct ToggleColors {
  QColor fill, border, mark;
};

ToggleColors ColorsOf(const QAbstractButton& toggle) {
  const Colors colors(toggle);
  if (!toggle.isChecked()) {
    return {PressedOrHovered(colors.Of(QPalette::Base), toggle), colors.Border(), {}};
  }
  const QColor on = toggle.isEnabled() ? colors.Accent() : colors.Border();
  return {PressedOrHovered(on, toggle), on.darker(110), colors.Of(QPalette::HighlightedText)};
}

void DrawFieldFrame(QPainter& painter, const QWidget& field) {
  const Colors colors(field);
  const bool focused = ShowsFocus(field);
  const QColor fill = field.isEnabled() ? colors.Of(QPalette::Base) : colors.Of(QPalette::Window);
  DrawRounded(painter, field.rect(), fill, focused ? colors.Accent() : colors.Border(),
              focused ? 2 : 1);
}

class DialogStyle : public QProxyStyle {
 public:
  DialogStyle() : QProxyStyle(QStyleFactory::create(QStringLiteral("Fusion"))) {}

  int pixelMetric(PixelMetric metric, const QStyleOption* option,
                  const QWidget* widget) const override {
    if (metric == PM_ScrollBarExtent) return kScrollBarWidth;
    if (metric == PM_ToolTipLabelFrameWidth) return kToolTipMargin;
    if (metric == PM_DefaultFrameWidth && IsListBox(widget)) return kListFrame;
    return QProxyStyle::pixelMetric(metric, option, widget);
  }

  // Menus open below their button, as elsewhere on this desktop.
  int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                QStyleHintReturn* result) const override {
    if (hint == SH_ComboBox_Popup) return 0;
    if (hint == SH_EtchDisabledText) return 0;  // a shadow, which can be read no better
    return QProxyStyle::styleHint(hint, option, widget, result);
  }

  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override {
    if (element == PE_PanelLineEdit && widget) return DrawFieldFrame(*painter, *widget);
    QProxyStyle::drawPrimitive(element, option, painter, widget);
    // The style's own is not seen in every palette.
    if (element == PE_PanelMenu || element == PE_FrameMenu || element == PE_Frame) {
      painter->setPen(BorderColour(option->palette, QPalette::Active));
      painter->drawRect(option->rect.adjusted(0, 0, -1, -1));
    }
  }

  // Fusion's scroll bar is made of cached pictures, which blur at scales between whole numbers.
  void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                          QPainter* painter, const QWidget* widget) const override {
    const QStyleOptionSlider* bar = VerticalScrollBar(control, option);
    if (bar && widget) return DrawScrollBar(*painter, *bar, *widget);
    QProxyStyle::drawComplexControl(control, option, painter, widget);
  }

  QRect subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl part,
                       const QWidget* widget) const override {
    const QStyleOptionSlider* bar = VerticalScrollBar(control, option);
    return bar ? ScrollBarPart(*bar, part)
               : QProxyStyle::subControlRect(control, option, part, widget);
  }

  void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                   const QWidget* widget) const override {
    if (element == CE_ShapedFrame && IsListBox(widget)) return DrawListFrame(*painter, *widget);
    QProxyStyle::drawControl(element, option, painter, widget);
  }

 private:
  // The list of an open menu is a list in a window of its own.
  static bool IsListBox(const QWidget* widget) { return widget && widget->inherits("QListWidget"); }

  static const QStyleOptionSlider* VerticalScrollBar(ComplexControl control,
                                                     const QStyleOptionComplex* option) {
    const auto* bar = qstyleoption_cast<const QStyleOptionSlider*>(option);
    return control == CC_ScrollBar && bar && bar->orientation == Qt::Vertical ? bar : nullptr;
  }

  // A thumb on a groove; nothing else.
  static QRect ScrollBarPart(const QStyleOptionSlider& bar, SubControl part) {
    const int width = bar.rect.width();
    const int height = bar.rect.height();
    const int whole = bar.maximum - bar.minimum + bar.pageStep;
    const int wanted = whole > 0 ? height * bar.pageStep / whole : height;
    const int thumb = std::min(std::max(wanted, kLeastThumb), height);
    const int top = sliderPositionFromValue(bar.minimum, bar.maximum, bar.sliderPosition,
                                            height - thumb, bar.upsideDown);
    switch (part) {
      case SC_ScrollBarGroove:
        return {0, 0, width, height};
      case SC_ScrollBarSlider:
        return {0, top, width, thumb};
      case SC_ScrollBarSubPage:
        return {0, 0, width, top};
      case SC_ScrollBarAddPage:
        return {0, top + thumb, width, height - top - thumb};
      default:
        return {};
    }
  }

  static void DrawScrollBar(QPainter& painter, const QStyleOptionSlider& bar,
                            const QWidget& widget) {
    const Colors colors(widget);
    const QColor text = colors.Of(QPalette::Text);
    painter.fillRect(bar.rect, Mix(colors.Of(QPalette::Base), text, 0.05));
    if (bar.maximum == bar.minimum) return;
    const bool held = bar.state & State_Sunken && bar.activeSubControls & SC_ScrollBarSlider;
    const QRectF thumb = ScrollBarPart(bar, SC_ScrollBarSlider);
    const QColor fill = Mix(colors.Of(QPalette::Base), text, held ? 0.7 : 0.5);
    DrawRounded(painter, thumb.adjusted(kThumbInset, 2, -kThumbInset, -2), fill, fill);
  }

  static void DrawListFrame(QPainter& painter, const QWidget& list) {
    const Colors colors(list);
    const QRectF outer(list.rect());
    if (ShowsFocus(list)) {
      DrawRounded(painter, outer, colors.Of(QPalette::Base), colors.Accent(), 2, 3);
    } else {
      DrawRounded(painter, outer.adjusted(1, 1, -1, -1), colors.Of(QPalette::Base), colors.Border(),
                  1, 1);
    }
  }
};

// Windows that are open take the colours at once. A font is that of those that open from now on:
// an alert is laid out by it.
void FollowDesktopSettings() {
  const DesktopSettings settings = ReadDesktopSettings();
  QApplication::setPalette(QPalette());  // what Qt itself knows
  const QPalette palette = PaletteFor(settings, QApplication::palette());
  QApplication::setPalette(palette);
  QToolTip::setPalette(palette);
  Families() = settings.families;
  QApplication::setFont(SmallFont());
}

}  // namespace

void SetUpDialogStyle() {
  // The application owns the style, which the analyser does not see.
  QApplication::setStyle(new DialogStyle);
  WatchDesktopSettings(FollowDesktopSettings);  // NOLINT(clang-analyzer-cplusplus.NewDeleteLeaks)
  FollowDesktopSettings();
}

QFont SmallFont() { return SystemFont(kFontPixels); }

QFont MessageFont() {
  QFont font = SystemFont(kMessagePixels);
  font.setBold(true);
  return font;
}

void DrawPopupFrame(QPainter& painter, const QComboBox& popup, bool open) {
  const bool usable = popup.isEnabled() && popup.count() > 0;
  const Colors colors(popup, usable);
  const bool ringed = ShowsFocus(popup) || open;
  QColor fill = usable ? ButtonFill(popup, false) : colors.Of(QPalette::Window);
  if (open) fill = fill.darker(106);
  DrawRounded(painter, popup.rect(), fill, ringed ? colors.Accent() : colors.Border(),
              ringed ? 2 : 1);

  const QPointF tip(popup.width() - 13.0, popup.height() / 2.0 + 2);
  painter.setPen(
      QPen(colors.Of(QPalette::ButtonText), 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  painter.drawPolyline(QPolygonF({tip + QPointF(-4, -4), tip, tip + QPointF(4, -4)}));
}

// The focus is a ring inside. A coloured frame would make any button look like the one that Return
// presses.
void DrawButtonFrame(QPainter& painter, const QAbstractButton& button, bool is_default) {
  const QRectF bezel(0, kBezelInset, button.width(), kButtonHeight - 2 * kBezelInset);
  const QColor fill = PressedOrHovered(ButtonFill(button, is_default), button);
  const bool accented = is_default && button.isEnabled();
  const Colors colors(button);
  DrawRounded(painter, bezel, fill, accented ? fill.darker(115) : colors.Border());
  if (!ShowsFocus(button)) return;
  DrawRounded(painter, bezel.adjusted(2, 2, -2, -2), Qt::transparent,
              accented ? colors.Of(QPalette::HighlightedText) : colors.Accent(), 1.5, kRadius - 1);
}

QColor ButtonTextColor(const QWidget& button, bool is_default) {
  const bool accented = is_default && button.isEnabled();
  return Colors(button).Of(accented ? QPalette::HighlightedText : QPalette::ButtonText);
}

void DrawCheckBox(QPainter& painter, const QAbstractButton& box) {
  const QRectF rect = ToggleRect(box);
  const ToggleColors colors = ColorsOf(box);
  DrawRounded(painter, rect, colors.fill, colors.border, 1, 3);
  if (box.isChecked()) {
    painter.setPen(QPen(colors.mark, 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPolyline(
        QPolygonF({rect.topLeft() + QPointF(3.5, 7.5), rect.topLeft() + QPointF(6.5, 10.5),
                   rect.topLeft() + QPointF(11.5, 4.5)}));
  }
  DrawFocusRing(painter, box, rect, 3);
}

void DrawRadioButton(QPainter& painter, const QAbstractButton& button) {
  const QRectF rect = ToggleRect(button);
  const ToggleColors colors = ColorsOf(button);
  DrawRounded(painter, rect, colors.fill, colors.border, 1, kToggleSize / 2);
  if (button.isChecked()) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(colors.mark);
    painter.drawEllipse(rect.center(), 3, 3);
  }
  DrawFocusRing(painter, button, rect, kToggleSize / 2);
}

void DrawOneLine(QPainter& painter, const QRect& rect, const QString& text, Qt::Alignment across) {
  const QString line = OneLine(text);
  painter.setLayoutDirection(line.isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
  painter.drawText(rect, static_cast<int>(across | Qt::AlignVCenter) | Qt::TextSingleLine,
                   painter.fontMetrics().elidedText(line, Qt::ElideRight, rect.width()));
}

void LineDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                         const QModelIndex& index) const {
  const bool selected = option.state & QStyle::State_Selected;
  painter->save();
  if (selected) painter->fillRect(option.rect, option.palette.highlight());
  // Of a selected row the colour shows enough, unless others are selected as well.
  const auto* view = qobject_cast<const QAbstractItemView*>(option.widget);
  const bool one = view && view->selectionModel()->selectedRows().size() == 1;
  if (option.state & QStyle::State_HasFocus && !(selected && one)) {
    const QColor base =
        option.palette.color(selected ? QPalette::HighlightedText : QPalette::Highlight);
    DrawRounded(*painter, option.rect, Qt::transparent, base, 1, 2);
  }
  painter->setFont(option.font);
  painter->setPen(option.palette.color(selected ? QPalette::HighlightedText : QPalette::Text));
  DrawOneLine(*painter, option.rect.adjusted(margin_, 0, -margin_, 0), index.data().toString());
  painter->restore();
}

QSize LineDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const {
  const int text = option.fontMetrics.horizontalAdvance(OneLine(index.data().toString()));
  return {text + 2 * margin_, height_};
}

bool LineDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view,
                             const QStyleOptionViewItem&, const QModelIndex& index) {
  if (event->type() != QEvent::ToolTip) return false;
  ShowToolTip(CutText(*view, index), event->globalPos(), view);
  return true;
}

QString LineDelegate::CutText(const QAbstractItemView& view, const QModelIndex& index) const {
  const QString text = index.data().toString();
  const int room = view.viewport()->width() - 2 * margin_;
  return IsCut(text, view.font(), room) ? text : QString();
}

}  // namespace desktop
