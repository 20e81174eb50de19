// SPDX-License-Identifier: MIT
#pragma once

#include "platform/desktop/Theme.h"
#include "tests/support/OwnUserFolders.h"

#include <QByteArray>
#include <QString>

#include <memory>
#include <optional>

class QApplication;
class QTemporaryDir;

// How pictures of the windows are taken: offscreen, on a full-HD screen, as the program looks on one.
struct StageOptions {
  QString folder;            // host path, absolute
  QByteArray scale = "1.5";  // of the desktop: "1" is 100 %
  desktop::Variant variant = desktop::Variant::Light;
};

// Parses "MAP [--scale FACTOR] [--theme light|dark]"; nothing for other words.
std::optional<StageOptions> ParseStageOptions(int argc, char** argv);
// Usage of these options, printed after the program's name.
inline constexpr const char* kStageUsage = "MAP [--scale FACTOR] [--theme light|dark]";

// The application object of such a program. Only one at a time, created first in main().
class Stage {
 public:
  Stage(int& argc, char** argv, const StageOptions& options);
  ~Stage();
  Stage(const Stage&) = delete;
  Stage& operator=(const Stage&) = delete;

 private:
  testing_support::OwnUserFolders folders_;
  std::unique_ptr<QTemporaryDir> screen_;
  std::unique_ptr<QApplication> application_;
  std::unique_ptr<desktop::Theme> theme_;
};
