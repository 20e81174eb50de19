// SPDX-License-Identifier: MIT
#pragma once

#include <QDialog>

// What every dialog of the program shares: it is loaded, then shown modally with its caller as owner.
class Form : public QDialog {
  Q_OBJECT

 public:
  explicit Form(QWidget* owner);

  // Runs Form_Load and shows the form; returns when it is closed, with its owner active again.
  void ShowModal();

  // The opening sequence, under its own error trap.
  virtual void Form_Load() = 0;

 protected:
  // Locks or unlocks the field of that name and gives it the colour that goes with it.
  void LockControl(const QString& name, bool lock);

  // Selects the first entry of the list or combo of that name whose ItemData equals the ID; none when there is none.
  void SetCboTextWhereID(const QString& name, qint64 id);

  // Closes the form for good. The window frame and Esc do not: they ask first (CloseAsked).
  void Unload();

  // What the frame and Esc do: by default they unload.
  virtual void CloseAsked() { Unload(); }
  // Runs once on the way out, whichever way.
  virtual void Form_Unload() {}

  void reject() override { CloseAsked(); }
  void closeEvent(QCloseEvent* event) override;

 private:
  void Centre();
  QWidget* Named(const QString& name) const;

  bool unloading_ = false;
};
