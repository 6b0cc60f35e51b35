#pragma once

// An X server of the test's own, with or without a window manager, and a user in front of it: keys,
// pointer and eyes. Everything that waits, waits for a condition.

#include <fcntl.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>
#include <xcb/xcb.h>

#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace desktop_test {

// True as soon as the condition is; false when it has not become true in ten seconds.
inline bool WaitFor(const std::function<bool()>& condition) {
  using namespace std::chrono_literals;
  const auto deadline = std::chrono::steady_clock::now() + 10s;
  while (!condition()) {
    if (std::chrono::steady_clock::now() > deadline) return false;
    std::this_thread::sleep_for(5ms);
  }
  return true;
}

// What a shell command writes to its standard output.
inline std::string OutputOf(const std::string& command, int* status = nullptr) {
  std::string output;
  FILE* pipe = popen(command.c_str(), "r");
  std::array<char, 4096> buffer;
  for (std::size_t count; (count = fread(buffer.data(), 1, buffer.size(), pipe)) > 0;) {
    output.append(buffer.data(), count);
  }
  const int ended = pclose(pipe);
  if (status) *status = WEXITSTATUS(ended);
  return output;
}

// A program that runs until the object or this process goes.
class Process {
 public:
  enum class Output { kInherited, kRead };  // whether Line reads what it says

  explicit Process(std::vector<std::string> words, Output output = Output::kInherited) {
    std::vector<char*> arguments;
    for (std::string& word : words) arguments.push_back(word.data());
    arguments.push_back(nullptr);
    int ends[2] = {-1, -1};
    if (output == Output::kRead && pipe2(ends, O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
    id_ = fork();
    if (id_ == 0) {
      if (output == Output::kRead) dup2(ends[1], STDOUT_FILENO);
      prctl(PR_SET_PDEATHSIG, SIGTERM);  // also if the test is ended from outside
      execvp(arguments[0], arguments.data());
      _exit(127);
    }
    if (output == Output::kInherited) return;
    close(ends[1]);
    output_ = fdopen(ends[0], "r");
  }
  Process(const Process&) = delete;
  Process& operator=(const Process&) = delete;
  ~Process() {
    Signal(SIGTERM);
    waitpid(id_, nullptr, 0);
    if (output_) fclose(output_);
  }

  // The next line on its standard output, without the line end.
  std::string Line() const {
    std::string line;
    for (int next; (next = fgetc(output_)) != EOF && next != '\n';) {
      line += static_cast<char>(next);
    }
    return line;
  }

  void Signal(int signal) const { kill(id_, signal); }
  pid_t Id() const { return id_; }

 private:
  pid_t id_ = 0;
  FILE* output_ = nullptr;
};

class XSession {
 public:
  enum class Manager { kNone, kOpenbox };

  explicit XSession(Manager manager) {
    setenv("TARVO_KEY_GRACE", "0", 1);  // keys come as soon as a dialog is there
    server_ = std::make_unique<Process>(
        std::vector<std::string>{"Xvfb", "-displayfd", "1", "-screen", "0", "1280x1024x24",
                                 "-nolisten", "tcp", "-noreset"},
        Process::Output::kRead);
    setenv("DISPLAY", (":" + server_->Line()).c_str(), 1);
    connection_ = xcb_connect(nullptr, nullptr);
    if (manager == Manager::kOpenbox) StartOpenbox();
  }
  XSession(const XSession&) = delete;
  XSession& operator=(const XSession&) = delete;
  ~XSession() {
    xcb_disconnect(connection_);
    unsetenv("DISPLAY");
  }

  void Key(const std::string& keys) const { OutputOf("xdotool key --clearmodifiers " + keys); }
  void Type(const std::string& text) const { OutputOf("xdotool type '" + text + "'"); }

  // Clicks at a place of the screen; `held` is a key that is down meanwhile.
  void Click(int x, int y, const std::string& held = "") const {
    const std::string click =
        "mousemove " + std::to_string(x) + " " + std::to_string(y) + " click 1";
    OutputOf(held.empty() ? "xdotool " + click
                          : "xdotool keydown " + held + " " + click + " keyup " + held);
  }

  // The window of that title, once it is shown and has the keyboard; 0 if that does not happen.
  xcb_window_t ActiveWindow(const std::string& title) const {
    xcb_window_t window = 0;
    const bool active = WaitFor([&] {
      window = NumberFrom(OutputOf("xdotool getwindowfocus 2>/dev/null"));
      return window > 1 && TitleOf(window) == title && (!manager_ || ManagerKnowsActive(window));
    });
    return active ? window : 0;
  }

  // The colour 0xRRGGBB of a point of the screen.
  unsigned PixelAt(int x, int y) const {
    const auto cookie = xcb_get_image(connection_, XCB_IMAGE_FORMAT_Z_PIXMAP, Root(),
                                      static_cast<int16_t>(x), static_cast<int16_t>(y), 1, 1, ~0U);
    xcb_get_image_reply_t* image = xcb_get_image_reply(connection_, cookie, nullptr);
    unsigned pixel = 0;
    if (image) std::memcpy(&pixel, xcb_get_image_data(image), sizeof pixel);
    free(image);
    return pixel & 0xffffff;
  }

  bool WaitForChange(int x, int y, unsigned from) const {
    return WaitFor([&] { return PixelAt(x, y) != from; });
  }

  // Waits until `count` more key presses have come to the window; a held key is repeated.
  bool WaitForKeys(xcb_window_t window, int count) const {
    const uint32_t mask = XCB_EVENT_MASK_KEY_PRESS;
    xcb_change_window_attributes(connection_, window, XCB_CW_EVENT_MASK, &mask);
    xcb_flush(connection_);
    return WaitFor([&] {
      while (xcb_generic_event_t* event = xcb_poll_for_event(connection_)) {
        if ((event->response_type & 0x7f) == XCB_KEY_PRESS) --count;
        free(event);
      }
      return count <= 0;
    });
  }

  // Another program's window, a black one.
  xcb_window_t MakeWindow() const {
    const xcb_window_t window = xcb_generate_id(connection_);
    const uint32_t black = 0;
    xcb_create_window(connection_, XCB_COPY_FROM_PARENT, window, Root(), 0, 0, 50, 50, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_BACK_PIXEL,
                      &black);
    xcb_map_window(connection_, window);
    xcb_flush(connection_);
    return window;
  }

  void Destroy(xcb_window_t window) const {
    xcb_destroy_window(connection_, window);
    xcb_flush(connection_);
  }

  // What xprop tells of properties of a window.
  static std::string Properties(xcb_window_t window, const std::string& names) {
    return OutputOf("xprop -id " + std::to_string(window) + " " + names);
  }

  // Asks the window manager to close the window or, without one, asks as it would.
  void RequestClose(xcb_window_t window) const {
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = window;
    message.type = Atom(manager_ ? "_NET_CLOSE_WINDOW" : "WM_PROTOCOLS");
    if (!manager_) message.data.data32[0] = Atom("WM_DELETE_WINDOW");
    const uint32_t mask = manager_ ? XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT : XCB_EVENT_MASK_NO_EVENT;
    xcb_send_event(connection_, 0, manager_ ? Root() : window, mask,
                   reinterpret_cast<const char*>(&message));
    xcb_flush(connection_);
  }

 private:
  static xcb_window_t NumberFrom(const std::string& text) {
    return static_cast<xcb_window_t>(std::strtoul(text.c_str(), nullptr, 10));
  }

  // The manager's keys act on the window that it holds for the active one, a moment after the
  // focus.
  bool ManagerKnowsActive(xcb_window_t window) const {
    const std::string active = PropertyOf(Root(), "_NET_ACTIVE_WINDOW");
    return active == std::string(reinterpret_cast<const char*>(&window), sizeof window);
  }

  void StartOpenbox() {
    // A window that is mapped while openbox starts may never be managed; its start-up command comes
    // last.
    const auto ready =
        std::filesystem::temp_directory_path() / ("openbox-ready-" + std::to_string(getpid()));
    manager_ = std::make_unique<Process>(
        std::vector<std::string>{"openbox", "--startup", "touch " + ready.string()});
    WaitFor([&] { return std::filesystem::exists(ready); });
    std::filesystem::remove(ready);
  }

  xcb_window_t Root() const {
    return xcb_setup_roots_iterator(xcb_get_setup(connection_)).data->root;
  }

  xcb_atom_t Atom(const std::string& name) const {
    const auto cookie =
        xcb_intern_atom(connection_, 0, static_cast<uint16_t>(name.size()), name.c_str());
    xcb_intern_atom_reply_t* reply = xcb_intern_atom_reply(connection_, cookie, nullptr);
    const xcb_atom_t atom = reply->atom;
    free(reply);
    return atom;
  }

  std::string PropertyOf(xcb_window_t window, const std::string& name) const {
    const auto cookie = xcb_get_property(connection_, 0, window, Atom(name), XCB_ATOM_ANY, 0, 256);
    xcb_get_property_reply_t* reply = xcb_get_property_reply(connection_, cookie, nullptr);
    std::string value;
    if (reply) {
      value.assign(static_cast<const char*>(xcb_get_property_value(reply)),
                   static_cast<std::size_t>(xcb_get_property_value_length(reply)));
    }
    free(reply);
    return value;
  }

  std::string TitleOf(xcb_window_t window) const { return PropertyOf(window, "_NET_WM_NAME"); }

  std::unique_ptr<Process> server_;
  std::unique_ptr<Process> manager_;
  xcb_connection_t* connection_ = nullptr;
};

}  // namespace desktop_test
