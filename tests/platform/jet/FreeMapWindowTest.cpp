// SPDX-License-Identifier: MIT
// Maps of free pages as other programs write them: a bitmap that begins at a page other than 0, or bitmap pages. Pages
// below the window are freed and allocated, and the file stays sound.
#include "platform/files/MemoryFileSystem.h"
#include "platform/jet/check/Check.h"
#include "platform/jet/database/Database.h"
#include "platform/jet/pages/Files.h"
#include "platform/jet/table/TableWriter.h"
#include "tests/platform/jet/support/Agreement.h"
#include "tests/platform/jet/support/FreeMapImage.h"
#include "tests/platform/jet/support/RandomEditor.h"
#include "tests/platform/jet/support/Rounds.h"
#include "tests/platform/jet/support/SampleTable.h"
#include "tests/platform/jet/support/TinyDatabase.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <memory>
#include <random>
#include <string>
#include <vector>

namespace jet {
namespace {

constexpr const char* kWindowPath = "window.mdb";
const std::u16string kWindowTable = u"tblAlles";

// A file in memory that is closed, given another map layout, and opened again.
class WindowFile {
 public:
  WindowFile() {
    Database::Create(kWindowPath, files_);
    Open();
    WriteTurn turn(*database_);
    database_->CreateTable(test::AllKindsTable());
    turn.Commit();
  }

  Database& operator*() { return *database_; }
  Bytes Content() { return files_.Get(kWindowPath); }

  template <typename Change>
  void LayOut(Change change) {
    database_.reset();
    Bytes file = files_.Get(kWindowPath);
    test::FreeMapImage image(file);
    change(image);
    files_.Put(kWindowPath, file);
    Open();
  }

 private:
  void Open() {
    OpenOptions options;
    options.writable = true;
    options.wait = test::NoSleep();
    database_ = Database::Open(kWindowPath, options, files_);
  }

  files::MemoryFileSystem files_;
  std::unique_ptr<Database> database_;
};

std::string Remarks(Database& database) {
  std::string remarks;
  for (const Finding& finding : CheckDatabase(database))
    remarks += finding.Line() + '\n';
  return remarks;
}

// Inserts rows that fill about 600 pages.
void FillPages(Database& database) {
  WriteTurn turn(database);
  const auto writer = database.OpenWriter(kWindowTable);
  for (int i = 0; i < 60; ++i) {
    std::vector<Value> row(writer->Definition().columns.size());
    row[7] = u"rij " + std::u16string(1, static_cast<char16_t>(u'a' + i % 26));
    row[10] = Bytes(40'000, static_cast<std::uint8_t>(i));
    writer->Insert(row);
  }
  turn.Commit();
}

class FreeMapWindow : public testing::Test {
 protected:
  void SetUp() override { FillPages(*file_); }

  // Frees pages on both sides of the window, allocates them again, and checks.
  void EditAll() {
    test::RandomEditor editor(*file_, kWindowTable, 3, 60);
    for (int round = 0; round < 6; ++round) {
      ASSERT_NO_THROW(editor.Change(30));
      if (round == 3) {
        ASSERT_NO_THROW(editor.DeleteAll());
      }
      ASSERT_EQ(test::Problems(*file_), "") << "round " << round;
      ASSERT_NO_FATAL_FAILURE(editor.Verify());
    }
  }

  WindowFile file_;
};

TEST_F(FreeMapWindow, APageBelowItIsFreedAndTheFileStaysSound) {
  file_.LayOut([](test::FreeMapImage& image) { image.PutWindow(512); });
  EditAll();
}

TEST_F(FreeMapWindow, WithNoRoomForALongerRowBitmapPagesKeepAllMembers) {
  file_.LayOut([](test::FreeMapImage& image) {
    image.PutWindow(512);
    image.LeaveNoRoom();
  });
  EditAll();
}

TEST_F(FreeMapWindow, NoFreePageIsLostWhenItIsBroughtBack) {
  {
    test::RandomEditor editor(*file_, kWindowTable, 3);
    editor.DeleteAll();
  }
  const Bytes before = file_.Content();
  const auto pages = before.size() / kPageSize;
  file_.LayOut([](test::FreeMapImage& image) { image.PutWindow(104); });
  FillPages(*file_);
  test::RandomEditor(*file_, kWindowTable, 3).DeleteAll();  // frees pages on both sides of page 104
  EXPECT_EQ(test::Problems(*file_), "");
  FillPages(*file_);
  FillPages(*file_);
  test::RandomEditor(*file_, kWindowTable, 3).DeleteAll();
  const auto most = file_.Content().size() / kPageSize;
  FillPages(*file_);
  EXPECT_EQ(file_.Content().size() / kPageSize, most);
  EXPECT_GT(most, pages);
}

TEST_F(FreeMapWindow, IsARemarkOfTheCheck) {
  file_.LayOut([](test::FreeMapImage& image) { image.PutWindow(512); });
  EXPECT_EQ(Remarks(*file_), "opmerking: de kaart van vrije pagina's begint pas bij pagina 512\n");
}

// Counts of a long run.
struct Figures {
  int statements = 0;
  int windows = 0;
  int bitmaps = 0;
  int checks = 0;
  int askedOutside = 0;
};

// Gives the same free pages a random layout.
void LayOutAtRandom(WindowFile& file, std::mt19937& random, Figures& figures) {
  file.LayOut([&](test::FreeMapImage& image) {
    if (random() % 4 == 0 && image.PageCount() < 4000) {
      image.PutBitmapPages();
      ++figures.bitmaps;
      return;
    }
    const auto page = static_cast<std::uint32_t>(random() % (image.PageCount() + 1));
    image.PutWindow(page / 8 * 8);
    if (random() % 5 == 0) image.LeaveNoRoom();
    ++figures.windows;
  });
}

constexpr int kStatementsOfAFile = 4000;  // free pages below a window are lost, so the file grows

void ProveOneFile(std::mt19937& random, int most, Figures& figures) {
  WindowFile file;
  test::RandomEditor::Rows model;
  for (int done = 0; done < kStatementsOfAFile && figures.statements < most;) {
    LayOutAtRandom(file, random, figures);
    test::RandomEditor editor(*file, kWindowTable, static_cast<unsigned>(random()), 60);
    ASSERT_EQ(editor.Model(), model);
    const int count = static_cast<int>(1 + random() % 60);
    ASSERT_NO_THROW(editor.Change(count));
    if (random() % 40 == 0) {
      ASSERT_NO_THROW(editor.DeleteAll());
    }
    figures.statements += editor.Done();
    ++figures.checks;
    ASSERT_EQ(test::Problems(*file), "");
    ASSERT_NO_FATAL_FAILURE(editor.Verify());
    model = editor.Model();
    done += editor.Done();
  }
  ++figures.askedOutside;
  ASSERT_EQ(witness::Disagreements(*file, file.Content()), "");
}

TEST(FreeMapWindows, StaySoundWhereverTheyAreMovedTo) {
  const int most = test::Rounds("SPOTROOSTER_WINDOWS", 1500);
  std::mt19937 random(static_cast<unsigned>(test::Rounds("SPOTROOSTER_SEED", 1)));
  Figures figures;
  while (figures.statements < most && !testing::Test::HasFailure())
    ProveOneFile(random, most, figures);
  std::printf("%d statements, %d windows moved, %d times bitmap pages, %d checks, outside readers asked %d times\n",
              figures.statements, figures.windows, figures.bitmaps, figures.checks, figures.askedOutside);
}

}  // namespace
}  // namespace jet
