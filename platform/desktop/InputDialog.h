// SPDX-License-Identifier: MIT
#pragma once

#include <QDialog>

class QLineEdit;
class QPushButton;

namespace desktop {

class InputBoxScript;

// The window of an input box: a prompt, one line, OK and Annuleren.
class InputDialog : public QDialog {
  Q_OBJECT

 public:
  InputDialog(QWidget* owner, const QString& prompt, const QString& title, const QString& defaultText);

  QString Typed() const;
  // Lets a script type and click once the dialog is shown.
  void RunScript(InputBoxScript& script);

 private:
  QString prompt_;
  QString defaultText_;
  QLineEdit* line_;
  QPushButton* ok_;
  QPushButton* cancel_;
};

}  // namespace desktop
