// SPDX-License-Identifier: MIT
#include "export/frmPlanningExporteren.h"

#include "data/Catalogue.h"
#include "data/Globals.h"
#include "data/Messages.h"
#include "data/Writes.h"
#include "export/ExportDrawing.h"
#include "platform/desktop/Lock.h"
#include "platform/desktop/MessageBox.h"
#include "platform/runtime/Clock.h"
#include "tests/export/ExportWindow.h"
#include "tests/support/Station.h"
#include "tests/support/Ui.h"

#include <QFrame>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using desktop::MessageBoxScript;
using testing_support::Child;
using testing_support::Plain;
using testing_support::Station;
using namespace export_window;

TEST(frmPlanningExporteren, HasItsGivenControls) {
  const Station station;
  const frmPlanningExporteren form(nullptr);
  Child<QLineEdit>(form, u"txtBestemming"_s);
  Child<QLabel>(form, u"lblProgressStatus"_s);
  Child<QPushButton>(form, u"cmdOk"_s);
  Child<QPushButton>(form, u"cmdAnnuleren"_s);
  const QWidget& panel = Child<QFrame>(form, u"picProgress"_s);
  Child<ExportDrawing>(panel, u"imgProgress"_s);
  EXPECT_EQ(form.windowTitle(), u"Planning exporteren"_s);
}

TEST(frmPlanningExporteren, OpensWithTheLockedDestinationAndAHiddenPanel) {
  const Station station;
  global.exportPath = u"  Z:\\uit  "_s;
  const Window window;
  auto& destination = Child<QLineEdit>(window.form, u"txtBestemming"_s);
  EXPECT_EQ(destination.text(), u"Z:\\uit"_s);
  EXPECT_TRUE(desktop::IsLocked(&destination));
  EXPECT_FALSE(Child<QFrame>(window.form, u"picProgress"_s).isVisible());
  auto& button = Child<QPushButton>(window.form, u"cmdAnnuleren"_s);
  EXPECT_EQ(Plain(button.text()), u"Sluiten"_s);
  EXPECT_EQ(button.toolTip(), u"Sluiten"_s);
}

TEST(frmPlanningExporteren, WritesTheLogInRecordingOrderAndEmptiesIt) {
  const Station station(Station::Mode::Offline);
  FillLog(station);
  Window window;
  const MessageBoxScript boxes{kAnswerYes, kAnswerOk};
  window.PressOk();
  ASSERT_EQ(Exported(station), QStringList{u"20240131154507.tql"_s});
  EXPECT_EQ(Content(station, u"20240131154507.tql"_s), "DELETE FROM c;\r\nUPDATE a SET b = 1;\r\n");
  EXPECT_EQ(LogRows(station), 0);
  ASSERT_EQ(boxes.Shown().size(), 2u);
  EXPECT_EQ(boxes.Shown()[0].text, u"Heeft U de vorige export-files reeds verwerkt met Kadrovia ?"_s);
  EXPECT_EQ(boxes.Shown()[0].style, 36);
  EXPECT_EQ(boxes.Shown()[0].title, u"Items"_s);
  EXPECT_EQ(boxes.Shown()[1].text, GetMsgElements(5004).text);
  EXPECT_FALSE(window.form.isVisible());
}

TEST(frmPlanningExporteren, AnsweringNoExportsNothingAndKeepsTheLog) {
  const Station station(Station::Mode::Offline);
  FillLog(station);
  Window window;
  const MessageBoxScript boxes{kAnswerNo, kAnswerOk};
  window.PressOk();
  ASSERT_EQ(boxes.Shown().size(), 2u);
  EXPECT_EQ(boxes.Last().text,
            u"Om data-verlies te vermijden, dient U eerst de vorige export-files te verwerken met Kadrovia !"_s);
  EXPECT_EQ(boxes.Last().style, 48);
  EXPECT_EQ(boxes.Last().title, u"Items"_s);
  EXPECT_EQ(global.lastAnswer.toInt(), kAnswerNo);
  EXPECT_TRUE(Exported(station).isEmpty());
  EXPECT_EQ(LogRows(station), 3);
  EXPECT_TRUE(window.form.isVisible());
}

TEST(frmPlanningExporteren, OnlineExportsTheLocalLogWithoutAsking) {
  const Station station(Station::Mode::Online);
  FillLog(station);
  Window window;
  const MessageBoxScript boxes{kAnswerOk};
  window.PressOk();
  ASSERT_EQ(boxes.Shown().size(), 1u);
  EXPECT_EQ(boxes.Last().text, GetMsgElements(5004).text);
  EXPECT_EQ(Exported(station).size(), 1);
  EXPECT_EQ(LogRows(station), 0);
}

TEST(frmPlanningExporteren, OfflineTheQuestionComesBeforeTheChecksOfTheDestination) {
  const Station station(Station::Mode::Offline);
  global.exportPath.clear();
  Window window;
  {
    const MessageBoxScript boxes{kAnswerNo, kAnswerOk};
    window.PressOk();
    ASSERT_EQ(boxes.Shown().size(), 2u);
    EXPECT_EQ(boxes.Shown()[1].style, 48);
  }
  const MessageBoxScript boxes{kAnswerYes, kAnswerOk};
  window.PressOk();
  ASSERT_EQ(boxes.Shown().size(), 2u);
  EXPECT_EQ(boxes.Shown()[1].text, GetMsgElements(1500, u"Bestemming"_s).text);
}

TEST(frmPlanningExporteren, WithoutADestinationShowsMessage1500) {
  const Station station;
  global.exportPath = u"   "_s;
  Window window;
  const MessageBoxScript boxes{kAnswerOk};
  window.PressOk();
  ASSERT_EQ(boxes.Shown().size(), 1u);
  EXPECT_EQ(boxes.Last().text, GetMsgElements(1500, u"Bestemming"_s).text);
  EXPECT_TRUE(window.form.isVisible());
}

TEST(frmPlanningExporteren, AMissingFolderShowsMessage5001) {
  const Station station;
  FillLog(station);
  const QString missing = global.exportPath + u"\\weg"_s;
  for (const QString& path : {missing, u"Q:\\onbekend"_s, global.localDatabasePath}) {
    global.exportPath = path;
    Window window;
    const MessageBoxScript boxes{kAnswerOk};
    window.PressOk();
    ASSERT_EQ(boxes.Shown().size(), 1u) << path.toStdString();
    EXPECT_EQ(boxes.Last().text, GetMsgElements(5001, u"Bestemming"_s).text);
    EXPECT_TRUE(window.form.isVisible());
  }
  EXPECT_EQ(LogRows(station), 3);
}

TEST(frmPlanningExporteren, AnEmptyLogMakesNoFileAndStillReportsSuccess) {
  const Station station;
  Window window;
  const MessageBoxScript boxes{kAnswerOk};
  window.PressOk();
  EXPECT_TRUE(Exported(station).isEmpty());
  ASSERT_EQ(boxes.Shown().size(), 1u);
  EXPECT_EQ(boxes.Last().text, GetMsgElements(5004).text);
  EXPECT_FALSE(window.form.isVisible());
}

TEST(frmPlanningExporteren, ALogOfEmptyRowsMakesAnEmptyFile) {
  const Station station;
  station.OnLocal(u"INSERT INTO tblOfflineLog (ID, SqlSyntax) VALUES (1, \"  \")"_s);
  Window window;
  const MessageBoxScript boxes{kAnswerOk};
  window.PressOk();
  EXPECT_EQ(Content(station, u"20240131154507.tql"_s), QByteArray());
  EXPECT_EQ(Exported(station).size(), 1);
  EXPECT_EQ(LogRows(station), 0);
}

TEST(frmPlanningExporteren, ASecondExportWithinTheSameSecondReplacesTheFile) {
  const Station station;
  for (const QString& statement : {u"DELETE FROM one"_s, u"DELETE FROM two"_s}) {
    station.OnLocal(u"INSERT INTO tblOfflineLog (ID, SqlSyntax) VALUES (1, \""_s + statement + u"\")"_s);
    Window window;
    const MessageBoxScript boxes{kAnswerOk};
    window.PressOk();
  }
  EXPECT_EQ(Exported(station).size(), 1);
  EXPECT_EQ(Content(station, u"20240131154507.tql"_s), "DELETE FROM two;\r\n");
}

TEST(frmPlanningExporteren, ADestinationMayEndWithABackslash) {
  const Station station;
  FillLog(station);
  global.exportPath += u'\\';
  Window window;
  const MessageBoxScript boxes{kAnswerOk};
  window.PressOk();
  EXPECT_EQ(boxes.Shown().size(), 1u);
  EXPECT_EQ(Exported(station), QStringList{u"20240131154507.tql"_s});
  EXPECT_EQ(LogRows(station), 0);
}

TEST(frmPlanningExporteren, TheButtonAndEscCloseItWhenIdle) {
  const Station station;
  Window window;
  Child<QPushButton>(window.form, u"cmdAnnuleren"_s).click();
  EXPECT_FALSE(window.form.isVisible());
  Window other;
  QTest::keyClick(&other.form, Qt::Key_Escape);
  EXPECT_FALSE(other.form.isVisible());
}

TEST(frmPlanningExporteren, ReplacedCharactersAreReportedWithTheirStatements) {
  const Station station;
  station.OnLocal(u"INSERT INTO tblOfflineLog (ID, SqlSyntax) VALUES (1, \"UPDATE a SET b = 'Ώ'\")"_s);
  Window window;
  const MessageBoxScript boxes{kAnswerOk, kAnswerOk};
  window.PressOk();
  ASSERT_EQ(boxes.Shown().size(), 2u);
  EXPECT_EQ(boxes.Shown()[0].style, 48);
  EXPECT_TRUE(boxes.Shown()[0].text.contains(u"UPDATE a SET b = 'Ώ'"_s));
  EXPECT_EQ(Content(station, u"20240131154507.tql"_s), "UPDATE a SET b = '?';\r\n");
}

TEST(frmPlanningExporteren, ItsResultIsForTheMainWindow) {
  const Station station(Station::Mode::Offline);
  global.exported.reset();
  {
    Window window;
    const MessageBoxScript boxes{kAnswerYes, kAnswerOk};
    window.PressOk();
    EXPECT_FALSE(global.exported) << "an empty log makes no file";
  }
  FillLog(station);
  Window window;
  const MessageBoxScript boxes{kAnswerYes, kAnswerOk};
  window.PressOk();
  ASSERT_TRUE(global.exported);
  EXPECT_EQ(global.exported->path, global.exportPath + u"\\20240131154507.tql");
  EXPECT_EQ(global.exported->changes, 2) << "an empty row is not in the file";
  EXPECT_TRUE(global.exported->sameNumbers.isEmpty());
}

// Closing the item-spot list offline takes the copy again, without the new spot.
TEST(frmPlanningExporteren, NewRecordsWithTheSameNumberAreInTheResultWithoutABox) {
  const Station station(Station::Mode::Offline);
  const Catalogue catalogue = CurrentCatalogue();
  for (const QString& naam : {u"Apotheek"_s, u"Garage"_s}) {
    ItemSpotRow spot;
    spot.id = 42;
    spot.naam = naam;
    ASSERT_TRUE(Insert_tblItemSpots(spot, catalogue.databasePath, catalogue.itemSpots));
    ASSERT_TRUE(DeleteAllInTable(catalogue.itemSpots, catalogue.databasePath));
  }
  global.exported.reset();
  Window window;
  const MessageBoxScript boxes{kAnswerYes, kAnswerOk};
  window.PressOk();
  ASSERT_TRUE(global.exported);
  EXPECT_EQ(global.exported->sameNumbers, QStringList{u"item-spot 42 (Apotheek, Garage)"_s});
  EXPECT_TRUE(global.exported->warning.contains(u"Apotheek"_s));
  EXPECT_EQ(boxes.Shown().size(), 2u) << "no further box";
}
