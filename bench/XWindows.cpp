// SPDX-License-Identifier: MIT
#include "bench/XWindows.h"

#include "bench/Plain.h"

#include <poll.h>

#include <cstdlib>
#include <cstring>
#include <memory>

namespace bench {
namespace {

constexpr int kPatience = 60000;  // ms

struct Freed {
  void operator()(void* reply) const { std::free(reply); }
};
template <class Reply>
using Owned = std::unique_ptr<Reply, Freed>;

}  // namespace

XWindows::XWindows(const QString& display) : connection_(xcb_connect(display.toLatin1().constData(), nullptr)) {
  Require(xcb_connection_has_error(connection_) == 0, "connect to the display");
  const xcb_screen_t* screen = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data;
  const std::uint32_t events = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
  xcb_change_window_attributes(connection_, screen->root, XCB_CW_EVENT_MASK, &events);
  xcb_flush(connection_);
}

XWindows::~XWindows() {
  xcb_disconnect(connection_);
}

xcb_window_t XWindows::WaitFor(const QString& title) {
  pollfd ready{xcb_get_file_descriptor(connection_), POLLIN, 0};
  for (;;) {
    const Owned<xcb_generic_event_t> event(xcb_poll_for_event(connection_));
    if (!event) {
      Require(::poll(&ready, 1, kPatience) > 0, "a window opens");
      continue;
    }
    if ((event->response_type & 0x7F) != XCB_MAP_NOTIFY) continue;
    const auto* mapped = reinterpret_cast<const xcb_map_notify_event_t*>(event.get());
    if (TitleOf(mapped->window).startsWith(title) && !IsSplash(mapped->window)) return mapped->window;
  }
}

void XWindows::Close(xcb_window_t window) {
  xcb_client_message_event_t message{};
  message.response_type = XCB_CLIENT_MESSAGE;
  message.format = 32;
  message.window = window;
  message.type = Atom("WM_PROTOCOLS");
  message.data.data32[0] = Atom("WM_DELETE_WINDOW");
  xcb_send_event(connection_, 0, window, XCB_EVENT_MASK_NO_EVENT, reinterpret_cast<const char*>(&message));
  xcb_flush(connection_);
}

QByteArray XWindows::Property(xcb_window_t window, const char* name) {
  constexpr std::uint32_t kLongest = 256;
  const auto asked = xcb_get_property(connection_, 0, window, Atom(name), XCB_GET_PROPERTY_TYPE_ANY, 0, kLongest);
  const Owned<xcb_get_property_reply_t> value(xcb_get_property_reply(connection_, asked, nullptr));
  if (!value) return {};
  return {static_cast<const char*>(xcb_get_property_value(value.get())), xcb_get_property_value_length(value.get())};
}

QString XWindows::TitleOf(xcb_window_t window) {
  return QString::fromUtf8(Property(window, "_NET_WM_NAME"));
}

bool XWindows::IsSplash(xcb_window_t window) {
  const xcb_atom_t splash = Atom("_NET_WM_WINDOW_TYPE_SPLASH");
  return Property(window, "_NET_WM_WINDOW_TYPE")
      .startsWith(QByteArray(reinterpret_cast<const char*>(&splash), sizeof splash));
}

xcb_atom_t XWindows::Atom(const char* name) {
  const auto asked = xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(std::strlen(name)), name);
  const Owned<xcb_intern_atom_reply_t> atom(xcb_intern_atom_reply(connection_, asked, nullptr));
  return atom ? atom->atom : xcb_atom_t{XCB_ATOM_NONE};
}

}  // namespace bench
