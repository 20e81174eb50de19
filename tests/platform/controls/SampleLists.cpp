// SPDX-License-Identifier: MIT
#include "platform/controls/ListBox.h"
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
#include <QPushButton>
#include <QTabWidget>
#include <QVBoxLayout>

namespace samples {
namespace {

using namespace Qt::StringLiterals;
using controls::LineMark;
using controls::LineTone;

QWidget* ListWindow(controls::ListBox* list, const QString& search, const QString& count) {
  auto* window = new QDialog;
  window->resize(920, 600);
  auto* outer = new QVBoxLayout(window);
  auto* tabs = new QTabWidget;
  tabs->setDocumentMode(true);
  outer->addWidget(tabs);
  auto* page = new QWidget;
  tabs->addTab(page, u"Overzicht"_s);
  auto* grid = new QGridLayout(page);
  grid->setHorizontalSpacing(16);
  auto* left = new QVBoxLayout;
  auto* box = new QLineEdit(search);
  box->setPlaceholderText(u"Zoeken op naam (Ctrl+F)"_s);
  box->setClearButtonEnabled(true);
  box->addAction(desktop::Icon(u"zoek"_s, desktop::IconTint::Quiet), QLineEdit::LeadingPosition);
  left->addWidget(box);
  left->addWidget(list);
  left->addWidget(Hint(count));
  grid->addLayout(left, 0, 0);
  auto* right = new QVBoxLayout;
  right->addWidget(Button(u"&Nieuw"_s, u"nieuw"_s));
  right->addWidget(Button(u"&Open"_s, u"open"_s));
  right->addWidget(Button(u"&Desaktiveer"_s, u"desaktiveer"_s));
  right->addWidget(Button(u"&Verwijder"_s, u"verwijder"_s, desktop::IconTint::Danger));
  if (list->ListCount() == 0)
    for (int i = 1; i < 4; ++i)
      right->itemAt(i)->widget()->setEnabled(false);
  right->addStretch();
  auto* group = new QGroupBox(u"Weergave"_s);
  auto* groupLayout = new QVBoxLayout(group);
  auto* active = new QCheckBox(u"&Aktieve item-spots"_s);
  active->setChecked(true);
  groupLayout->addWidget(active);
  groupLayout->addWidget(new QCheckBox(u"Niet a&ktieve item-spots"_s));
  right->addWidget(group);
  right->addSpacing(24);
  grid->addLayout(right, 0, 1);
  outer->addWidget(Line());
  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  buttons->addWidget(Button(u"&Sluiten"_s));
  outer->addLayout(buttons);
  list->setFocus();
  return window;
}

}  // namespace

QWidget* MakeList() {
  struct Row {
    QString text;
    LineMark mark;
    LineTone tone;
    QString word;
    QString length;
  };
  const Row kRows[] = {
      {u"Autobedrijf De Smet - opendeurdagen"_s, LineMark::Circle, LineTone::Runs, u"loopt t/m 30-03-2025"_s,
       u"0:30"_s},
      {u"Bakkerij Van Damme - paasbrood"_s, LineMark::Clock, LineTone::Begins, u"begint 31-03-2025"_s, u"0:22"_s},
      {u"Boekhandel Lezenswaard"_s, LineMark::Circle, LineTone::Runs, u"loopt t/m 31-12-2025"_s, u"0:25"_s},
      {u"Bouwmarkt Vermeulen - gereedschap"_s, LineMark::Triangle, LineTone::Ends, u"verloopt 14-03-2025"_s, u"0:32"_s},
      {u"Brillen Claes - tweede glas gratis"_s, LineMark::Circle, LineTone::Runs, u"loopt t/m 15-06-2025"_s, u"0:28"_s},
      {u"Café De Zwaan - quizavond"_s, LineMark::Cross, LineTone::Wrong, u"geluidsbestand ontbreekt"_s, u"0:18"_s},
      {u"Fietsen Janssens - voorjaarsactie"_s, LineMark::Circle, LineTone::Runs, u"loopt t/m 20-04-2025"_s, u"0:32"_s},
      {u"Kringwinkel Het Rad - inzameldag"_s, LineMark::Square, LineTone::Quiet, u"verlopen op 28-02-2025"_s,
       u"0:25"_s},
      {u"Verzekeringen Maes & Zoon"_s, LineMark::Dash, LineTone::Quiet, u"niet aktief"_s, u"0:27"_s},
  };
  auto* list = new controls::ListBox;
  for (int repeat = 0; repeat < 3; ++repeat) {
    for (const Row& row : kRows) {
      const int index = list->AddItem(row.text, list->ListCount());
      const bool loud = row.tone != LineTone::Quiet && row.tone != LineTone::Runs;
      list->SetDetails(index, {row.mark, row.tone, loud, row.mark == LineMark::Dash, row.word, row.length, {}});
    }
  }
  list->SetListIndex(6);
  return ListWindow(list, {}, u"21 item-spots: 10 lopen, 3 beginnen later, 3 verlopen binnen 7 dagen"_s);
}

QWidget* MakeEmptyList() {
  auto* list = new controls::ListBox;
  list->SetEmptyText(
      u"Geen item-spots gevonden met ‘kerst’.\nMaak het zoekveld leeg of vink ‘Niet aktieve item-spots’ aan."_s);
  return ListWindow(list, u"kerst"_s, u"0 van 21 item-spots"_s);
}

}  // namespace samples
