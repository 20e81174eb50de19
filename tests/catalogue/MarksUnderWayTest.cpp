// SPDX-License-Identifier: MIT
// The item-spot list while the rows for its marks are still being read in the background.
#include "catalogue/frmItemSpots.h"
#include "data/Catalogue.h"
#include "platform/controls/ListBox.h"
#include "platform/dao/FileSystemScope.h"
#include "platform/dao/Storage.h"
#include "platform/files/HookedFileSystem.h"
#include "platform/runtime/HostPath.h"
#include "platform/runtime/Probe.h"
#include "tests/catalogue/CatalogueTest.h"
#include "tests/support/Gate.h"
#include "tests/support/ThreadCount.h"
#include "tests/support/Waiting.h"

#include <QFile>
#include <QLineEdit>

#include <atomic>
#include <cerrno>
#include <chrono>
#include <thread>

using namespace Qt::StringLiterals;
using controls::LineMark;
using testing_support::Gate;
using testing_support::ThreadCount;

namespace {

// During its lifetime background threads that open the current database block until the gate is opened.
class SlowInTheBackground {
 public:
  SlowInTheBackground() : path_(runtime::HostPath(CurrentCatalogue().databasePath)) {
    // After one probe the databases are checked in the thread that opens them; the fixed clock keeps it so.
    runtime::RequireThere(global.serverDatabasePath);
    runtime::RequireThere(global.localDatabasePath);
    holds_ = true;
  }
  ~SlowInTheBackground() {
    gate_.Open();
    EXPECT_TRUE(WaitUntil([this] { return ThreadCount() <= threads_; }));  // all checks have ended
  }
  SlowInTheBackground(const SlowInTheBackground&) = delete;
  SlowInTheBackground& operator=(const SlowInTheBackground&) = delete;

  void GoOn() { gate_.Open(); }
  bool IsHoldingUp() const { return gate_.IsWaitedAt() && !gate_.IsOpen(); }

 private:
  int Look(const QString& hostPath) {
    if (holds_ && hostPath == path_ && std::this_thread::get_id() != window_) gate_.Pass();
    return QFile::exists(hostPath) ? 0 : ENOENT;
  }

  int threads_ = ThreadCount();
  QString path_;
  std::thread::id window_ = std::this_thread::get_id();
  std::atomic<bool> holds_ = false;
  Gate gate_;
  runtime::ProbeLookScope look_{[this](const QString& hostPath) { return Look(hostPath); },
                                [] { return std::chrono::steady_clock::time_point(); }};
};

}  // namespace

class MarksUnderWay : public CatalogueTestInBothModes {
 protected:
  MarksUnderWay() {
    const QString path = AudioFile(u"spot.wav"_s);
    AddSpot({1, u"Appel"_s, path, 1});
    AddSpot({2, u"Banaan"_s, path, 1});
    AddSpot({3, u"Citroen"_s, path, 1});
  }

  // The marks of all lines, in order.
  static QList<LineMark> Marks(const Form& form) {
    QList<LineMark> marks;
    for (int line = 0; line < List(form).ListCount(); ++line)
      marks += List(form).Details(line).mark;
    return marks;
  }
  static bool GetsMarks(const Form& form, const QList<LineMark>& marks) {
    return WaitUntil([&] { return Marks(form) == marks; });
  }
  bool IsHeldUp(const SlowInTheBackground& slow) {
    return WaitUntil([&] { return slow.IsHoldingUp(); });
  }

  static inline const QList<LineMark> kNone{LineMark::None, LineMark::None, LineMark::None};
  static inline const QList<LineMark> kRunning{LineMark::Circle, LineMark::Circle, LineMark::Circle};
};

INSTANTIATE_TEST_SUITE_P(Modes, MarksUnderWay, ::testing::Values(Station::Mode::Online, Station::Mode::Offline),
                         ModeName);

TEST_P(MarksUnderWay, TheListIsShownFirstAndTheMarksFollow) {
  SlowInTheBackground slow;
  frmItemSpots form(nullptr);
  Open(form);
  ASSERT_TRUE(IsHeldUp(slow));
  EXPECT_EQ(Lines(form), (QStringList{u"Appel"_s, u"Banaan"_s, u"Citroen"_s}));
  EXPECT_EQ(Marks(form), kNone);
  slow.GoOn();
  EXPECT_TRUE(GetsMarks(form, kRunning));
}

TEST_P(MarksUnderWay, TheWindowAcceptsKeysAndClicks) {
  SlowInTheBackground slow;
  frmItemSpots form(nullptr);
  Open(form);
  ASSERT_TRUE(IsHeldUp(slow));
  QTest::keyClicks(&List(form), u"an"_s);
  EXPECT_EQ(Child<QLineEdit>(form, u"txtZoek"_s).text(), u"an"_s);
  EXPECT_EQ(Lines(form), QStringList{u"Banaan"_s});
  Select(form, u"Banaan"_s);
  EXPECT_TRUE(Enabled(form, u"cmdOpen"_s));
  Click(form, u"cmdDesaktiveer"_s);
  EXPECT_EQ(List(form).ListCount(), 2);
  EXPECT_TRUE(slow.IsHoldingUp());
  slow.GoOn();
  EXPECT_TRUE(GetsMarks(form, {LineMark::Circle, LineMark::Circle}));
  EXPECT_TRUE(boxes_.Shown().empty());
}

TEST_P(MarksUnderWay, ARefillMarksTheNewLines) {
  SlowInTheBackground slow;
  frmItemSpots form(nullptr);
  Open(form);
  ASSERT_TRUE(IsHeldUp(slow));
  const QString table = Table(u"ItemSpots"_s);
  station_.OnCurrent(u"DELETE FROM %1 WHERE ID = 1"_s.arg(table));
  station_.OnCurrent(u"UPDATE %1 SET EindDatum = 40000 WHERE ID = 2"_s.arg(table));
  QTest::keyClick(&form, Qt::Key_F5);
  EXPECT_EQ(Lines(form), (QStringList{u"Banaan"_s, u"Citroen"_s}));
  slow.GoOn();
  EXPECT_TRUE(GetsMarks(form, {LineMark::Square, LineMark::Circle}));
}

TEST_P(MarksUnderWay, ClosingStillRefreshesTheCopy) {
  if (!global.online) station_.OnServer(u"INSERT INTO tblItemSpots (ID, Naam, Aktief) VALUES (7, \"server\", 1)"_s);
  SlowInTheBackground slow;
  {
    frmItemSpots form(nullptr);
    Open(form);
    ASSERT_TRUE(IsHeldUp(slow));
    Click(form, u"cmdSluiten"_s);
    EXPECT_FALSE(form.isVisible());
    EXPECT_TRUE(slow.IsHoldingUp());
  }
  slow.GoOn();
  QCoreApplication::processEvents();
  EXPECT_EQ(Numbers(station_.LocalRows(u"SELECT ID FROM tblCopie_ItemSpots ORDER BY ID"_s), u"ID"_s),
            global.online ? (QList<int>{1, 2, 3}) : QList<int>{7});
  EXPECT_TRUE(boxes_.Shown().empty());
}

// Another thread is reading: a write by the window waits for it and is not refused.
TEST_P(MarksUnderWay, AWriteWaitsForTheReadingToEnd) {
  frmItemSpots form(nullptr);
  Open(form);
  ASSERT_TRUE(GetsMarks(form, kRunning));
  Gate reading;
  Gate refused;  // a lock that the window's write needs
  std::thread reader([&, path = CurrentCatalogue().databasePath] {
    const auto storage = dao::OpenStorage(path, {.readOnly = true});
    const auto turn = storage->Begin(dao::Access::Read);
    reading.Open();
    refused.Pass();
  });
  reading.Pass();
  Select(form, u"Banaan"_s);
  {
    files::HookedFileSystem watched(files::HostFileSystem(), [&](files::FileCall& call, const auto& make) {
      const std::int64_t result = make();
      if (call.kind == files::FileCall::Lock && call.path.extension() == ".mdb" && result == -EAGAIN) refused.Open();
      return result;
    });
    const dao::FileSystemScope scope(watched);
    Click(form, u"cmdDesaktiveer"_s);
  }
  EXPECT_TRUE(refused.IsOpen());
  refused.Open();
  reader.join();
  EXPECT_EQ(Lines(form), (QStringList{u"Appel"_s, u"Citroen"_s}));
  EXPECT_TRUE(boxes_.Shown().empty());
}

// A station's own database may lack the fields for the marks.
TEST_P(MarksUnderWay, AnErrorLeavesTheListWithoutMarksAndShowsNoBox) {
  const QString path = CurrentCatalogue().databasePath;
  ASSERT_TRUE(QFile::remove(runtime::HostPath(path)));
  dao::CreateDatabase(path);
  dao::TableDef table{Table(u"ItemSpots"_s), QList<dao::FieldDef>(3), {}};
  table.fields[0].name = u"ID"_s;
  table.fields[1].name = u"Naam"_s;
  table.fields[1].type = dao::FieldType::Text;
  table.fields[1].size = 50;
  table.fields[2].name = u"Aktief"_s;
  dao::OpenDatabase(path).CreateTable(table);
  station_.OnCurrent(u"INSERT INTO %1 (ID, Naam, Aktief) VALUES (1, \"Kaal\", 1)"_s.arg(table.name));
  frmItemSpots form(nullptr);
  form.ShowOnly(SpotView::ZonderBestand);
  Open(form);
  EXPECT_TRUE(WaitUntil([&] { return List(form).EmptyText().startsWith(u"Geen item-spots met de status"_s); }));
  QTest::keyClick(&form, Qt::Key_F5);
  EXPECT_EQ(List(form).ListCount(), 1);
  EXPECT_EQ(Marks(form), QList<LineMark>{LineMark::None});
  EXPECT_TRUE(boxes_.Shown().empty());
}
