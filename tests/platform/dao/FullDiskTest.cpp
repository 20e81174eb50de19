// SPDX-License-Identifier: MIT
// On a full disk each statement and each copy of a file is an error with the reason, and all files keep their bytes.
#include "platform/dao/FrozenDatabase.h"
#include "platform/dao/RestoreTables.h"
#include "tests/platform/dao/Scratch.h"
#include "tests/support/FolderContent.h"
#include "tests/support/Hindrance.h"

#include <QFileInfo>

#include <gtest/gtest.h>

#include <functional>

using namespace Qt::StringLiterals;
using namespace scratch;

namespace {

const QString kLong = QString(60000, u'x');

class FullDisk : public testing::Test {
 protected:
  FullDisk() {
    // Long texts, so that a copy needs more pages.
    for (const QString& name : {u"bron.mdb"_s, u"doel.mdb"_s}) {
      dao::Database database = s_.Another(name);
      database.CreateTable(Spots());
      for (int id = 1; id <= 3; ++id)
        database.Execute(u"INSERT INTO tblSpots (ID, Naam, Memo) VALUES (%1, \"%2\", \"%3\")"_s.arg(
            QString::number(id), name, QString(3000, u'm')));
    }
  }

  QString Path(const QString& name) const { return s_.Path(name); }
  dao::Database Open(const QString& name) const { return dao::OpenDatabase(Path(name)); }

  // Numbers and texts that differ from those in the other files.
  void Grow(const QString& name) const {
    Open(name).Execute(u"UPDATE tblSpots SET Memo = \"%1\", ID = ID + 10"_s.arg(kLong));
  }

  // With every amount of free space: none for the journal, for a part of it, for it but not for the file to grow. A
  // file size limit of the process simulates a full disk; its reason has its own text.
  void ExpectRefused(const QString& file, const std::function<void()>& action) const {
    const auto before = testing_support::FolderContent(Path(u"."_s));
    const auto size = static_cast<rlim_t>(QFileInfo(s_.Path(file)).size());
    for (const rlim_t room : {rlim_t{100}, rlim_t{5000}, size}) {
      QString error;
      {
        const testing_support::FullDisk full(room);
        error = ErrorOf(action);
      }
      EXPECT_TRUE(error.contains(file) && error.contains(u"het bestand wordt te groot"_s))
          << room << ": " << error.toStdString();
      ASSERT_TRUE(testing_support::FolderContent(Path(u"."_s)) == before) << room;
    }
    action();
    EXPECT_FALSE(testing_support::FolderContent(Path(u"."_s)) == before);  // without the limit it succeeds
  }

 private:
  const Scratch s_;
};

TEST_F(FullDisk, InsertLeavesTheTableAsItWas) {
  ExpectRefused(u"doel.mdb"_s, [&] {
    Open(u"doel.mdb"_s).Execute(u"INSERT INTO tblSpots (ID, Memo) VALUES (9, \"%1\")"_s.arg(kLong));
  });
}

TEST_F(FullDisk, UpdateLeavesTheRowAsItWas) {
  ExpectRefused(u"doel.mdb"_s, [&] { Open(u"doel.mdb"_s).Execute(u"UPDATE tblSpots SET Memo = \"%1\""_s.arg(kLong)); });
}

TEST_F(FullDisk, CopyIntoAnotherFileLeavesBothAsTheyWere) {
  Grow(u"bron.mdb"_s);
  ExpectRefused(u"doel.mdb"_s, [&] {
    Open(u"bron.mdb"_s).Execute(u"INSERT INTO tblSpots IN \"%1\" SELECT * FROM tblSpots"_s.arg(Path(u"doel.mdb"_s)));
  });
}

TEST_F(FullDisk, ANewTableIsNotCreatedInPart) {
  ExpectRefused(u"doel.mdb"_s, [&] { Open(u"doel.mdb"_s).CreateTable(Spots(u"tblAnders"_s)); });
}

TEST_F(FullDisk, RowsAreNotRestoredInPart) {
  Grow(u"bron.mdb"_s);
  ExpectRefused(u"doel.mdb"_s, [&] {
    dao::RestoreTables(Path(u"bron.mdb"_s), Path(u"doel.mdb"_s), {{u"tblSpots"_s, u"tblSpots"_s}});
  });
}

TEST_F(FullDisk, TheFileIsNotCopiedInPart) {
  Grow(u"bron.mdb"_s);
  ExpectRefused(u"kopie.mdb"_s, [&] { dao::FrozenDatabase(Path(u"bron.mdb"_s)).CopyTo(Path(u"kopie.mdb"_s)); });
}

}  // namespace
