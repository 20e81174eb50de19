// SPDX-License-Identifier: MIT
#include "export/apply/ExportStatements.h"

#include "platform/runtime/CodePage.h"
#include "platform/runtime/Error.h"

#include <QStringConverter>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace apply {
namespace {

constexpr qsizetype kLongestShown = 100;

bool IsWordByte(char byte) {
  return (byte >= 'A' && byte <= 'Z') || (byte >= 'a' && byte <= 'z') || (byte >= '0' && byte <= '9') || byte == '_';
}

bool IsDigit(char byte) {
  return byte >= '0' && byte <= '9';
}

class Parser {
 public:
  Parser(const QByteArray& content, const QString& path) : content_(content), path_(path) {}

  std::vector<ExportStatement> All() {
    std::vector<ExportStatement> statements;
    while (at_ < content_.size()) {
      start_ = at_;
      startLine_ = line_;
      statements.push_back(One());
      End();
    }
    return statements;
  }

 private:
  ExportStatement One() {
    ExportStatement statement;
    statement.line = line_;
    const QByteArrayView verb = Word();
    if (verb == "INSERT") {
      Expect("INTO");
      Insert(statement);
    } else if (verb == "UPDATE") {
      Update(statement);
    } else if (verb == "DELETE") {
      Expect("FROM");
      Delete(statement);
    } else {
      Fail(u"dit is geen opdracht die een export schrijft"_s);
    }
    return statement;
  }

  void Insert(ExportStatement& statement) {
    statement.verb = Verb::Insert;
    statement.table = TableNamed(Word(), {Table::Items, Table::Spots, Table::Jingles, Table::Links});
    Expect("(");
    std::vector<QString> fields;
    do {
      fields.push_back(FieldNamed(statement.table, Word()));
    } while (Took(','));
    Expect(")");
    Expect("VALUES");
    Expect("(");
    for (const QString& field : fields) {
      if (&field != &fields.front()) Expect(",");
      AddValue(statement, field);
    }
    Expect(")");
    statement.key = KeyIn(statement, statement.table == Table::Links ? u"ItemID"_s : u"ID"_s);
    if (statement.table == Table::Links && statement.values.size() != 3) Fail(u"de koppeling is niet volledig"_s);
  }

  void Update(ExportStatement& statement) {
    statement.verb = Verb::Update;
    statement.table = TableNamed(Word(), {Table::Items, Table::Spots, Table::Jingles});
    Expect("SET");
    do {
      const QString field = FieldNamed(statement.table, Word());
      if (field == u"ID"_s) Fail(u"een export wijzigt geen nummer"_s);
      Expect("=");
      AddValue(statement, field);
    } while (Took(','));
    Expect("WHERE");
    Expect("ID");
    Expect("=");
    statement.key = WholeNumber();
  }

  // Deletes of items and of links are in the log under the name of the copy, those of jingles are not in it.
  void Delete(ExportStatement& statement) {
    statement.verb = Verb::Delete;
    const QByteArrayView name = Word();
    if (name == CopyNameOf(Table::Items).toLatin1()) {
      statement.table = Table::Items;
    } else if (name == CopyNameOf(Table::Links).toLatin1()) {
      statement.table = Table::Links;
    } else if (name == NameOf(Table::Spots).toLatin1()) {
      statement.table = Table::Spots;
    } else {
      Fail(u"een export verwijdert niets uit '%1'"_s.arg(QLatin1StringView(name)));
    }
    Expect("WHERE");
    QByteArrayView field = Word();
    if (Took('.')) {
      if (field != name) Fail(u"'%1' is een andere tabel"_s.arg(QLatin1StringView(field)));
      field = Word();
    }
    if (field != (statement.table == Table::Links ? "ItemID" : "ID"))
      Fail(u"een export verwijdert niet volgens '%1'"_s.arg(QLatin1StringView(field)));
    Expect("=");
    statement.key = WholeNumber();
  }

  Table TableNamed(QByteArrayView name, std::initializer_list<Table> tables) {
    for (const Table table : tables) {
      if (QLatin1StringView(name) == NameOf(table)) return table;
    }
    Fail(u"een export schrijft zo niet in '%1'"_s.arg(QLatin1StringView(name)));
  }

  QString FieldNamed(Table table, QByteArrayView name) {
    const QLatin1StringView text(name);
    for (const QString& field : FieldNamesOf(table)) {
      if (field.compare(text, Qt::CaseInsensitive) == 0) return field;
    }
    Fail(u"'%1' is geen veld van '%2'"_s.arg(text, NameOf(table)));
  }

  void AddValue(ExportStatement& statement, const QString& field) {
    const auto isField = [&](const auto& value) { return value.first == field; };
    if (std::ranges::any_of(statement.values, isField)) Fail(u"het veld '%1' komt tweemaal voor"_s.arg(field));
    statement.values.emplace_back(field, Literal());
  }

  qint64 KeyIn(const ExportStatement& statement, const QString& field) {
    for (const auto& [name, value] : statement.values) {
      const auto* number = std::get_if<std::int64_t>(&value);
      if (name == field && number != nullptr) return *number;
    }
    Fail(u"het veld '%1' ontbreekt"_s.arg(field));
  }

  dao::Value Literal() {
    SkipBlanks();
    if (at_ < content_.size() && content_[at_] == '\'') return Text();
    if (at_ < content_.size() && (content_[at_] == '-' || IsDigit(content_[at_]))) return std::int64_t{WholeNumber()};
    if (Word() != "NULL") Fail(u"hier hoort een getal, een tekst of NULL"_s);
    return {};
  }

  dao::Value Text() {
    const qsizetype end = content_.indexOf('\'', at_ + 1);
    if (end < 0) Fail(u"de opdracht is afgebroken midden in een tekst"_s);
    const QByteArray text = QByteArray::fromRawData(content_.constData() + at_ + 1, end - at_ - 1);
    line_ += static_cast<int>(text.count('\n'));
    at_ = end + 1;
    return runtime::FromCodePage(text).toStdU16String();
  }

  qint64 WholeNumber() {
    SkipBlanks();
    const qsizetype start = at_;
    if (at_ < content_.size() && content_[at_] == '-') ++at_;
    while (at_ < content_.size() && IsDigit(content_[at_]))
      ++at_;
    bool isNumber = false;
    const int number = QByteArrayView(content_).sliced(start, at_ - start).toInt(&isNumber);
    if (!isNumber) Fail(u"hier hoort een geheel getal"_s);
    return number;
  }

  QByteArrayView Word() {
    SkipBlanks();
    const qsizetype start = at_;
    while (at_ < content_.size() && IsWordByte(content_[at_]))
      ++at_;
    return QByteArrayView(content_).sliced(start, at_ - start);
  }

  void Expect(const char* text) {
    SkipBlanks();
    const QByteArrayView expected(text);
    const bool isThere = QByteArrayView(content_).sliced(at_).startsWith(expected);
    const qsizetype end = at_ + expected.size();
    const bool isLonger = IsWordByte(expected.back()) && end < content_.size() && IsWordByte(content_[end]);
    if (!isThere || isLonger) Fail(u"hier hoort '%1'"_s.arg(QLatin1StringView(expected)));
    at_ = end;
  }

  bool Took(char byte) {
    SkipBlanks();
    if (at_ >= content_.size() || content_[at_] != byte) return false;
    ++at_;
    return true;
  }

  void SkipBlanks() {
    while (at_ < content_.size() && content_[at_] == ' ')
      ++at_;
  }

  void End() {
    if (!QByteArrayView(content_).sliced(at_).startsWith(";\r\n")) Fail(u"hier hoort de opdracht te eindigen"_s);
    at_ += 3;
    ++line_;
  }

  [[noreturn]] void Fail(const QString& what) const {
    const bool isCut = at_ >= content_.size();
    const QByteArray shown = content_.mid(start_, kLongestShown);
    throw runtime::Error(u"Het bestand '%1' is niet verwerkt: regel %2: %3.\n%4"_s.arg(
        path_, QString::number(startLine_), isCut ? u"de opdracht is afgebroken"_s : what,
        runtime::FromCodePage(shown).simplified()));
  }

  const QByteArray& content_;
  const QString& path_;
  qsizetype at_ = 0;
  int line_ = 1;
  qsizetype start_ = 0;  // of the statement
  int startLine_ = 1;
};

}  // namespace

std::vector<ExportStatement> ParseExport(const QByteArray& content, const QString& path) {
  const qsizetype nul = content.indexOf('\0');
  if (nul >= 0) {
    const auto line = QByteArrayView(content).first(nul).count('\n') + 1;
    throw runtime::Error(u"Het bestand '%1' is niet verwerkt: regel %2 is geen tekst in Windows-1252."_s.arg(
        path, QString::number(line)));
  }
  return Parser(content, path).All();
}

bool LooksLikeUtf8(const QByteArray& content) {
  const bool isAscii = std::ranges::all_of(content, [](char byte) { return static_cast<unsigned char>(byte) < 0x80; });
  return !isAscii && content.isValidUtf8();
}

}  // namespace apply
