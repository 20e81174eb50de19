// SPDX-License-Identifier: MIT
// From an empty program folder to the first export, with the mouse: how many clicks it takes.
#include "data/Globals.h"
#include "export/StationMemory.h"
#include "platform/desktop/FileChooser.h"
#include "platform/runtime/HostPath.h"
#include "tests/journeys/Desk.h"
#include "tests/journeys/Journey.h"
#include "tests/journeys/Planner.h"

#include <QApplication>
#include <QDate>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QWidget>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace window;

namespace {

const QString kWelcome = u"frmEersteStart"_s;
const QString kSpotName = u"Bakkerij Van Damme - paasbrood"_s;

// A user who has only a mouse for all but texts, and counts the clicks.
class FirstExport : public testing::Test {
 protected:
  FirstExport() { QDir().mkpath(folder_); }
  ~FirstExport() override {
    global = Globals();
    runtime::SetDrives({});
  }

  void Click(const QString& window, const QString& control) {
    desk_.WaitForWindow(window);
    desk_.Click(window, control);
    ++clicks_;
  }
  void ClickTool(const QString& action) {
    desk_.WaitForWindow(kMain);
    desk_.ClickTool(kMain, action);
    ++clicks_;
  }
  void ClickLine(const QString& window, const QString& line) {
    desk_.WaitForLine(window, u"lstOverzicht"_s, line);
    desk_.Choose(window, u"lstOverzicht"_s, line);
    ++clicks_;
  }
  void Answer(const QString& part, const QString& button) {
    desk_.Answer(part, button);
    ++clicks_;
  }
  // A click in the field first, unless it already has the focus.
  void Type(const QString& window, const QString& field, const QString& text) {
    bool hasFocus = false;
    Desk::InWindows([&] {
      const QWidget* focused = QApplication::focusWidget();
      while (focused != nullptr && focused->objectName() != field)
        focused = focused->parentWidget();
      hasFocus = focused != nullptr;
    });
    if (!hasFocus) ++clicks_;
    desk_.Type(window, field, text);
  }
  // The button, the file and "Openen".
  void ChooseFile(const QString& window, const QString& button, const QString& path) {
    desk_.ChooseFile(path);
    Click(window, button);
    clicks_ += 2;
  }

  void TakeLastStation() {
    Click(kStation, u"cmdLaatste"_s);
    desk_.WaitForWindow(kMain);
  }
  void GoOffline() {
    ClickTool(u"actInstellingen"_s);
    Click(kSettings, u"optOffline"_s);
    Click(kSettings, u"cmdOk"_s);
    desk_.WaitForText(kMain, u"pnlModus"_s, u"Offline"_s);
  }
  void CloseSpots() {
    Click(kSpots, u"cmdSluiten"_s);
    desk_.WaitUntilGone(kSpots);
  }
  void Export() {
    desk_.WaitForText(kMain, u"pnlLog"_s, u"1 wijziging nog niet geëxporteerd"_s);
    ClickTool(u"actExporteren"_s);
    Click(kExport, u"cmdOk"_s);
    Answer(u"Heeft U de vorige export-files reeds verwerkt"_s, u"Ja"_s);
    Answer(u"De export is beëindigd"_s, u"OK"_s);
    desk_.WaitForText(kMain, u"pnlLog"_s, u"0 wijzigingen nog niet geëxporteerd"_s);
    exported_ = QDir(folder_ + u"/export"_s).entryList({u"*.tql"_s});
    planner_.Leave();
  }

  int clicks_ = 0;
  QStringList exported_;
  QTemporaryDir temporary_;
  const QString folder_ = temporary_.filePath(u"zender"_s);
  const StationMemory memory_{temporary_.filePath(u"zenders.ini"_s)};
  desktop::FileChooserScript files_;
  Desk desk_{temporary_.path(), files_};
  Planner planner_{desk_};
};

}  // namespace

TEST_F(FirstExport, OfTheDemonstrationTakesThirteenClicks) {
  RunJourney(folder_, [&] {
    Click(kWelcome, u"cmdOk"_s);
    TakeLastStation();
    GoOffline();
    ClickTool(u"actItemSpots"_s);
    ClickLine(kSpots, kSpotName);
    Click(kSpots, u"cmdDesaktiveer"_s);
    CloseSpots();
    Export();
  });
  EXPECT_EQ(exported_.size(), 1);
  EXPECT_EQ(clicks_, 13);
}

TEST_F(FirstExport, OfASpotInANewStationTakesTwentyClicks) {
  const QString demo = temporary_.filePath(u"demo"_s);
  MakeStation(demo);
  const QString sound = folder_ + u"/audio/paasbrood.mp3"_s;
  const QString today = QDate::currentDate().toString(u"dd-MM-yyyy"_s);
  RunJourney(folder_, [&] {
    Click(kWelcome, u"optLeeg"_s);
    Type(kWelcome, u"txtNaam"_s, u"Radio Eerst"_s);
    Click(kWelcome, u"cmdOk"_s);
    TakeLastStation();
    GoOffline();
    QDir().mkpath(folder_ + u"/audio"_s);
    const QStringList sounds = QDir(demo + u"/audio/Spots"_s).entryList({u"*.mp3"_s});
    desk_.Expect(QFile::copy(demo + u"/audio/Spots/"_s + sounds.value(0), sound), u"het geluid ontbreekt"_s);
    ClickTool(u"actItemSpots"_s);
    Click(kSpots, u"cmdNieuw"_s);
    desk_.WaitForWindow(kSpot);
    ChooseFile(kSpot, u"cmdPath"_s, sound);
    desk_.WaitUntil(u"het geluidsbestand werd niet genomen"_s,
                    [&] { return !desk_.Find(kSpot, u"txtPath"_s).isEmpty(); });
    Click(kSpot, u"cmdFillName"_s);
    Type(kSpot, u"cobStart"_s, today);
    Type(kSpot, u"cobStop"_s, today);
    Click(kSpot, u"cmdOk"_s);
    desk_.WaitUntilGone(kSpot);
    CloseSpots();
    Export();
  });
  EXPECT_EQ(exported_.size(), 1);
  EXPECT_EQ(clicks_, 20);
}
