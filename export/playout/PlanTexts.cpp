// SPDX-License-Identifier: MIT
#include "export/playout/PlanTexts.h"

#include <QStringList>

#include <algorithm>

using namespace Qt::StringLiterals;

QString KindText(SoundKind kind) {
  switch (kind) {
    case SoundKind::Opener:
      return u"opener"_s;
    case SoundKind::Spot:
      return u"item-spot"_s;
    case SoundKind::File:
      return u"bestand"_s;
    case SoundKind::Middle:
      return u"tussenstuk"_s;
    case SoundKind::Closer:
      return u"sluiter"_s;
  }
  return {};
}

QString ReasonText(LeftOut reason) {
  switch (reason) {
    case LeftOut::NotActive:
      return u"niet aktief"_s;
    case LeftOut::NoFile:
      return u"geen geluidsbestand gekozen"_s;
    case LeftOut::FileMissing:
      return u"geluidsbestand ontbreekt"_s;
    case LeftOut::Unreadable:
      return u"geluidsbestand is niet leesbaar"_s;
    case LeftOut::Over:
      return u"verlopen"_s;
    case LeftOut::NotBegun:
      return u"nog niet begonnen"_s;
    case LeftOut::OutsideHours:
      return u"buiten de uren"_s;
    case LeftOut::NotItsTurn:
      return u"niet aan de beurt"_s;
    case LeftOut::JingleGone:
      return u"jingle bestaat niet meer"_s;
  }
  return {};
}

QString SilenceText(Silence silence) {
  switch (silence) {
    case Silence::None:
      return {};
    case Silence::BlockNotActive:
      return u"het item is niet aktief"_s;
    case Silence::NotFilled:
      return u"het item heeft geen vulling"_s;
    case Silence::NoSpots:
      return u"geen enkele spot kan spelen"_s;
  }
  return {};
}

QString LeftOutText(const LeftOutSound& sound) {
  const bool jingle =
      sound.kind == SoundKind::Opener || sound.kind == SoundKind::Middle || sound.kind == SoundKind::Closer;
  const QString name = sound.naam.isEmpty() ? u"nummer %1"_s.arg(sound.id) : sound.naam;
  return (jingle ? QString(KindText(sound.kind) + u' ' + name) : name) + u": "_s + ReasonText(sound.reason);
}

bool LeftOutIsTrouble(const LeftOutSound& sound, const BlockPlan& plan) {
  if (sound.reason == LeftOut::NotItsTurn) return false;
  const bool waits = sound.reason == LeftOut::NotBegun || sound.reason == LeftOut::OutsideHours;
  return !waits || plan.IsShort();
}

namespace {

QString LeftOutSummary(const BlockPlan& plan) {
  QStringList texts;
  for (const LeftOutSound& sound : plan.leftOut) {
    if (LeftOutIsTrouble(sound, plan)) texts += LeftOutText(sound);
  }
  return texts.join(u"; "_s);
}

}  // namespace

QString TroubleText(const BlockPlan& plan) {
  const QString summary = LeftOutSummary(plan);
  QString text;
  if (plan.IsSilent()) {
    text = u"stil: "_s + SilenceText(plan.silence);
  } else if (plan.IsShort()) {
    text = u"%1 van %2 spots"_s.arg(plan.spots).arg(plan.wanted);
  }
  if (text.isEmpty() || summary.isEmpty()) return text.isEmpty() ? summary : text;
  return text + u" ("_s + summary + u')';
}

QString DurationText(qint64 ms) {
  const qint64 seconds = (ms + 500) / 1000;
  const auto twoDigits = [](qint64 number) { return QString::number(number).rightJustified(2, u'0'); };
  const QString rest = u':' + twoDigits(seconds % 60);
  if (seconds < 3600) return QString::number(seconds / 60) + rest;
  return QString::number(seconds / 3600) + u':' + twoDigits(seconds / 60 % 60) + rest;
}
