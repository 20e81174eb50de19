// SPDX-License-Identifier: MIT
// The window that carries out exports, with real files and a real shared database.
#include "data/Globals.h"
#include "export/frmExportsVerwerken.h"
#include "platform/controls/ListBox.h"
#include "tests/export/apply/Shared.h"
#include "tests/support/Ui.h"
#include "tests/support/Waiting.h"

#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTableWidget>

using namespace Qt::StringLiterals;
using controls::ListBox;
using testing_support::Child;

namespace {

class ApplyWindow : public SharedStation {
 protected:
  ApplyWindow() : kept_(global) {
    Fill();
    global.serverDatabasePath = Server();
    global.exportPath = Folder(u"A"_s);
  }
  ~ApplyWindow() override { global = kept_; }

  void Open() {
    form_ = std::make_unique<frmExportsVerwerken>(nullptr);
    form_->Form_Load();
    form_->show();
    AwaitContents();
  }
  void AwaitContents() const {
    ASSERT_TRUE(WaitUntil([&] { return form_->IsRead(); }));
  }
  void Press(const QString& button) const { Child<QPushButton>(*form_, button).click(); }

  ListBox& List(const QString& name) const { return Child<ListBox>(*form_, name); }
  ListBox& Files() const { return List(u"lstBestanden"_s); }
  // Text and word of each line.
  QStringList Explanation() const {
    QStringList lines;
    for (int i = 0; i < List(u"lstUitleg"_s).ListCount(); ++i)
      lines += List(u"lstUitleg"_s).Text(i) + u'|' + List(u"lstUitleg"_s).Details(i).word;
    return lines;
  }
  QStringList TableRow(int row) const {
    const auto& table = Child<QTableWidget>(*form_, u"tblVelden"_s);
    QStringList cells;
    for (int column = 0; column < table.columnCount(); ++column)
      cells += table.item(row, column)->text();
    return cells;
  }
  QString ConflictCaption() const { return Child<QTabWidget>(*form_, u"tabVerwerken"_s).tabText(1); }

  std::unique_ptr<frmExportsVerwerken> form_;

 private:
  Globals kept_;
};

const QString kLastDayOfBakker = u"SELECT EindDatum FROM tblItemSpots WHERE ID = 1"_s;

}  // namespace

TEST_F(ApplyWindow, AFileIsExplainedBeforeAndCarriedOutOnce) {
  Workstation a = At(u"A"_s);
  a.InsertSpot(NewSpot(4, u"Apotheek"_s));
  a.Export();
  Open();
  ASSERT_EQ(Files().ListCount(), 1);
  EXPECT_EQ(Files().Text(0), u"20261122080100.tql"_s);
  EXPECT_EQ(Files().Details(0).word, u"niet verwerkt"_s);
  EXPECT_EQ(Files().Details(0).trailing, u"1 wijziging"_s);
  EXPECT_EQ(Child<QLineEdit>(*form_, u"txtBron"_s).text(), u"A"_s);
  Files().SetListIndex(0);
  ASSERT_EQ(Explanation().size(), 2);
  EXPECT_EQ(Explanation()[0], u"Zou doen: 1 nieuw|"_s);
  EXPECT_TRUE(Explanation()[1].contains(u"Apotheek"_s) && Explanation()[1].endsWith(u"|nieuw"_s));
  EXPECT_EQ(Spots().size(), 3) << "explaining changes nothing";
  Press(u"cmdVerwerken"_s);
  EXPECT_EQ(Spots().size(), 4);
  EXPECT_TRUE(Files().Details(0).word.startsWith(u"verwerkt op "_s));
  EXPECT_FALSE(Child<QPushButton>(*form_, u"cmdVerwerken"_s).isEnabled());
  Open();
  EXPECT_TRUE(Files().Details(0).word.startsWith(u"verwerkt op "_s));
  EXPECT_FALSE(Child<QPushButton>(*form_, u"cmdVerwerken"_s).isEnabled());
}

TEST_F(ApplyWindow, AConflictIsShownFieldByFieldAndSettledEitherWay) {
  Workstation a = At(u"A"_s);
  ItemSpotRow bakker = a.Spot(1);
  bakker.eindDatum = 46000;
  a.UpdateSpot(bakker);
  a.Export();
  OnServer(u"UPDATE tblItemSpots SET EindDatum = 45800 WHERE ID = 1"_s);
  Open();
  EXPECT_EQ(ConflictCaption(), u"&Botsingen"_s);
  Press(u"cmdVerwerken"_s);
  EXPECT_EQ(ConflictCaption(), u"&Botsingen (1)"_s);
  List(u"lstBotsingen"_s).SetListIndex(0);
  EXPECT_EQ(TableRow(0), (QStringList{u"Einddatum"_s, u"12-02-2025"_s, u"23-05-2025"_s, u"09-12-2025"_s}));
  Press(u"cmdOffline"_s);
  EXPECT_EQ(Rows(kLastDayOfBakker), QStringList{u"2025-12-09T00:00:00.000"_s});
  EXPECT_EQ(List(u"lstBotsingen"_s).ListCount(), 0);
  EXPECT_FALSE(Child<QPushButton>(*form_, u"cmdServer"_s).isEnabled());
}

TEST_F(ApplyWindow, AfterProcessingTheReportStaysInSightWithWhatWaits) {
  Workstation a = At(u"A"_s);
  a.InsertSpot(NewSpot(4, u"Apotheek"_s));
  ItemSpotRow bakker = a.Spot(1);
  bakker.eindDatum = 46000;
  a.UpdateSpot(bakker);
  a.Export();
  a.InsertSpot(NewSpot(5, u"Garage"_s));
  a.Export();
  OnServer(u"INSERT INTO tblItemSpots (ID, Naam) VALUES (4, \"Bloemen\")"_s);
  OnServer(u"UPDATE tblItemSpots SET EindDatum = 45800 WHERE ID = 1"_s);
  Open();
  EXPECT_EQ(Child<QLabel>(*form_, u"lblAantal"_s).text(), u"2 bestanden te verwerken"_s);
  Press(u"cmdVerwerken"_s);
  EXPECT_EQ(Files().ListIndex(), 0) << "the file with the conflict, not the last one";
  const QStringList shown = Explanation().filter(u"kreeg nummer 5"_s);
  ASSERT_EQ(shown.size(), 1) << Explanation().join(u'\n').toStdString();
  EXPECT_TRUE(shown[0].contains(u"Apotheek"_s));
  EXPECT_EQ(Child<QLabel>(*form_, u"lblAantal"_s).text(),
            u"Alle bestanden zijn verwerkt; 1 botsing wacht op uw keuze"_s);
  List(u"lstBotsingen"_s).SetListIndex(0);
  Press(u"cmdServer"_s);
  EXPECT_EQ(Child<QLabel>(*form_, u"lblAantal"_s).text(), u"Alle bestanden zijn verwerkt"_s);
}

TEST_F(ApplyWindow, AFileThatCannotBeReadSaysWhyAndTheOthersGoThrough) {
  Workstation a = At(u"A"_s);
  a.InsertSpot(NewSpot(4, u"Apotheek"_s));
  a.Export();
  QFile bad(Folder(u"A"_s) + u"/20261122090000.tql"_s);
  ASSERT_TRUE(bad.open(QIODevice::WriteOnly) && bad.write("DROP TABLE tblItems;\r\n") > 0);
  bad.close();
  Open();
  ASSERT_EQ(Files().ListCount(), 2);
  EXPECT_EQ(Files().Details(1).word, u"niet te lezen"_s);
  Files().SetListIndex(1);
  ASSERT_EQ(Explanation().size(), 1);
  EXPECT_TRUE(Explanation()[0].contains(u"20261122090000.tql"_s)) << Explanation()[0].toStdString();
  Press(u"cmdVerwerken"_s);
  EXPECT_EQ(Spots().size(), 4);
}

TEST_F(ApplyWindow, AFileWithoutABasisNeedsItsWorkstationByName) {
  Workstation a = At(u"A"_s);
  a.InsertSpot(NewSpot(4, u"Apotheek"_s));
  a.Export(false);
  Open();
  Files().SetListIndex(0);
  EXPECT_EQ(Explanation(), QStringList{u"Vul eerst het werkstation in dat dit bestand maakte.|"_s});
  Press(u"cmdVerwerken"_s);
  EXPECT_EQ(Spots().size(), 3);
  EXPECT_TRUE(Explanation().value(0).startsWith(u"Vul eerst het werkstation in"_s)) << "the refusal stays in sight";
  Child<QLineEdit>(*form_, u"txtBron"_s).setText(u"STUDIO2"_s);
  Press(u"cmdVerwerken"_s);
  EXPECT_EQ(Spots().size(), 4);
}

TEST_F(ApplyWindow, AServerThatIsAwayIsNamed) {
  Workstation a = At(u"A"_s);
  a.InsertSpot(NewSpot(4, u"Apotheek"_s));
  a.Export();
  global.serverDatabasePath = u"Q:\\weg.mdb"_s;
  Open();
  EXPECT_EQ(Files().ListCount(), 0);
  EXPECT_TRUE(Files().EmptyText().contains(u"Q:"_s)) << Files().EmptyText().toStdString();
}
