// SPDX-License-Identifier: MIT
#include "export/playout/PlayoutForm.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/HostPath.h"

#include <QMap>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace playout {
namespace {

// Cart numbers are 1 to 999999; spots, jingles and files each have their own range.
constexpr qint64 kSpotCarts = 100'000;
constexpr qint64 kJingleCarts = 200'000;
constexpr qint64 kFileCarts = 300'000;
constexpr qint64 kMaxCart = 999'999;
constexpr qint64 kFilesOfABlock = 100;

// `number`: index of the sound among the files of its block, from 1.
qint64 CartOf(qint32 blockID, const PlannedSound& sound, int number) {
  const bool file = sound.kind == SoundKind::File;
  const bool spot = sound.kind == SoundKind::Spot;
  const qint64 first = file ? kFileCarts : spot ? kSpotCarts : kJingleCarts;
  const qint64 last = file ? kMaxCart : first + 99'999;
  const qint64 cart = first + (file ? blockID * kFilesOfABlock + number : sound.id);
  if (cart <= first || cart > last || number >= kFilesOfABlock) {
    throw runtime::Error(u"Voor '%1' van item %2 is er geen cartnummer: de nummers %3 tot %4 zijn te klein."_s.arg(
        sound.naam, QString::number(blockID), QString::number(first + 1), QString::number(last)));
  }
  return cart;
}

struct Cart {
  const PlannedSound* sound = nullptr;
  const BlockSpot* spot = nullptr;  // null for a jingle or a file
};

const BlockSpot* SpotOf(const Block& block, const PlannedSound& sound) {
  if (sound.kind != SoundKind::Spot) return nullptr;
  const auto spot = std::find_if(block.spots.begin(), block.spots.end(),
                                 [&](const BlockSpot& candidate) { return candidate.id == sound.id; });
  return spot == block.spots.end() ? nullptr : &*spot;
}

// The sounds of a block with their carts, in order.
std::vector<std::pair<qint64, Cart>> CartsOf(const PlannedBlock& planned) {
  std::vector<std::pair<qint64, Cart>> carts;
  int files = 0;
  for (const PlannedSound& sound : planned.plan.sounds) {
    if (sound.kind == SoundKind::File) ++files;
    carts.push_back({CartOf(planned.block.id, sound, files), {&sound, SpotOf(planned.block, sound)}});
  }
  return carts;
}

QByteArray TwoDigits(int number) {
  return QByteArray::number(number).rightJustified(2, '0');
}

QByteArray Validity(const BlockSpot& spot) {
  const SpotFacts& facts = spot.facts;
  QByteArray words;
  if (facts.startDatum || facts.eindDatum) {
    const QDate first = facts.startDatum.value_or(QDate(2000, 1, 1));
    const QDate last = facts.eindDatum.value_or(QDate(2099, 12, 31));
    words += " --set-datetimes=" + first.toString(u"yyyyMMdd"_s).toLatin1() + "-000000," +
             last.toString(u"yyyyMMdd"_s).toLatin1() + "-235959";
  }
  const int from = facts.startUur.value_or(0);
  const int to = facts.eindUur.value_or(23);
  if (from != 0 || to != 23) {
    words += " --set-daypart-times=" + TwoDigits(from) + "0000," + TwoDigits(to) + "5959";
  }
  return words;
}

QByteArray Import(qint64 number, const Cart& cart) {
  const PlannedSound& sound = *cart.sound;
  QByteArray line = "rdimport --to-cart=" + QByteArray::number(number) +
                    " --delete-cuts --set-string-title=" + ShellWord(PlainTitle(sound.naam));
  if (cart.spot != nullptr) line += Validity(*cart.spot);
  if (sound.storedMixMs > 0 && sound.lengthMs) {
    line += " --set-marker-start-segue=-" + QByteArray::number(std::min<qint64>(sound.storedMixMs, *sound.lengthMs)) +
            " --set-marker-end-segue=" + QByteArray::number(*sound.lengthMs);
  }
  return line + " --normalization-level=0 --autotrim-level=0 \"$groep\" " + ShellWord(runtime::HostPath(sound.path)) +
         "\n";
}

QByteArray ScriptHead(const QString& about) {
  return "#!/bin/sh\n" + QByteArray(kMark) + ": " + PlainTitle(about).toUtf8() + "\nset -eu\n";
}

}  // namespace

QByteArray RivendellCarts(const std::vector<PlannedBlock>& blocks) {
  QMap<qint64, Cart> carts;
  for (const PlannedBlock& planned : blocks) {
    for (const auto& [number, cart] : CartsOf(planned))
      carts.insert(number, cart);
  }
  QByteArray text = ScriptHead(u"alle geluiden van de blokken, elk als cart"_s) + "groep=${SPOTROOSTER_GROEP:-ADS}\n";
  for (auto cart = carts.constBegin(); cart != carts.constEnd(); ++cart)
    text += Import(cart.key(), *cart);
  return text;
}

QByteArray RivendellLog(const PlannedBlock& planned) {
  const QByteArray name = "BLOK_" + QByteArray::number(planned.block.id);
  QByteArrayList lines{"new " + name};
  int line = 0;
  for (const auto& [number, cart] : CartsOf(planned)) {
    lines += "addcart " + QByteArray::number(line) + " " + QByteArray::number(number);
    lines += "settrans " + QByteArray::number(line++) + " segue";
  }
  lines += "saveas " + name;
  lines += "bye";
  return ScriptHead(planned.block.naam) + "rdclilogedit -n <<'EINDE'\n" + lines.join('\n') + "\nEINDE\n";
}

}  // namespace playout
