// SPDX-License-Identifier: MIT
#include "platform/dao/RowStatement.h"

#include "platform/dao/Keywords.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace dao {
namespace {

constexpr qsizetype kMaxDigits = 15;  // the engine reads longer numbers as texts

// Only what SQLite reads in the same way, whatever the table is: plain names, literals, no expressions.
class RowParser {
 public:
  explicit RowParser(const std::vector<Token>& tokens) : tokens_(tokens) {}

  std::optional<RowStatement> Run() {
    const bool isParsed = (TakeWord(u"INSERT") && Insert()) || (TakeWord(u"UPDATE") && Update()) ||
                          (TakeWord(u"DELETE") && Delete()) || (TakeWord(u"SELECT") && Select());
    if (!isParsed || Peek().kind != TokenKind::End) return std::nullopt;
    return std::move(row_);
  }

 private:
  const Token& Peek() const { return tokens_[at_]; }

  bool TakeWord(QStringView word) {
    if (!Peek().IsWord(word)) return false;
    ++at_;
    return true;
  }
  bool TakeSymbol(QStringView symbol) {
    if (!Peek().Is(symbol)) return false;
    ++at_;
    return true;
  }

  // SQLite ignores the letter case of ASCII letters only.
  bool TakeName(QStringView& name) {
    const Token& token = Peek();
    const auto isAscii = [](QChar letter) { return letter < u'\x80'; };
    if (!token.IsName() || (token.kind == TokenKind::Word && IsKeyword(token.text))) return false;
    if (!std::all_of(token.text.begin(), token.text.end(), isAscii)) return false;
    name = token.text;
    ++at_;
    return true;
  }
  // A field name, optionally qualified with the table.
  bool TakeField(QStringView& field) {
    if (!TakeName(field)) return false;
    if (!TakeSymbol(u".")) return true;
    return field.compare(row_.table, Qt::CaseInsensitive) == 0 && TakeName(field);
  }
  bool TakeTable() { return TakeName(row_.table) && !row_.table.startsWith(u"sqlite_"_s, Qt::CaseInsensitive); }

  bool TakeWhole(std::int64_t& number) {
    const bool isNegative = TakeSymbol(u"-");
    const Token& token = Peek();
    const auto isDigit = [](QChar c) { return c >= u'0' && c <= u'9'; };
    if (token.kind != TokenKind::Number || token.text.size() > kMaxDigits) return false;
    if (!std::all_of(token.text.begin(), token.text.end(), isDigit)) return false;
    number = token.text.toLongLong();
    if (isNegative) number = -number;
    ++at_;
    return true;
  }

  bool TakeValue() {
    const Token& token = Peek();
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
    ++at_;
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
    if (!TakeWord(u"INTO") || !TakeTable()) return false;
    if (TakeSymbol(u"(")) {
      do {
        QStringView field;
        if (!TakeName(field) || !AddField(field)) return false;
      } while (TakeSymbol(u","));
      if (!TakeSymbol(u")")) return false;
    }
    if (!TakeWord(u"VALUES") || !TakeSymbol(u"(")) return false;
    do {
      if (!TakeValue()) return false;
    } while (TakeSymbol(u","));
    return TakeSymbol(u")");
  }

  bool Update() {
    row_.verb = Verb::Update;
    if (!TakeTable() || !TakeWord(u"SET")) return false;
    do {
      QStringView field;
      if (!TakeField(field) || !AddField(field) || !TakeSymbol(u"=") || !TakeValue()) return false;
    } while (TakeSymbol(u","));
    return Where();
  }

  bool Delete() {
    row_.verb = Verb::Delete;
    TakeSymbol(u"*");
    return TakeWord(u"FROM") && TakeTable() && Where();
  }

  bool Where() { return TakeWord(u"WHERE") && TakeField(row_.keyField) && TakeSymbol(u"=") && TakeWhole(row_.key); }

  // The fields come before the table that may qualify them, so their names are checked at the end.
  bool Select() {
    row_.verb = Verb::Select;
    std::vector<QStringView> qualifiers;
    if (!TakeSymbol(u"*") && !SelectList(qualifiers)) return false;
    if (!TakeWord(u"FROM") || !TakeTable() || !Where()) return false;
    const auto isTable = [&](QStringView name) { return name.compare(row_.table, Qt::CaseInsensitive) == 0; };
    return std::ranges::all_of(qualifiers, isTable);
  }

  bool SelectList(std::vector<QStringView>& qualifiers) {
    do {
      RowStatement::Column column;
      if (!TakeName(column.field)) return false;
      if (TakeSymbol(u".")) {
        qualifiers.push_back(column.field);
        if (row_.columns.empty() && TakeSymbol(u"*")) return true;
        if (!TakeName(column.field)) return false;
      }
      if (TakeWord(u"AS") && !TakeName(column.name)) return false;
      row_.columns.push_back(column);
    } while (TakeSymbol(u","));
    return true;
  }

  const std::vector<Token>& tokens_;
  std::size_t at_ = 0;
  RowStatement row_;
};

}  // namespace

std::optional<RowStatement> RowStatementOf(const std::vector<Token>& tokens) {
  return RowParser(tokens).Run();
}

}  // namespace dao
