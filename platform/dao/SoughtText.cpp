// SPDX-License-Identifier: MIT
#include "platform/dao/SoughtText.h"

#include <algorithm>

namespace dao {
namespace {

class ConditionParser {
 public:
  explicit ConditionParser(const std::vector<Token>& tokens) : tokens_(tokens) {}

  std::optional<SoughtText> Run() {
    const auto where = std::ranges::find_if(tokens_, [](const Token& token) { return token.IsWord(u"WHERE"); });
    constexpr auto kTokensOfFrom = 2;
    if (where == tokens_.end() || where - tokens_.begin() < kTokensOfFrom) return std::nullopt;
    if (!(where - 2)->IsWord(u"FROM") || !(where - 1)->IsName()) return std::nullopt;
    table_ = (where - 1)->text;
    at_ = static_cast<std::size_t>(where - tokens_.begin()) + 1;
    SoughtText sought;
    const bool isCompared = TakeWord(u"UCASE") && TakeSymbol(u"(") && TakeField(sought.field) && TakeSymbol(u")") &&
                            TakeSymbol(u"=") && Peek().kind == TokenKind::Text;
    if (!isCompared) return std::nullopt;
    sought.text = Peek().Value();
    ++at_;
    if (Peek().kind != TokenKind::End && !ExceptRow()) return std::nullopt;
    return sought;
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
  // A field name, optionally qualified with the table.
  bool TakeField(QString& field) {
    if (!Peek().IsName()) return false;
    field = Peek().text.toString();
    ++at_;
    if (!Peek().Is(u".")) return true;
    if (field.compare(table_, Qt::CaseInsensitive) != 0) return false;
    ++at_;
    if (!Peek().IsName()) return false;
    field = Peek().text.toString();
    ++at_;
    return true;
  }
  bool ExceptRow() {
    QString field;
    if (!TakeWord(u"AND") || !TakeWord(u"NOT") || !TakeField(field) || !TakeSymbol(u"=")) return false;
    TakeSymbol(u"-");
    if (Peek().kind != TokenKind::Number) return false;
    ++at_;
    return Peek().kind == TokenKind::End;
  }

  const std::vector<Token>& tokens_;
  QStringView table_;
  std::size_t at_ = 0;
};

}  // namespace

std::optional<SoughtText> SoughtTextIn(const std::vector<Token>& tokens) {
  return ConditionParser(tokens).Run();
}

}  // namespace dao
