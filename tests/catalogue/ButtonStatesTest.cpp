// SPDX-License-Identifier: MIT
#include "catalogue/frmItemPingles.h"
#include "catalogue/frmItemSpots.h"
#include "catalogue/frmItems.h"
#include "platform/controls/ListBox.h"
#include "tests/catalogue/CatalogueTest.h"

#include <QCheckBox>
#include <QLineEdit>

#include <memory>
#include <string>
#include <vector>

using namespace Qt::StringLiterals;

// Every button of every list in every situation: selection, check boxes, and the last action.
namespace {

enum class Last { Selection, Aktieve, NietAktieve, Editor, F5, Hidden };

struct Situation {
  Kind kind;
  bool aktieve;
  bool nietAktieve;
  bool selected;  // before the last action
  Last last;
};

std::unique_ptr<Form> FormOf(Kind kind) {
  switch (kind) {
    case Kind::Spots:
      return std::make_unique<frmItemSpots>(nullptr);
    case Kind::Items:
      return std::make_unique<frmItems>(nullptr);
    case Kind::Pingles:
      break;
  }
  return std::make_unique<frmItemPingles>(nullptr);
}

bool IsCheckBox(Last last) {
  return last == Last::Aktieve || last == Last::NietAktieve;
}

bool IsPossible(const Situation& now) {
  if (now.kind == Kind::Pingles) return now.aktieve && !now.nietAktieve && !IsCheckBox(now.last);
  return !now.selected || now.aktieve || now.nietAktieve;  // otherwise there is nothing to select
}

std::vector<Situation> AllSituations() {
  std::vector<Situation> all;
  for (const Kind kind : {Kind::Spots, Kind::Items, Kind::Pingles}) {
    for (const Last last : {Last::Selection, Last::Aktieve, Last::NietAktieve, Last::Editor, Last::F5, Last::Hidden}) {
      for (int bits = 0; bits < 8; ++bits) {
        const Situation situation{kind, (bits & 1) != 0, (bits & 2) != 0, (bits & 4) != 0, last};
        if (IsPossible(situation)) all.push_back(situation);
      }
    }
  }
  return all;
}

std::string NameOf(const ::testing::TestParamInfo<Situation>& info) {
  const Situation& now = info.param;
  std::string name = now.kind == Kind::Spots ? "Spots" : now.kind == Kind::Items ? "Items" : "Pingles";
  if (now.kind != Kind::Pingles) {
    if (now.aktieve) name += "Active";
    if (now.nietAktieve) name += "Inactive";
    if (!now.aktieve && !now.nietAktieve) name += "Neither";
  }
  name += now.selected ? "Selected" : "Unselected";
  static const std::string kLast[] = {"", "ThenAktieve", "ThenNietAktieve", "ThenEditor", "ThenF5", "ThenHidden"};
  return name + kLast[static_cast<int>(now.last)];
}

}  // namespace

class ButtonStates : public CatalogueTest, public ::testing::WithParamInterface<Situation> {
 protected:
  ButtonStates() {
    for (const int aktief : {0, 1}) {
      AddSpot({aktief + 1, u"Spot %1"_s.arg(aktief), {}, aktief});
      AddItem(aktief + 1, u"Item %1"_s.arg(aktief), aktief);
    }
    AddPingle(1, u"Intro"_s);
  }

  void BringAbout(Form& form) {
    const Situation& now = GetParam();
    if (now.kind != Kind::Pingles) {
      Child<QCheckBox>(form, u"chkNietAktieve"_s).setChecked(now.nietAktieve);
      Child<QCheckBox>(form, u"chkAktieve"_s).setChecked(now.aktieve);
    }
    if (now.selected) List(form).SetListIndex(0);
    if (now.last == Last::Aktieve) Click(form, u"chkAktieve"_s);
    if (now.last == Last::NietAktieve) Click(form, u"chkNietAktieve"_s);
    if (now.last == Last::Editor) Click(form, u"cmdNieuw"_s);
    if (now.last == Last::F5) QTest::keyClick(&form, Qt::Key_F5);
    if (now.last == Last::Hidden) Child<QLineEdit>(form, u"txtZoek"_s).setText(u"zoek het niet"_s);
  }
};

TEST_P(ButtonStates, FollowTheEnablingRule) {
  const Situation& now = GetParam();
  const std::unique_ptr<Form> form = FormOf(now.kind);
  Open(*form);
  BringAbout(*form);
  // Every last action clears the selection; only the refill by a check box does not update the buttons.
  const bool selected = now.selected && now.last == Last::Selection;
  const bool enabled = now.selected && (now.last == Last::Selection || IsCheckBox(now.last));
  EXPECT_EQ(List(*form).ListIndex() != -1, selected);
  EXPECT_EQ(Enabled(*form, u"cmdOpen"_s), enabled);
  EXPECT_EQ(Enabled(*form, u"cmdVerwijder"_s), enabled);
  EXPECT_TRUE(Enabled(*form, u"cmdNieuw"_s));
  EXPECT_TRUE(Enabled(*form, u"cmdSluiten"_s));
  if (now.kind == Kind::Spots) {
    EXPECT_EQ(Enabled(*form, u"cmdDesaktiveer"_s), enabled);
  } else if (now.kind == Kind::Items) {
    EXPECT_TRUE(Enabled(*form, u"cmdDesaktiveer"_s));
  }
  EXPECT_TRUE(boxes_.Shown().empty());
}

INSTANTIATE_TEST_SUITE_P(All, ButtonStates, ::testing::ValuesIn(AllSituations()), NameOf);
