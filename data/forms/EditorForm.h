// SPDX-License-Identifier: MIT
#pragma once

#include "data/forms/Form.h"

// What the detail editors share: a record that is new or not, unsaved changes, and the two ways out.
class EditorForm : public Form {
  Q_OBJECT

 public:
  using Form::Form;

  // Takes gstrSelectedID, then runs InitForm, FillForm, InitControls and InitCommands, and last Loaded.
  void Form_Load() override;

  bool IsDirty() const { return isDirty_; }
  bool IsNew() const { return isNew_; }
  qint32 ID() const { return id_; }

 protected:
  virtual void InitForm() = 0;
  virtual void FillForm() = 0;
  virtual void InitControls() {}
  virtual void InitCommands() {}
  virtual void Loaded() {}

  // Validates; shows a message, moves the focus and answers false at the first failure.
  virtual bool OpslaanProceed() = 0;
  // Writes. Clears isDirty_ and isNew_ only when everything was written.
  virtual void Opslaan() = 0;

  // Shows the message, moves the focus there (null: leaves it) and answers false.
  static bool Refuse(int message, const QString& value1, const QString& value2, QWidget* focus);

  // Asks about unsaved changes. True when the form must stay open: the user chose to save and it was not saved.
  bool IsFormDirty();

  // The bodies of cmdOk_Click and cmdAnnuleren_Click.
  void SaveAndClose();
  void CancelAndClose();

  void CloseAsked() override { CancelAndClose(); }

  void Changed() { isDirty_ = true; }

  // The end of every FillForm: what is shown is what is stored.
  void MarkLoaded();
  // Something that belongs to the record could not be read.
  void MarkIncomplete() { complete_ = false; }
  // Throws when an existing record could not be read whole: saving would write empty fields over it, or
  // drop what is missing on the screen.
  void RequireLoaded() const;

  bool isDirty_ = false;
  bool isNew_ = false;
  qint32 id_ = 0;

 private:
  // A numeric gstrSelectedID opens that record; anything else a new one, with ID 0.
  void TakeSelectedID();

  bool loaded_ = false;
  bool complete_ = true;
};

// Whether another record of the table has this name, letter case ignored: cleaned of reserved characters, or as typed.
// A record that exists (isNew false) does not collide with itself; as long as it keeps a name with an apostrophe, it
// may share that name with another. Throws runtime::Error.
bool NameExists(const QString& databasePath, const QString& table, const QString& naam, bool isNew, qint32 id);
