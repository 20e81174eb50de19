// SPDX-License-Identifier: MIT
#include "platform/dao/RowStatement.h"

#include "platform/dao/Keywords.h"
#include "platform/dao/TokenReader.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace dao {
namespace {

constexpr qsizetype kMaxDigits = 15;  // the engine reads longer numbers as texts

// Only what SQLite reads in the same way, whatever the table is: plain names, literals, no expressions.
class RowParser {
 public:
  explicit RowParser(const std::vector<Token>& tokens) : in_(tokens) {}

  std::optional<RowStatement> Run() {
    const bool isParsed = (in_.TakeWord(u"INSERT") && Insert()) || (in_.TakeWord(u"UPDATE") && Update()) ||
                          (in_.TakeWord(u"DELETE") && Delete()) || (in_.TakeWord(u"SELECT") && Select());
    if (!isParsed || !in_.AtEnd()) return std::nullopt;
    return std::move(row_);
  }

 private:
  // SQLite ignores the letter case of ASCII letters only.
  bool TakeName(QStringView& name) {
    const Token& token = in_.Peek();
    const auto isAscii = [](QChar letter) { return letter < u'\x80'; };
    if (!token.IsName() || (token.kind == TokenKind::Word && IsKeyword(token.text))) return false;
    if (!std::all_of(token.text.begin(), token.text.end(), isAscii)) return false;
    name = token.text;
    in_.Skip();
    return true;
  }
  // A field name, optionally qualified with the table.
  bool TakeField(QStringView& field) {
    if (!TakeName(field)) return false;
    if (!in_.TakeSymbol(u".")) return true;
    return field.compare(row_.table, Qt::CaseInsensitive) == 0 && TakeName(field);
  }
  bool TakeTable() { return TakeName(row_.table) && !row_.table.startsWith(u"sqlite_"_s, Qt::CaseInsensitive); }

  bool TakeWhole(std::int64_t& number) {
    const bool isNegative = in_.TakeSymbol(u"-");
    const Token& token = in_.Peek();
    const auto isDigit = [](QChar c) { return c >= u'0' && c <= u'9'; };
    if (token.kind != TokenKind::Number || token.text.size() > kMaxDigits) return false;
    if (!std::all_of(token.text.begin(), token.text.end(), isDigit)) return false;
    number = token.text.toLongLong();
    if (isNegative) number = -number;
    in_.Skip();
    return true;
  }

  bool TakeValue() {
    const Token& token = in_.Peek();
    std::int64_t number = 0;
    if (token.kind == TokenKind::Text) {
      row_.values.emplace_back(TextOf(token));
    } else if (token.IsWord(u"NULL")) {
      row_.values.emplace_back();
    } else if (token.IsWord(u"TRUE") || token.IsWord(u"FALSE")) {
      row_.values.emplace_back(std::int64_t{token.IsWord(u"TRUE") ? -1 : 0});
    } else {
      if (!TakeWhole(number)) return false;
      row_.values.emplace_back(number);
      return true;
    }
    in_.Skip();
    return true;
  }
  std::u16string_view TextOf(const Token& token) {
    if (!token.hasDoubledQuotes) return Utf16(token.text);
    return Utf16(row_.unquoted.emplace_back(token.Value()));
  }
  static std::u16string_view Utf16(QStringView text) { return {text.utf16(), static_cast<std::size_t>(text.size())}; }

  bool AddField(QStringView field) {
    const auto isSame = [&](QStringView other) { return other.compare(field, Qt::CaseInsensitive) == 0; };
    if (std::ranges::any_of(row_.fields, isSame)) return false;
    row_.fields.push_back(field);
    return true;
  }

  bool Insert() {
    row_.verb = Verb::Insert;
    if (!in_.TakeWord(u"INTO") || !TakeTable()) return false;
    if (in_.TakeSymbol(u"(")) {
      do {
        QStringView field;
        if (!TakeName(field) || !AddField(field)) return false;
      } while (in_.TakeSymbol(u","));
      if (!in_.TakeSymbol(u")")) return false;
    }
    if (!in_.TakeWord(u"VALUES") || !in_.TakeSymbol(u"(")) return false;
    do {
      if (!TakeValue()) return false;
    } while (in_.TakeSymbol(u","));
    return in_.TakeSymbol(u")");
  }

  bool Update() {
    row_.verb = Verb::Update;
    if (!TakeTable() || !in_.TakeWord(u"SET")) return false;
    do {
      QStringView field;
      if (!TakeField(field) || !AddField(field) || !in_.TakeSymbol(u"=") || !TakeValue()) return false;
    } while (in_.TakeSymbol(u","));
    return Where();
  }

  bool Delete() {
    row_.verb = Verb::Delete;
    in_.TakeSymbol(u"*");
    return in_.TakeWord(u"FROM") && TakeTable() && Where();
  }

  bool Where() {
    return in_.TakeWord(u"WHERE") && TakeField(row_.keyField) && in_.TakeSymbol(u"=") && TakeWhole(row_.key);
  }

  // The fields come before the table that may qualify them, so their names are checked at the end.
  bool Select() {
    row_.verb = Verb::Select;
    if (in_.TakeWord(u"MAX")) return Highest();
    std::vector<QStringView> qualifiers;
    if (!in_.TakeSymbol(u"*") && !SelectList(qualifiers)) return false;
    if (!in_.TakeWord(u"FROM") || !TakeTable() || !Where()) return false;
    const auto isTable = [&](QStringView name) { return name.compare(row_.table, Qt::CaseInsensitive) == 0; };
    return std::ranges::all_of(qualifiers, isTable);
  }

  bool Highest() {
    row_.isHighest = true;
    RowStatement::Column& column = row_.columns.emplace_back();
    return in_.TakeSymbol(u"(") && TakeName(column.field) && in_.TakeSymbol(u")") && in_.TakeWord(u"AS") &&
           TakeName(column.name) && in_.TakeWord(u"FROM") && TakeTable();
  }

  bool SelectList(std::vector<QStringView>& qualifiers) {
    do {
      RowStatement::Column column;
      if (!TakeName(column.field)) return false;
      if (in_.TakeSymbol(u".")) {
        qualifiers.push_back(column.field);
        if (row_.columns.empty() && in_.TakeSymbol(u"*")) return true;
        if (!TakeName(column.field)) return false;
      }
      if (in_.TakeWord(u"AS") && !TakeName(column.name)) return false;
      row_.columns.push_back(column);
    } while (in_.TakeSymbol(u","));
    return true;
  }

  TokenReader in_;
  RowStatement row_;
};

}  // namespace

std::optional<RowStatement> RowStatementOf(const std::vector<Token>& tokens) {
  return RowParser(tokens).Run();
}

}  // namespace dao
