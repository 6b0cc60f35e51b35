#include "displays/terminal/host_session.h"

#include <poll.h>
#include <unistd.h>

#include <cstdio>
#include <exception>
#include <variant>

extern "C" {  // glibc 2.36 forgets to say so
#include <sys/pidfd.h>
}

namespace terminal {

namespace protocol = display::protocol;

HostSession::HostSession(int fd) : connection_(fd), host_(pidfd_open(getppid(), 0)) {}

HostSession::~HostSession() {
  if (host_ >= 0) close(host_);
}

int HostSession::Run() {
  if (terminal_.WhyNone().empty()) {
    connection_.Send(protocol::ReadyLine({.main_screen = kMainScreen, .tells_closed = true}));
  } else {
    GiveUp(terminal_.WhyNone());
  }
  while (!status_) WaitAndDo();
  terminal_.GiveBack();
  // What the terminal's processes are still told is not for this one. If the SIGCONT that comes
  // with a hang-up met LeakSanitizer at work, that would wait without end.
  setsid();
  return *status_;
}

// A descriptor that is -1 is not waited for.
void HostSession::WaitAndDo() {
  const short socket_events = connection_.HasUnsent() ? POLLIN | POLLOUT : POLLIN;
  pollfd waiting[] = {{signals_.Descriptor(), POLLIN, 0},
                      {connection_.Descriptor(), socket_events, 0},
                      {terminal_.IsTaken() ? terminal_.Descriptor() : -1, POLLIN, 0},
                      {host_, POLLIN, 0}};
  if (poll(waiting, std::size(waiting), -1) < 0) return;
  connection_.Flush();
  if (waiting[0].revents != 0) TakeSignals();
  if (!status_ && waiting[1].revents & ~POLLOUT) TakeMessages();
  if (!status_ && waiting[2].revents != 0) TakeEvents();
  if (!status_ && waiting[3].revents != 0) status_ = 0;
  if (!status_ && dialog_ && terminal_.IsTaken()) dialog_->Draw();
}

void HostSession::TakeSignals() {
  while (const std::optional<int> signal_number = signals_.Next()) {
    if (status_) return;
    HandleSignal(*signal_number);
  }
}

void HostSession::HandleSignal(int signal_number) {
  switch (signal_number) {
    case SIGWINCH:
      if (terminal_.IsTaken()) terminal_.Resize();
      break;
    case SIGTSTP:
      Suspend();
      break;
    case SIGCONT:
      if (dialog_) Return();
      break;
    case SIGHUP:
      GiveUp("the terminal has hung up");
      break;
    default:
      GiveUp("the dialog was interrupted");
      break;
  }
}

void HostSession::TakeMessages() {
  try {
    const bool goes_on = connection_.Read([this](std::string_view line) {
      std::visit([this](const auto& message) { Do(message); }, protocol::ReadHostMessage(line));
    });
    if (!goes_on) status_ = 0;
  } catch (const std::exception& error) {
    terminal_.GiveBack();
    std::fprintf(stderr, "tarvo-terminal: %s\n", error.what());
    status_ = 1;
  }
}

void HostSession::Do(const protocol::Open& message) {
  number_ = message.dialog;
  dialog_.emplace(message.description, [this](const auto& action) {
    connection_.Send(protocol::ActionLine(number_, action));
  });
  if (!terminal_.Take()) return GiveUp("the terminal is not to be had");
  terminal_.DropInput();
}

void HostSession::Do(const protocol::Change& message) {
  if (dialog_ && message.dialog == number_) dialog_->Change(message.index, message.control);
}

void HostSession::Do(const protocol::Close& message) {
  dialog_.reset();
  terminal_.GiveBack();
  connection_.Send(protocol::ClosedLine(message.dialog));
}

void HostSession::TakeEvents() {
  while (terminal_.IsTaken()) {
    const std::optional<Event> event = terminal_.Next();
    if (!event) break;
    HandleEvent(*event);
  }
  if (!status_ && terminal_.IsHungUp()) GiveUp("the terminal has hung up");
}

void HostSession::HandleEvent(const Event& event) {
  const auto* key = std::get_if<Key>(&event);
  if (key && key->kind == Key::Kind::kInterrupt) {
    Interrupt();
  } else if (key && key->kind == Key::Kind::kSuspend) {
    if (signals_.CanStop()) StopAll();
  } else if (key && key->kind == Key::Kind::kRedraw) {
    terminal_.Renew();
  } else {
    dialog_->Handle(event);
  }
}

// The host and whoever else is in the foreground are interrupted or stopped as by the terminal
// itself, but only once it is as it was.
void HostSession::Interrupt() {
  GiveUp("the dialog was interrupted");
  kill(0, SIGINT);
}

void HostSession::StopAll() {
  terminal_.GiveBack();
  kill(0, SIGTSTP);  // this process takes its own in its turn
}

void HostSession::Suspend() {
  terminal_.GiveBack();
  Signals::Stop();
  if (dialog_) Return();
}

// Back in the foreground, after whatever else has used the terminal.
void HostSession::Return() {
  const bool taken = terminal_.IsTaken() ? terminal_.Renew() : terminal_.Take();
  if (!taken) GiveUp("the terminal is not to be had");
}

void HostSession::GiveUp(const std::string& why) {
  terminal_.GiveBack();
  connection_.Send(protocol::NotReadyLine(why));
  status_ = 1;
}

}  // namespace terminal
