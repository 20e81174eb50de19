// SPDX-License-Identifier: MIT
#include "export/apply/ExportFile.h"

#include "export/ContentDigest.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/HostPath.h"
#include "platform/runtime/Probe.h"
#include "platform/runtime/TextFile.h"

#include <QDir>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace apply {
namespace {

constexpr qint64 kMaxBytes = qint64{64} << 20;
constexpr qsizetype kStampLength = 14;

QString FileNameOf(const QString& path) {
  return path.sliced(std::max(path.lastIndexOf(u'\\'), path.lastIndexOf(u'/')) + 1);
}

QString StampOf(const QString& name) {
  const QString stamp = name.left(kStampLength);
  const bool isStamp = std::ranges::all_of(stamp, [](QChar c) { return c >= u'0' && c <= u'9'; });
  return isStamp && name.compare(stamp + u".tql"_s, Qt::CaseInsensitive) == 0 && stamp.size() == kStampLength
             ? stamp
             : QString();
}

bool BelongsTo(const basis::Entry& entry, const ExportStatement& statement) {
  if (entry.table != NameOf(statement.table) || entry.key != statement.key) return false;
  if (statement.table == Table::Links)
    return statement.verb == Verb::Delete ? entry.after.isEmpty() : entry.before.isEmpty() && entry.after.size() == 1;
  switch (statement.verb) {
    case Verb::Insert:
      return entry.before.isEmpty() && entry.after.size() == 1;
    case Verb::Update:
      return entry.before.size() == entry.after.size() && entry.before.size() <= 1;
    default:
      return entry.after.isEmpty() && entry.before.size() <= 1;
  }
}

void TakeBasis(ExportFile& file, qsizetype bytes) {
  const QString path = basis::PathOf(file.path);
  basis::File read = basis::Read(path);
  if (read.header.digest != file.digest || read.header.bytes != bytes ||
      read.entries.size() != file.statements.size()) {
    throw runtime::Error(
        u"Het bestand '%1' hoort niet bij '%2': het is de basis van een andere export, of een van beide is daarna "
        "gewijzigd. Haal beide opnieuw op van het werkstation."_s.arg(path, file.name));
  }
  for (std::size_t i = 0; i < read.entries.size(); ++i) {
    if (!read.entries[i] || BelongsTo(*read.entries[i], file.statements[i])) continue;
    throw runtime::Error(
        u"Het bestand '%1' is niet bruikbaar: regel %2 hoort niet bij de opdracht op regel %3 van "
        "'%4'."_s.arg(path, QString::number(i + 2), QString::number(file.statements[i].line), file.name));
  }
  file.basis = std::move(read.header);
  file.entries = std::move(read.entries);
}

}  // namespace

const basis::Entry* ExportFile::EntryOf(std::size_t statement) const {
  return statement < entries.size() && entries[statement] ? &*entries[statement] : nullptr;
}

ExportFile ReadExport(const QString& path) {
  ExportFile file;
  file.path = path;
  file.name = FileNameOf(path);
  file.stamp = StampOf(file.name);
  const QByteArray content = runtime::ReadFile(path, kMaxBytes);
  file.statements = ParseExport(content, path);
  file.digest = ContentDigest::Of(content);
  if (runtime::Probe(basis::PathOf(path)) == runtime::Presence::There) {
    TakeBasis(file, content.size());
  } else if (LooksLikeUtf8(content)) {
    throw runtime::Error(
        u"Het bestand '%1' is niet verwerkt: het is in UTF-8 opgeslagen, en een export is in Windows-1252. Neem het "
        "bestand zoals het programma het schreef."_s.arg(path));
  }
  return file;
}

QStringList ExportsIn(const QString& folder) {
  if (!runtime::IsFolder(folder)) throw runtime::Error(u"De map '%1' bestaat niet."_s.arg(folder));
  const QDir host(runtime::HostPath(folder));
  QStringList paths;
  for (const QString& name : host.entryList(QDir::Files, QDir::Name)) {
    if (!StampOf(name).isEmpty()) paths += host.filePath(name);
  }
  return paths;
}

}  // namespace apply
