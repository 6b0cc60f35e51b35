#pragma once

#include <QApplication>
#include <QElapsedTimer>
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

  // Whether a key is a part of what is being typed, which for a blank means that it acts no other
  // way.
  bool Continues(const QKeyEvent& key) const {
    return key.key() == Qt::Key_Space && since_.isValid() &&
           !since_.hasExpired(QApplication::keyboardInputInterval());
  }

 protected:
  void keyPressEvent(QKeyEvent* event) override {
    Continues(*event) ? keyboardSearch(event->text()) : View::keyPressEvent(event);
  }

 private:
  QElapsedTimer since_;  // the last key of the search
};

}  // namespace desktop
