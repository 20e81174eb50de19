// SPDX-License-Identifier: MIT
#include "data/forms/SpotDetails.h"

#include <gtest/gtest.h>

#include <optional>
#include <set>

using namespace Qt::StringLiterals;
using controls::LineMark;
using controls::LineTone;

namespace {

SpotFacts Facts() {
  SpotFacts spot;
  spot.path = u"D:\\Audio\\spot.wav"_s;
  spot.aktief = true;
  spot.startDatum = QDate(2025, 3, 1);
  spot.eindDatum = QDate(2025, 4, 20);
  spot.startUur = 7;
  spot.eindUur = 18;
  spot.lengteSec = 32;
  return spot;
}

}  // namespace

TEST(SpotDetails, LengthIsMinutesAndSeconds) {
  EXPECT_EQ(LengthText(0), u"0:00"_s);
  EXPECT_EQ(LengthText(32), u"0:32"_s);
  EXPECT_EQ(LengthText(605), u"10:05"_s);
  EXPECT_EQ(LengthText(3723), u"1:02:03"_s);
  EXPECT_EQ(LengthText(std::nullopt), QString());
  EXPECT_EQ(LengthText(-1), QString());
}

TEST(SpotDetails, LineShowsMarkTextAndLength) {
  const controls::LineDetails details = DetailsOf(Facts(), SpotState::Loopt);
  EXPECT_EQ(details.mark, LineMark::Circle);
  EXPECT_EQ(details.tone, LineTone::Runs);
  EXPECT_EQ(details.word, u"loopt t/m 20-04-2025"_s);
  EXPECT_EQ(details.trailing, u"0:32"_s);
}

// States that need action have coloured text; the others are not coloured.
TEST(SpotDetails, TextIsColouredWhereActionIsNeeded) {
  EXPECT_TRUE(DetailsOf(Facts(), SpotState::Begint).wordInTone);
  EXPECT_TRUE(DetailsOf(Facts(), SpotState::Verloopt).wordInTone);
  EXPECT_TRUE(DetailsOf(Facts(), SpotState::BestandOntbreekt).wordInTone);
  EXPECT_FALSE(DetailsOf(Facts(), SpotState::Loopt).wordInTone);
  EXPECT_FALSE(DetailsOf(Facts(), SpotState::Verlopen).wordInTone);
  EXPECT_FALSE(DetailsOf(Facts(), SpotState::NietAktief).wordInTone);
}

TEST(SpotDetails, StatesDifferInShapeOrToneNotOnlyInTextColour) {
  std::set<std::pair<LineMark, LineTone>> looks;
  for (int state = 0; state < kSpotStates; ++state) {
    const controls::LineDetails details = DetailsOf(Facts(), static_cast<SpotState>(state));
    EXPECT_NE(details.mark, LineMark::None);
    looks.insert({details.mark, details.tone});
  }
  EXPECT_EQ(looks.size(), std::size_t{kSpotStates});
}

TEST(SpotDetails, InactiveNameIsQuiet) {
  EXPECT_TRUE(DetailsOf(Facts(), SpotState::NietAktief).quietText);
  EXPECT_FALSE(DetailsOf(Facts(), SpotState::Loopt).quietText);
}

TEST(SpotDetails, ToolTipShowsValidityAndFile) {
  EXPECT_EQ(DetailsOf(Facts(), SpotState::Loopt).toolTip,
            u"loopt t/m 20-04-2025\nGeldig van 01-03-2025 tot en met 20-04-2025, van uur 7 tot en met uur 18\n"
            u"D:\\Audio\\spot.wav"_s);
}

TEST(SpotDetails, UnreachableDriveIsReportedInTheToolTipOnly) {
  SpotFacts spot = Facts();
  spot.file = runtime::Presence::NotReachable;
  const controls::LineDetails details = DetailsOf(spot, SpotState::Loopt);
  EXPECT_EQ(details.mark, LineMark::Circle);
  EXPECT_TRUE(details.toolTip.contains(u"niet bereikbaar"_s));
}

TEST(SpotDetails, RefusedAccessIsReportedInTheToolTipOnly) {
  SpotFacts spot = Facts();
  spot.file = runtime::Presence::Denied;
  const controls::LineDetails details = DetailsOf(spot, SpotState::Loopt);
  EXPECT_EQ(details.mark, LineMark::Circle);
  EXPECT_TRUE(details.toolTip.contains(u"toegang tot de map is geweigerd"_s));
}

TEST(SpotDetails, ToolTipShowsTheMissingFile) {
  SpotFacts spot = Facts();
  spot.file = runtime::Presence::NotThere;
  EXPECT_TRUE(DetailsOf(spot, SpotState::BestandOntbreekt).toolTip.contains(u"Ontbreekt: D:\\Audio\\spot.wav"_s));
  spot.path.clear();
  EXPECT_TRUE(DetailsOf(spot, SpotState::BestandOntbreekt).toolTip.contains(u"geen geluidsbestand gekozen"_s));
}
