// SPDX-License-Identifier: MIT
#pragma once

#include <QDialog>

// Base of the program's dialogs: loaded first, then shown modally with the caller's window as owner.
class Form : public QDialog {
  Q_OBJECT

 public:
  explicit Form(QWidget* owner);

  // Calls Form_Load and shows the form. Returns when it is closed, with its owner active again.
  void ShowModal();
  // The same for a form that was loaded already.
  void ShowLoaded();

  // Fills the form. Catches and shows its own errors.
  virtual void Form_Load() = 0;

 protected:
  // Makes the field with that object name read-only and grey, or editable again.
  void LockControl(const QString& name, bool lock);

  // In the list or combo box with that object name, selects the first entry whose ItemData equals the ID; none if there
  // is no such entry.
  void SetCboTextWhereID(const QString& name, qint64 id);

  // Closes the form without asking.
  void Unload();

  // Called when the user closes the window or presses Esc. The default closes the form.
  virtual void CloseAsked() { Unload(); }
  // Called once when the form closes.
  virtual void Form_Unload() {}

  void reject() override { CloseAsked(); }
  void closeEvent(QCloseEvent* event) override;

 private:
  void Centre();
  QWidget* Named(const QString& name) const;

  bool unloading_ = false;
};
