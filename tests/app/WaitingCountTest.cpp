// SPDX-License-Identifier: MIT
// Every window shows the same number of waiting changes, in the same word.
#include "catalogue/frmItemSpots.h"
#include "data/Globals.h"
#include "data/LogQueue.h"
#include "data/WaitingChanges.h"
#include "export/frmOfflineLog.h"
#include "export/frmPlanningExporteren.h"
#include "platform/dao/Database.h"
#include "tests/app/MainTest.h"
#include "tests/support/Ui.h"
#include "tests/support/Waiting.h"

#include <QLabel>

using namespace Qt::StringLiterals;
using testing_support::Child;

class WaitingCount : public MainTest {
 protected:
  // An item with its list, an empty row, and so many spots.
  void LogItemAndSpots(int spots) const {
    QStringList statements{u"UPDATE tblItems SET Naam = 'x' WHERE ID = 1"_s,
                           u"DELETE FROM tblCopie_ItemsItemSpots WHERE tblCopie_ItemsItemSpots.ItemID = 1"_s,
                           u"INSERT INTO tblItemsItemSpots (ItemID, ItemSpotOrder, ItemSpotID) VALUES (1, 1, 3)"_s,
                           u" "_s};
    for (int spot = 1; spot <= spots; ++spot)
      statements += u"UPDATE tblItemSpots SET Aktief = 0 WHERE ID = %1"_s.arg(spot);
    dao::Database local = dao::OpenDatabase(global.localDatabasePath);
    for (qsizetype i = 0; i < statements.size(); ++i)
      local.Execute(u"INSERT INTO tblOfflineLog (ID, SqlSyntax) VALUES (%1, \"%2\")"_s.arg(i + 1).arg(statements[i]));
  }

  static QString TextIn(const QWidget& window, const QString& label) { return Child<QLabel>(window, label).text(); }
  static QString LogText() {
    frmOfflineLog log(nullptr);
    log.Form_Load();
    EXPECT_TRUE(WaitUntil([&] { return log.IsRead(); }));
    return TextIn(log, u"lblAantal"_s);
  }
  static QString ExportText() {
    frmPlanningExporteren form(nullptr);
    form.Form_Load();
    return TextIn(form, u"lblWachten"_s);
  }

  frmMain main_;
};

TEST_F(WaitingCount, IsTheSameInEveryWindowWithThousandsMarked) {
  Load(main_, u"Radio Proef"_s);
  LogItemAndSpots(1233);
  PressTool(main_, u"actInstellingen"_s);
  EXPECT_EQ(CountWaitingChanges(), 1234);
  EXPECT_EQ(Panel(main_, u"pnlLog"_s), u"1.234 wijzigingen nog niet geëxporteerd"_s);
  EXPECT_EQ(TextIn(main_, u"lblAantalExport"_s), u"1.234"_s);
  EXPECT_EQ(TextIn(main_, u"lblExport"_s), u"wijzigingen nog niet geëxporteerd"_s);
  EXPECT_EQ(LogText(), u"1.234 wijzigingen in de volgende export"_s);
  EXPECT_EQ(ExportText(), u"1.234 wijzigingen wachten op deze export."_s);
  frmItemSpots spots(nullptr);
  spots.Form_Load();
  EXPECT_TRUE(TextIn(spots, u"lblWachten"_s).startsWith(u"1.234 wijzigingen wachten op export; "_s))
      << TextIn(spots, u"lblWachten"_s).toStdString();
}

TEST_F(WaitingCount, OfOneIsSingular) {
  Load(main_, u"Radio Proef"_s);
  LogItemAndSpots(0);
  PressTool(main_, u"actInstellingen"_s);
  EXPECT_EQ(Panel(main_, u"pnlLog"_s), u"1 wijziging nog niet geëxporteerd"_s);
  EXPECT_EQ(LogText(), u"1 wijziging in de volgende export"_s);
  EXPECT_EQ(ExportText(), u"1 wijziging wacht op deze export."_s);
}

TEST_F(WaitingCount, OfNothingSaysThatTheExportWindowCanBeClosed) {
  Load(main_, u"Radio Proef"_s);
  EXPECT_EQ(Panel(main_, u"pnlLog"_s), u"0 wijzigingen nog niet geëxporteerd"_s);
  EXPECT_EQ(LogText(), QString());
  EXPECT_EQ(ExportText(), u"Er wacht niets op een export: u kunt dit venster sluiten."_s);
}
