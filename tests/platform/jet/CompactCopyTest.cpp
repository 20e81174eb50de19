// SPDX-License-Identifier: MIT
// What compacting keeps (passwords, encoding, table numbers, keys that cannot be computed) and what it refuses.
#include "platform/jet/check/Check.h"
#include "platform/jet/check/Compact.h"
#include "platform/jet/pages/Pages.h"
#include "platform/jet/table/TableWriter.h"
#include "platform/jet/values/Codec.h"
#include "platform/jet/values/StoredText.h"
#include "tests/platform/jet/DatabaseImage.h"
#include "tests/platform/jet/support/Places.h"
#include "tests/platform/jet/support/SampleTable.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

namespace jet {
namespace {

using test::FreshDatabase;
using test::MessageOf;
using test::Spot;

constexpr const char* kFreshPath = FreshDatabase::kPath;
using test::kTable;

void AddRows(FreshDatabase& database, int count) {
  WriteTurn turn(*database);
  const auto writer = database->OpenWriter(kTable);
  for (int i = 0; i < count; ++i) {
    std::vector<Value> row = Spot(u"Spot", std::u16string(static_cast<std::size_t>(i) * 100, u't'));
    writer->Insert(row);
  }
  turn.Commit();
}

// Changes the unmasked header of a file.
void ChangeHeader(Bytes& file, const std::function<void(std::span<std::uint8_t, kPageSize>)>& change) {
  const std::span<std::uint8_t, kPageSize> header(file.data(), kPageSize);
  ApplyHeaderMask(header);
  change(header);
  ApplyHeaderMask(header);
}

void SetPassword(Bytes& file, const std::u16string& password) {
  ChangeHeader(file, [&](std::span<std::uint8_t, kPageSize> header) {
    constexpr std::size_t kPasswordAt = 0x42;
    const Bytes text = EncodeText(password, false);
    for (std::size_t i = 0; i < text.size(); ++i)
      header[kPasswordAt + i] ^= text[i];
  });
}

void Encode(Bytes& file, std::uint32_t key) {
  ChangeHeader(file, [&](std::span<std::uint8_t, kPageSize> header) { Store(&header[0x3E], key); });
  for (std::uint32_t number = 1; number < file.size() / kPageSize; ++number) {
    PageBytes page;
    const auto at = file.begin() + static_cast<std::ptrdiff_t>(number * kPageSize);
    std::copy_n(at, kPageSize, page.begin());
    ApplyPageEncoding(key, number, page);
    std::copy(page.begin(), page.end(), at);
  }
}

std::size_t CountRows(FileSystem& files, const FileSystem::Path& path, const OpenOptions& options) {
  return Database::Open(path, options, files)->OpenTable(kTable).CountRows();
}

TEST(CompactKeeps, PasswordAndEncoding) {
  FreshDatabase database;
  database.Create(test::SpotsTable());
  AddRows(database, 50);
  OpenOptions options;
  options.password = u"geheim";
  for (const bool encoded : {false, true}) {
    Bytes content = database.Files().Get(kFreshPath);
    SetPassword(content, options.password);
    if (encoded) Encode(content, 0xA7B773E0);
    for (const bool inPlace : {false, true}) {
      files::MemoryFileSystem files;
      files.Put("/data/old.mdb", content);
      if (inPlace) {
        Compact("/data/old.mdb", options, files);
      } else {
        CompactInto("/data/old.mdb", "/data/new.mdb", options, files);
      }
      const FileSystem::Path result = inPlace ? "/data/old.mdb" : "/data/new.mdb";
      EXPECT_NE(MessageOf([&] { Database::Open(result, {}, files); }).find("wachtwoord nodig"), std::string::npos);
      EXPECT_EQ(CountRows(files, result, options), 50U);
      const Bytes compacted = files.Get(result);
      const auto end = compacted.begin() + kChangeMark;  // after it: bytes that differ in every file and commit
      EXPECT_TRUE(std::equal(compacted.begin(), end, content.begin()));
      EXPECT_EQ(Database::Open(result, options, files)->DatabaseHeader().encodingKey, encoded ? 0xA7B773E0 : 0);
      // Only in a file without encoding are the names in the catalogue readable.
      const std::u16string name = u"MSysObjects";
      const Bytes text = EncodeText(name, false);
      EXPECT_EQ(std::search(compacted.begin(), compacted.end(), text.begin(), text.end()) == compacted.end(), encoded);
    }
  }
}

// A table whose definition is after many empty pages gets a new number, and so do all references to it.
TEST(CompactKeeps, ATableWhoseNumberChanges) {
  FreshDatabase database;
  database.Create(test::SpotsTable());
  AddRows(database, 200);
  TableDefinition other = test::AllKindsTable();
  other.name = u"Later";
  database.Create(other);
  {
    WriteTurn turn(*database);
    database->OpenWriter(kTable)->DeleteAll();
    turn.Commit();
  }
  const auto number = [](Database& opened, const char16_t* name) { return opened.OpenTable(name).Def().page; };
  const std::uint32_t before = number(*database, u"Later");
  Compact(kFreshPath, {}, database.Files());
  EXPECT_LT(number(*database, u"Later"), before);
  EXPECT_EQ(number(*database, u"tblSpots"), 16U);
  EXPECT_EQ(database.Findings(), "");
  EXPECT_LT(database.Files().Get(kFreshPath).size(), 40 * kPageSize);
  // Its permissions have the new number.
  const Table permissions = database->OpenTable(u"MSysACEs");
  TableCursor rows = permissions.Scan({permissions.Definition().FindColumn(u"ObjectId")});
  int found = 0;
  while (rows.Next())
    found += rows.Values()[0] == Value(std::int64_t{number(*database, u"Later")}) ? 1 : 0;
  EXPECT_EQ(found, 2);
}

// Gives the indexed text column a sort order that this library does not know.
void MakeOrderUnknown(FreshDatabase& database) {
  WriteTurn turn(*database);
  Transaction& pages = database->Shared().Changes();
  const StoredTable def = database->OpenTable(kTable).Def();
  Bytes stream = ReadTableDefStream(pages, def);
  constexpr std::size_t kColumnBytes = 25;
  const std::size_t columnsAt = 63 + 12 * def.realIndexes.size();
  for (std::size_t i = 0; i < def.columns.size(); ++i)
    Store(pages.Change(def.page).data() + columnsAt + i * kColumnBytes + 11, std::uint16_t{0x0415});
  turn.Commit();
}

TEST(CompactKeeps, KeysThatCannotBeComputed) {
  FreshDatabase database;
  database.Create(test::SpotsTable());
  AddRows(database, 60);
  MakeOrderUnknown(database);
  const auto keys = [&] {
    const Table table = database->OpenTable(kTable);
    std::vector<std::string> all;
    for (std::size_t i = 0; i < table.Definition().indexes.size(); ++i) {
      KeyCursor cursor = table.ScanByIndex(i, false);
      while (cursor.Next())
        all.push_back(std::to_string(i) + ": " + std::to_string(SlotOf(cursor.Id())));
    }
    return all.size();
  };
  const std::size_t before = keys();
  ASSERT_EQ(before, 120U);
  const std::string findings = database.Findings();
  Compact(kFreshPath, {}, database.Files());
  EXPECT_EQ(keys(), before);
  EXPECT_EQ(database.Findings(), findings);
}

TEST(CompactRefuses, WhatWouldBeLostAndSaysWhat) {
  DatabaseImage image;
  DatabaseImage::Table table = image.AddTable("Tabel", {{"Vreemd", 19, 3, 0, 0, 8}});
  image.AddRow(table, RowBytes(1, Le(5, 8), {}, 1));
  files::MemoryFileSystem files;
  files.Put("/data/a.mdb", image.File());
  const std::string message = MessageOf([&] { CompactInto("/data/a.mdb", "/data/b.mdb", {}, files); });
  EXPECT_NE(message.find("'/data/a.mdb'"), std::string::npos) << message;
  EXPECT_NE(message.find("tabel 'Tabel'"), std::string::npos) << message;
  EXPECT_NE(message.find("veld 'Vreemd'"), std::string::npos) << message;
  EXPECT_FALSE(files.Exists("/data/b.mdb"));
}

TEST(CompactRefuses, ASecondMapThatIsNotEmpty) {
  FreshDatabase database;
  Bytes content = database.Files().Get(kFreshPath);
  content[kPageSize + LoadU16(&content[kPageSize + 16]) + 5] = 1;
  database.Files().Put("/data/a.mdb", content);
  const std::string message = MessageOf([&] { CompactInto("/data/a.mdb", "/data/b.mdb", {}, database.Files()); });
  EXPECT_NE(message.find("tweede kaart"), std::string::npos) << message;
}

// A row referenced by a damaged pointer is not skipped.
TEST(CompactRefuses, ARowThatCannotBeReached) {
  DatabaseImage image;
  DatabaseImage::Table table = image.AddTable("Tabel", {{"Getal", 4, 3, 0, 0, 4}});
  image.AddRow(table, RowBytes(1, Le(5, 4), {}, 1));
  const RowId gone = image.AddRow(table, {}, SlotKind::Deleted);
  image.AddRow(table, Le(gone, 4), SlotKind::Pointer);
  files::MemoryFileSystem files;
  files.Put("/data/a.mdb", image.File());
  const std::string message = MessageOf([&] { CompactInto("/data/a.mdb", "/data/b.mdb", {}, files); });
  EXPECT_NE(message.find("een rij die er niet is"), std::string::npos) << message;
  EXPECT_FALSE(files.Exists("/data/b.mdb"));
}

}  // namespace
}  // namespace jet
