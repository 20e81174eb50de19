// SPDX-License-Identifier: MIT
#include "tests/journeys/Stage.h"

#include "app/Language.h"
#include "platform/desktop/Icons.h"
#include "platform/desktop/MessageBox.h"

#include <QApplication>
#include <QFile>
#include <QFileInfo>
#include <QFont>
#include <QFontDatabase>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

namespace {

bool Take(StageOptions& options, const QString& name, const QString& value) {
  bool isNumber = false;
  if (name == u"--scale"_s && value.toDouble(&isNumber) >= 1 && isNumber) {
    options.scale = value.toLatin1();
    return true;
  }
  const auto variant = desktop::VariantFromText(value);
  if (name != u"--theme"_s || !variant) return false;
  options.variant = *variant;
  return true;
}

// On the offscreen platform's default screen the windows would open smaller.
void UseScreen(const QTemporaryDir& folder) {
  const QString path = folder.filePath(u"screen.json"_s);
  QFile file(path);
  if (file.open(QIODevice::WriteOnly)) {
    file.write(
        R"({"synchronousWindowSystemEvents": false, "windowFrameMargins": false, "screens": [{"name": "Scherm",)"
        R"( "x": 0, "y": 0, "width": 1920, "height": 1080, "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1}]})");
  }
  file.close();
  const QByteArray platform = "offscreen:configfile=" + QFile::encodeName(path);
  qputenv("QT_QPA_PLATFORM", platform);
}

// The offscreen platform prints a remark for every window that it has no size hints; that would bury the tour's own
// lines.
void LeaveOutSizeHints() {
  static QtMessageHandler other = nullptr;
  other = qInstallMessageHandler([](QtMsgType type, const QMessageLogContext& context, const QString& text) {
    if (!text.contains(u"propagateSizeHints")) other(type, context, text);
  });
}

}  // namespace

std::optional<StageOptions> ParseStageOptions(int argc, char** argv) {
  if (argc < 2 || argc % 2 != 0 || argv[1][0] == '-') return std::nullopt;
  StageOptions options;
  options.folder = QFileInfo(QString::fromLocal8Bit(argv[1])).absoluteFilePath();
  for (int at = 2; at < argc; at += 2) {
    if (!Take(options, QString::fromLocal8Bit(argv[at]), QString::fromLocal8Bit(argv[at + 1]))) return std::nullopt;
  }
  return options;
}

Stage::Stage(int& argc, char** argv, const StageOptions& options) : screen_(std::make_unique<QTemporaryDir>()) {
  UseScreen(*screen_);
  qputenv("QT_SCALE_FACTOR", options.scale);
  qputenv("QT_LOGGING_RULES", "qt.qpa.*=false");
  LeaveOutSizeHints();
  application_ = std::make_unique<QApplication>(argc, argv);
  InstallDutchTranslation(*application_);
  desktop::ShowUserMessagesAsBoxes();
  theme_ = std::make_unique<desktop::Theme>(*application_, options.variant);
  if (QFontDatabase::families().contains(u"Inter"_s)) QApplication::setFont(QFont(u"Inter"_s, 10));
  QApplication::setWindowIcon(desktop::AppIcon());
}

Stage::~Stage() = default;
