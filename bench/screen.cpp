#include "bench/screen.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <stdexcept>
#include <string>

namespace bench {
namespace {

constexpr double kPatience = 10000;  // milliseconds
constexpr xcb_keycode_t kReturn = 36;

template <class Reply>
using Owned = std::unique_ptr<Reply, decltype(&std::free)>;

template <class Reply>
Owned<Reply> Own(Reply* reply) {
  return {reply, &std::free};
}

// The server chooses a free display and writes its number.
std::string ReadNumber(int fd) {
  std::string number;
  for (char digit; read(fd, &digit, 1) == 1 && digit != '\n';) number += digit;
  return number;
}

}  // namespace

void Screen::Freeing::operator()(void* memory) const { std::free(memory); }

Screen::Screen() {
  int ends[2];
  if (pipe(ends) != 0) throw std::runtime_error("no pipe");
  fcntl(ends[0], F_SETFD, FD_CLOEXEC);
  server_ = std::make_unique<Child>(Command{FindProgram("Xvfb"), "-displayfd",
                                            std::to_string(ends[1]), "-screen", "0", "1920x1080x24",
                                            "-nolisten", "tcp", "-noreset"});
  close(ends[1]);
  setenv("DISPLAY", (":" + ReadNumber(ends[0])).c_str(), 1);
  close(ends[0]);
  unsetenv("WAYLAND_DISPLAY");
  unsetenv("WINDOWID");

  connection_ = xcb_connect(nullptr, nullptr);
  if (xcb_connection_has_error(connection_) != 0) throw std::runtime_error("no screen");
  root_ = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data->root;
  const std::uint32_t wanted = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
  xcb_change_window_attributes(connection_, root_, XCB_CW_EVENT_MASK, &wanted);
  damage_event_ = static_cast<std::uint8_t>(
      xcb_get_extension_data(connection_, &xcb_damage_id)->first_event + XCB_DAMAGE_NOTIFY);
  Own(xcb_damage_query_version_reply(connection_, xcb_damage_query_version(connection_, 1, 1),
                                     nullptr));
  damage_ = xcb_generate_id(connection_);
  xcb_damage_create(connection_, damage_, root_, XCB_DAMAGE_REPORT_LEVEL_NON_EMPTY);
  xcb_flush(connection_);
}

Screen::~Screen() { xcb_disconnect(connection_); }

std::optional<double> Screen::WaitForDrawnWindow() {
  const double deadline = Milliseconds() + kPatience;
  mapped_ = 0;
  while (const Event event = NextEvent(deadline)) {
    Note(*event);
    if (mapped_ != 0 && IsDrawn(mapped_)) return Milliseconds();
  }
  return std::nullopt;
}

void Screen::PressReturn() {
  xcb_key_press_event_t key{};
  key.detail = kReturn;
  key.root = root_;
  key.event = mapped_;
  key.same_screen = 1;
  for (const auto type : {XCB_KEY_PRESS, XCB_KEY_RELEASE}) {
    key.response_type = static_cast<std::uint8_t>(type);
    xcb_send_event(connection_, 0, mapped_, XCB_EVENT_MASK_NO_EVENT,
                   reinterpret_cast<const char*>(&key));
  }
  xcb_flush(connection_);
}

void Screen::WaitUntilEmpty() {
  const double deadline = Milliseconds() + kPatience;
  while (!IsEmpty()) {
    const Event event = NextEvent(deadline);
    if (!event) return;
    Note(*event);
  }
  while (const Event event{xcb_poll_for_event(connection_)}) Note(*event);
}

Screen::Event Screen::NextEvent(double deadline) {
  for (;;) {
    if (auto* event = xcb_poll_for_event(connection_)) return Event(event);
    const double left = deadline - Milliseconds();
    pollfd waiting{xcb_get_file_descriptor(connection_), POLLIN, 0};
    if (left <= 0 || poll(&waiting, 1, static_cast<int>(left) + 1) < 0) return nullptr;
  }
}

void Screen::Note(const xcb_generic_event_t& event) {
  const std::uint8_t type = event.response_type & 0x7F;
  if (type == damage_event_) {
    xcb_damage_subtract(connection_, damage_, XCB_NONE, XCB_NONE);
    xcb_flush(connection_);
  } else if (type == XCB_MAP_NOTIFY) {
    const auto& map = reinterpret_cast<const xcb_map_notify_event_t&>(event);
    if (map.override_redirect == 0) mapped_ = map.window;
  } else if (type == XCB_UNMAP_NOTIFY) {
    if (reinterpret_cast<const xcb_unmap_notify_event_t&>(event).window == mapped_) mapped_ = 0;
  }
}

bool Screen::IsDrawn(xcb_window_t window) const {
  const auto size =
      Own(xcb_get_geometry_reply(connection_, xcb_get_geometry(connection_, window), nullptr));
  if (!size) return false;
  const auto image =
      Own(xcb_get_image_reply(connection_,
                              xcb_get_image(connection_, XCB_IMAGE_FORMAT_Z_PIXMAP, window, 0, 0,
                                            size->width, size->height, UINT32_MAX),
                              nullptr));
  if (!image) return false;
  const std::uint8_t* bytes = xcb_get_image_data(image.get());
  const int length = xcb_get_image_data_length(image.get());
  return length > 4 && std::memcmp(bytes, bytes + 4, static_cast<std::size_t>(length) - 4) != 0;
}

bool Screen::IsMapped(xcb_window_t window) const {
  const auto state = Own(xcb_get_window_attributes_reply(
      connection_, xcb_get_window_attributes(connection_, window), nullptr));
  return state && state->map_state == XCB_MAP_STATE_VIEWABLE;
}

bool Screen::IsEmpty() const {
  const auto tree =
      Own(xcb_query_tree_reply(connection_, xcb_query_tree(connection_, root_), nullptr));
  const xcb_window_t* windows = xcb_query_tree_children(tree.get());
  return std::none_of(windows, windows + xcb_query_tree_children_length(tree.get()),
                      [this](xcb_window_t window) { return IsMapped(window); });
}

}  // namespace bench
