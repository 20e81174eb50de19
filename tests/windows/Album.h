// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QWidget>

#include <functional>

namespace windows {

// Pictures of windows: at their opening size and, if resizable, larger and at their minimum size.
class Album {
 public:
  // `folder`: host path; must exist.
  explicit Album(const QString& folder) : folder_(folder) {}

  // Shows the window and saves <name>.png, <name>-groot.png and <name>-klein.png. Calls `prepare` after showing it.
  // Throws runtime::Error.
  void Take(const QString& name, QWidget& window, const std::function<void()>& prepare = {}) const;

  // Saves <name>.png of the modal window or popup that `open` shows and waits for; then closes it.
  void TakeOpened(const QString& name, const std::function<void()>& open) const;

  // Saves <name>.png of a window that is already shown.
  void Save(const QString& name, QWidget& window) const;

 private:
  QString folder_;
};

}  // namespace windows
