#pragma once

#include <QElapsedTimer>

namespace desktop {

// The moment after a dialog has appeared in which it takes no key that would answer it, since the
// user may be typing into another program. There is none for a dialog that the user expects: the
// host's own window has the keyboard, or a dialog before it was answered just now.
class KeyGrace {
 public:
  // To be called before the dialog's window is shown.
  void Begin();

  // The window has got the keyboard: the moment counts from the first time that it does.
  void NoteActive();

  bool IsOver() const { return !since_.isValid() || since_.hasExpired(Length()); }

  // The user has answered a dialog.
  static void NoteAnswer();

 private:
  static int Length();

  QElapsedTimer since_;  // invalid if there is none
  bool active_ = false;
};

}  // namespace desktop
