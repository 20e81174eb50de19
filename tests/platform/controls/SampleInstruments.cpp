// SPDX-License-Identifier: MIT
#include "platform/controls/DateCombo.h"
#include "platform/controls/LedClockGround.h"
#include "platform/controls/LedPanel.h"
#include "platform/controls/LedSpin.h"
#include "platform/controls/LevelMeter.h"
#include "platform/controls/LevelScale.h"
#include "platform/controls/PositionSlider.h"
#include "platform/controls/StateMark.h"
#include "platform/controls/WaveformStrip.h"
#include "platform/desktop/Icons.h"
#include "platform/desktop/Lock.h"
#include "tests/platform/controls/SampleParts.h"
#include "tests/platform/controls/Samples.h"

#include <QCheckBox>
#include <QDialog>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenuBar>
#include <QPushButton>
#include <QStatusBar>
#include <QToolBar>
#include <QVBoxLayout>

#include <cmath>
#include <vector>

namespace samples {
namespace {

using namespace Qt::StringLiterals;

constexpr qint64 kLength = 32170;

QLabel* Labelled(const QString& text, QWidget* buddy) {
  auto* label = new QLabel(text);
  label->setBuddy(buddy);
  return label;
}

QLineEdit* Field(const QString& text, bool locked = false, int width = 0) {
  auto* edit = new QLineEdit(text);
  if (width > 0) edit->setFixedWidth(width);
  if (width > 0 && width < 100) edit->setAlignment(Qt::AlignRight);
  if (locked) desktop::SetLocked(edit, true);
  return edit;
}

QPushButton* Transport(const QString& icon, const QString& text, desktop::IconTint tint, bool behind = false) {
  auto* button = new QPushButton(text);
  button->setAutoDefault(false);
  button->setIcon(desktop::Icon(icon, tint));
  button->setMinimumHeight(36);
  button->setProperty("iconAfterText", behind);
  return button;
}

std::vector<controls::Peak> MadeUpPeaks(int count) {
  std::vector<controls::Peak> peaks;
  for (int i = 0; i < count; ++i) {
    const double t = i / double(count);
    const double body = 0.35 + 0.3 * std::abs(std::sin(t * 47)) + 0.25 * std::abs(std::sin(t * 211 + 1));
    const double noise = 0.8 + 0.2 * std::sin(i * 12.9898);
    const double fade = t > 0.92 ? (1 - t) / 0.08 : 1;
    const auto top = static_cast<float>(body * noise * fade);
    peaks.push_back({-top * 0.95F, top, top * 0.45F});
  }
  return peaks;
}

controls::LedPanel* Panel(int digits, int height, int maximum, int value) {
  auto* panel = new controls::LedPanel;
  panel->SetDigits(digits);
  panel->SetDigitHeight(height);
  panel->SetMaximum(maximum);
  panel->SetValue(value);
  return panel;
}

controls::LedClockGround* Clock(const QString& separators, const std::vector<controls::LedPanel*>& panels) {
  auto* ground = new controls::LedClockGround;
  ground->SetSeparators(separators);
  for (controls::LedPanel* panel : panels)
    panel->setParent(ground);
  return ground;
}

QLayout* MakeMeters() {
  auto* grid = new QGridLayout;
  grid->setVerticalSpacing(0);
  auto* ground = new controls::InstrumentGround;
  auto* rows = new QVBoxLayout(ground);
  rows->setContentsMargins(6, 6, 6, 6);
  rows->setSpacing(2);
  for (const double level : {-14.0, -16.0}) {
    auto* meter = new controls::LevelMeter;
    meter->SetLevel(-3);
    meter->Advance(0.01);
    for (int i = 0; i < 36; ++i) {
      meter->SetLevel(level);
      meter->Advance(0.034);
    }
    rows->addWidget(meter);
  }
  auto* names = new QVBoxLayout;
  names->addWidget(Hint(u"L"_s));
  names->addWidget(Hint(u"R"_s));
  grid->addLayout(names, 0, 0);
  grid->addWidget(ground, 0, 1);
  grid->addWidget(new controls::LevelScale, 1, 1);
  return grid;
}

QGroupBox* MakePlayer() {
  auto* group = new QGroupBox(u"Beluisteren en mixpunt"_s);
  auto* column = new QVBoxLayout(group);
  auto* wave = new controls::WaveformStrip;
  wave->Begin(kLength, 2400);
  wave->AppendPeaks(MadeUpPeaks(2400));
  wave->SetPositionMs(20370);
  wave->SetMixMs(2480);
  column->addWidget(wave, 1);
  auto* slider = new controls::PositionSlider;
  slider->setMaximum(kLength);
  slider->setValue(20370);
  column->addWidget(slider);
  auto* row = new QHBoxLayout;
  row->addWidget(Clock(u":."_s, {Panel(2, 32, 100, 0), Panel(2, 32, 100, 11), Panel(3, 32, 999, 800)}));
  row->addStretch();
  row->addWidget(Transport(u"rrew"_s, u"30"_s, desktop::IconTint::Text));
  row->addWidget(Transport(u"rew"_s, u"10"_s, desktop::IconTint::Text));
  row->addWidget(Transport(u"play"_s, {}, desktop::IconTint::Accent));
  row->addWidget(Transport(u"stop"_s, {}, desktop::IconTint::Text));
  row->addWidget(Transport(u"ffw"_s, u"10"_s, desktop::IconTint::Text, true));
  row->addWidget(Transport(u"fffw"_s, u"30"_s, desktop::IconTint::Text, true));
  row->addStretch();
  row->addLayout(MakeMeters());
  column->addLayout(row);
  auto* line = new QFrame;
  line->setFrameShape(QFrame::HLine);
  column->addWidget(line);
  auto* mix = new QHBoxLayout;
  auto* spin = new controls::LedSpin;
  spin->SetValue(2480);
  mix->addWidget(Labelled(u"Outtromi&x"_s, spin));
  mix->addWidget(spin);
  mix->addWidget(Hint(u"milliseconden vóór het einde"_s));
  mix->addStretch();
  for (const auto& text : {u"&BEPAAL MIX"_s, u"&RESET"_s, u"&TEST"_s}) {
    auto* button = new QPushButton(text);
    button->setAutoDefault(false);
    mix->addWidget(button);
  }
  column->addLayout(mix);
  return group;
}

}  // namespace

namespace {

QLayout* MakeNameFields(QLineEdit* name) {
  auto* top = new QGridLayout;
  top->addWidget(new QLabel(u"Path:"_s), 0, 0);
  top->addWidget(Field(u"D:\\Audio\\Spots\\2025\\Fietsen Janssens - voorjaarsactie.mp3"_s, true), 0, 1, 1, 2);
  auto* path = new QPushButton(desktop::Icon(u"geluid"_s), u"&Path ..."_s);
  path->setAutoDefault(false);
  top->addWidget(path, 0, 3);
  top->addWidget(Labelled(u"&Naam:"_s, name), 1, 0);
  top->addWidget(name, 1, 1, 1, 2);
  auto* fill = new QPushButton(u"Naam &invullen"_s);
  fill->setAutoDefault(false);
  top->addWidget(fill, 1, 3);
  top->addWidget(new QLabel(u"Lengte:"_s), 2, 0);
  top->addWidget(Field(u"32"_s, true, 64), 2, 1);
  top->addWidget(new QLabel(u"seconden"_s), 2, 2);
  top->setColumnStretch(2, 1);
  auto* active = new QCheckBox(u"&Aktieve item-spot"_s);
  active->setChecked(true);
  top->addWidget(active, 2, 3);
  return top;
}

QGroupBox* MakeValidity() {
  auto* group = new QGroupBox(u"Geldigheid"_s);
  auto* grid = new QGridLayout(group);
  for (int row = 0; row < 2; ++row) {
    auto* date = new controls::DateCombo;
    date->SetText(row == 0 ? u"01-03-2025"_s : u"20-04-2025"_s);
    date->setFixedWidth(128);
    grid->addWidget(Labelled(row == 0 ? u"&Startdatum:"_s : u"&Einddatum:"_s, date), row, 0);
    grid->addWidget(date, row, 1);
    auto* hour = Field(row == 0 ? u"6"_s : u"22"_s, false, 56);
    grid->addWidget(Labelled(row == 0 ? u"vanaf &uur:"_s : u"T&ot en met uur:"_s, hour), row, 2);
    grid->addWidget(hour, row, 3);
  }
  auto* mark = new controls::StateMark;
  mark->Show(controls::LineMark::Circle, controls::LineTone::Runs);
  grid->addWidget(mark, 0, 4);
  grid->addWidget(Hint(u"loopt, nog 40 dagen"_s), 0, 5);
  return group;
}

QGroupBox* MakePlayed() {
  auto* group = new QGroupBox(u"Gedraaid"_s);
  auto* grid = new QGridLayout(group);
  grid->addWidget(new QLabel(u"Aantal gedraaid:"_s), 0, 0);
  grid->addWidget(Field(u"147"_s, true, 64), 0, 1);
  grid->addWidget(new QLabel(u"Laatst gedraaid:"_s), 1, 0);
  grid->addWidget(Field(u"11-03-2025 13:42:10"_s, true, 160), 1, 1);
  return group;
}

}  // namespace

QWidget* MakeEditor() {
  auto* window = new QDialog;
  window->resize(920, 668);
  auto* column = new QVBoxLayout(window);
  column->setSpacing(12);
  auto* name = Field(u"Fietsen Janssens - voorjaarsactie"_s);
  column->addLayout(MakeNameFields(name));
  auto* middle = new QHBoxLayout;
  middle->addWidget(MakeValidity());
  middle->addWidget(MakePlayed());
  column->addLayout(middle);
  column->addWidget(MakePlayer(), 1);
  auto* buttons = new QHBoxLayout;
  buttons->setSpacing(8);
  buttons->addStretch();
  auto* ok = new QPushButton(u"OK"_s);
  ok->setDefault(true);
  buttons->addWidget(ok);
  auto* cancel = new QPushButton(u"Annuleren"_s);
  cancel->setAutoDefault(false);
  buttons->addWidget(cancel);
  column->addLayout(buttons);
  name->setFocus();
  return window;
}

QWidget* MakeMain() {
  auto* window = new QMainWindow;
  window->resize(960, 560);
  for (const auto& text : {u"&Bestand"_s, u"&Overzichten"_s, u"&Planning"_s, u"&Help"_s})
    window->menuBar()->addMenu(text);
  auto* bar = window->addToolBar(u"tlbMain"_s);
  bar->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
  bar->addAction(desktop::Icon(u"item-spots"_s), u"Item-spots"_s);
  bar->addAction(desktop::Icon(u"items"_s), u"Items"_s);
  bar->addAction(desktop::Icon(u"exporteren"_s), u"Exporteren"_s);
  bar->addAction(desktop::Icon(u"instellingen"_s), u"Instellingen"_s);
  auto* spacer = new QWidget;
  spacer->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
  bar->addWidget(spacer);
  bar->addAction(desktop::Icon(u"afsluiten"_s), u"Afsluiten"_s);
  auto* page = new QWidget;
  auto* column = new QVBoxLayout(page);
  column->setContentsMargins(32, 28, 32, 28);
  auto* head = new QHBoxLayout;
  auto* title = new QLabel(u"Radio Polderstem"_s);
  QFont large = title->font();
  large.setPointSizeF(large.pointSizeF() * 2);
  large.setWeight(QFont::DemiBold);
  title->setFont(large);
  head->addWidget(title);
  head->addStretch();
  head->addWidget(Clock(u"::"_s, {Panel(2, 44, 23, 14), Panel(2, 44, 59, 32), Panel(2, 44, 59, 7)}));
  column->addLayout(head);
  auto* today = new QGroupBox(u"Vandaag"_s);
  auto* rows = new QHBoxLayout(today);
  rows->addWidget(new QLabel(u"13 item-spots lopen vandaag"_s));
  rows->addStretch();
  rows->addWidget(new QPushButton(u"Tonen"_s));
  column->addWidget(today);
  column->addStretch();
  window->setCentralWidget(page);
  window->statusBar()->addWidget(new QLabel(u"Radio Polderstem (zender 3)"_s));
  window->statusBar()->addPermanentWidget(Hint(u"Versie 1.2.15"_s));
  return window;
}

}  // namespace samples
