#include "displays/desktop/window_watch.h"

#include <QCoreApplication>
#include <chrono>
#include <utility>

#include "displays/desktop/x_server.h"

namespace desktop {
namespace {

// A window manager that minimises a window, or shows another desktop, says so on the window.
constexpr std::chrono::milliseconds kManagersTime{500};
constexpr std::uint32_t kIconic = 3;

bool IsUnmapped(xcb_window_t window) {
  const XReply<xcb_get_window_attributes_reply_t> attributes(xcb_get_window_attributes_reply(
      XServer(), xcb_get_window_attributes(XServer(), window), nullptr));
  return !attributes || attributes->map_state == XCB_MAP_STATE_UNMAPPED;
}

}  // namespace

WindowWatch::WindowWatch(std::function<void()> gone) : gone_(std::move(gone)) {
  QCoreApplication::instance()->installNativeEventFilter(this);
  check_.setSingleShot(true);
  check_.setInterval(kManagersTime);
  QObject::connect(&check_, &QTimer::timeout, &check_, [this] { CheckUnmapped(); });
}

WindowWatch::~WindowWatch() {
  if (qApp) qApp->removeNativeEventFilter(this);
}

bool WindowWatch::nativeEventFilter(const QByteArray& type, void* message, qintptr*) {
  if (watched_ == 0 || type != "xcb_generic_event_t") return false;
  const auto* event = static_cast<const xcb_generic_event_t*>(message);
  switch (event->response_type & 0x7f) {
    case XCB_DESTROY_NOTIFY:
      if (reinterpret_cast<const xcb_destroy_notify_event_t*>(event)->window == watched_) {
        TellGone();
      }
      break;
    case XCB_UNMAP_NOTIFY:
      if (reinterpret_cast<const xcb_unmap_notify_event_t*>(event)->window == watched_) {
        check_.start();
      }
      break;
  }
  return false;
}

void WindowWatch::CheckUnmapped() {
  const auto window = static_cast<xcb_window_t>(watched_);
  if (window == 0 || !IsUnmapped(window)) return;
  if (XProperty(window, "WM_STATE") != kIconic) TellGone();
}

void WindowWatch::TellGone() {
  watched_ = 0;
  gone_();
}

}  // namespace desktop
