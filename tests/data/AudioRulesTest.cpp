// SPDX-License-Identifier: MIT
#include "data/AudioRules.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

bool IsUnique() {
  return false;
}

std::optional<Refusal> CheckAudioNaam(const QString& naam) {
  return CheckAudio({u"Z:\\a.mp3"_s, naam}, IsUnique);
}

}  // namespace

TEST(AudioRules, ValidInputIsAccepted) {
  EXPECT_EQ(CheckAudio({QString(240, u'p'), QString(70, u'n')}, IsUnique), std::nullopt);
}

TEST(AudioRules, PathIsRequiredAndLimited) {
  EXPECT_EQ(CheckAudio({u"  "_s, u"n"_s}, IsUnique), (Refusal{1500, u"Path"_s, {}, u"txtPath"_s}));
  EXPECT_EQ(CheckAudio({QString(241, u'p'), u"n"_s}, IsUnique), (Refusal{1506, u"Path"_s, u"240"_s, u"txtPath"_s}));
}

TEST(AudioRules, NameIsRequiredAndLimitedAsTyped) {
  EXPECT_EQ(CheckAudioNaam({}), (Refusal{1500, u"Naam"_s, {}, u"txtNaam"_s}));
  EXPECT_EQ(CheckAudioNaam(QString(70, u'n') + u' '), (Refusal{1506, u"Naam"_s, u"70"_s, u"txtNaam"_s}));
}

TEST(AudioRules, DuplicateIsQuotedTrimmed) {
  EXPECT_EQ(CheckAudio({u"Z:\\a.mp3"_s, u" Bakker "_s}, [] { return true; }),
            (Refusal{1600, u"Bakker"_s, u"Naam"_s, u"txtNaam"_s}));
}

TEST(AudioRules, DatabaseIsNotReadForInvalidFields) {
  int reads = 0;
  const auto isDuplicate = [&reads] { return ++reads > 0; };
  EXPECT_EQ(CheckAudio({{}, {}}, isDuplicate)->control, u"txtPath"_s);
  EXPECT_EQ(CheckAudio({u"p"_s, {}}, isDuplicate)->control, u"txtNaam"_s);
  EXPECT_EQ(reads, 0);
}

TEST(AudioRules, DatesAndHoursAreCheckedInOrder) {
  ValidityInput input{false, u"x"_s, false, u"x"_s};
  EXPECT_EQ(CheckValidity(input), (Refusal{3038, u"Startdatum"_s, {}, u"cobStart"_s}));
  input.hasStartDatum = true;
  EXPECT_EQ(CheckValidity(input), (Refusal{3028, u"Startuur"_s, {}, u"txtStartUur"_s}));
  input.startUur = u"6"_s;
  EXPECT_EQ(CheckValidity(input), (Refusal{3038, u"Einddatum"_s, {}, u"cobStop"_s}));
  input.hasEindDatum = true;
  EXPECT_EQ(CheckValidity(input), (Refusal{3028, u"Einduur"_s, {}, u"txtEindUur"_s}));
  input.eindUur = u"22"_s;
  EXPECT_EQ(CheckValidity(input), std::nullopt);
}

TEST(AudioRules, HoursOutOfRangeAreCorrected) {
  ValidityInput input{true, u"-1"_s, true, u"24"_s};
  EXPECT_EQ(CheckValidity(input), std::nullopt);
  EXPECT_EQ(input.startUur, u"0"_s);
  EXPECT_EQ(input.eindUur, u"23"_s);
}

TEST(AudioRules, HoursInRangeAreUnchanged) {
  ValidityInput input{true, u" 0 "_s, true, u"22,5"_s};
  EXPECT_EQ(CheckValidity(input), std::nullopt);
  EXPECT_EQ(input.startUur, u" 0 "_s);
  EXPECT_EQ(input.eindUur, u"22,5"_s);
}

TEST(AudioRules, StartHourIsCorrectedEvenIfTheEndDateIsMissing) {
  ValidityInput input{true, u"99"_s, false, u"99"_s};
  EXPECT_EQ(CheckValidity(input)->control, u"cobStop"_s);
  EXPECT_EQ(input.startUur, u"23"_s);
  EXPECT_EQ(input.eindUur, u"99"_s);
}
