#include "displays/desktop/host_session.h"

#include <sys/socket.h>

#include <QApplication>
#include <QScreen>
#include <cstdint>
#include <cstdio>
#include <string>
#include <variant>

#include "displays/desktop/dialog_window.h"

namespace desktop {

namespace protocol = display::protocol;

HostSession::HostSession(int fd)
    : connection_(fd, [this](std::string_view line) { Receive(line); }),
      watch_([this] { EndWithoutAnswer(); }) {
  AnnounceScreen();
  WatchScreen();
}

void HostSession::Receive(std::string_view line) {
  std::visit([this](const auto& message) { Do(message); }, protocol::ReadHostMessage(line));
}

void HostSession::Do(const protocol::Open& message) {
  Close();
  dialog_ = message.dialog;
  open_ = &windows_.Fill(message.description);
  open_->Present([this, number = dialog_](const auto& action) {
    connection_.Send(protocol::ActionLine(number, action));
  });
  watch_.Watch(open_->winId());
}

void HostSession::Do(const protocol::Change& message) {
  auto* dialog = dynamic_cast<DialogWindow*>(open_);
  if (dialog && message.dialog == dialog_) dialog->Change(message.index, message.control);
}

void HostSession::Do(const protocol::Close&) { Close(); }

void HostSession::Close() {
  watch_.Watch(0);
  if (open_) open_->Dismiss();
  open_ = nullptr;
}

// Qt goes on without the window, and the user can never answer. The next dialog gets a new process.
void HostSession::EndWithoutAnswer() {
  connection_.Send(protocol::NotReadyLine("another program has removed the dialog's window"));
  QCoreApplication::exit(1);
}

// Global coordinates count from its corner, wherever it is on the desktop.
void HostSession::AnnounceScreen() {
  const QSize screen = QGuiApplication::primaryScreen()->size();
  const Rect main_screen{0, 0, static_cast<std::int16_t>(screen.height()),
                         static_cast<std::int16_t>(screen.width())};
  connection_.Send(protocol::ReadyLine({main_screen}));
}

// Windows are centred by the host, which is told whenever the screen is another one.
void HostSession::WatchScreen() {
  const auto watch = [this](QScreen* screen) {
    QObject::connect(screen, &QScreen::geometryChanged, qApp, [this] { AnnounceScreen(); });
  };
  watch(QGuiApplication::primaryScreen());
  QObject::connect(qApp, &QGuiApplication::primaryScreenChanged, qApp,
                   [this, watch](QScreen* screen) {
                     if (!screen) return;
                     watch(screen);
                     AnnounceScreen();
                   });
}

void ReportNoScreen(int fd, const std::string& reason) {
  const std::string line = protocol::NotReadyLine(reason);
  if (send(fd, line.data(), line.size(), MSG_NOSIGNAL) < 0) std::perror("tarvo-desktop");
}

}  // namespace desktop
