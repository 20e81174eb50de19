// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

#include <xcb/xcb.h>

namespace bench {

// The top-level windows of an X display without a window manager, where they are children of the root window.
class XWindows {
 public:
  explicit XWindows(const QString& display);
  ~XWindows();
  XWindows(const XWindows&) = delete;
  XWindows& operator=(const XWindows&) = delete;

  // Waits until a window whose title begins so is mapped, other than a splash screen; ends the program when none is
  // within a minute.
  xcb_window_t WaitFor(const QString& title);
  // Requests a window to close, as its frame would.
  void Close(xcb_window_t window);

 private:
  QByteArray Property(xcb_window_t window, const char* name);
  QString TitleOf(xcb_window_t window);
  bool IsSplash(xcb_window_t window);
  xcb_atom_t Atom(const char* name);

  xcb_connection_t* connection_;
};

}  // namespace bench
