#include "displays/desktop/host_window.h"

#include <QGuiApplication>
#include <QScreen>

#include "displays/desktop/x_server.h"

namespace desktop {
namespace {

// In the X server's pixels.
std::optional<QRect> NativeRect(xcb_connection_t* connection, xcb_window_t window) {
  const XReply<xcb_get_geometry_reply_t> size(
      xcb_get_geometry_reply(connection, xcb_get_geometry(connection, window), nullptr));
  if (!size) return std::nullopt;
  const XReply<xcb_translate_coordinates_reply_t> place(xcb_translate_coordinates_reply(
      connection, xcb_translate_coordinates(connection, window, size->root, 0, 0), nullptr));
  if (!place) return std::nullopt;
  return QRect(place->dst_x, place->dst_y, size->width, size->height);
}

// Qt scales a screen from its top left corner.
QRect Scaled(const QRect& native) {
  for (const QScreen* screen : QGuiApplication::screens()) {
    const double scale = screen->devicePixelRatio();
    const QPoint corner = screen->geometry().topLeft();
    if (!QRect(corner, screen->size() * scale).contains(native.center())) continue;
    return {corner + (native.topLeft() - corner) / scale, native.size() / scale};
  }
  return native;
}

}  // namespace

WId HostWindow() {
  bool known = false;
  const WId id = qEnvironmentVariable("WINDOWID").toULongLong(&known, 0);
  return known && QGuiApplication::platformName() == QLatin1String("xcb") ? id : 0;
}

std::optional<QRect> HostWindowRect() {
  if (HostWindow() == 0) return std::nullopt;
  const auto native = NativeRect(XServer(), static_cast<xcb_window_t>(HostWindow()));
  return native ? std::optional(Scaled(*native)) : std::nullopt;
}

}  // namespace desktop
