// SPDX-License-Identifier: MIT
#include "platform/runtime/HostPath.h"

#include "platform/runtime/Error.h"

#include <QDir>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace runtime {
namespace {

enum class Ambiguity { TakeFirst, Refuse };

struct Drive {
  QString name;    // "D:" or "\\server\share", as written
  QString folder;  // clean host folder
};
using DriveMap = QMap<QString, Drive>;  // by name in capitals

DriveMap DefaultMap() {
  return {{u"Z:"_s, {u"Z:"_s, u"/"_s}}};
}

DriveMap& Map() {
  static DriveMap map = DefaultMap();
  return map;
}

QString KeyAsWritten(QString key) {
  key.replace(u'/', u'\\');
  while (key.endsWith(u'\\'))
    key.chop(1);
  if (key.size() == 1) key += u':';
  return key;
}

// A path text split into the folder of its mapping and the names below it.
struct Mapped {
  QString folder;
  QString rest;
};

Mapped FindMapping(const QString& text) {
  const DriveMap& map = Map();
  for (auto it = map.constEnd(); it != map.constBegin();) {
    --it;  // backwards, so that the longer of two names with a common prefix comes first
    const QString& name = it->name;
    if (text.startsWith(name, Qt::CaseInsensitive) && (text.size() == name.size() || text[name.size()] == u'\\')) {
      return {it->folder, text.mid(name.size())};
    }
  }
  const bool share = text.startsWith(u"\\\\"_s);
  throw Error(u"De %1 van '%2' is niet gekoppeld. Voeg deze toe onder [Drives] in ovalis.ini."_s.arg(
      share ? u"netwerkmap"_s : u"schijf"_s, text));
}

bool HasDrive(const QString& text) {
  return text.startsWith(u"\\\\"_s) || (text.size() >= 2 && text[1] == u':' && text[0].isLetter());
}

// The name as it is in the folder: the exact one, else one that differs in letter case only, else `name` itself.
QString NameInFolder(const QString& folder, const QString& name, Ambiguity ambiguity) {
  if (QFileInfo::exists(folder + u'/' + name) || QFileInfo(folder + u'/' + name).isSymLink()) return name;
  QStringList matches;
  const QStringList present = QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::System, QDir::Name);
  for (const QString& candidate : present) {
    if (candidate.compare(name, Qt::CaseInsensitive) == 0) matches += candidate;
  }
  if (matches.size() > 1 && ambiguity == Ambiguity::Refuse) {
    throw Error(
        u"In '%2' staan meerdere namen die alleen in hoofdletters van '%1' verschillen: %3. Geen ervan is "
        "gekozen; geef ze verschillende namen."_s.arg(name, PathText(folder), matches.join(u", "_s)));
  }
  return matches.isEmpty() ? name : matches.first();
}

QString Resolved(const QString& root, const QString& rest, const QString& text, Ambiguity ambiguity) {
  QList<QStringView> names;
  for (const QStringView name : QStringTokenizer(rest, u'/', Qt::SkipEmptyParts)) {
    if (name == u".") continue;
    if (name == u"..") {
      if (names.isEmpty()) throw Error(u"Het pad '%1' klimt buiten zijn schijf of netwerkmap."_s.arg(text));
      names.removeLast();
    } else {
      names += name;
    }
  }
  QString path = root == u"/"_s ? QString() : root;
  QString direct = path;
  for (const QStringView name : names)
    direct.append(u'/').append(name);
  if (!names.isEmpty() && QFileInfo::exists(direct)) return direct;
  for (const QStringView name : names)
    path += u'/' + NameInFolder(path.isEmpty() ? u"/"_s : path, name.toString(), ambiguity);
  return path.isEmpty() ? u"/"_s : path;
}

QString ToHost(const QString& text, Ambiguity ambiguity) {
  QString plain = text;
  if (!HasDrive(text)) {
    if (!text.contains(u'\\')) return text;  // already a host path
    plain.replace(u'\\', u'/');
    return plain.startsWith(u'/') ? Resolved(u"/"_s, plain, text, ambiguity) : plain;
  }
  plain.replace(u'/', u'\\');
  const Mapped mapped = FindMapping(plain);
  QString rest = mapped.rest;
  return Resolved(mapped.folder, rest.replace(u'\\', u'/'), text, ambiguity);
}

bool IsWithin(const QString& path, const QString& folder) {
  return folder == u"/"_s || path == folder || path.startsWith(folder + u'/');
}

// The drive with the longest folder that contains the path; null when none does.
const Drive* DriveOf(const QString& cleanPath) {
  const Drive* best = nullptr;
  for (const Drive& drive : Map()) {
    if (IsWithin(cleanPath, drive.folder) && (best == nullptr || drive.folder.size() > best->folder.size()))
      best = &drive;
  }
  return best;
}

}  // namespace

void SetDrives(const QMap<QString, QString>& folders, const QString& baseFolder) {
  if (folders.isEmpty()) {
    Map() = DefaultMap();
    return;
  }
  DriveMap map;
  for (auto it = folders.constBegin(); it != folders.constEnd(); ++it) {
    const QString name = KeyAsWritten(it.key());
    const QString folder = QDir::isAbsolutePath(it.value()) ? it.value() : baseFolder + u'/' + it.value();
    map.insert(name.toUpper(), {name, QDir::cleanPath(folder)});
  }
  Map() = map;
}

QStringList Drives() {
  QStringList names;
  for (const Drive& drive : Map())
    names += drive.name;
  return names;
}

QString HostPath(const QString& text) {
  return ToHost(text, Ambiguity::TakeFirst);
}
QString HostPathExactly(const QString& text) {
  return ToHost(text, Ambiguity::Refuse);
}

QString HostRoot(const QString& text) {
  if (!HasDrive(text)) return u"/"_s;
  QString plain = text;
  return FindMapping(plain.replace(u'/', u'\\')).folder;
}

QString PathText(const QString& hostPath) {
  const QString clean = QDir::cleanPath(hostPath);
  const Drive* drive = DriveOf(clean);
  if (drive == nullptr) return hostPath;
  QString rest = drive->folder == u"/"_s ? clean : clean.mid(drive->folder.size());
  if (rest == u"/"_s) rest.clear();
  return drive->name + rest.replace(u'/', u'\\');
}

bool IsMapped(const QString& hostPath) {
  return DriveOf(QDir::cleanPath(hostPath)) != nullptr;
}

}  // namespace runtime
