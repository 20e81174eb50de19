// SPDX-License-Identifier: MIT
#include "export/playout/PlayoutForm.h"

#include "platform/runtime/Error.h"
#include "platform/runtime/HostPath.h"

#include <QRegularExpression>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

const QString kCartsFile = u"geluiden.sh"_s;

QString ExtensionOf(PlayoutForm form) {
  return form == PlayoutForm::Rivendell ? u".sh"_s : u".m3u"_s;
}

QByteArray ContentOf(PlayoutForm form, const PlannedBlock& planned) {
  switch (form) {
    case PlayoutForm::Liquidsoap:
      return playout::LiquidsoapPlaylist(planned);
    case PlayoutForm::Rivendell:
      return playout::RivendellLog(planned);
    case PlayoutForm::M3u:
      break;
  }
  return playout::M3uPlaylist(planned);
}

}  // namespace

std::optional<PlayoutForm> PlayoutFormOf(const QString& name) {
  if (name == u"liquidsoap"_s) return PlayoutForm::Liquidsoap;
  if (name == u"rivendell"_s) return PlayoutForm::Rivendell;
  if (name == u"m3u"_s) return PlayoutForm::M3u;
  return std::nullopt;
}

bool CanBeWritten(const QString& path) {
  const bool fits = std::none_of(path.begin(), path.end(), [](QChar c) { return c.unicode() < 32 || c == u'\x7f'; });
  if (!fits) return false;
  try {
    runtime::HostPath(path);
    return true;
  } catch (const runtime::Error&) {
    return false;
  }
}

std::vector<PlayoutFile> PlayoutFilesOf(PlayoutForm form, const std::vector<PlannedBlock>& blocks) {
  std::vector<PlayoutFile> files;
  files.reserve(blocks.size() + 1);
  for (const PlannedBlock& planned : blocks)
    files.push_back({PlayoutFileName(form, planned.block.id), ContentOf(form, planned)});
  if (form == PlayoutForm::Rivendell) files.push_back({kCartsFile, playout::RivendellCarts(blocks)});
  return files;
}

QString PlayoutFileName(PlayoutForm form, qint32 blockID) {
  return u"blok-"_s + QString::number(blockID) + ExtensionOf(form);
}

bool IsPlayoutFileName(PlayoutForm form, const QString& name) {
  static const QRegularExpression kBlock(u"^blok--?[0-9]+$"_s);
  if (form == PlayoutForm::Rivendell && name == kCartsFile) return true;
  return name.endsWith(ExtensionOf(form)) && kBlock.match(name.chopped(ExtensionOf(form).size())).hasMatch();
}

// The mark is in the first line, or in the second after the line that the format requires first.
bool IsPlayoutFile(const QByteArray& content) {
  const qsizetype line = content.indexOf('\n') + 1;
  return content.startsWith(playout::kMark) || QByteArrayView(content).sliced(line).startsWith(playout::kMark);
}

namespace playout {

QString PlainTitle(const QString& text) {
  QString title = text;
  for (QChar& c : title) {
    if (c.unicode() < 32 || c == u'\x7f' || c == u'\x2028' || c == u'\x2029') c = u' ';
  }
  title.replace(u'"', u'\'');
  title.replace(u'\\', u'/');
  title.replace(u"#{"_s, u"# {"_s);  // an expression in Liquidsoap
  return title.simplified();
}

QByteArray ShellWord(const QString& text) {
  return "'" + text.toUtf8().replace('\'', "'\\''") + "'";
}

QByteArray M3uPlaylist(const PlannedBlock& planned) {
  QByteArray text = "#EXTM3U\n" + QByteArray(kMark) + ": " + PlainTitle(planned.block.naam).toUtf8() + "\n";
  for (const PlannedSound& sound : planned.plan.sounds) {
    const qint64 seconds = sound.lengthMs ? (*sound.lengthMs + 500) / 1000 : -1;
    text += "#EXTINF:" + QByteArray::number(seconds) + "," + PlainTitle(sound.naam).toUtf8() + "\n" +
            runtime::HostPath(sound.path).toUtf8() + "\n";
  }
  return text;
}

}  // namespace playout
