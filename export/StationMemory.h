// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <memory>
#include <optional>

class QSettings;

// Remembers in a settings file which station was used last in each program folder. The station selection uses it while
// an instance exists; the newest instance counts. User-interface thread only.
class StationMemory {
 public:
  // `file` is a host path, created when missing. Without write permission nothing is stored; that is not an error.
  explicit StationMemory(const QString& file);
  ~StationMemory();
  StationMemory(const StationMemory&) = delete;
  StationMemory& operator=(const StationMemory&) = delete;

  // The station used last in global.programFolder, which may no longer exist; empty when none is stored.
  static std::optional<qint16> Last();
  // Stores the choice. No effect without an instance.
  static void Chosen(qint16 number);

 private:
  std::unique_ptr<QSettings> stations_;
  StationMemory* previous_;
  static inline StationMemory* active_ = nullptr;
};
