// SPDX-License-Identifier: MIT
#include "data/IniFile.h"

#include "platform/runtime/CodePage.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/Numbers.h"
#include "platform/runtime/Probe.h"
#include "platform/runtime/TextFile.h"

#include <QList>

// SimpleIni gets UTF-8 only; header-only use needs no library to link with.
#define SI_NO_CONVERSION
#define SI_IMPLEMENTATION
#include <SimpleIni.h>

#include <optional>

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 kLargestFile = 1 << 20;
const QByteArray kUtf8Mark = QByteArrayLiteral("\xEF\xBB\xBF");

QString TextOf(const QByteArray& bytes) {
  return bytes.startsWith(kUtf8Mark) ? QString::fromUtf8(bytes.mid(kUtf8Mark.size())) : runtime::FromCodePage(bytes);
}

void Parse(const QByteArray& bytes, const QString& path, CSimpleIniA& ini) {
  const QByteArray utf8 = TextOf(bytes).toUtf8();
  if (ini.LoadData(utf8.constData(), static_cast<size_t>(utf8.size())) < 0) {
    throw runtime::Error(u"Kan '%1' niet lezen: het is geen ini-bestand."_s.arg(path));
  }
}

bool IsSame(const QByteArray& written, const QString& name) {
  return TextOf(written).trimmed().compare(name, Qt::CaseInsensitive) == 0;
}

// A range of the file's bytes: a line without its line end, or a part of one.
struct Line {
  qsizetype begin = 0;
  qsizetype length = 0;
};

QList<Line> LinesOf(const QByteArray& bytes) {
  QList<Line> lines;
  qsizetype begin = bytes.startsWith(kUtf8Mark) ? kUtf8Mark.size() : 0;
  for (qsizetype at = begin; at <= bytes.size(); ++at) {
    if (at < bytes.size() && bytes[at] != '\n' && bytes[at] != '\r') continue;
    if (at > begin) lines += Line{begin, at - begin};
    begin = at + 1;
  }
  return lines;
}

// The position of one value.
struct Place {
  std::optional<Line> value;     // the part after "="; the last line with this key wins
  std::optional<Line> lastLine;  // last line of the section's last occurrence, if there is one
};

std::optional<Line> ValueOnLine(const QByteArray& bytes, const Line& line, const QString& key) {
  const QByteArray text = bytes.mid(line.begin, line.length);
  const qsizetype equals = text.indexOf('=');
  if (equals < 0 || !IsSame(text.left(equals), key)) return std::nullopt;
  qsizetype begin = equals + 1;
  while (begin < text.size() && text[begin] == ' ')  // a tab belongs to the value
    ++begin;
  return Line{line.begin + begin, text.size() - begin};
}

Place FindPlace(const QByteArray& bytes, const QString& section, const QString& key) {
  Place place;
  bool inside = false;
  for (const Line& line : LinesOf(bytes)) {
    const QByteArray text = bytes.mid(line.begin, line.length).trimmed();
    if (text.isEmpty() || text.startsWith(';') || text.startsWith('#')) continue;
    if (text.startsWith('[') && text.contains(']')) {
      inside = IsSame(text.mid(1, text.indexOf(']') - 1), section);
    } else if (inside) {
      if (const auto value = ValueOnLine(bytes, line, key)) place.value = value;
    }
    if (inside) place.lastLine = line;
  }
  return place;
}

QString ValueIn(const QByteArray& bytes, const QString& section, const QString& key) {
  const auto value = FindPlace(bytes, section, key).value;
  if (!value) return {};
  const QByteArray text = bytes.mid(value->begin, value->length);
  return runtime::TrimBlanks(bytes.startsWith(kUtf8Mark) ? QString::fromUtf8(text) : runtime::FromCodePage(text));
}

QByteArray WithValue(QByteArray bytes, const QString& section, const QString& key, const QString& value) {
  const bool utf8 = bytes.startsWith(kUtf8Mark);
  const auto encoded = [utf8](const QString& text) { return utf8 ? text.toUtf8() : runtime::ToCodePage(text); };
  const Place place = FindPlace(bytes, section, key);
  if (place.value) return bytes.replace(place.value->begin, place.value->length, encoded(value));
  const QByteArray lineEnd = bytes.contains('\n') && !bytes.contains("\r\n") ? "\n" : "\r\n";
  const QByteArray line = encoded(key + u'=' + value);
  if (place.lastLine) return bytes.insert(place.lastLine->begin + place.lastLine->length, lineEnd + line);
  if (!bytes.isEmpty() && !bytes.endsWith('\n')) bytes += lineEnd;
  return bytes + '[' + encoded(section) + ']' + lineEnd + line + lineEnd;
}

}  // namespace

QString IniFile::Value() const {
  return ValueIn(runtime::ReadFile(path_, kLargestFile), section_, key_);
}

QMap<QString, QString> IniFile::Values() const {
  CSimpleIniA ini;
  Parse(runtime::ReadFile(path_, kLargestFile), path_, ini);
  const QByteArray section = section_.toUtf8();
  CSimpleIniA::TNamesDepend keys;
  ini.GetAllKeys(section.constData(), keys);
  QMap<QString, QString> values;
  for (const auto& key : keys) {
    values.insert(QString::fromUtf8(key.pItem), QString::fromUtf8(ini.GetValue(section.constData(), key.pItem, "")));
  }
  return values;
}

void IniFile::SetValue(const QString& value) const {
  const QByteArray before = runtime::IsThere(path_) ? runtime::ReadFile(path_, kLargestFile) : QByteArray();
  const QByteArray after = WithValue(before, section_, key_, value);
  if (value.contains(QChar::Null) || ValueIn(after, section_, key_) != value) {
    throw runtime::Error(
        u"De waarde '%1' van '%2' kan niet worden bewaard in '%3': het bestand kan deze tekens niet "
        "bevatten."_s.arg(value, key_, path_));
  }
  runtime::WriteFile(path_, after);
}
