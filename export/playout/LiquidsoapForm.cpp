// SPDX-License-Identifier: MIT
#include "export/playout/PlayoutForm.h"
#include "platform/runtime/HostPath.h"

using namespace Qt::StringLiterals;

namespace playout {
namespace {

QByteArray Seconds(qint64 ms) {
  return QByteArray::number(static_cast<double>(ms) / 1000, 'f', 3);
}

QByteArray Annotated(const char* name, const QByteArray& value) {
  return QByteArray(name) + "=\"" + value + "\"";
}

}  // namespace

// Writes both durations: the end of this sound that overlaps the next one, and the beginning that overlaps the previous
// one. Without the second, versions from 2.3 start the sound too late. PlainTitle removes quotes from titles;
// everything after the last colon is the path.
QByteArray LiquidsoapPlaylist(const PlannedBlock& planned) {
  QByteArray text = "#EXTM3U\n" + QByteArray(kMark) + ": " + PlainTitle(planned.block.naam).toUtf8() + "\n";
  qint32 before = 0;
  for (const PlannedSound& sound : planned.plan.sounds) {
    QByteArrayList parts{Annotated("title", PlainTitle(sound.naam).toUtf8()),
                         Annotated("block_id", QByteArray::number(planned.block.id))};
    if (sound.kind == SoundKind::Spot) parts += Annotated("spot_id", QByteArray::number(sound.id));
    if (sound.lengthMs) parts += Annotated("duration", Seconds(*sound.lengthMs));
    parts += Annotated("liq_cross_duration", Seconds(sound.mixMs));
    parts += Annotated("liq_cross_end_duration", Seconds(sound.mixMs));
    parts += Annotated("liq_cross_start_duration", Seconds(before));
    parts += Annotated("liq_fade_in", "0.");
    parts += Annotated("liq_fade_out", "0.");
    text += "annotate:" + parts.join(',') + ":" + runtime::HostPath(sound.path).toUtf8() + "\n";
    before = sound.mixMs;
  }
  return text;
}

}  // namespace playout
