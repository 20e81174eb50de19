#include "platform/desktop/FileChooser.h"
#include "platform/desktop/Icons.h"
#include "platform/desktop/Theme.h"
#include "platform/runtime/Clock.h"
#include "platform/runtime/Error.h"
#include "tests/journeys/Desk.h"
#include "tests/journeys/Journey.h"
#include "tests/journeys/Tour.h"
#include "tests/support/OwnUserFolders.h"
#include "tools/Commands.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QFont>
#include <QFontDatabase>
#include <QLocale>
#include <QTemporaryDir>

#include <iostream>

using namespace Qt::StringLiterals;

namespace {

void MakeFolder(const QString& folder) {
  for (const QFileInfo& old : QDir(folder).entryInfoList({u"*.png"_s, u"*.tql"_s}, QDir::Files)) {
    QFile::remove(old.filePath());
  }
  if (!QDir().mkpath(folder)) throw runtime::Error(u"kan de map %1 niet maken"_s.arg(folder));
  MakeStation(folder + u"/zender"_s);
}

// A screen as large as an ordinary one; the offscreen platform's own would make the windows open smaller than they are.
void UseLargeScreen(const QTemporaryDir& folder) {
  const QString path = folder.filePath(u"screen.json"_s);
  QFile file(path);
  if (file.open(QIODevice::WriteOnly)) {
    file.write(
        R"({"synchronousWindowSystemEvents": false, "windowFrameMargins": false, "screens": [{"name": "Scherm",)"
        R"( "x": 0, "y": 0, "width": 1920, "height": 1200, "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1}]})");
  }
  file.close();
  qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + QFile::encodeName(path));
}

// The offscreen platform remarks at every window that it keeps no size hints; that would bury the tour's own lines.
void LeaveOutSizeHints() {
  static QtMessageHandler other = nullptr;
  other = qInstallMessageHandler([](QtMsgType type, const QMessageLogContext& context, const QString& text) {
    if (!text.contains(u"propagateSizeHints")) other(type, context, text);
  });
}

int Show(QApplication& application, const QString& folder) {
  const desktop::Theme theme(application, desktop::Variant::Light);
  if (QFontDatabase::families().contains(u"Inter"_s)) QApplication::setFont(QFont(u"Inter"_s, 10));
  QApplication::setWindowIcon(desktop::AppIcon());
  desktop::FileChooserScript files;
  const Desk desk(folder, files);
  Tour tour(desk, folder);
  const runtime::ClockScope clock([&tour] { return tour.Now(); });
  RunJourney(folder + u"/zender"_s, [&tour] { tour.Walk(); });
  std::cout << "De rondleiding is gelukt; de beelden staan in " << folder.toStdString() << std::endl;
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::cerr << "spotrooster-tour MAP    loopt door de vensters en laat beelden en het exportbestand achter in MAP\n";
    return kWrongUse;
  }
  const QTemporaryDir screen;
  UseLargeScreen(screen);
  qputenv("QT_SCALE_FACTOR", "1.5");
  qputenv("QT_LOGGING_RULES", "qt.qpa.*=false");
  const testing_support::OwnUserFolders folders;
  QLocale::setDefault(QLocale(QLocale::Dutch, QLocale::Belgium));
  LeaveOutSizeHints();
  QApplication application(argc, argv);
  const QString folder = QFileInfo(QString::fromLocal8Bit(argv[1])).absoluteFilePath();
  try {
    MakeFolder(folder);
    return Show(application, folder);
  } catch (const runtime::Error& error) {
    std::cerr << "spotrooster-tour: " << error.what() << '\n';
    return kFailed;
  }
}
