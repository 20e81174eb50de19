// SPDX-License-Identifier: MIT
#include "platform/dao/Rewriter.h"

#include "platform/dao/SqlText.h"

#include <QSet>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace dao {
namespace {

constexpr int kFirstExpressionNumber = 1000;

// The keywords of the dialect. Every other word is a name, even when it is a keyword of SQLite.
const QSet<QString>& Keywords() {
  static const QSet<QString> kWords = {
      u"SELECT"_s, u"DISTINCT"_s, u"ALL"_s,   u"FROM"_s, u"WHERE"_s,   u"AND"_s,    u"OR"_s,     u"NOT"_s,   u"IN"_s,
      u"IS"_s,     u"NULL"_s,     u"AS"_s,    u"ON"_s,   u"BETWEEN"_s, u"EXISTS"_s, u"INNER"_s,  u"LEFT"_s,  u"RIGHT"_s,
      u"OUTER"_s,  u"JOIN"_s,     u"GROUP"_s, u"BY"_s,   u"HAVING"_s,  u"ORDER"_s,  u"ASC"_s,    u"DESC"_s,  u"UNION"_s,
      u"VALUES"_s, u"SET"_s,      u"INTO"_s,  u"TRUE"_s, u"FALSE"_s,   u"INSERT"_s, u"UPDATE"_s, u"DELETE"_s};
  return kWords;
}

const QSet<QString>& Functions() {
  static const QSet<QString> kNames = {u"MAX"_s, u"MIN"_s, u"COUNT"_s, u"SUM"_s, u"AVG"_s, u"UCASE"_s, u"LCASE"_s};
  return kNames;
}

bool IsLong(const QString& number) {
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

bool Rewriter::Take(const QString& word) {
  if (!Peek().IsWord(word)) return false;
  Next();
  return true;
}

bool Rewriter::TakeSymbol(const QString& symbol) {
  if (!Peek().Is(symbol)) return false;
  Next();
  return true;
}

void Rewriter::Expect(const QString& word) {
  if (!Take(word)) Unexpected();
}

void Rewriter::ExpectSymbol(const QString& symbol) {
  if (!TakeSymbol(symbol)) Unexpected();
}

QString Rewriter::TakeName() {
  const bool keyword = Peek().kind == TokenKind::Word && Keywords().contains(Peek().text.toUpper());
  if (!Peek().IsName() || keyword) Unexpected();
  names_ += Peek().text;
  return Next().text;
}

QString Rewriter::TakeField(const QString& table) {
  QString name = TakeName();
  if (!TakeSymbol(u"."_s)) return name;
  if (name.compare(table, Qt::CaseInsensitive) != 0) Unexpected();
  return TakeName();
}

void Rewriter::Unexpected() const {
  if (Peek().kind == TokenKind::End) ThrowSyntaxError(sql_, u"de instructie is niet volledig"_s);
  ThrowSyntaxError(sql_, u"'%1' wordt hier niet verwacht"_s.arg(Peek().text));
}

void Rewriter::Emit(const QString& text) {
  if (!output_.isEmpty()) output_ += u' ';
  output_ += text;
}

void Rewriter::SelectList() {
  if (Peek().IsWord(u"DISTINCT"_s) || Peek().IsWord(u"ALL"_s)) Pass();
  for (int number = kFirstExpressionNumber;; ++number) {
    SelectItem(number);
    if (!Peek().Is(u","_s)) return;
    Pass();
  }
}

void Rewriter::SelectItem(int number) {
  const std::size_t first = at_;
  const std::size_t depth = open_.size();
  while (Peek().kind != TokenKind::End) {
    const bool outside = open_.size() <= depth;
    if (outside && (Peek().Is(u","_s) || Peek().IsWord(u"FROM"_s) || Peek().IsWord(u"UNION"_s))) break;
    Pass();
  }
  if (first == at_) Unexpected();
  if (NeedsName(first, at_)) Emit(u"AS "_s + QuotedName(u"Expr%1"_s.arg(number)));
}

// A field, "table.field", "*", "table.*" and expressions with AS have a name already.
bool Rewriter::NeedsName(std::size_t first, std::size_t last) const {
  const std::size_t count = last - first;
  if (count >= 3 && tokens_[last - 2].IsWord(u"AS"_s)) return false;
  const Token& end = tokens_[last - 1];
  const bool plain = end.IsName() || end.Is(u"*"_s);
  return !plain || !(count == 1 || (count == 3 && tokens_[first].IsName() && tokens_[first + 1].Is(u"."_s)));
}

void Rewriter::Expression() {
  const std::size_t first = at_;
  operand_ = {};  // a value before this expression is no operand of its sign
  operator_.clear();
  const std::size_t depth = open_.size();
  while (Peek().kind != TokenKind::End) {
    const bool outside = open_.size() <= depth;
    if (outside && (Peek().Is(u","_s) || Peek().IsWord(u"WHERE"_s))) break;
    Pass();
  }
  if (first == at_) Unexpected();
}

void Rewriter::OneValueRow() {
  if (!Peek().Is(u"("_s)) Unexpected();
  do {
    Pass();
  } while (!open_.empty() && Peek().kind != TokenKind::End);
  if (Peek().Is(u","_s)) ThrowSyntaxError(sql_, u"INSERT neemt maar een rij waarden"_s);
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
      return PassText(Next().text);
    case TokenKind::Number:
      return PassNumber(Next().text);
    case TokenKind::Symbol:
      return PassSymbol(Next().text);
    case TokenKind::End:
      return;
  }
}

void Rewriter::PassWord() {
  const QString word = Peek().text.toUpper();
  const bool afterPoint = at_ > 0 && tokens_[at_ - 1].Is(u"."_s);
  const bool function = Peek(1).Is(u"("_s);
  if (afterPoint) return PassName(Next().text);
  if (function && Functions().contains(word)) return PassFunction();
  if (!Keywords().contains(word)) {
    if (function) ThrowSyntaxError(sql_, u"de functie '%1' wordt niet ondersteund"_s.arg(Peek().text));
    return PassName(Next().text);
  }
  Next();
  if (word == u"TRUE"_s) return PassConstant(u"(-1)"_s);
  if (word == u"FALSE"_s) return PassConstant(u"0"_s);
  if (word == u"NULL"_s) return PassConstant(word);
  Emit(word);
  operand_ = {};
  if (word != u"DISTINCT"_s && word != u"ALL"_s) operator_.clear();  // SUM(DISTINCT x)
}

void Rewriter::PassFunction() {
  const QString function = Next().text.toUpper();
  const Operand result = BeginOperand();
  Emit(function);
  Next();
  Open({function == u"UCASE"_s || function == u"LCASE"_s, result});
  if (function == u"SUM"_s || function == u"AVG"_s) operator_ = function;
}

void Rewriter::PassName(const QString& name) {
  const bool qualified = at_ > 1 && tokens_[at_ - 2].Is(u"."_s);
  if (!qualified) operand_ = BeginOperand();
  names_ += name;
  Emit(QuotedName(name));
  if (!Peek().Is(u"."_s)) EndOperand();
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
void Rewriter::PassNumber(const QString& number) {
  if (!IsLong(number)) return PassConstant(number);
  PassConstant({});
  EmitText(number);
}

// An operand that needs no check.
void Rewriter::PassConstant(const QString& constant) {
  operand_ = {output_.size(), true, {}};
  operator_.clear();
  if (!constant.isEmpty()) Emit(constant);
}

// The minus sign of such a number, where it cannot be a subtraction.
bool Rewriter::PassSign() {
  const Token& before = tokens_[at_ - 2];
  const bool isSign = before.Is(u"="_s) || before.Is(u"("_s) || before.Is(u","_s);
  if (!isSign || Peek().kind != TokenKind::Number || !IsLong(Peek().text)) return false;
  PassConstant({});
  EmitText(u'-' + Next().text);
  return true;
}

void Rewriter::PassSymbol(const QString& symbol) {
  if (symbol == u"-"_s && at_ > 1 && PassSign()) return;
  if (symbol == u"("_s) return Open({false, BeginOperand()});
  if (symbol == u")"_s) return Close();
  if (symbol == u"."_s) return Emit(symbol);
  if (u"+-*/"_s.contains(symbol)) return PassOperator(symbol);
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
void Rewriter::PassOperator(const QString& symbol) {
  const bool allFields = symbol == u"*"_s && (operand_.begin < 0 || tokens_[at_ - 2].Is(u"."_s));
  if (operand_.begin >= 0 && !operand_.isChecked && !allFields) {
    output_.insert(operand_.begin, u" operand ("_s);
    Emit(u", '%1' )"_s.arg(symbol));
  }
  operand_ = {};
  operator_ = allFields ? QString() : symbol;
  Emit(symbol == u"/"_s ? u"* 1.0 /"_s : symbol);  // 5 / 2 is 2.5
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
