#include "displays/desktop/x_server.h"

#include <QGuiApplication>
#include <cstring>

namespace desktop {

xcb_connection_t* XServer() {
  const auto* x11 = qApp->nativeInterface<QNativeInterface::QX11Application>();
  return x11 ? x11->connection() : nullptr;
}

xcb_window_t XRoot() { return xcb_setup_roots_iterator(xcb_get_setup(XServer())).data->root; }

std::uint32_t XProperty(xcb_window_t window, const char* name) {
  xcb_connection_t* const server = XServer();
  const XReply<xcb_intern_atom_reply_t> atom(xcb_intern_atom_reply(
      server, xcb_intern_atom(server, 0, static_cast<std::uint16_t>(std::strlen(name)), name),
      nullptr));
  if (!atom) return 0;
  const XReply<xcb_get_property_reply_t> value(xcb_get_property_reply(
      server, xcb_get_property(server, 0, window, atom->atom, XCB_ATOM_ANY, 0, 1), nullptr));
  std::uint32_t number = 0;
  if (!value || xcb_get_property_value_length(value.get()) < int{sizeof number}) return 0;
  std::memcpy(&number, xcb_get_property_value(value.get()), sizeof number);
  return number;
}

}  // namespace desktop
