// SPDX-License-Identifier: MIT
#pragma once

#include <QDialog>
#include <QPushButton>

#include <vector>

class QHBoxLayout;
class QTextEdit;

namespace desktop {

class MessageBoxScript;

// The window of a message box: icon, selectable text, buttons by style value. exec() returns the answer.
class MessageDialog : public QDialog {
  Q_OBJECT

 public:
  MessageDialog(QWidget* owner, const QString& text, int style, const QString& title);

  // Lets a script click once the dialog is shown.
  void RunScript(MessageBoxScript& script);
  void reject() override;

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  struct Choice {
    QPushButton* button;
    int answer;
  };

  QWidget* MakeIcon() const;
  QTextEdit* MakeText(const QString& text);
  void AddButtons(QHBoxLayout* row);
  QPushButton* ButtonOf(int answer) const;
  int DefaultAnswer() const;

  int style_;
  QString text_;
  std::vector<Choice> choices_;
};

}  // namespace desktop
