// SPDX-License-Identifier: MIT
#include "platform/runtime/Trapped.h"

#include "platform/desktop/MessageBox.h"
#include "platform/runtime/Error.h"

#include <QString>

#include <gtest/gtest.h>

#include <new>
#include <stdexcept>

namespace {

using namespace Qt::StringLiterals;
using desktop::MessageBoxScript;
using runtime::Trapped;

bool Opslaan(bool fails) {
  return Trapped(__func__, false, [&] {
    if (fails) throw runtime::Error(u"Kan het bestand 'X' niet openen."_s);
    return true;
  });
}

void cmdOk_Click() {
  Trapped(__func__, [] { throw runtime::Error(u"Mislukt."_s); });
}

TEST(Trapped, ShowsTheDescriptionTitledWithTheProcedureAndReturnsTheDefault) {
  MessageBoxScript script;
  EXPECT_FALSE(Opslaan(true));
  ASSERT_EQ(script.Shown().size(), 1U);
  EXPECT_EQ(script.Last().title, u"Opslaan"_s);
  EXPECT_EQ(script.Last().text, u"Kan het bestand 'X' niet openen."_s);
  EXPECT_EQ(script.Last().style, 16);
}

TEST(Trapped, LetsAResultThroughAndShowsNothing) {
  MessageBoxScript script;
  EXPECT_TRUE(Opslaan(false));
  EXPECT_TRUE(script.Shown().empty());
}

TEST(Trapped, WorksForProceduresWithoutAResult) {
  MessageBoxScript script;
  cmdOk_Click();
  ASSERT_EQ(script.Shown().size(), 1U);
  EXPECT_EQ(script.Last().title, u"cmdOk_Click"_s);
}

TEST(Trapped, CatchesEveryOtherException) {
  MessageBoxScript script;
  Trapped("A", [] { throw std::runtime_error("disk"); });
  Trapped("B", [] { throw std::bad_alloc(); });
  Trapped("C", [] { throw 5; });
  ASSERT_EQ(script.Shown().size(), 3U);
  EXPECT_EQ(script.Shown()[0].text, u"Onverwachte fout: disk"_s);
  EXPECT_EQ(script.Shown()[1].text, u"Er is te weinig geheugen vrij."_s);
  EXPECT_EQ(script.Shown()[2].title, u"C"_s);
}

}  // namespace
