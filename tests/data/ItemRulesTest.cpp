// SPDX-License-Identifier: MIT
#include "data/ItemRules.h"

#include "platform/runtime/Error.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

ItemInput InputWithList() {
  ItemInput input;
  input.naam = u"Blok 1"_s;
  input.hasList = true;
  input.listedSpots = 1;
  return input;
}

ItemInput InputWithPattern() {
  ItemInput input;
  input.naam = u"Blok 2"_s;
  input.hasPattern = true;
  input.directory = u"Z:\\Audio"_s;
  input.fixedPart = u"Nieuws"_s;
  input.hasVariablePart = true;
  input.extension = u"mp3"_s;
  return input;
}

ItemInput SeveralSpots(const QString& count, const QString& most) {
  ItemInput input = InputWithList();
  input.severalSpots = true;
  input.aantalSpots = count;
  input.maxAantalSpots = most;
  return input;
}

std::optional<Refusal> CheckInput(const ItemInput& input) {
  return CheckItem(input, [] { return false; });
}

}  // namespace

TEST(ItemRules, ValidItemsAreAccepted) {
  EXPECT_EQ(CheckInput(InputWithList()), std::nullopt);
  EXPECT_EQ(CheckInput(InputWithPattern()), std::nullopt);
  EXPECT_EQ(CheckInput(SeveralSpots(u"2"_s, u"2"_s)), std::nullopt);
}

TEST(ItemRules, NameIsRequiredLimitedAndUnique) {
  ItemInput input = InputWithList();
  input.naam = u" "_s;
  EXPECT_EQ(CheckInput(input), (Refusal{1500, u"Item-naam"_s, {}, u"txtNaam"_s}));
  input.naam = QString(51, u'n');
  EXPECT_EQ(CheckInput(input), (Refusal{1506, u"Item-naam"_s, u"50"_s, u"txtNaam"_s}));
  input.naam = u" Blok "_s;
  EXPECT_EQ(CheckItem(input, [] { return true; }), (Refusal{1600, u"Blok"_s, u"Item-naam"_s, u"txtNaam"_s}));
}

TEST(ItemRules, ListNeedsASpotAndTheFocusIsNotMoved) {
  ItemInput input = InputWithList();
  input.listedSpots = 0;
  EXPECT_EQ(CheckInput(input), (Refusal{5005, {}, {}, {}}));
}

TEST(ItemRules, PatternNeedsAllItsParts) {
  ItemInput input = InputWithPattern();
  input.directory = QString(241, u'd');
  EXPECT_EQ(CheckInput(input), (Refusal{1506, u"Directory"_s, u"240"_s, u"txtOpt2Directory"_s}));
  input = InputWithPattern();
  input.fixedPart.clear();
  EXPECT_EQ(CheckInput(input), (Refusal{1500, u"Vast Naam-gedeelte"_s, {}, u"txtOpt2VastNaamGedeelte"_s}));
  input = InputWithPattern();
  input.hasVariablePart = false;
  EXPECT_EQ(CheckInput(input),
            (Refusal{1501, u"Variabel Naam-gedeelte"_s, u"format"_s, u"cboOpt2VariabelNaamGedeelte"_s}));
  input = InputWithPattern();
  input.extension = u"mpeg"_s;
  EXPECT_EQ(CheckInput(input), (Refusal{1506, u"File-extensie"_s, u"3"_s, u"txtOpt2FileExtensie"_s}));
}

TEST(ItemRules, PatternIsNotCheckedForAList) {
  ItemInput input = InputWithList();
  input.extension = u"mpeg"_s;
  EXPECT_EQ(CheckInput(input), std::nullopt);
}

TEST(ItemRules, SpotCountsAreNumbersFromOneToTheMaximum) {
  EXPECT_EQ(CheckInput(SeveralSpots(u"x"_s, u"y"_s)), (Refusal{3028, u"Aantal spots"_s, {}, u"txtAantalSpots"_s}));
  EXPECT_EQ(CheckInput(SeveralSpots(u"0"_s, u"y"_s)),
            (Refusal{3028, u"Maximum aantal spots"_s, {}, u"txtMaxAantalSpots"_s}));
  EXPECT_EQ(CheckInput(SeveralSpots(u"0"_s, u"2"_s)), (Refusal{5107, u"0"_s, {}, u"txtAantalSpots"_s}));
  EXPECT_EQ(CheckInput(SeveralSpots(u"3"_s, u"2"_s)), (Refusal{5106, {}, {}, u"txtAantalSpots"_s}));
}

TEST(ItemRules, CountsOfOneSpotAreNotChecked) {
  ItemInput input = SeveralSpots(u"x"_s, u"y"_s);
  input.severalSpots = false;
  EXPECT_EQ(CheckInput(input), std::nullopt);
}

TEST(ItemRules, NumberBeyond32BitsIsAnError) {
  EXPECT_THROW(CheckInput(SeveralSpots(u"9999999999"_s, u"2"_s)), runtime::Error);
}

TEST(ItemRules, DatabaseIsNotReadForAnInvalidName) {
  int reads = 0;
  const auto isDuplicate = [&reads] { return ++reads > 0; };
  ItemInput input;
  EXPECT_EQ(CheckItem(input, isDuplicate)->message, 1500);
  EXPECT_EQ(reads, 0);
  input.naam = u"Blok"_s;
  input.hasList = true;
  EXPECT_EQ(CheckItem(input, isDuplicate)->message, 1600);
}
