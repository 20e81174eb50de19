// Saves a picture of every window: shots DEMO-FOLDER OUT-FOLDER light|dark. The scale comes from QT_SCALE_FACTOR.
#include "data/Settings.h"
#include "data/DatabasePaths.h"
#include "data/Globals.h"
#include "data/Lookups.h"
#include "platform/controls/WaveformStrip.h"
#include "platform/desktop/Theme.h"
#include "platform/runtime/HostPath.h"
#include "tests/windows/Windows.h"

#include <QApplication>
#include <QDir>
#include <QFontDatabase>
#include <QStandardPaths>
#include <QTest>

#include <iostream>

using namespace Qt::StringLiterals;

namespace {

constexpr int kArguments = 4;
constexpr qint16 kDemoStation = 3;
constexpr int kSettled = 700;  // ms, for what is read behind the window

void OpenStation(const QString& folder) {
  global.programFolder = runtime::PathText(QDir(folder).absolutePath());
  GetSettings();
  global.stationNumber = kDemoStation;
  FormDatabasePaths();
  SetRadioNaam();
  SetOnlineYn();
}

}  // namespace

int main(int argc, char** argv) {
  QStandardPaths::setTestModeEnabled(true);
  QApplication application(argc, argv);
  if (argc != kArguments) return 2;
  QApplication::setFont(QFont(u"Inter"_s, 10));
  const desktop::Theme theme(application, desktop::VariantFromText(QString::fromLocal8Bit(argv[3])));
  OpenStation(QString::fromLocal8Bit(argv[1]));
  const QString out = QString::fromLocal8Bit(argv[2]);
  QDir().mkpath(out);
  for (const windows::Opening& opening : windows::All({1, 9, 1, 1})) {
    const windows::Window window = opening.open();
    window.Widget().show();
    QTest::qWait(kSettled);
    window.Widget().grab().save(out + u'/' + opening.name + u".png"_s);
  }
  return 0;
}
