// The dialog of two fields in XCB alone, drawn and answered by nothing: how fast a screen can be.

#include <xcb/xcb.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>

namespace {

struct Painter {
  xcb_connection_t* connection;
  xcb_window_t window;
  xcb_gcontext_t context;

  void Text(std::int16_t x, std::int16_t y, const char* text) const {
    xcb_image_text_8(connection, static_cast<std::uint8_t>(std::strlen(text)), window, context, x,
                     y, text);
  }
  void Frame(const xcb_rectangle_t& frame) const {
    xcb_poly_rectangle(connection, window, context, 1, &frame);
  }
};

void Paint(const Painter& painter) {
  painter.Text(20, 26, "Enter the name");
  painter.Text(20, 58, "First");
  painter.Text(20, 90, "Last");
  painter.Frame({130, 44, 275, 22});
  painter.Frame({130, 76, 275, 22});
  painter.Frame({325, 112, 80, 24});
  painter.Frame({235, 112, 80, 24});
  painter.Text(355, 128, "OK");
  painter.Text(255, 128, "Cancel");
  xcb_flush(painter.connection);
}

}  // namespace

int main() {
  xcb_connection_t* connection = xcb_connect(nullptr, nullptr);
  if (xcb_connection_has_error(connection) != 0) return 1;
  const xcb_screen_t* screen = xcb_setup_roots_iterator(xcb_get_setup(connection)).data;
  const Painter painter{connection, xcb_generate_id(connection), xcb_generate_id(connection)};
  const std::uint32_t look[] = {screen->white_pixel, XCB_EVENT_MASK_EXPOSURE};
  xcb_create_window(connection, XCB_COPY_FROM_PARENT, painter.window, screen->root, 400, 300, 425,
                    152, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, screen->root_visual,
                    XCB_CW_BACK_PIXEL | XCB_CW_EVENT_MASK, look);
  const std::uint32_t colors[] = {screen->black_pixel, screen->white_pixel};
  xcb_create_gc(connection, painter.context, painter.window, XCB_GC_FOREGROUND | XCB_GC_BACKGROUND,
                colors);
  xcb_map_window(connection, painter.window);
  xcb_flush(connection);
  while (xcb_generic_event_t* event = xcb_wait_for_event(connection)) {
    if ((event->response_type & 0x7F) == XCB_EXPOSE) Paint(painter);
    std::free(event);
  }
}
