// SPDX-License-Identifier: MIT
// The daily copy of the shared database and the window that shows the copies, through the main window.
#include "app/DailyBackup.h"

#include "data/Backup.h"
#include "data/Globals.h"
#include "platform/controls/ListBox.h"
#include "platform/desktop/MessageBox.h"
#include "platform/runtime/Clock.h"
#include "platform/runtime/TextFile.h"
#include "tests/app/MainTest.h"
#include "tests/support/HeldDatabase.h"
#include "tests/support/ModalDriver.h"
#include "tests/support/Ui.h"

#include <QAction>
#include <QDialog>
#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;
using controls::ListBox;
using testing_support::Child;
using testing_support::ModalDriver;

namespace {

constexpr int kCopyPatience = 30000;  // ms
const QDateTime kMorning(QDate(2025, 3, 11), QTime(9, 12));

class DailyBackupTest : public MainTest {
 protected:
  static qsizetype Copies() { return BackupsOf(global.serverDatabasePath).size(); }
  void AddItem(int id) const { station_.OnServer(u"INSERT INTO tblItems (ID, Naam) VALUES (%1, \"x\")"_s.arg(id)); }
  static bool WaitForCopies(qsizetype count) {
    return QTest::qWaitFor([&] { return Copies() == count; }, kCopyPatience);
  }

  // The texts of the window with the copies: the labels, then the lines of the list with word and size.
  static QStringList Shown(const frmMain& main) {
    QStringList shown;
    ModalDriver driver;
    driver.OnNext(u"frmReservekopieen"_s, [&](QDialog& window) {
      const auto& list = Child<ListBox>(window, u"lstKopieen"_s);
      EXPECT_TRUE(QTest::qWaitFor([&] { return !list.EmptyText().endsWith(u"..."_s); }, kCopyPatience));
      for (const QString& name : {u"lblGedeeld"_s, u"lblLokaal"_s, u"lblProbleem"_s})
        shown += Child<QLabel>(window, name).text();
      for (int line = 0; line < list.ListCount(); ++line)
        shown += list.Text(line) + u" | "_s + list.Details(line).word + u" | "_s + list.Details(line).trailing;
      Child<QPushButton>(window, u"cmdSluiten"_s).click();
    });
    Action(main, u"actReservekopieen"_s).trigger();
    return shown;
  }
};

}  // namespace

TEST_F(DailyBackupTest, StartCopiesTheSharedDatabaseOnceADay) {
  QDateTime now = kMorning;
  const runtime::ClockScope clock([&] { return now; });
  {
    frmMain main;
    Load(main, u"Radio Proef"_s);
    ASSERT_TRUE(WaitForCopies(1));
  }
  AddItem(1);
  now = now.addSecs(1800);
  {
    frmMain main;
    Load(main, u"Radio Proef"_s);
    QTest::qWait(300);
    EXPECT_EQ(Copies(), 1);
    now = now.addDays(1);
    Action(main, u"actItems"_s).trigger();  // the program stayed open until the next day
    EXPECT_TRUE(WaitForCopies(2));
  }
}

TEST_F(DailyBackupTest, OfflineStationAndDisabledSettingMakeNoCopy) {
  {
    const QString settings = global.programFolder + u"\\ovalis.ini"_s;
    const QByteArray before = runtime::ReadFile(settings);
    runtime::WriteFile(settings, before + "\r\n[Backup]\r\nEnabled=0\r\n");
    frmMain main;
    Load(main, u"Radio Proef"_s);
    QTest::qWait(300);
    EXPECT_EQ(Copies(), 0);
    EXPECT_TRUE(Shown(main).at(2).contains(u"Enabled=0"_s));
    runtime::WriteFile(settings, before);
  }
  station_.OnLocal(u"UPDATE cdeInstellingen SET InitValue = \"0\" WHERE InitCode = \"OnlineYn\""_s);
  frmMain main;
  Load(main, u"Radio Proef"_s);
  QTest::qWait(300);
  EXPECT_EQ(Copies(), 0);
}

TEST_F(DailyBackupTest, WindowShowsTheCopiesWithAgeAndSize) {
  QDateTime now = kMorning;
  const runtime::ClockScope clock([&] { return now; });
  frmMain main;
  Load(main, u"Radio Proef"_s);
  ASSERT_TRUE(WaitForCopies(1));
  now = now.addDays(3);
  const QStringList shown = Shown(main);
  ASSERT_EQ(shown.size(), 4);
  EXPECT_EQ(shown.at(0), u"Gedeelde database: 1 kopie, de laatste van dinsdag 11 maart 2025, 09:12 (3 dagen oud)."_s);
  EXPECT_EQ(shown.at(1), u"Lokale database: nog geen reservekopie."_s);
  EXPECT_EQ(shown.at(2), u""_s);
  EXPECT_TRUE(shown.at(3).startsWith(u"Gedeelde database, dinsdag 11 maart 2025, 09:12 | 3 dagen oud | "_s))
      << shown.at(3).toStdString();
  EXPECT_TRUE(shown.at(3).endsWith(u" kB"_s)) << shown.at(3).toStdString();
}

TEST_F(DailyBackupTest, WhileAnotherWritesTheStationOpensAndTheWindowSaysWhyThereIsNoCopy) {
  QDateTime now = kMorning;
  const runtime::ClockScope clock([&] { return now; });
  const desktop::MessageBoxScript boxes;
  frmMain main;
  {
    const testing_support::HeldDatabase held(station_.ServerFolder() + u"/OvalistoServer.mdb"_s);
    Load(main, u"Radio Proef"_s);
    QTest::qWait(300);
    EXPECT_EQ(Panel(main, u"pnlModus"_s), u"Online"_s);
    QString problem;
    ASSERT_TRUE(QTest::qWaitFor([&] { return !(problem = Shown(main).at(2)).isEmpty(); }, kCopyPatience));
    EXPECT_TRUE(problem.contains(u"in gebruik"_s)) << problem.toStdString();
  }
  EXPECT_EQ(Copies(), 0);
  now = now.addSecs(900);
  Action(main, u"actItems"_s).trigger();
  EXPECT_TRUE(WaitForCopies(1));
  EXPECT_TRUE(boxes.Shown().empty());
}
