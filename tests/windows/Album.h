// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QWidget>

#include <functional>

namespace windows {

// Pictures of windows, each as it opens and, when it grows, once more larger and as small as it gets.
class Album {
 public:
  // `folder`: host path; must exist.
  explicit Album(const QString& folder) : folder_(folder) {}

  // Shows the window and saves what it shows as <name>.png, <name>-groot.png and <name>-klein.png. `prepare` is called
  // once it is shown. Throws runtime::Error.
  void Take(const QString& name, QWidget& window, const std::function<void()>& prepare = {}) const;

  // The same, as it opens only, of the modal window or popup that `open` waits for; then closes it.
  void TakeOpened(const QString& name, const std::function<void()>& open) const;

 private:
  void Save(const QString& name, QWidget& window) const;

  QString folder_;
};

}  // namespace windows
