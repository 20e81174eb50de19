// SPDX-License-Identifier: MIT
#include "platform/desktop/ErrorHistory.h"

#include "platform/runtime/Clock.h"

#include <gtest/gtest.h>

namespace {

using namespace Qt::StringLiterals;
using desktop::RecentErrors;
using desktop::WithoutPasswords;

TEST(ErrorHistory, KeepsTimeTitleAndTextOldestFirst) {
  const QDateTime morning(QDate(2026, 3, 2), QTime(9, 15));
  const QDateTime noon(QDate(2026, 3, 2), QTime(12, 0));
  {
    const runtime::ClockScope clock(morning);
    desktop::NoteError(u"Opslaan"_s, u"De schijf is vol."_s);
  }
  const runtime::ClockScope clock(noon);
  desktop::NoteError(u"Openen"_s, u"Het bestand ontbreekt."_s);
  const auto& errors = RecentErrors();
  ASSERT_GE(errors.size(), 2);
  const desktop::ShownError& first = errors[errors.size() - 2];
  EXPECT_EQ(first.time, morning);
  EXPECT_EQ(first.title, u"Opslaan"_s);
  EXPECT_EQ(first.text, u"De schijf is vol."_s);
  EXPECT_EQ(errors.last().time, noon);
  EXPECT_EQ(errors.last().title, u"Openen"_s);
}

TEST(ErrorHistory, TheSameErrorTwiceIsKeptTwice) {
  const qsizetype before = RecentErrors().size();
  desktop::NoteError(u"Opslaan"_s, u"De schijf is vol."_s);
  desktop::NoteError(u"Opslaan"_s, u"De schijf is vol."_s);
  EXPECT_EQ(RecentErrors().size(), std::min(before + 2, desktop::kErrorsKept));
}

struct Password {
  QString text;
  QString shown;
};

void PrintTo(const Password& password, std::ostream* out) {
  *out << password.text.toStdString();
}

class PasswordInAnError : public testing::TestWithParam<Password> {};

TEST_P(PasswordInAnError, IsReplaced) {
  EXPECT_EQ(WithoutPasswords(GetParam().text), GetParam().shown);
}

const Password kPasswords[] = {
    {u"Kan postgresql://plan:geheim@db/x niet openen"_s, u"Kan postgresql://plan:***@db/x niet openen"_s},
    {u"PostgreSQL://:geheim@db"_s, u"PostgreSQL://:***@db"_s},
    // Written without the escapes that an address requires.
    {u"postgresql://plan:ge/heim@db/x"_s, u"postgresql://plan:***@db/x"_s},
    {u"postgresql://plan:ge?h:e@im@db/x"_s, u"postgresql://plan:***@db/x"_s},
    {u"postgres://a:1@h1/x en postgres://b:2@h2/y"_s, u"postgres://a:***@h1/x en postgres://b:***@h2/y"_s},
    {u"postgresql://db/x?password=geheim&user=plan"_s, u"postgresql://db/x?password=***&user=plan"_s},
    {u"host=db password='ge heim' user=plan"_s, u"host=db password=*** user=plan"_s},
    {u"password='ge\\'heim' user=plan"_s, u"password=*** user=plan"_s},
    {u"password=\"ge heim\";user=plan"_s, u"password=***;user=plan"_s},
    {u"PGPASSWORD = geheim\nuser=plan"_s, u"PGPASSWORD = ***\nuser=plan"_s},
    {u"passwd=geheim pwd=geheim"_s, u"passwd=*** pwd=***"_s},
};

INSTANTIATE_TEST_SUITE_P(Texts, PasswordInAnError, testing::ValuesIn(kPasswords));

TEST(ErrorHistory, TextsWithoutAPasswordAreUnchanged) {
  for (const QString& text : {
           u"postgresql://plan@db:5432/x"_s,
           u"postgresql://db1:5432,db2:5433/x?application_name=a@b"_s,
           u"postgresql://db:5432/x, gevraagd door a@b"_s,
           u"http://plan:8080/@x"_s,
           u"password"_s,
           u"Het veld 'password' ontbreekt."_s,
           QString(),
       })
    EXPECT_EQ(WithoutPasswords(text), text);
}

}  // namespace
