// SPDX-License-Identifier: MIT
// Real files, written by the original programs.
#include "tests/platform/jet/support/Samples.h"

#include "platform/jet/check/Check.h"
#include "platform/jet/values/Error.h"
#include "platform/jet/values/Utf8.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <string>

namespace {

class Samples : public testing::Test {
 protected:
  void SetUp() override {
    if (!witness::SampleFolder()) GTEST_SKIP() << "SPOTROOSTER_MDB_SAMPLES names no folder of sample files";
  }
};

TEST_F(Samples, HoldTheirTablesAndRows) {
  const std::map<std::string, std::map<std::string, std::size_t>> expected = {
      {"access2000_empty", {}},
      {"adox_empty", {}},
      {"alltypes_big", {{"Table1", 2}, {"Table2", 0}, {"Table3", 0}, {"Table4", 0}}},
      {"many_columns", {{"MSP_PROJECTS", 1}}},
      {"composite_index", {{"Table1", 512}}},
      {"relations", {{"Table1", 4}, {"Table2", 3}, {"Table3", 4}}},
      {"overflow_rows", {{"Table1", 7}}},
      {"deleted_rows", {{"Table", 2}}},
      {"unicode_text", {{"Table", 8}}},
      {"numeric", {{"test", 1}}},
      {"index_flags",
       {{"TableIgnoreNulls1", 10},
        {"TableIgnoreNulls1_temp", 0},
        {"TableIgnoreNulls2", 11},
        {"TableIgnoreNulls2_temp", 0},
        {"TableUnique1_temp", 10},
        {"TableUnique2_temp", 11}}},
      {"northwind",
       {{"Categories", 8},
        {"Customers", 91},
        {"Employees", 9},
        {"Order Details", 2155},
        {"Orders", 830},
        {"Products", 77},
        {"Shippers", 3},
        {"Suppliers", 29}}},
      {"encoded", {{"Table1", 2}}},
      {"password", {{"Table1", 3}}}};
  for (const auto& [name, tables] : expected) {
    SCOPED_TRACE(name);
    const auto database = witness::OpenSample(name);
    std::map<std::string, std::size_t> found;
    for (const std::u16string& table : database->TableNames()) {
      found[jet::ToUtf8(table)] = database->OpenTable(table).CountRows();
    }
    EXPECT_EQ(found, tables);
  }
}

TEST_F(Samples, AreSound) {
  for (const std::string& name : witness::SampleNames()) {
    SCOPED_TRACE(name);
    for (const jet::Finding& finding : jet::CheckDatabase(*witness::OpenSample(name))) {
      EXPECT_TRUE(finding.remark) << finding.text;
    }
  }
}

TEST_F(Samples, AFileOfAnotherFormatIsRefusedInOneSentence) {
  const std::string file = std::filesystem::canonical(*witness::SampleFolder() + "/jet3.mdb");
  try {
    jet::Database::Open(file);
    FAIL() << "a Jet 3 file was opened";
  } catch (const jet::Error& error) {
    EXPECT_EQ(error.Code(), jet::ErrorCode::NotADatabase);
    EXPECT_EQ(error.what(), "Het bestand '" + file +
                                "' is een Jet 3-database (Access 97); alleen Jet 4-bestanden (Access 2000 tot en met "
                                "2003) kunnen worden gelezen.");
  }
}

TEST_F(Samples, APasswordIsAGate) {
  const std::string file = *witness::SampleFolder() + "/password.mdb";
  for (const char16_t* password : {u"", u"wrong", u"Password"}) {
    jet::OpenOptions options;
    options.password = password;
    EXPECT_THROW(jet::Database::Open(file, options), jet::Error) << jet::ToUtf8(password);
  }
  EXPECT_EQ(witness::OpenSample("password")->TableNames().size(), 1u);
}

}  // namespace
