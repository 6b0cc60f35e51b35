#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <cstdlib>
#include <memory>

// Answers of the X server that Qt is connected to.
namespace desktop {

// The connection; null on Wayland.
xcb_connection_t* XServer();

// The window behind all others.
xcb_window_t XRoot();

struct FreeReply {
  void operator()(void* reply) const { std::free(reply); }
};

template <class Reply>
using XReply = std::unique_ptr<Reply, FreeReply>;

// The first whole number of a property; 0 if the window has no such property.
std::uint32_t XProperty(xcb_window_t window, const char* name);

}  // namespace desktop
