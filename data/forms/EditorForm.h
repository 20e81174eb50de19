// SPDX-License-Identifier: MIT
#pragma once

#include "data/Refusal.h"
#include "data/forms/Form.h"
#include "data/forms/StoredValues.h"

#include <functional>
#include <optional>

// Base of the detail editors: a new or existing record, unsaved changes, saving and cancelling.
class EditorForm : public Form {
  Q_OBJECT

 public:
  using Form::Form;

  // Reads gstrSelectedID, then calls InitForm, FillForm, InitControls, InitCommands and Loaded, in this order.
  void Form_Load() override;

  bool IsDirty() const { return isDirty_; }
  bool IsNew() const { return isNew_; }
  qint32 ID() const { return id_; }

  // Opslaan, or the part of the editor to which it leaves the writing, calls these two.
  //
  // Throws runtime::Error unless an existing record was read completely: saving would overwrite the missing parts with
  // empty values, or another workstation's change without a question.
  void RequireLoaded() const;
  // Writes the record with `write`, under its ID or a new ID of the table. Throws runtime::Error. Returns
  // * the result of `write` when the record was written; id_ and isNew_ are then up to date;
  // * nothing when `write` failed before it executed its statement, or no new ID was found (both were shown);
  // * nothing when another workstation changed the record and the user chose that version (the form is filled with it
  //   and stays open) or cancelled.
  std::optional<bool> WriteRecord(const QString& databasePath, const QString& table,
                                  const std::function<bool(qint32 id)>& write);

 protected:
  virtual void InitForm() = 0;
  virtual void FillForm() = 0;
  virtual void InitControls() {}
  virtual void InitCommands() {}
  // Called last, when the form is filled for the first time.
  virtual void Loaded() {}

  // Validates. At the first failure shows a message, moves the focus and returns false.
  virtual bool OpslaanProceed() = 0;
  // Writes the record through WriteRecord, which clears isNew_ as soon as the record exists. Clears isDirty_ only after
  // everything was written.
  virtual void Opslaan() = 0;

  // For the result of a check: true without a refusal. Otherwise shows its message, moves the focus and returns false.
  bool Accept(const std::optional<Refusal>& refusal);

  // Asks about unsaved changes, if any. Returns true when the form must stay open: the question could not be shown, or
  // the user chose to save and that failed.
  bool IsFormDirty();

  // The bodies of cmdOk_Click and cmdAnnuleren_Click.
  void SaveAndClose();
  void CancelAndClose();

  void CloseAsked() override { CancelAndClose(); }

  void Changed() { isDirty_ = true; }

  // The stored values of the fields that Opslaan writes, read from the database now. Throws runtime::Error.
  virtual StoredValues ReadStoredValues() const { return {}; }
  // Empties the fields that FillForm fills.
  virtual void EmptyFields() {}

  // Called at the end of every FillForm: the controls show the stored record.
  void MarkLoaded();
  // Called when a part of the record could not be read.
  void MarkIncomplete() { complete_ = false; }

  bool isDirty_ = false;
  bool isNew_ = false;
  qint32 id_ = 0;

 private:
  // A numeric gstrSelectedID selects that record; anything else means a new one, with ID 0.
  void ReadSelectedID();

  // Reads the values with which the record is compared when it is saved. Returns why that failed, else an empty text.
  QString ReadStored();
  void Save();
  // Whether the record may be updated; asks when another workstation changed it.
  bool MayUpdate();
  void Refill();

  bool loaded_ = false;
  bool written_ = false;   // the current save wrote the record, though perhaps not everything that belongs to it
  bool refilled_ = false;  // the current save filled the form again, so the form stays open
  StoredValues stored_;    // of the record as it was read or written last
  QString unreadReason_;   // why stored_ could not be read at opening; empty when it was
  bool complete_ = true;
};

// Whether another record of the table has this name, ignoring letter case, either with reserved characters removed or
// as typed. An existing record (isNew false) does not collide with itself. If it keeps a name with an apostrophe,
// another record may have the same name. Throws runtime::Error.
bool NameExists(const QString& databasePath, const QString& table, const QString& naam, bool isNew, qint32 id);
