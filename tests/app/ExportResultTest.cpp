// SPDX-License-Identifier: MIT
// What the main window shows of offline work: what waits, and what the last export wrote.
#include "data/Globals.h"
#include "platform/desktop/MessageBox.h"
#include "platform/runtime/HostPath.h"
#include "tests/app/MainTest.h"
#include "tests/support/Ui.h"
#include "tests/support/Waiting.h"

#include <QDesktopServices>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QUrl>

using namespace Qt::StringLiterals;
using desktop::MessageBoxScript;
using testing_support::Child;

namespace {

// Receives the folders that are to be opened, in place of the desktop.
class FolderOpener : public QObject {
  Q_OBJECT

 public:
  FolderOpener() { QDesktopServices::setUrlHandler(u"file"_s, this, "Open"); }
  ~FolderOpener() override { QDesktopServices::unsetUrlHandler(u"file"_s); }

  Q_INVOKABLE void Open(const QUrl& url) { opened += url.toLocalFile(); }

  QStringList opened;
};

}  // namespace

class ExportResult : public MainTest {
 protected:
  ExportResult() { Load(main_, u"Radio Proef"_s); }

  void ExportAs(const ExportedLog& exported) {
    whenOpened_ = [exported] { global.exported = exported; };
    PressTool(main_, u"actExporteren"_s);
    whenOpened_ = {};
  }
  bool IsShown() const { return Child<QGroupBox>(main_, u"fraExport"_s).isVisible(); }
  QString Line(const QString& label) const {
    const auto& line = Child<QLabel>(main_, label);
    return line.isVisible() ? line.text() : QString();
  }

  frmMain main_;
};

TEST_F(ExportResult, FileStatementsAndRealFolderAreShownAndTheFolderOpens) {
  EXPECT_FALSE(IsShown());
  ExportAs({global.exportPath + u"\\20261122113000.tql", 14, {}, {}});
  ASSERT_TRUE(IsShown());
  EXPECT_EQ(Line(u"lblResultaat"_s), u"20261122113000.tql: 14 wijzigingen"_s);
  EXPECT_EQ(Line(u"lblResultaatMap"_s), station_.ExportFolder());
  EXPECT_EQ(Line(u"lblZelfdeNummers"_s), QString());
  EXPECT_FALSE(global.exported) << "shown once";
  const FolderOpener opener;
  Child<QPushButton>(main_, u"cmdMapOpenen"_s).click();
  EXPECT_EQ(opener.opened, QStringList{station_.ExportFolder()});
  PressTool(main_, u"actItems"_s);
  EXPECT_TRUE(IsShown()) << "it stays while other screens are used";
}

TEST_F(ExportResult, IsInSightAlsoInASmallWindow) {
  auto& panel = Child<QGroupBox>(main_, u"fraExport"_s);
  constexpr int kSmall = 400;
  main_.resize(main_.width(), kSmall);
  ExportAs({global.exportPath + u"\\20261122113000.tql", 14, {}, {}});
  EXPECT_TRUE(WaitUntil([&] { return panel.visibleRegion().boundingRect() == panel.rect(); }));
  EXPECT_GT(main_.height(), kSmall);
  // No higher: the page scrolls.
  main_.setMaximumHeight(kSmall);
  ExportAs({global.exportPath + u"\\20261122113001.tql", 15, {}, {}});
  EXPECT_TRUE(WaitUntil([&] { return panel.visibleRegion().boundingRect() == panel.rect(); }));
}

TEST_F(ExportResult, NewRecordsWithTheSameNumberAreNamed) {
  const MessageBoxScript boxes;
  ExportAs({global.exportPath + u"\\20261122113000.tql", 1, {u"item-spot 42 (Apotheek, Garage)"_s}, u"uitleg"_s});
  EXPECT_EQ(Line(u"lblResultaat"_s), u"20261122113000.tql: 1 wijziging"_s);
  EXPECT_TRUE(Line(u"lblZelfdeNummers"_s).endsWith(u"item-spot 42 (Apotheek, Garage)"_s));
  EXPECT_EQ(Child<QLabel>(main_, u"lblZelfdeNummers"_s).toolTip(), u"uitleg"_s);
  EXPECT_TRUE(boxes.Shown().empty());
}

TEST_F(ExportResult, TonenShowsWhatWaits) {
  Child<QPushButton>(main_, u"cmdWachten"_s).click();
  Action(main_, u"actOfflineLog"_s).trigger();
  const QList<Screen> twice{Screen::OfflineLog, Screen::OfflineLog};
  EXPECT_EQ(opened_, twice);
  EXPECT_EQ(owner_, &main_);
}

// An item that is saved with its list of spots is one change, and several statements.
TEST_F(ExportResult, ChangesAreCountedAsUsersCountThem) {
  whenOpened_ = [&] {
    int id = 0;
    for (const QString& statement :
         {u"UPDATE tblItems SET Naam = 'x' WHERE ID = 1"_s,
          u"DELETE FROM tblCopie_ItemsItemSpots WHERE tblCopie_ItemsItemSpots.ItemID = 1"_s,
          u"INSERT INTO tblItemsItemSpots (ItemID, ItemSpotOrder, ItemSpotID) VALUES (1, 1, 3)"_s}) {
      station_.OnLocal(
          u"INSERT INTO tblOfflineLog (ID, SqlSyntax) VALUES (%1, \"%2\")"_s.arg(QString::number(++id), statement));
    }
  };
  PressTool(main_, u"actItems"_s);
  EXPECT_EQ(Panel(main_, u"pnlLog"_s), u"1 wijziging nog niet geëxporteerd"_s);
  EXPECT_EQ(Line(u"lblAantalExport"_s), u"1"_s);
}

#include "ExportResultTest.moc"
