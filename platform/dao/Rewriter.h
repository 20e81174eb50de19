// SPDX-License-Identifier: MIT
#pragma once

#include "platform/dao/Tokens.h"

#include <QString>
#include <QStringList>

#include <vector>

namespace dao {

// Rewrites the tokens of a statement for SQLite. Take and Expect functions consume tokens without output; the others
// write what they consume. Every Error shows the statement.
class Rewriter {
 public:
  explicit Rewriter(const QString& sql) : sql_(sql), tokens_(Tokenise(sql)) {}

  const Token& Peek(std::size_t ahead = 0) const;
  const Token& Next();
  bool Take(const QString& word);
  bool TakeSymbol(const QString& symbol);
  void Expect(const QString& word);
  void ExpectSymbol(const QString& symbol);
  QString TakeName();
  QString TakeField(const QString& table);  // a field name, optionally qualified with `table`
  [[noreturn]] void Unexpected() const;

  void Emit(const QString& text);
  // The text between SELECT and its FROM. An expression without a name gets one: Expr1000, Expr1001, ...
  void SelectList();
  void Expression();   // up to a comma or WHERE outside parentheses
  void OneValueRow();  // "(...)" and then the end of the statement
  void Rest();

  QString Output() const { return output_; }
  QStringList Texts() const { return texts_; }
  QStringList Names() const { return names_; }

 private:
  // A value that an operator may follow: where it begins in the output (-1: none), and whether the function that
  // refuses texts is around it; `ending` closes that function and is not written yet.
  struct Operand {
    qsizetype begin = -1;
    bool isChecked = false;
    QString ending;
  };
  struct Parenthesis {
    bool comparesAsText = false;  // the result of its function gets the text order
    Operand operand;              // the value that it closes
  };

  void Pass();
  void PassWord();
  void PassFunction();
  void PassName(const QString& name);
  void PassText(const QString& value);
  void PassNumber(const QString& number);
  void PassConstant(const QString& constant);
  bool PassSign();
  void PassSymbol(const QString& symbol);
  void PassOperator(const QString& symbol);
  void Open(const Parenthesis& parenthesis);
  void Close();
  Operand BeginOperand();
  void EndOperand();
  void EmitText(const QString& value);
  void SelectItem(int number);
  bool NeedsName(std::size_t first, std::size_t last) const;

  const QString sql_;
  const std::vector<Token> tokens_;
  std::size_t at_ = 0;
  QString output_;
  QStringList texts_;
  QStringList names_;
  std::vector<Parenthesis> open_;
  Operand operand_;   // the last one written
  QString operator_;  // the one whose right operand comes next
};

}  // namespace dao
