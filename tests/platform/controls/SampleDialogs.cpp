// SPDX-License-Identifier: MIT
#include "platform/controls/ComboBox.h"
#include "platform/controls/LedPanel.h"
#include "platform/controls/ListBox.h"
#include "platform/desktop/Icons.h"
#include "platform/desktop/Lock.h"
#include "tests/platform/controls/SampleParts.h"
#include "tests/platform/controls/Samples.h"

#include <QCheckBox>
#include <QDialog>
#include <QFrame>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace samples {

using namespace Qt::StringLiterals;
using controls::LineMark;
using controls::LineTone;

namespace {

QFrame* Card() {
  auto* card = new QFrame;
  card->setFrameShape(QFrame::StyledPanel);
  card->setProperty("card", true);
  return card;
}

QWidget* MakeSpotSide() {
  QFrame* card = Card();
  auto* grid = new QGridLayout(card);
  auto* list = new controls::ListBox;
  list->SetNumbered(true);
  list->SetRowHeight(26);
  for (const auto& name : {u"Autobedrijf De Smet - opendeurdagen"_s, u"Fietsen Janssens"_s, u"Kaasboerderij"_s}) {
    const int index = list->AddItem(name);
    list->SetDetails(index, {LineMark::None, LineTone::Quiet, false, false, {}, u"0:30"_s, {}});
  }
  list->SetListIndex(1);
  grid->addWidget(list, 0, 0, 4, 1);
  grid->addWidget(Button(u"&Toevoegen"_s, u"nieuw"_s), 0, 1);
  grid->addWidget(Button(u"&Wijzigen"_s, u"open"_s), 1, 1);
  grid->addWidget(Button(u"&Verwijderen"_s, u"verwijder"_s, desktop::IconTint::Danger), 2, 1);
  grid->addWidget(Hint(u"5 item-spots, samen 2:29"_s), 4, 0);
  grid->addWidget(Button(u"Aantal gedraaid op n&ul"_s, u"nul"_s), 4, 1);
  return card;
}

controls::ComboBox* Combo(const QString& chosen, bool locked, bool enabled) {
  auto* combo = new controls::ComboBox;
  if (!chosen.isEmpty()) {
    combo->AddItem(chosen, 1);
    combo->SetListIndex(0);
  }
  if (locked) desktop::SetLocked(combo, true);
  combo->setEnabled(enabled);
  return combo;
}

controls::LedPanel* MixPanel() {
  auto* mix = new controls::LedPanel;
  mix->SetDigits(6);
  mix->SetDigitHeight(20);
  mix->SetMaximum(999999);
  mix->SetLeadingZeros(false);
  mix->SetValue(1500);
  return mix;
}

QWidget* MakePatternSide() {
  QFrame* card = Card();
  auto* form = new QGridLayout(card);
  int row = 0;
  const auto add = [form, &row](const QString& name, QWidget* field) {
    auto* label = new QLabel(name);
    label->setEnabled(field->isEnabled());
    form->addWidget(label, row, 0);
    form->addWidget(field, row++, 1);
  };
  auto* grey = new QLineEdit(u"regio"_s);
  grey->setEnabled(false);
  add(u"Directory:"_s, grey);
  add(u"Vast naamgedeelte:"_s, new QLineEdit(u"regio"_s));
  add(u"Vergrendeld:"_s, Combo(u"Opener reclame ochtend"_s, true, true));
  auto* open = Combo(u"Maandag"_s, false, true);
  add(u"Eerste dag:"_s, open);
  add(u"Uitgeschakeld:"_s, Combo({}, false, false));
  add(u"Mixpunt:"_s, MixPanel());
  form->setRowStretch(row, 1);
  open->setFocus();
  return card;
}

}  // namespace

QWidget* MakeItem() {
  auto* window = new QDialog;
  window->resize(980, 500);
  auto* grid = new QGridLayout(window);
  grid->setHorizontalSpacing(16);
  auto* option1 = new QRadioButton(u"Optie &1: vaste lijst van item-spots"_s);
  option1->setChecked(true);
  grid->addWidget(option1, 0, 0);
  grid->addWidget(new QRadioButton(u"Optie &2: bestanden volgens naampatroon"_s), 0, 1);
  grid->addWidget(MakeSpotSide(), 1, 0);
  grid->addWidget(MakePatternSide(), 1, 1);
  auto* buttons = new QHBoxLayout;
  buttons->addWidget(Button(u"Item-sp&ots ..."_s, u"item-spots"_s));
  buttons->addWidget(Button(u"Item-pin&gles ..."_s, u"item-pingles"_s));
  buttons->addStretch();
  auto* ok = new QPushButton(u"OK"_s);
  ok->setDefault(true);
  buttons->addWidget(ok);
  buttons->addWidget(Button(u"Annuleren"_s));
  grid->addLayout(buttons, 2, 0, 1, 2);
  grid->setColumnStretch(0, 13);
  grid->setColumnStretch(1, 11);
  return window;
}

QWidget* MakeSettings() {
  auto* window = new QDialog;
  window->resize(560, 360);
  auto* column = new QVBoxLayout(window);
  column->setSpacing(12);
  auto* group = new QGroupBox(u"Online/Offline"_s);
  auto* grid = new QGridLayout(group);
  grid->addWidget(new QRadioButton(u"&Online"_s), 0, 0);
  grid->addWidget(Hint(u"werkt rechtstreeks in de gedeelde database van de zender"_s), 0, 1);
  auto* offline = new QRadioButton(u"O&ffline"_s);
  offline->setChecked(true);
  grid->addWidget(offline, 1, 0);
  grid->addWidget(Hint(u"werkt op deze computer; wijzigingen gaan mee met de export"_s), 1, 1);
  column->addWidget(group);
  auto* path = new QGroupBox(u"Database-path"_s);
  auto* row = new QHBoxLayout(path);
  row->addWidget(new QLineEdit(u"\\\\studio\\ovalisto\\data"_s));
  auto* choose = Button(u"&Map kiezen ..."_s);
  choose->setIcon(desktop::Icon(u"map"_s));
  row->addWidget(choose);
  column->addWidget(path);
  auto* checks = new QHBoxLayout;
  auto* disabled = new QCheckBox(u"Uitgeschakeld"_s);
  disabled->setChecked(true);
  disabled->setEnabled(false);
  checks->addWidget(disabled);
  checks->addStretch();
  auto* danger = Button(u"Op&ruimen"_s);
  danger->setIcon(desktop::Icon(u"verwijder"_s));
  danger->setProperty("danger", true);
  checks->addWidget(danger);
  column->addLayout(checks);
  column->addStretch();
  column->addWidget(Line());
  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  auto* ok = new QPushButton(u"OK"_s);
  ok->setDefault(true);
  buttons->addWidget(ok);
  buttons->addWidget(Button(u"Annuleren"_s));
  column->addLayout(buttons);
  offline->setFocus();
  return window;
}

QWidget* MakeBusy() {
  auto* window = new QDialog;
  window->resize(560, 200);
  auto* column = new QVBoxLayout(window);
  auto* running = new QProgressBar;
  running->setRange(0, 0);
  running->setTextVisible(false);
  column->addWidget(running);
  auto* half = new QProgressBar;
  half->setRange(0, 100);
  half->setValue(40);
  half->setTextVisible(false);
  column->addWidget(half);
  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  auto* waiting = Button(u"Exporteren"_s);
  waiting->setIcon(desktop::Icon(u"exporteren"_s));
  waiting->setEnabled(false);
  buttons->addWidget(waiting);
  auto* stop = Button(u"Onderbreken"_s);
  buttons->addWidget(stop);
  column->addLayout(buttons);
  stop->setFocus();
  return window;
}

QWidget* MakeIcons() {
  auto* window = new QDialog;
  auto* grid = new QGridLayout(window);
  int cell = 0;
  for (const QString& name : desktop::IconNames()) {
    auto* label = new QLabel;
    label->setPixmap(desktop::Icon(name).pixmap(QSize(36, 36), window->devicePixelRatioF()));
    grid->addWidget(label, cell / 7 * 2, cell % 7);
    grid->addWidget(Hint(name), cell / 7 * 2 + 1, cell % 7);
    ++cell;
  }
  auto* app = new QLabel;
  app->setPixmap(desktop::AppIcon().pixmap(QSize(64, 64), window->devicePixelRatioF()));
  grid->addWidget(app, cell / 7 * 2, cell % 7);
  return window;
}

}  // namespace samples
