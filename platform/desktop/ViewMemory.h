// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <memory>

class QSettings;

namespace desktop {

// Remembers per user, in a settings file, how views are shown ("item-spots": "Einddatum"). The newest instance counts;
// without one nothing is remembered. User-interface thread only.
class ViewMemory {
 public:
  // `file` is a host path, created when missing. Without write permission nothing is stored; that is not an error.
  explicit ViewMemory(const QString& file);
  ~ViewMemory();
  ViewMemory(const ViewMemory&) = delete;
  ViewMemory& operator=(const ViewMemory&) = delete;

  // Empty when nothing is stored.
  static QString ChoiceOf(const QString& view);
  static void Chosen(const QString& view, const QString& choice);

 private:
  std::unique_ptr<QSettings> views_;
  ViewMemory* previous_;
  static inline ViewMemory* active_ = nullptr;
};

}  // namespace desktop
