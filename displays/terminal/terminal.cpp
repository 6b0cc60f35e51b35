#include "displays/terminal/terminal.h"

#define NCURSES_NOMACROS
#include <curses.h>
#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/time.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdio>
#include <utility>

#include "displays/terminal/canvas.h"
#include "displays/terminal/capabilities.h"
#include "displays/terminal/shown_text.h"

namespace terminal {
namespace {

constexpr int kEscapeDelay = 50;  // milliseconds until Escape is no beginning of another key
constexpr int kSign = 0;          // the kind of what is no function key

// Keys that the terminal library has no number for.
enum OwnKey { kPasteStartKey = KEY_MAX + 1, kPasteEndKey, kControlLeft, kControlRight };

void DefineKey(const std::string& sequence, int key) {
  if (!sequence.empty()) define_key(sequence.c_str(), key);
}

void DefineKeys() {
  DefineKey(PasteStart(), kPasteStartKey);
  DefineKey(PasteEnd(), kPasteEndKey);
  DefineKey(ExtendedKey("kLFT5"), kControlLeft);
  DefineKey(ExtendedKey("kRIT5"), kControlRight);
}

Key FunctionKey(int number) {
  using Kind = Key::Kind;
  switch (number) {
    case KEY_ENTER:
      return {Kind::kReturn};
    case KEY_BTAB:
      return {Kind::kBackTab};
    case KEY_UP:
      return {Kind::kUp};
    case KEY_DOWN:
      return {Kind::kDown};
    case KEY_LEFT:
      return {Kind::kLeft};
    case KEY_RIGHT:
      return {Kind::kRight};
    case kControlLeft:
      return {.kind = Kind::kLeft, .control = true};
    case kControlRight:
      return {.kind = Kind::kRight, .control = true};
    case KEY_HOME:
      return {Kind::kHome};
    case KEY_END:
      return {Kind::kEnd};
    case KEY_PPAGE:
      return {Kind::kPageUp};
    case KEY_NPAGE:
      return {Kind::kPageDown};
    case KEY_SR:
      return {.kind = Kind::kUp, .shift = true};
    case KEY_SF:
      return {.kind = Kind::kDown, .shift = true};
    case KEY_SHOME:
      return {.kind = Kind::kHome, .shift = true};
    case KEY_SEND:
      return {.kind = Kind::kEnd, .shift = true};
    case KEY_SPREVIOUS:
      return {.kind = Kind::kPageUp, .shift = true};
    case KEY_SNEXT:
      return {.kind = Kind::kPageDown, .shift = true};
    case KEY_BACKSPACE:
      return {Kind::kBackspace};
    case KEY_DC:
      return {Kind::kDelete};
    default:
      return {};
  }
}

Key ControlKey(wchar_t sign) {
  using Kind = Key::Kind;
  switch (sign) {
    case L'\r':
    case L'\n':
      return {Kind::kReturn};
    case L'\t':
      return {Kind::kTab};
    case 0x08:
    case 0x7F:
      return {Kind::kBackspace};
    case 0x03:
      return {Kind::kInterrupt};
    case 0x1A:
      return {Kind::kSuspend};
    case 0x0C:
      return {Kind::kRedraw};
    case 0x00:  // what terminals send for Control-Space
      return {.kind = Kind::kSign, .sign = L' ', .control = true};
    default:
      return {.kind = Kind::kSign, .sign = static_cast<wchar_t>(sign + L'@'), .control = true};
  }
}

bool IsControl(wchar_t sign) { return sign < 0x20 || sign == 0x7F; }

// Nothing for what is neither the wheel nor the button, which counts when it is released: the
// terminal library takes no further press until it has seen the release, and the next dialog or
// program would not know what to do with it.
std::optional<Click> ClickOf(const MEVENT& event) {
  Click click{.row = event.y, .column = event.x};
  click.shift = event.bstate & BUTTON_SHIFT;
  click.control = event.bstate & BUTTON_CTRL;
  if (event.bstate & BUTTON4_PRESSED) click.wheel = -1;
  if (event.bstate & BUTTON5_PRESSED) click.wheel = 1;
  if (click.wheel == 0 && !(event.bstate & BUTTON1_RELEASED)) return std::nullopt;
  return click;
}

// The terminal library waits for the rest of a mouse's report as long as it takes, and spins if the
// terminal hangs up meanwhile. Waiting is interrupted; if that does not help this process is ended,
// and its guard gives the terminal back.
class LimitedTime {
 public:
  LimitedTime() {
    struct sigaction interrupt {};
    interrupt.sa_handler = [](int) {};
    interrupt.sa_flags = static_cast<int>(SA_RESETHAND);
    sigaction(SIGALRM, &interrupt, nullptr);
    Set({{2, 0}, {1, 0}});  // after a second, and two more
  }
  LimitedTime(const LimitedTime&) = delete;
  LimitedTime& operator=(const LimitedTime&) = delete;
  ~LimitedTime() { Set({}); }

 private:
  static void Set(const itimerval& time) { setitimer(ITIMER_REAL, &time, nullptr); }
};

// The kind of what was typed: kSign with the sign, or the number of a function key.
std::optional<int> Read(wchar_t& sign) {
  const LimitedTime limited;
  wint_t read = 0;
  const int kind = wget_wch(stdscr, &read);
  if (kind == ERR) return std::nullopt;
  sign = static_cast<wchar_t>(read);
  return kind == KEY_CODE_YES ? static_cast<int>(read) : kSign;
}

// A sign at once behind Escape is that sign with Alt, which does nothing.
Key AfterEscape() {
  wchar_t sign = 0;
  const std::optional<int> kind = Read(sign);
  if (!kind) return Key{.kind = Key::Kind::kEscape};
  if (*kind == kSign && !IsControl(sign)) return Key{};
  if (*kind == kSign) {
    unget_wch(sign);
  } else {
    ungetch(*kind);
  }
  return Key{.kind = Key::Kind::kEscape};
}

// Stops as long as other processes have the terminal. False if nobody would ever continue this one.
bool WaitForForeground(int fd) {
  std::signal(SIGTTOU, SIG_DFL);
  int drained;
  do {
    drained = tcdrain(fd);
  } while (drained != 0 && errno == EINTR);
  std::signal(SIGTTOU, SIG_IGN);  // who gives the terminal back may be in the background already
  return drained == 0;
}

}  // namespace

Terminal::Terminal() : fd_(open("/dev/tty", O_RDWR | O_NOCTTY | O_CLOEXEC)) {
  why_none_ = fd_ < 0 ? "there is no terminal" : ReadTerminalType(fd_);
}

Terminal::~Terminal() {
  GiveBack();
  guard_.reset();
  if (fd_ >= 0) close(fd_);
}

bool Terminal::Start() const {
  std::FILE* out = fdopen(dup(fd_), "w");
  std::FILE* in = fdopen(dup(fd_), "r");
  set_escdelay(kEscapeDelay);
  ForgetTerminalType();  // the library reads it anew
  if (!out || !in || !newterm(nullptr, out, in)) return false;
  std::signal(SIGTSTP, SIG_DFL);  // the library would go its own way about it
  raw();
  noecho();
  nonl();
  keypad(stdscr, TRUE);
  nodelay(stdscr, TRUE);
  mouseinterval(0);
  mousemask(BUTTON1_PRESSED | BUTTON1_RELEASED | BUTTON4_PRESSED | BUTTON5_PRESSED | BUTTON_SHIFT |
                BUTTON_CTRL,
            nullptr);
  DefineKeys();
  SetUpColours();
  return true;
}

bool Terminal::Take() {
  if (taken_) return true;
  if (!WaitForForeground(fd_) || tcgetattr(fd_, &before_) != 0) return false;
  if (!guard_) guard_ = std::make_unique<Guard>(fd_);
  guard_->Taken(before_);
  taken_ = true;
  if (started_) {
    def_shell_mode();
    clearok(curscr, TRUE);
  } else if (!Start()) {
    GiveBack();
    return false;
  }
  started_ = true;
  Send(Capability::kPasteOn, fd_);
  Resize();
  return true;
}

void Terminal::GiveBack() {
  if (!taken_) return;
  taken_ = false;
  paste_.reset();
  Send(Capability::kPasteOff, fd_);
  if (started_) {
    werase(stdscr);  // for terminals without a second screen
    wrefresh(stdscr);
    endwin();
  }
  tcsetattr(fd_, TCSADRAIN, &before_);
  guard_->GivenBack();
}

bool Terminal::Renew() const {
  if (!WaitForForeground(fd_)) return false;
  reset_prog_mode();
  clearok(curscr, TRUE);
  return true;
}

void Terminal::Resize() const {
  winsize size{};
  if (ioctl(fd_, TIOCGWINSZ, &size) != 0 || size.ws_row == 0 || size.ws_col == 0) return;
  resizeterm(size.ws_row, size.ws_col);
}

void Terminal::DropInput() {
  tcflush(fd_, TCIFLUSH);
  flushinp();
  clicks_.clear();
}

bool Terminal::IsHungUp() const {
  pollfd terminal{fd_, POLLIN, 0};
  return poll(&terminal, 1, 0) > 0 && (terminal.revents & (POLLHUP | POLLERR)) != 0;
}

std::optional<Event> Terminal::Next() {
  wchar_t sign = 0;
  while (true) {
    if (!clicks_.empty()) {
      const Click click = clicks_.back();
      clicks_.pop_back();
      return click;
    }
    const std::optional<int> kind = Read(sign);
    if (!kind) return std::nullopt;
    if (auto event = paste_ ? TakeIntoPaste(*kind, sign) : Translate(*kind, sign)) return event;
  }
}

std::optional<Event> Terminal::Translate(int kind, wchar_t sign) {
  if (kind == kPasteStartKey) {
    paste_.emplace();
    return std::nullopt;
  }
  if (kind == KEY_MOUSE) return TakeClicks();
  if (kind != kSign) return FunctionKey(kind);
  if (sign == 0x1B) return AfterEscape();
  if (IsControl(sign)) return ControlKey(sign);
  return Key{.kind = Key::Kind::kSign, .sign = sign};
}

// The terminal library tells of all that have come at once, the last one first.
std::optional<Event> Terminal::TakeClicks() {
  MEVENT event;
  while (getmouse(&event) == OK) {
    if (const auto click = ClickOf(event)) clicks_.push_back(*click);
  }
  return std::nullopt;
}

std::optional<Event> Terminal::TakeIntoPaste(int kind, wchar_t sign) {
  if (kind == kPasteEndKey) return std::exchange(paste_, std::nullopt);
  if (kind == kSign) paste_->text += ToUtf8(sign);
  return std::nullopt;
}

bool StartUnseenTerminal(int rows, int columns) {
  std::FILE* nowhere = std::fopen("/dev/null", "r+");
  if (!nowhere) return false;
  const std::array types{"xterm", "linux", "vt100"};
  const bool started = std::any_of(types.begin(), types.end(), [nowhere](const char* type) {
    return newterm(type, nowhere, nowhere) != nullptr;
  });
  if (started) resizeterm(rows, columns);
  return started;
}

}  // namespace terminal
