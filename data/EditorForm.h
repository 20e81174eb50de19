#pragma once
#include "data/Form.h"

// What the detail editors share: a record that is new or not, unsaved changes, and the two ways out.
class EditorForm : public Form {
  Q_OBJECT

 public:
  using Form::Form;

  bool IsDirty() const { return isDirty_; }
  bool IsNew() const { return isNew_; }
  qint32 ID() const { return id_; }

 protected:
  // A numeric gstrSelectedID opens that record; anything else a new one, with ID 0.
  void TakeSelectedID();

  // Validates; shows a message, moves the focus and answers false at the first failure.
  virtual bool OpslaanProceed() = 0;
  // Writes. Clears isDirty_ and isNew_ only when everything was written.
  virtual void Opslaan() = 0;

  // Asks about unsaved changes. True when the form must stay open: the user chose to save and it was not saved.
  bool IsFormDirty();

  // The bodies of cmdOk_Click and cmdAnnuleren_Click.
  void SaveAndClose();
  void CancelAndClose();

  void CloseAsked() override { CancelAndClose(); }

  void Changed() { isDirty_ = true; }

  // The end of every FillForm: what is shown is what is stored.
  void Filled();
  // Throws when an existing record could not be read whole: saving would write empty fields over it.
  void RequireFilled() const;

  bool isDirty_ = false;
  bool isNew_ = false;
  qint32 id_ = 0;

 private:
  bool filled_ = false;
};

// Whether another record of the table has this name (cleaned of reserved characters, letter case ignored). A record
// that exists (isNew false) does not collide with itself. Throws runtime::Error.
bool NameExists(const QString& databasePath, const QString& table, const QString& naam, bool isNew, qint32 id);
