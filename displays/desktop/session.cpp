#include "displays/desktop/session.h"

#include <sys/socket.h>
#include <unistd.h>

#include <QApplication>
#include <QScreen>
#include <cstdio>
#include <stdexcept>
#include <string>

extern "C" {  // glibc 2.36 forgets to say so
#include <sys/pidfd.h>
}

namespace desktop {
namespace {

using display::Json;

void EndWithMessage(const std::string& reason) {
  std::fprintf(stderr, "tarvo-desktop: %s\n", reason.c_str());
  QCoreApplication::exit(1);
}

display::Description DescriptionOf(const Json& message) {
  display::Description description = display::DescriptionFromJson(message.at("open"));
  auto* window = std::get_if<display::Window>(&description);
  if (!window || !message.contains("selection")) return description;
  for (const auto& [index, selection] : message.at("selection").items()) {
    display::SelectionFromJson(selection, window->controls.at(std::stoul(index)));
  }
  return description;
}

display::Control ChangedControl(const Json& message) {
  display::Control control = display::ControlFromJson(message.at("control"));
  if (message.contains("selection") && !message.at("selection").is_null()) {
    display::SelectionFromJson(message.at("selection"), control);
  }
  return control;
}

}  // namespace

Session::Session(int fd)
    : connection_(fd, {[this](const Json& message) { Receive(message); },
                       [] { QCoreApplication::exit(0); }, EndWithMessage}) {
  AnnounceScreen();
  WatchScreen();
  WatchHost();
}

void Session::Receive(const Json& message) {
  if (message.contains("open")) {
    Open(message);
  } else if (message.contains("change")) {
    Change(message);
  } else if (message.contains("close")) {
    Close();
  } else {
    throw std::invalid_argument("the host says what is not understood");
  }
}

void Session::Open(const Json& message) {
  Close();
  dialog_ = message.at("dialog");
  open_ = &windows_.Fill(DescriptionOf(message));
  open_->Present([this, number = dialog_](const auto& action) {
    Json report = display::ToJson(action);
    report["dialog"] = number;
    connection_.Send(report);
  });
}

void Session::Change(const Json& message) {
  auto* dialog = dynamic_cast<DialogWindow*>(open_);
  if (!dialog || message.at("dialog") != dialog_) return;
  dialog->Change(message.at("change").get<std::size_t>(), ChangedControl(message));
}

void Session::Close() {
  if (open_) open_->Dismiss();
  open_ = nullptr;
}

void Session::AnnounceScreen() {
  const QRect screen = QGuiApplication::primaryScreen()->geometry();
  connection_.Send({{"ready", true},
                    {"screen",
                     {screen.top(), screen.left(), screen.top() + screen.height(),
                      screen.left() + screen.width()}}});
}

// Windows are centred by the host, which is told whenever the screen is another one.
void Session::WatchScreen() {
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

// Where a child of the host holds the other end of the socket, too, the socket does not tell that
// the host has ended.
void Session::WatchHost() {
  const int host = pidfd_open(getppid(), 0);
  if (host < 0) return;
  host_ended_ = std::make_unique<QSocketNotifier>(host, QSocketNotifier::Read);
  QObject::connect(host_ended_.get(), &QSocketNotifier::activated, qApp,
                   [] { QCoreApplication::exit(0); });
}

void ReportNoScreen(int fd, const std::string& reason) {
  const std::string line = Json{{"ready", false}, {"error", reason}}.dump() + "\n";
  if (send(fd, line.data(), line.size(), MSG_NOSIGNAL) < 0) std::perror("tarvo-desktop");
}

}  // namespace desktop
