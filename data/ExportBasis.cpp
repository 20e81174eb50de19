// SPDX-License-Identifier: MIT
#include "data/ExportBasis.h"

#include "data/BasisLine.h"
#include "platform/dao/Conversion.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/TextFile.h"

#include <QCryptographicHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using namespace Qt::StringLiterals;

namespace basis {
namespace {

constexpr int kVersion = 1;
constexpr qint64 kMaxBytes = qint64{512} << 20;
const QString kFormat = u"spotrooster-basis"_s;
const QString kNoEntry = u"unknown"_s;

[[noreturn]] void Refuse(const QString& what) {
  throw runtime::Error(what);
}

// Text that UTF-8 cannot hold (half of a surrogate pair) goes as the hexadecimal numbers of its units.
QJsonValue JsonOfText(const std::u16string& text) {
  const QString string = QString::fromStdU16String(text);
  if (string.isValidUtf16()) return string;
  QString units;
  for (const QChar unit : string)
    units += QString::number(unit.unicode(), 16).rightJustified(4, u'0');
  return QJsonObject{{u"utf16"_s, units}};
}

QJsonValue JsonOf(const dao::Value& value) {
  if (const auto* whole = std::get_if<std::int64_t>(&value)) return static_cast<qint64>(*whole);
  if (const auto* number = std::get_if<double>(&value)) return *number;
  if (const auto* text = std::get_if<std::u16string>(&value)) return JsonOfText(*text);
  if (const auto* bytes = std::get_if<dao::Bytes>(&value)) {
    const QByteArray copy(reinterpret_cast<const char*>(bytes->data()), static_cast<qsizetype>(bytes->size()));
    return QJsonObject{{u"bytes"_s, QString::fromLatin1(copy.toHex())}};
  }
  return QJsonValue::Null;
}

dao::Value ValueOfObject(const QJsonObject& object) {
  if (object.contains(u"utf16"_s)) {
    const QString units = object[u"utf16"_s].toString();
    std::u16string text;
    for (qsizetype at = 0; at + 4 <= units.size(); at += 4)
      text += static_cast<char16_t>(QStringView(units).mid(at, 4).toUInt(nullptr, 16));
    return text;
  }
  if (object.contains(u"bytes"_s)) {
    const QByteArray bytes = QByteArray::fromHex(object[u"bytes"_s].toString().toLatin1());
    return dao::Bytes(bytes.begin(), bytes.end());
  }
  Refuse(u"een waarde is van een onbekende soort"_s);
}

dao::Value ValueOfJson(const QJsonValue& json) {
  switch (json.type()) {
    case QJsonValue::Null:
      return {};
    case QJsonValue::String:
      return json.toString().toStdU16String();
    case QJsonValue::Double: {
      const qint64 whole = json.toInteger(0);
      if (json.toInteger(1) == whole) return static_cast<std::int64_t>(whole);
      return json.toDouble();
    }
    case QJsonValue::Object:
      return ValueOfObject(json.toObject());
    default:
      Refuse(u"een waarde is van een onbekende soort"_s);
  }
}

QJsonArray JsonOfRow(const Row& row) {
  QJsonArray values;
  for (const dao::Value& value : row)
    values.append(JsonOf(value));
  return values;
}

QJsonArray JsonOfRows(const QList<Row>& rows) {
  QJsonArray array;
  for (const Row& row : rows)
    array.append(JsonOfRow(row));
  return array;
}

QList<Row> RowsOfJson(const QJsonValue& json, qsizetype fieldCount) {
  if (!json.isArray()) Refuse(u"de rijen ontbreken"_s);
  QList<Row> rows;
  const QJsonArray arrays = json.toArray();
  for (const QJsonValueConstRef values : arrays) {
    const QJsonArray array = values.toArray();
    if (array.size() != fieldCount) Refuse(u"een rij heeft niet één waarde voor elk veld"_s);
    Row row;
    row.reserve(static_cast<std::size_t>(fieldCount));
    for (const QJsonValueConstRef value : array)
      row.push_back(ValueOfJson(value));
    rows.append(std::move(row));
  }
  return rows;
}

QJsonArray JsonOfReferences(const QList<Reference>& references) {
  QJsonArray array;
  for (const Reference& reference : references)
    array.append(QJsonArray{reference.table, reference.id, reference.fingerprint});
  return array;
}

QList<Reference> ReferencesOfJson(const QJsonValue& json) {
  if (!json.isArray()) Refuse(u"de verwijzingen ontbreken"_s);
  QList<Reference> references;
  const QJsonArray array = json.toArray();
  for (const QJsonValueConstRef one : array) {
    const QJsonArray parts = one.toArray();
    if (parts.size() != 3 || !parts[0].isString() || !parts[1].isDouble() || !parts[2].isString())
      Refuse(u"een verwijzing is onleesbaar"_s);
    references.append({parts[0].toString(), parts[1].toInteger(), parts[2].toString()});
  }
  return references;
}

QByteArray Line(const QJsonObject& object) {
  return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

QJsonObject ObjectOf(const QByteArray& line) {
  QJsonParseError error;
  const QJsonDocument document = QJsonDocument::fromJson(line, &error);
  if (error.error != QJsonParseError::NoError || !document.isObject()) Refuse(u"de regel is onleesbaar"_s);
  return document.object();
}

QString TextIn(const QJsonObject& object, const QString& name) {
  const QJsonValue value = object[name];
  if (!value.isString()) Refuse(u"'%1' ontbreekt"_s.arg(name));
  return value.toString();
}

qint64 NumberIn(const QJsonObject& object, const QString& name) {
  const QVariant number = object[name].toVariant();
  if (number.typeId() != QMetaType::LongLong) Refuse(u"'%1' ontbreekt"_s.arg(name));
  return number.toLongLong();
}

Entry EntryOf(const QJsonObject& object) {
  Entry entry;
  entry.table = TextIn(object, u"table"_s);
  entry.keyField = TextIn(object, u"keyField"_s);
  entry.key = NumberIn(object, u"key"_s);
  const QJsonArray fields = object[u"fields"_s].toArray();
  for (const QJsonValueConstRef field : fields)
    entry.fields += field.toString();
  entry.before = RowsOfJson(object[u"before"_s], entry.fields.size());
  entry.after = RowsOfJson(object[u"after"_s], entry.fields.size());
  entry.references = ReferencesOfJson(object[u"references"_s]);
  return entry;
}

Header HeaderOf(const QJsonObject& object) {
  if (object[u"format"_s].toString() != kFormat) Refuse(u"dit is geen basis van een export"_s);
  if (object[u"version"_s].toInt() != kVersion) Refuse(u"deze basis is van een andere versie van het programma"_s);
  Header header;
  header.exportID = TextIn(object, u"export"_s);
  header.digest = TextIn(object, u"digest"_s).toLatin1();
  header.bytes = NumberIn(object, u"bytes"_s);
  header.source = TextIn(object, u"source"_s);
  return header;
}

// Walks over the lines; says of which one an error is.
class Lines {
 public:
  Lines(QString path, const QByteArray& content) : path_(std::move(path)), content_(content) {}

  // Nothing at the end of the file.
  std::optional<QByteArray> Next() {
    if (at_ >= content_.size()) return std::nullopt;
    ++number_;
    const qsizetype end = content_.indexOf('\n', at_);
    if (end < 0) Fail(u"de regel is afgebroken"_s);
    const QByteArray line = QByteArray::fromRawData(content_.constData() + at_, end - at_);
    at_ = end + 1;
    return line;
  }
  [[noreturn]] void Fail(const QString& what) const {
    Refuse(u"Het bestand '%1' is niet bruikbaar: regel %2: %3."_s.arg(path_, QString::number(number_), what));
  }
  template <class Work>
  auto Named(Work work) const -> decltype(work()) {
    try {
      return work();
    } catch (const runtime::Error& error) {
      Fail(error.Description());
    }
  }

 private:
  const QString path_;
  const QByteArray& content_;
  qsizetype at_ = 0;
  qsizetype number_ = 0;
};

std::optional<double> NumberOf(const dao::Value& value) {
  if (const auto* whole = std::get_if<std::int64_t>(&value)) return static_cast<double>(*whole);
  if (const auto* number = std::get_if<double>(&value)) return *number;
  return std::nullopt;
}

}  // namespace

bool Same(const dao::Value& left, const dao::Value& right) {
  if (left.index() == right.index()) return left == right;
  const auto number = NumberOf(left);
  return number && number == NumberOf(right);
}

QString Fingerprint(const Row& row) {
  const QByteArray content = QJsonDocument(JsonOfRow(row)).toJson(QJsonDocument::Compact);
  return QString::fromLatin1(QCryptographicHash::hash(content, QCryptographicHash::Blake2b_160).toHex().first(32));
}

QList<Row> RowsOf(dao::Recordset rows, QStringList& fields) {
  fields = rows.FieldNames();
  QList<Row> all;
  for (; !rows.Eof(); rows.MoveNext()) {
    Row row;
    row.reserve(static_cast<std::size_t>(fields.size()));
    for (int column = 0; column < fields.size(); ++column)
      row.push_back(dao::ValueOfVariant(rows.Field(column)));
    all.append(std::move(row));
  }
  return all;
}

QByteArray Encode(const Entry& entry) {
  return Line({{u"table"_s, entry.table},
               {u"keyField"_s, entry.keyField},
               {u"key"_s, entry.key},
               {u"fields"_s, QJsonArray::fromStringList(entry.fields)},
               {u"before"_s, JsonOfRows(entry.before)},
               {u"after"_s, JsonOfRows(entry.after)},
               {u"references"_s, JsonOfReferences(entry.references)}});
}

Entry Decode(const QByteArray& line) {
  return EntryOf(ObjectOf(line));
}

QByteArray HeaderLine(const Header& header) {
  return Line({{u"format"_s, kFormat},
               {u"version"_s, kVersion},
               {u"export"_s, header.exportID},
               {u"digest"_s, QString::fromLatin1(header.digest)},
               {u"bytes"_s, header.bytes},
               {u"source"_s, header.source}}) +
         '\n';
}

QByteArray EntryLine(const std::optional<Entry>& entry) {
  static const QByteArray withoutEntry = Line({{kNoEntry, true}}) + '\n';
  return entry ? Encode(*entry) + '\n' : withoutEntry;
}

QByteArray LastLine(qsizetype entryCount) {
  return Line({{u"statements"_s, entryCount}}) + '\n';
}

QString PathOf(const QString& tqlPath) {
  return tqlPath + u".basis";
}

File Read(const QString& path) {
  const QByteArray content = runtime::ReadFile(path, kMaxBytes);
  Lines lines(path, content);
  File file;
  const auto header = lines.Next();
  if (!header) Refuse(u"Het bestand '%1' is leeg."_s.arg(path));
  file.header = lines.Named([&] { return HeaderOf(ObjectOf(*header)); });
  LineReader reader;
  while (const auto line = lines.Next()) {
    if (auto entry = reader.Read(*line)) {
      file.entries.emplace_back(std::move(entry));
      continue;
    }
    const QJsonObject object = lines.Named([&] { return ObjectOf(*line); });
    if (object.contains(u"statements"_s)) {
      const qint64 count = lines.Named([&] { return NumberIn(object, u"statements"_s); });
      if (count != static_cast<qint64>(file.entries.size())) lines.Fail(u"er ontbreken regels"_s);
      if (lines.Next()) lines.Fail(u"na de laatste regel volgt er nog een"_s);
      return file;
    }
    if (object.contains(kNoEntry)) {
      file.entries.emplace_back();
    } else {
      file.entries.emplace_back(lines.Named([&] { return EntryOf(object); }));
    }
  }
  Refuse(u"Het bestand '%1' is niet volledig: de laatste regel ontbreekt."_s.arg(path));
}

}  // namespace basis
