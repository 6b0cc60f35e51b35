#pragma once

#include <QLabel>
#include <QScrollArea>
#include <QTimer>
#include <QWidget>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

#include "displays/desktop/connection.h"
#include "displays/desktop/window_watch.h"
#include "displays/protocol/display_json.h"

namespace desktop {

// Shows the dialogs of a script as pictures, with what looks wrong beside each. Nothing in it can
// be answered. The host at the other end of the socket says what is to be seen, one JSON object a
// line, each of which takes the place of the one before:
//
//   {"file": "form.tarvo",
//    "error": "form.tarvo, line 3, column 5: …",           empty if there is none
//    "calls": [{"call": "TarvoDialog, line 1",
//               "name": "Enter the name", "dialog": {…},   as --describe writes it; null: none
//               "advice": [{"advice": "text-cut", "sentence": "…", "reason": "…",
//                           "line": 1, "column": 43}]}]}   both left out if the place is unknown
//
// The window tells when it is there, in the words of a display; then, of each object, which texts
// of each call's dialog do not fit, {"cut": [["…"], []]}; and {"closed": true} if its user closes
// it. The program ends when the host closes the socket or ends.
class PreviewWindow : public QWidget {
 public:
  // Takes ownership of the socket `fd`.
  explicit PreviewWindow(int fd);

 protected:
  void changeEvent(QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;

 private:
  void Receive(std::string_view line);
  display::Json Show(const display::Json& script);
  void Fill(QWidget* content, int place);

  Connection connection_;
  QLabel* const summary_;
  QScrollArea* const area_;
  WindowWatch watch_;
  QTimer redrawing_;      // as soon as Qt has told all of a change
  display::Json script_;  // what is shown
  int place_ = 0;         // to which the user has scrolled
  bool filling_ = false;  // what scrolls is not the user
  bool closed_ = false;   // by the user
};

}  // namespace desktop
