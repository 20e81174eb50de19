// SPDX-License-Identifier: MIT
#pragma once

#include "data/forms/Form.h"

#include <memory>

class QTextCursor;
namespace Ui {
class frmHandleiding;
}

// Shows the manual, which is a resource of the program, with its contents and a search. Not modal (see ManualOpener).
class frmHandleiding : public Form {
  Q_OBJECT

 public:
  explicit frmHandleiding(QWidget* owner);
  ~frmHandleiding() override;

  void Form_Load() override;

  // Scrolls to the heading with this text; nothing happens without one.
  void GoTo(const QString& heading);

 private:
  void FillContents();
  void lstInhoud_Click();
  void txtZoek_Change();
  void cmdVolgende_Click();
  void cmdVorige_Click();
  void MarkFound();
  void Show(const QTextCursor& found);

  std::unique_ptr<Ui::frmHandleiding> ui_;
  QList<QTextCursor> found_;  // the places of the text in txtZoek
  qsizetype shown_ = 0;       // the one that is selected
};
