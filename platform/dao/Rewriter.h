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
  // Both must outlive it.
  Rewriter(const QString& sql, const std::vector<Token>& tokens) : sql_(sql), tokens_(tokens) {}

  const Token& Peek(std::size_t ahead = 0) const;
  const Token& Next();
  bool Take(QStringView word);
  bool TakeSymbol(QStringView symbol);
  void Expect(QStringView word);
  void ExpectSymbol(QStringView symbol);
  QString TakeName();
  QString TakeField(QStringView table);  // a field name, optionally qualified with `table`
  [[noreturn]] void Unexpected() const;

  void Emit(QStringView text);
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
  void PassName(QStringView name);
  void PassText(const QString& value);
  void PassNumber(QStringView number);
  void PassConstant(QStringView constant);
  bool PassSign();
  void PassSymbol(QStringView symbol);
  void PassOperator(QStringView symbol);
  void Open(const Parenthesis& parenthesis);
  void Close();
  Operand BeginOperand();
  void EndOperand();
  void EmitText(const QString& value);
  void SelectItem(int number);
  bool NeedsName(std::size_t first, std::size_t last) const;

  const QString& sql_;
  const std::vector<Token>& tokens_;
  std::size_t at_ = 0;
  QString output_;
  QStringList texts_;
  QStringList names_;
  std::vector<Parenthesis> open_;
  Operand operand_;   // the last one written
  QString operator_;  // the one whose right operand comes next
};

}  // namespace dao
