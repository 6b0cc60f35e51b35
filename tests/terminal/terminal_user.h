#pragma once

// A terminal with a program in it, and the user in front: keys, mouse, clipboard and eyes. What the
// program writes is read by a terminal emulator. Everything that waits, waits for a condition.

#include <gtest/gtest.h>
#include <poll.h>
#include <pty.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <vterm.h>

#include <chrono>
#include <clocale>
#include <functional>
#include <string>
#include <vector>

#include "tests/support/run_program.h"

namespace terminal_test {

using Words = std::vector<std::string>;

struct Size {
  int rows = 24;
  int columns = 80;
};

class TerminalUser {
 public:
  explicit TerminalUser(Words words, const Words& environment = {}, Size size = {})
      : size_(size), emulator_(vterm_new(size.rows, size.columns)) {
    std::setlocale(LC_CTYPE, "C.UTF-8");  // what the screen shows is told as UTF-8
    SetUpEmulator();
    winsize cells = Cells();
    program_ = forkpty(&fd_, nullptr, nullptr, &cells);
    if (program_ < 0) throw std::runtime_error("there is no terminal");
    if (program_ == 0) Run(std::move(words), environment);
  }
  TerminalUser(const TerminalUser&) = delete;
  TerminalUser& operator=(const TerminalUser&) = delete;
  ~TerminalUser() {
    HangUp();
    if (program_ > 0) testing_tools::internal::WaitFor(program_);
    vterm_free(emulator_);
  }

  void Type(const std::string& keys) const {
    EXPECT_EQ(write(fd_, keys.data(), keys.size()), static_cast<ssize_t>(keys.size()));
  }

  // All that was typed has been read.
  bool IsAllTaken() const {
    const int own_end = open(ptsname(fd_), O_RDONLY | O_NOCTTY);
    int left = 0;
    ioctl(own_end, FIONREAD, &left);
    close(own_end);
    return left == 0;
  }

  void Paste(const std::string& text) const {
    vterm_keyboard_start_paste(emulator_);
    Type(text);
    vterm_keyboard_end_paste(emulator_);
  }

  // Clicks at the first cell where the screen shows `text`, or so many columns from there.
  void Click(const std::string& text, int columns = 0, VTermModifier held = VTERM_MOD_NONE) {
    Expect(text);
    const VTermPos place = Find(text);
    vterm_mouse_move(emulator_, place.row, place.col + columns, held);
    vterm_mouse_button(emulator_, 1, true, held);
    std::this_thread::sleep_for(std::chrono::milliseconds(30));  // as a hand does
    vterm_mouse_button(emulator_, 1, false, held);
  }

  void Resize(Size size) {
    size_ = size;
    vterm_set_size(emulator_, size.rows, size.columns);
    winsize cells = Cells();
    ioctl(fd_, TIOCSWINSZ, &cells);
  }

  void HangUp() {
    if (fd_ >= 0) close(fd_);
    fd_ = -1;
  }

  // Waits until the screen is as wanted.
  bool WaitUntil(const std::function<bool()>& condition) {
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (!condition()) {
      if (std::chrono::steady_clock::now() > deadline) return false;
      ReadSome();
    }
    return true;
  }

  void Expect(const std::string& text) {
    EXPECT_TRUE(WaitUntil([&] { return Shows(text); })) << text << " is not shown, but:\n"
                                                        << Screen();
  }

  // The whole screen comes to be so; what is drawn comes in pieces.
  void ExpectScreen(const std::string& screen) {
    WaitUntil([&] { return Screen() == screen; });
    EXPECT_EQ(Screen(), screen);
  }

  // The hardware cursor comes to stand where the screen shows `text`, or so many columns from
  // there.
  void ExpectCursorAt(const std::string& text, int columns = 0) {
    const auto is_there = [&] {
      const VTermPos place = Find(text);
      return place.row == cursor_.row && place.col + columns == cursor_.col;
    };
    EXPECT_TRUE(WaitUntil(is_there))
        << text << ": the cursor is at " << cursor_.row << ", " << cursor_.col << ":\n"
        << Screen();
  }

  bool Shows(const std::string& text) const { return Screen().find(text) != std::string::npos; }

  // What the screen shows, a line for each row without the blanks at its end.
  std::string Screen() const {
    std::string screen;
    for (int row = 0; row < size_.rows; ++row) screen += Row(row) + "\n";
    return screen;
  }

  // All that the program has written.
  const std::string& Written() const { return written_; }

  // As a shell expects it: echoing line by line, one screen, no mouse.
  bool IsAsBefore() const {
    termios modes{};
    tcgetattr(fd_, &modes);
    const tcflag_t usual = ICANON | ECHO | ISIG;
    return (modes.c_lflag & usual) == usual && (modes.c_iflag & ICRNL) && !other_screen_ &&
           !mouse_ && cursor_visible_ &&
           written_.rfind("\033[?2004h") <= written_.rfind("\033[?2004l");
  }
  bool IsOnOtherScreen() const { return other_screen_; }

  pid_t Program() const { return program_; }

  // Waits for the program's end.
  int Status() {
    WaitUntil([this] { return hung_up_; });
    return testing_tools::internal::WaitFor(std::exchange(program_, 0));
  }

 private:
  [[noreturn]] static void Run(Words words, const Words& environment) {
    Words variables = environment;
    for (const char* variable : {"TERM=xterm-256color", "LC_ALL=C.UTF-8"}) {
      variables.emplace_back(variable);
    }
    Words all = testing_tools::internal::Environment(variables);
    execve(words.front().c_str(), testing_tools::internal::Pointers(words).data(),
           testing_tools::internal::Pointers(all).data());
    _exit(127);
  }

  winsize Cells() const {
    winsize cells{};
    cells.ws_row = static_cast<unsigned short>(size_.rows);
    cells.ws_col = static_cast<unsigned short>(size_.columns);
    return cells;
  }

  void SetUpEmulator() {
    callbacks_.movecursor = [](VTermPos place, VTermPos, int, void* user) {
      static_cast<TerminalUser*>(user)->cursor_ = place;
      return 1;
    };
    callbacks_.settermprop = [](VTermProp property, VTermValue* value, void* user) {
      auto& self = *static_cast<TerminalUser*>(user);
      if (property == VTERM_PROP_ALTSCREEN) self.other_screen_ = value->boolean;
      if (property == VTERM_PROP_CURSORVISIBLE) self.cursor_visible_ = value->boolean;
      if (property == VTERM_PROP_MOUSE) self.mouse_ = value->number != 0;
      return 1;
    };
    vterm_set_utf8(emulator_, 1);
    screen_ = vterm_obtain_screen(emulator_);
    vterm_screen_enable_altscreen(screen_, 1);
    vterm_screen_set_callbacks(screen_, &callbacks_, this);
    vterm_screen_reset(screen_, 1);
    vterm_output_set_callback(
        emulator_,
        [](const char* bytes, std::size_t count, void* user) {
          static_cast<TerminalUser*>(user)->Type({bytes, count});
        },
        this);
  }

  void ReadSome() {
    pollfd waiting{fd_, POLLIN, 0};  // which waits the whole time if there is no terminal any more
    if (poll(&waiting, 1, 20) <= 0) return;
    char buffer[4096];
    const ssize_t count = read(fd_, buffer, sizeof buffer);
    if (count <= 0) {
      hung_up_ = true;
      std::this_thread::sleep_for(std::chrono::milliseconds(5));
      return;
    }
    written_.append(buffer, static_cast<std::size_t>(count));
    vterm_input_write(emulator_, buffer, static_cast<std::size_t>(count));
  }

  std::string Row(int row) const {
    std::string text;
    VTermScreenCell cell;
    for (int column = 0; column < size_.columns; column += std::max<int>(cell.width, 1)) {
      vterm_screen_get_cell(screen_, {row, column}, &cell);
      text += TextOf(cell);
    }
    return text.erase(text.find_last_not_of(' ') + 1);
  }

  static std::string TextOf(const VTermScreenCell& cell) {
    std::string text;
    for (int i = 0; i < VTERM_MAX_CHARS_PER_CELL && cell.chars[i] != 0; ++i) {
      char bytes[MB_LEN_MAX];
      const int count = wctomb(bytes, static_cast<wchar_t>(cell.chars[i]));
      text.append(bytes, static_cast<std::size_t>(std::max(count, 0)));
    }
    return text.empty() ? " " : text;
  }

  // The cell at which the text begins; far outside of the screen if it is not shown.
  VTermPos Find(const std::string& text) const {
    for (int row = 0; row < size_.rows; ++row) {
      const std::size_t found = Row(row).find(text);
      if (found == std::string::npos) continue;
      std::size_t bytes = 0;
      VTermScreenCell cell;
      for (int column = 0; column < size_.columns; column += std::max<int>(cell.width, 1)) {
        if (bytes >= found) return {row, column};
        vterm_screen_get_cell(screen_, {row, column}, &cell);
        bytes += TextOf(cell).size();
      }
    }
    return {-100, -100};
  }

  Size size_;
  VTerm* emulator_;
  VTermScreen* screen_ = nullptr;
  VTermScreenCallbacks callbacks_{};
  VTermPos cursor_{0, 0};
  bool cursor_visible_ = true;
  bool other_screen_ = false;
  bool mouse_ = false;
  int fd_ = -1;
  pid_t program_ = 0;
  bool hung_up_ = false;
  std::string written_;
};

}  // namespace terminal_test
