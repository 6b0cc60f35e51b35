#pragma once

#include <QColor>
#include <QFont>
#include <QStyledItemDelegate>

class QAbstractButton;
class QComboBox;
class QPainter;
class QWidget;

// How all controls look, in the colours of the desktop's palette: the widget style, the fonts, and
// what draws the controls that the style leaves to their widgets.
namespace desktop {

// Call once, right after the application is made.
void SetUpDialogStyle();

// The small system font, 11 pixels, that all controls have, and the bold one of an alert's message.
QFont SmallFont();
QFont MessageFont();

// How far the frame of an edit text or pop-up stands outside the control's rectangle, above and
// below; a line of text is lower than a comfortable field.
constexpr int kFieldFrame = 4;

// A button is drawn as high as this, though the rectangle of some is a pixel higher.
constexpr int kButtonHeight = 32;

void DrawPopupFrame(QPainter& painter, const QComboBox& popup, bool open);
void DrawButtonFrame(QPainter& painter, const QAbstractButton& button, bool is_default);
void DrawCheckBox(QPainter& painter, const QAbstractButton& box);
void DrawRadioButton(QPainter& painter, const QAbstractButton& button);
QColor ButtonTextColor(const QWidget& button, bool is_default);

// One line, elided at the end, starting at the side at which its script starts.
void DrawOneLine(QPainter& painter, const QRect& rect, const QString& text,
                 Qt::Alignment across = Qt::AlignLeft);

// The rows of a list and the items of a menu: one elided line each, of one height. The
// whole of a text that does not fit is its tool tip.
class LineDelegate : public QStyledItemDelegate {
 public:
  // `margin` is kept free at both ends of a line.
  LineDelegate(int height, int margin, QObject* parent)
      : QStyledItemDelegate(parent), height_(height), margin_(margin) {}

  void paint(QPainter* painter, const QStyleOptionViewItem& option,
             const QModelIndex& index) const override;
  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                 const QModelIndex& index) override;

  // The whole of a line that is cut in the view; empty if all of it fits.
  QString CutText(const QAbstractItemView& view, const QModelIndex& index) const;

 private:
  int height_;
  int margin_;
};

}  // namespace desktop
