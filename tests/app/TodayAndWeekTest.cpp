// SPDX-License-Identifier: MIT
// The main window and the week view count what runs today alike.
#include "catalogue/frmWeek.h"
#include "platform/controls/ListBox.h"
#include "platform/dao/Database.h"
#include "platform/runtime/HostPath.h"
#include "platform/runtime/Probe.h"
#include "platform/runtime/TextFile.h"
#include "tests/app/MainTest.h"
#include "tests/support/Gate.h"
#include "tests/support/Ui.h"
#include "tests/support/Waiting.h"

#include <QFile>
#include <QLabel>
#include <QScopeGuard>
#include <QTest>

#include <cerrno>

using namespace Qt::StringLiterals;
using testing_support::Child;

namespace {

class TodayAndWeek : public MainTest {
 protected:
  // A spot without limits; its file is made when asked for.
  void AddSpot(int id, bool withFile) {
    const QString path = runtime::PathText(station_.AudioFolder()) + u"\\%1.wav"_s.arg(id);
    if (withFile) runtime::WriteFile(path, "x");
    dao::OpenDatabase(runtime::PathText(station_.ServerFolder()) + u"\\OvalistoServer.mdb"_s)
        .Execute(u"INSERT INTO tblItemSpots (ID, Naam, Path, Aktief) VALUES (%1, \"spot %1\", \"%2\", 1)"_s.arg(id).arg(
            path));
  }
  static QString Today(const QWidget& main) { return Child<QLabel>(main, u"lblAantalLopen"_s).text(); }
  // Of the selected line, which is the present day.
  static QString InWeek(const QWidget& week) {
    const auto& days = Child<controls::ListBox>(week, u"lstDagen"_s);
    return days.Details(days.ListIndex()).word;
  }
};

}  // namespace

TEST_F(TodayAndWeek, CountTheSameAndNothingBeforeTheFilesAreLookedAt) {
  AddSpot(1, true);
  AddSpot(2, true);
  AddSpot(3, false);
  testing_support::Gate gate;
  const runtime::ProbeLookScope look([&](const QString& hostPath) {
    if (hostPath.endsWith(u".wav"_s)) gate.Pass();
    return QFile::exists(hostPath) ? 0 : ENOENT;
  });
  frmMain main;
  Load(main, u"Radio Proef"_s);
  const auto opened = qScopeGuard([&] { gate.Open(); });  // after a failure too: the window waits for its reading
  ASSERT_TRUE(WaitUntil([&] { return gate.IsWaitedAt(); }));
  ASSERT_FALSE(QTest::qWaitFor([&] { return Today(main) != u"–"_s; }, 300)) << Today(main).toStdString();
  gate.Open();
  frmWeek week(nullptr);
  week.Form_Load();
  ASSERT_TRUE(WaitUntil([&] { return Today(main) != u"–"_s && week.IsPlanned(); }));
  EXPECT_EQ(Today(main), u"2"_s);
  EXPECT_EQ(InWeek(week), u"2 lopen, 1 zonder bestand"_s);
}
