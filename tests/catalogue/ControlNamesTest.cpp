// SPDX-License-Identifier: MIT
#include "catalogue/frmItemOpruimen.h"
#include "catalogue/frmItemPingles.h"
#include "catalogue/frmItemSpotOpruimen.h"
#include "catalogue/frmItemSpots.h"
#include "catalogue/frmItems.h"
#include "platform/controls/ListBox.h"
#include "platform/controls/QuietLine.h"
#include "tests/catalogue/CatalogueTest.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QTabWidget>

#include <set>

using namespace Qt::StringLiterals;
using testing_support::Plain;

namespace {

QString ButtonText(const Form& form, const QString& name) {
  return Plain(Child<QPushButton>(form, name).text());
}
QString CheckText(const Form& form, const QString& name) {
  return Plain(Child<QCheckBox>(form, name).text());
}

void ExpectFamily(const Form& form) {
  const auto& tab = Child<QTabWidget>(form, u"tabOverzicht"_s);
  ASSERT_EQ(tab.count(), 1);
  EXPECT_EQ(Plain(tab.tabText(0)), u"Overzicht"_s);
  EXPECT_TRUE(tab.isAncestorOf(&Child<controls::ListBox>(form, u"lstOverzicht"_s)));
  EXPECT_EQ(ButtonText(form, u"cmdNieuw"_s), u"Nieuw"_s);
  EXPECT_EQ(ButtonText(form, u"cmdOpen"_s), u"Open"_s);
  EXPECT_EQ(ButtonText(form, u"cmdVerwijder"_s), u"Verwijder"_s);
  EXPECT_EQ(ButtonText(form, u"cmdSluiten"_s), u"Sluiten"_s);
  EXPECT_FALSE(tab.isAncestorOf(&Child<QPushButton>(form, u"cmdSluiten"_s)));
}

void ExpectCleanup(const Form& form, const QString& what) {
  const auto& tab = Child<QTabWidget>(form, u"SSTab1"_s);
  ASSERT_EQ(tab.count(), 1);
  EXPECT_EQ(Plain(tab.tabText(0)), u"Detail"_s);
  EXPECT_EQ(Plain(Child<QLabel>(form, u"lblOpruimen"_s).text()),
            u"Opruimen van "_s + what + u" rekening houdend met de instellingen :"_s);
  EXPECT_EQ(Plain(Child<QLabel>(form, u"lblOpruimenVan"_s).text()), u"Opruimen van :"_s);
  EXPECT_TRUE(tab.isAncestorOf(&Child<QLineEdit>(form, u"txtOpruimenVan"_s)));
  EXPECT_EQ(Plain(Child<QGroupBox>(form, u"fraInstellingen"_s).title()), u"Instellingen"_s);
  EXPECT_EQ(CheckText(form, u"chkVerwijderID"_s), u"Verwijder de aanwezigheid in de database"_s);
  EXPECT_EQ(ButtonText(form, u"cmdOk"_s), u"Opruimen"_s);
  EXPECT_EQ(ButtonText(form, u"cmdSluiten"_s), u"Sluiten"_s);
  for (const QString& box : {u"chkVerwijderBestand"_s, u"chkVerwijderID"_s}) {
    EXPECT_FALSE(Child<QCheckBox>(form, box).isChecked());
  }
}

// A mnemonic letter is used once per window, in any kind of control.
void ExpectUniqueMnemonics(const Form& form) {
  std::set<QString> taken;
  const auto take = [&](const QString& text) {
    const QKeySequence mnemonic = QKeySequence::mnemonic(text);
    if (mnemonic.isEmpty()) return;
    EXPECT_TRUE(taken.insert(mnemonic.toString()).second) << text.toStdString();
  };
  for (const auto* button : form.findChildren<QAbstractButton*>())
    take(button->text());
  for (const auto* label : form.findChildren<QLabel*>())
    take(label->text());
  EXPECT_FALSE(taken.empty());
}

}  // namespace

using CatalogueControls = CatalogueTest;

TEST_F(CatalogueControls, ItemSpotList) {
  const frmItemSpots form(nullptr);
  EXPECT_EQ(form.windowTitle(), u"Item-spots"_s);
  ExpectFamily(form);
  EXPECT_EQ(ButtonText(form, u"cmdDesaktiveer"_s), u"Desaktiveer"_s);
  EXPECT_EQ(Child<QGroupBox>(form, u"fraWeergave"_s).title(), u"Weergave"_s);
  EXPECT_EQ(CheckText(form, u"chkAktieve"_s), u"Aktieve item-spots"_s);
  EXPECT_EQ(CheckText(form, u"chkNietAktieve"_s), u"Niet aktieve item-spots"_s);
  ExpectUniqueMnemonics(form);
}

TEST_F(CatalogueControls, ItemList) {
  const frmItems form(nullptr);
  EXPECT_EQ(form.windowTitle(), u"Items"_s);
  ExpectFamily(form);
  EXPECT_EQ(ButtonText(form, u"cmdDesaktiveer"_s), u"Desaktiveer"_s);
  EXPECT_EQ(Child<QGroupBox>(form, u"fraWeergave"_s).title(), u"Weergave"_s);
  EXPECT_EQ(CheckText(form, u"chkAktieve"_s), u"Aktieve items"_s);
  EXPECT_EQ(CheckText(form, u"chkNietAktieve"_s), u"Niet aktieve items"_s);
  ExpectUniqueMnemonics(form);
}

TEST_F(CatalogueControls, ItemPingleListHasNeitherFilterNorDeactivation) {
  const frmItemPingles form(nullptr);
  EXPECT_EQ(form.windowTitle(), u"Item-pingles"_s);
  ExpectFamily(form);
  EXPECT_EQ(form.findChild<QWidget*>(u"cmdDesaktiveer"_s), nullptr);
  EXPECT_TRUE(form.findChildren<QCheckBox*>().isEmpty());
  ExpectUniqueMnemonics(form);
}

TEST_F(CatalogueControls, ItemSpotCleanup) {
  const frmItemSpotOpruimen form(nullptr);
  EXPECT_EQ(form.windowTitle(), u"Item-spot opruimen"_s);
  ExpectCleanup(form, u"item-spot"_s);
  EXPECT_EQ(CheckText(form, u"chkVerwijderBestand"_s), u"Verwijder het geluidsbestand"_s);
  ExpectUniqueMnemonics(form);
}

TEST_F(CatalogueControls, ItemCleanup) {
  const frmItemOpruimen form(nullptr);
  EXPECT_EQ(form.windowTitle(), u"Item opruimen"_s);
  ExpectCleanup(form, u"item"_s);
  EXPECT_EQ(CheckText(form, u"chkVerwijderSpots"_s),
            u"Verwijder de aanwezigheid van de bijbehorende item-spots in de database"_s);
  EXPECT_EQ(CheckText(form, u"chkVerwijderBestand"_s),
            u"Verwijder de geluidsbestanden van de bijbehorende item-spots"_s);
  EXPECT_FALSE(Child<QCheckBox>(form, u"chkVerwijderSpots"_s).isChecked());
  ExpectUniqueMnemonics(form);
}

// Enter does not delete.
TEST_F(CatalogueControls, EnterInACleanupClosesTheDialog) {
  const frmItemSpotOpruimen form(nullptr);
  EXPECT_TRUE(Child<QPushButton>(form, u"cmdSluiten"_s).isDefault());
  EXPECT_FALSE(Child<QPushButton>(form, u"cmdOk"_s).isDefault());
  EXPECT_FALSE(Child<QPushButton>(form, u"cmdOk"_s).autoDefault());
}
