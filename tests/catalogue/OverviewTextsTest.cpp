// SPDX-License-Identifier: MIT
#include "catalogue/OverviewTexts.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

OverviewView Spots(int all, int shown) {
  OverviewView view;
  view.one = u"item-spot"_s;
  view.many = u"item-spots"_s;
  view.all = all;
  view.shown = shown;
  view.hasBoxes = true;
  return view;
}

}  // namespace

TEST(OverviewTexts, CountShowsHowManyAreVisible) {
  EXPECT_EQ(CountTextOf(Spots(21, 21)), u"21 item-spots"_s);
  EXPECT_EQ(CountTextOf(Spots(1, 1)), u"1 item-spot"_s);
  EXPECT_EQ(CountTextOf(Spots(0, 0)), u"0 item-spots"_s);
  EXPECT_EQ(CountTextOf(Spots(21, 0)), u"0 van 21 item-spots"_s);
  EXPECT_EQ(CountTextOf(Spots(51200, 1021)), u"1.021 van 51.200 item-spots"_s);
}

TEST(OverviewTexts, NothingFoundNamesTheSearchAndHowToEndIt) {
  OverviewView view = Spots(21, 0);
  view.search = u"kerst"_s;
  EXPECT_EQ(EmptyTextOf(view),
            u"Geen item-spots gevonden met ‘kerst’.\n"
            u"Maak het zoekveld leeg of vink ‘Niet aktieve item-spots’ aan."_s);
  view.nietAktieve = true;
  EXPECT_EQ(EmptyTextOf(view), u"Geen item-spots gevonden met ‘kerst’.\nMaak het zoekveld leeg."_s);
}

TEST(OverviewTexts, EmptyListNamesTheBoxThatHidesTheRest) {
  OverviewView view = Spots(0, 0);
  EXPECT_EQ(EmptyTextOf(view),
            u"Er zijn geen aktieve item-spots.\nVink ‘Niet aktieve item-spots’ aan of kies ‘Nieuw’."_s);
  view.aktieve = false;
  EXPECT_EQ(EmptyTextOf(view),
            u"Er is niets gekozen om te tonen.\nVink ‘Aktieve item-spots’ of ‘Niet aktieve item-spots’ aan."_s);
  view.nietAktieve = true;
  EXPECT_EQ(EmptyTextOf(view),
            u"Er zijn geen niet aktieve item-spots.\nVink ‘Aktieve item-spots’ aan om de andere te zien."_s);
  view.aktieve = true;
  EXPECT_EQ(EmptyTextOf(view), u"Er zijn nog geen item-spots.\nKies ‘Nieuw’ om te beginnen."_s);
}

TEST(OverviewTexts, ListWithoutBoxesExplainsHowToBegin) {
  OverviewView view = Spots(0, 0);
  view.hasBoxes = false;
  EXPECT_EQ(EmptyTextOf(view), u"Er zijn nog geen item-spots.\nKies ‘Nieuw’ om te beginnen."_s);
}

TEST(OverviewTexts, UnreadListHasATextAndNoCount) {
  OverviewView view = Spots(0, 0);
  view.read = false;
  EXPECT_EQ(CountTextOf(view), QString());
  EXPECT_EQ(EmptyTextOf(view), u"De lijst kon niet gelezen worden.\nDruk op F5 om het opnieuw te proberen."_s);
}
