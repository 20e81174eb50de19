// SPDX-License-Identifier: MIT
// The real sample files, compared with outside readers of the format.
#include "tests/platform/jet/support/Witness.h"

#include "tests/platform/jet/support/Samples.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace {

using witness::Reader;
using witness::Tables;

// Without "required", which mdb-reader does not report.
std::vector<std::string> WithoutRequired(std::vector<std::string> fields) {
  for (std::string& field : fields)
    field.erase(std::min(field.size(), field.rfind(" NOT NULL")));
  return fields;
}

class BesideWitness : public testing::TestWithParam<Reader> {
 protected:
  void SetUp() override {
    if (!witness::SampleFolder()) GTEST_SKIP() << "SPOTROOSTER_MDB_SAMPLES names no folder of sample files";
    if (const auto absent = witness::WhyAbsent(GetParam())) GTEST_SKIP() << *absent;
  }
};

TEST_P(BesideWitness, EverySampleReadsTheSame) {
  for (const std::string& name : witness::SampleNames()) {
    SCOPED_TRACE(name);
    const Tables ours = witness::Sorted(witness::ReadWithJet(*witness::OpenSample(name)));
    const Tables theirs =
        witness::Sorted(witness::ReadWith(GetParam(), witness::SamplePath(name), witness::SamplePassword(name)));
    ASSERT_EQ(theirs.size(), ours.size());
    for (const auto& [table, text] : ours) {
      SCOPED_TRACE(table);
      ASSERT_TRUE(theirs.contains(table));
      EXPECT_EQ(theirs.at(table).fields, GetParam() == Reader::MdbTools ? text.fields : WithoutRequired(text.fields));
      ASSERT_EQ(theirs.at(table).rows.size(), text.rows.size());
      for (std::size_t row = 0; row < text.rows.size(); ++row)
        EXPECT_EQ(theirs.at(table).rows[row], text.rows[row]) << "row " << row;
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Readers, BesideWitness, testing::Values(Reader::MdbTools, Reader::MdbReader),
                         [](const auto& reader) {
                           return reader.param == Reader::MdbTools ? "MdbTools" : "MdbReader";
                         });

}  // namespace
