// SPDX-License-Identifier: MIT
#include "platform/dao/SoughtText.h"

#include "platform/dao/TokenReader.h"

#include <utility>

namespace dao {
namespace {

class ConditionParser {
 public:
  explicit ConditionParser(const std::vector<Token>& tokens) : in_(tokens) {}

  std::optional<SoughtText> Run() {
    if (!SkipToCondition()) return std::nullopt;
    SoughtText sought;
    const bool isCompared = in_.TakeWord(u"UCASE") && in_.TakeSymbol(u"(") && TakeField(sought.field) &&
                            in_.TakeSymbol(u")") && in_.TakeSymbol(u"=") && in_.Peek().kind == TokenKind::Text;
    if (!isCompared) return std::nullopt;
    sought.text = in_.Peek().Value();
    in_.Skip();
    if (!in_.AtEnd() && !ExceptRow()) return std::nullopt;
    return sought;
  }

 private:
  // To what follows the first WHERE, after the one table.
  bool SkipToCondition() {
    Token beforeTable;
    Token table;
    for (; !in_.AtEnd(); in_.Skip()) {
      if (in_.TakeWord(u"WHERE")) {
        table_ = table.text;
        return beforeTable.IsWord(u"FROM") && table.IsName();
      }
      beforeTable = std::exchange(table, in_.Peek());
    }
    return false;
  }
  // A field name, optionally qualified with the table.
  bool TakeField(QString& field) {
    if (!TakeName(field)) return false;
    if (!in_.TakeSymbol(u".")) return true;
    return field.compare(table_, Qt::CaseInsensitive) == 0 && TakeName(field);
  }
  bool TakeName(QString& name) {
    if (!in_.Peek().IsName()) return false;
    name = in_.Peek().text.toString();
    in_.Skip();
    return true;
  }
  bool ExceptRow() {
    QString field;
    if (!in_.TakeWord(u"AND") || !in_.TakeWord(u"NOT") || !TakeField(field) || !in_.TakeSymbol(u"=")) return false;
    in_.TakeSymbol(u"-");
    if (in_.Peek().kind != TokenKind::Number) return false;
    in_.Skip();
    return in_.AtEnd();
  }

  TokenReader in_;
  QStringView table_;
};

}  // namespace

std::optional<SoughtText> SoughtTextIn(const std::vector<Token>& tokens) {
  return ConditionParser(tokens).Run();
}

}  // namespace dao
