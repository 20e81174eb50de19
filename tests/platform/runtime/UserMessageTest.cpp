// SPDX-License-Identifier: MIT
#include "platform/runtime/UserMessage.h"

#include "platform/runtime/Error.h"
#include "platform/runtime/Trapped.h"

#include <gtest/gtest.h>

#include <iostream>
#include <sstream>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace {

// Captures standard error, with no sink set.
class WithoutSink : public testing::Test {
 protected:
  WithoutSink() : previous_(std::cerr.rdbuf(text_.rdbuf())) {}
  ~WithoutSink() override { std::cerr.rdbuf(previous_); }

  std::ostringstream text_;

 private:
  std::streambuf* previous_;
  runtime::UserMessageScope none_{runtime::UserMessageSink()};
};

TEST_F(WithoutSink, AMessageIsPrintedAndAcknowledged) {
  EXPECT_EQ(runtime::ShowUserMessage(u"Schijf vol: caf\u00E9"_s, runtime::kStyleCritical, u"Opslaan"_s),
            runtime::kAnswerOk);
  EXPECT_EQ(text_.str(), "Schijf vol: caf\xC3\xA9\n");
}

TEST_F(WithoutSink, AQuestionIsNeverAnsweredWithYes) {
  for (const int style : {runtime::kStyleYesNo, runtime::kStyleYesNoCancel, runtime::kStyleYesNoDefaultNo})
    EXPECT_EQ(runtime::ShowUserMessage(u"Verwijderen?"_s, style, QString()), runtime::kAnswerCancel) << style;
}

TEST_F(WithoutSink, ATrappedErrorIsPrinted) {
  EXPECT_EQ(runtime::Trapped("Opslaan", 7, []() -> int { throw runtime::Error(u"Mislukt."_s); }), 7);
  EXPECT_EQ(text_.str(), "Mislukt.\n");
}

TEST(UserMessage, OnlyStylesWithSeveralButtonsAreQuestions) {
  for (const int style : {runtime::kStyleYesNo, runtime::kStyleYesNoCancel, runtime::kStyleYesNoDefaultNo})
    EXPECT_TRUE(runtime::IsQuestion(style)) << style;
  for (const int style : {0, runtime::kStyleCritical, runtime::kStyleExclamation, runtime::kStyleInformation})
    EXPECT_FALSE(runtime::IsQuestion(style)) << style;
}

TEST(UserMessage, TheInnermostScopeGetsTheMessage) {
  QStringList outer;
  QStringList inner;
  const runtime::UserMessageScope outerScope([&](const QString& text, int, const QString&) {
    outer += text;
    return runtime::kAnswerNo;
  });
  {
    const runtime::UserMessageScope innerScope([&](const QString& text, int style, const QString& title) {
      inner += u"%1 %2 %3"_s.arg(text, title).arg(style);
      return runtime::kAnswerYes;
    });
    EXPECT_EQ(runtime::ShowUserMessage(u"a"_s, runtime::kStyleYesNo, u"t"_s), runtime::kAnswerYes);
  }
  EXPECT_EQ(runtime::ShowUserMessage(u"b"_s, runtime::kStyleYesNo, u"t"_s), runtime::kAnswerNo);
  EXPECT_EQ(inner, QStringList{u"a t 36"_s});
  EXPECT_EQ(outer, QStringList{u"b"_s});
}

TEST(UserMessage, AnErrorHasItsDescriptionAsUtf8) {
  const runtime::Error error(u"caf\u00E9"_s);
  EXPECT_STREQ(error.what(), "caf\xC3\xA9");
  EXPECT_FALSE(error.IsDone());
  EXPECT_TRUE(runtime::Error(u"x"_s, runtime::Error::Outcome::Done).IsDone());
}

}  // namespace
