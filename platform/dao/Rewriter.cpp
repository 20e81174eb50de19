// SPDX-License-Identifier: MIT
#include "platform/dao/Rewriter.h"

#include "platform/dao/Keywords.h"
#include "platform/dao/SqlText.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace dao {
namespace {

constexpr int kFirstExpressionNumber = 1000;

bool IsLong(QStringView number) {
  constexpr int kDigitsOfDouble = 15;
  const auto isDigit = [](QChar letter) { return letter.isDigit(); };
  return std::all_of(number.begin(), number.end(), [&](QChar letter) { return isDigit(letter) || letter == u'.'; }) &&
         std::count_if(number.begin(), number.end(), isDigit) > kDigitsOfDouble;
}

}  // namespace

const Token& Rewriter::Peek(std::size_t ahead) const {
  return tokens_[std::min(at_ + ahead, tokens_.size() - 1)];
}

const Token& Rewriter::Next() {
  const Token& token = Peek();
  if (at_ + 1 < tokens_.size()) ++at_;
  return token;
}

bool Rewriter::Take(QStringView word) {
  if (!Peek().IsWord(word)) return false;
  Next();
  return true;
}

bool Rewriter::TakeSymbol(QStringView symbol) {
  if (!Peek().Is(symbol)) return false;
  Next();
  return true;
}

void Rewriter::Expect(QStringView word) {
  if (!Take(word)) Unexpected();
}

void Rewriter::ExpectSymbol(QStringView symbol) {
  if (!TakeSymbol(symbol)) Unexpected();
}

QString Rewriter::TakeName() {
  const bool keyword = Peek().kind == TokenKind::Word && IsKeyword(Peek().text);
  if (!Peek().IsName() || keyword) Unexpected();
  names_ += Peek().text.toString();
  Next();
  return names_.last();
}

QString Rewriter::TakeField(QStringView table) {
  QString name = TakeName();
  if (!TakeSymbol(u"."_s)) return name;
  if (name.compare(table, Qt::CaseInsensitive) != 0) Unexpected();
  return TakeName();
}

void Rewriter::Unexpected() const {
  if (Peek().kind == TokenKind::End) ThrowSyntaxError(sql_, u"de instructie is niet volledig"_s);
  ThrowSyntaxError(sql_, u"'%1' wordt hier niet verwacht"_s.arg(Peek().Value()));
}

void Rewriter::Emit(QStringView text) {
  if (!output_.isEmpty()) output_ += u' ';
  output_ += text;
}

void Rewriter::SelectList() {
  if (Peek().IsWord(u"DISTINCT") || Peek().IsWord(u"ALL")) Pass();
  for (int number = kFirstExpressionNumber;; ++number) {
    SelectItem(number);
    if (!Peek().Is(u",")) return;
    Pass();
  }
}

void Rewriter::SelectItem(int number) {
  const std::size_t first = at_;
  const std::size_t depth = open_.size();
  while (Peek().kind != TokenKind::End) {
    const bool outside = open_.size() <= depth;
    if (outside && (Peek().Is(u",") || Peek().IsWord(u"FROM") || Peek().IsWord(u"UNION"))) break;
    Pass();
  }
  if (first == at_) Unexpected();
  if (NeedsName(first, at_)) Emit(QString(u"AS "_s + QuotedName(u"Expr%1"_s.arg(number))));
}

// A field, "table.field", "*", "table.*" and expressions with AS have a name already.
bool Rewriter::NeedsName(std::size_t first, std::size_t last) const {
  const std::size_t count = last - first;
  if (count >= 3 && tokens_[last - 2].IsWord(u"AS")) return false;
  const Token& end = tokens_[last - 1];
  const bool plain = end.IsName() || end.Is(u"*");
  return !plain || !(count == 1 || (count == 3 && tokens_[first].IsName() && tokens_[first + 1].Is(u".")));
}

void Rewriter::Expression() {
  const std::size_t first = at_;
  operand_ = {};  // a value before this expression is no operand of its sign
  operator_.clear();
  const std::size_t depth = open_.size();
  while (Peek().kind != TokenKind::End) {
    const bool outside = open_.size() <= depth;
    if (outside && (Peek().Is(u",") || Peek().IsWord(u"WHERE"))) break;
    Pass();
  }
  if (first == at_) Unexpected();
}

void Rewriter::OneValueRow() {
  if (!Peek().Is(u"(")) Unexpected();
  do {
    Pass();
  } while (!open_.empty() && Peek().kind != TokenKind::End);
  if (Peek().Is(u",")) ThrowSyntaxError(sql_, u"INSERT neemt maar een rij waarden"_s);
  if (Peek().kind != TokenKind::End) Unexpected();
}

void Rewriter::Rest() {
  while (Peek().kind != TokenKind::End)
    Pass();
  if (!open_.empty()) ThrowSyntaxError(sql_, u"een haakje wordt niet gesloten"_s);
}

void Rewriter::Pass() {
  const Token& token = Peek();
  switch (token.kind) {
    case TokenKind::Word:
      return PassWord();
    case TokenKind::Name:
      return PassName(Next().text);
    case TokenKind::Text:
      return PassText(Next().Value());
    case TokenKind::Number:
      return PassNumber(Next().text);
    case TokenKind::Symbol:
      return PassSymbol(Next().text);
    case TokenKind::End:
      return;
  }
}

void Rewriter::PassWord() {
  const QStringView word = Peek().text;
  const bool afterPoint = at_ > 0 && tokens_[at_ - 1].Is(u".");
  const bool function = Peek(1).Is(u"(");
  if (afterPoint) return PassName(Next().text);
  if (function && IsFunction(word)) return PassFunction();
  if (!IsKeyword(word)) {
    if (function) ThrowSyntaxError(sql_, u"de functie '%1' wordt niet ondersteund"_s.arg(Peek().Value()));
    return PassName(Next().text);
  }
  const Token& keyword = Next();
  if (keyword.IsWord(u"TRUE")) return PassConstant(u"(-1)");
  if (keyword.IsWord(u"FALSE")) return PassConstant(u"0");
  if (keyword.IsWord(u"NULL")) return PassConstant(u"NULL");
  Emit(word.toString().toUpper());
  operand_ = {};
  if (!keyword.IsWord(u"DISTINCT") && !keyword.IsWord(u"ALL")) operator_.clear();  // SUM(DISTINCT x)
}

void Rewriter::PassFunction() {
  const QString function = Next().text.toString().toUpper();
  const Operand result = BeginOperand();
  Emit(function);
  Next();
  Open({function == u"UCASE"_s || function == u"LCASE"_s, result});
  if (function == u"SUM"_s || function == u"AVG"_s) operator_ = function;
}

void Rewriter::PassName(QStringView name) {
  const bool qualified = at_ > 1 && tokens_[at_ - 2].Is(u".");
  if (!qualified) operand_ = BeginOperand();
  names_ += name.toString();
  Emit(QuotedName(names_.last()));
  if (!Peek().Is(u".")) EndOperand();
}

void Rewriter::PassText(const QString& value) {
  operand_ = BeginOperand();
  EmitText(value);
  EndOperand();
}

void Rewriter::EmitText(const QString& value) {
  texts_ += value;
  Emit(u"?%1"_s.arg(texts_.size()));
}

// A number with more digits than a double can hold is passed as text, which the conversion for the field reads exactly.
void Rewriter::PassNumber(QStringView number) {
  if (!IsLong(number)) return PassConstant(number);
  PassConstant({});
  EmitText(number.toString());
}

// An operand that needs no check.
void Rewriter::PassConstant(QStringView constant) {
  operand_ = {output_.size(), true, {}};
  operator_.clear();
  if (!constant.isEmpty()) Emit(constant);
}

// The minus sign of such a number, where it cannot be a subtraction.
bool Rewriter::PassSign() {
  const Token& before = tokens_[at_ - 2];
  const bool isSign = before.Is(u"=") || before.Is(u"(") || before.Is(u",");
  if (!isSign || Peek().kind != TokenKind::Number || !IsLong(Peek().text)) return false;
  PassConstant({});
  EmitText(u'-' + Next().text.toString());
  return true;
}

void Rewriter::PassSymbol(QStringView symbol) {
  if (symbol == u"-" && at_ > 1 && PassSign()) return;
  if (symbol == u"(") return Open({false, BeginOperand()});
  if (symbol == u")") return Close();
  if (symbol == u".") return Emit(symbol);
  if (QStringView(u"+-*/").contains(symbol)) return PassOperator(symbol);
  Emit(symbol);
  operand_ = {};
  operator_.clear();
}

void Rewriter::Open(const Parenthesis& parenthesis) {
  Emit(u"("_s);
  open_.push_back(parenthesis);
  operand_ = {};
  operator_.clear();
}

void Rewriter::Close() {
  Emit(u")"_s);
  if (open_.empty()) ThrowSyntaxError(sql_, u"een haakje te veel"_s);
  if (open_.back().comparesAsText) Emit(u"COLLATE jet"_s);
  operand_ = open_.back().operand;
  open_.pop_back();
  EndOperand();
}

// SQLite would count a text as 0, so the operands of arithmetic are passed through a function that refuses texts. An
// operator without an operand before it is a sign, or the * of "SELECT *".
void Rewriter::PassOperator(QStringView symbol) {
  const bool allFields = symbol == u"*" && (operand_.begin < 0 || tokens_[at_ - 2].Is(u"."));
  if (operand_.begin >= 0 && !operand_.isChecked && !allFields) {
    output_.insert(operand_.begin, u" operand ("_s);
    Emit(u", '%1' )"_s.arg(symbol));
  }
  operand_ = {};
  operator_ = allFields ? QString() : symbol.toString();
  Emit(symbol == u"/" ? QStringView(u"* 1.0 /") : symbol);  // 5 / 2 is 2.5
}

// To be ended by EndOperand when its last token is written.
Rewriter::Operand Rewriter::BeginOperand() {
  Operand operand{output_.size(), !operator_.isEmpty(), {}};
  if (!operand.isChecked) return operand;
  Emit(u"operand ("_s);
  operand.ending = u", '%1' )"_s.arg(operator_);
  operator_.clear();
  return operand;
}

void Rewriter::EndOperand() {
  if (operand_.ending.isEmpty()) return;
  Emit(operand_.ending);
  operand_.ending.clear();
}

}  // namespace dao
