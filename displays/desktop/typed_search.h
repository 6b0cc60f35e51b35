#pragma once

#include <QAbstractItemDelegate>
#include <QApplication>
#include <QElapsedTimer>
#include <QHelpEvent>
#include <QKeyEvent>

namespace desktop {

// A list view whose rows are found by typing their beginning, blanks included.
template <class View>
class TypedSearch : public View {
 public:
  using View::View;

  void keyboardSearch(const QString& text) override {
    since_.start();
    View::keyboardSearch(text);
  }

  // Whether a blank is a part of what is being typed, and thus acts no other way. A search ends
  // with a key that moves or adds.
  bool Continues(const QKeyEvent& key) {
    const bool blank = key.key() == Qt::Key_Space;
    const bool moves = key.key() >= Qt::Key_Home && key.key() <= Qt::Key_PageDown;
    if (moves || (blank && key.modifiers() != Qt::NoModifier)) since_.invalidate();
    return blank && since_.isValid() && !since_.hasExpired(QApplication::keyboardInputInterval());
  }

 protected:
  void keyPressEvent(QKeyEvent* event) override {
    if (event->key() == Qt::Key_F1) return ShowCutLine();
    Continues(*event) ? keyboardSearch(event->text()) : View::keyPressEvent(event);
  }

 private:
  // The tool tip of the row that the keys are on, as if the pointer rested there.
  void ShowCutLine() {
    const QModelIndex line = this->currentIndex();
    const QPoint place = this->viewport()->mapToGlobal(this->visualRect(line).bottomLeft());
    QHelpEvent help(QEvent::ToolTip, {}, place);
    if (line.isValid()) this->itemDelegate()->helpEvent(&help, this, {}, line);
  }

  QElapsedTimer since_;  // the last key of the search
};

}  // namespace desktop
