// SPDX-License-Identifier: MIT
#pragma once

#include "data/Catalogue.h"
#include "data/forms/Form.h"

#include <QString>

class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;

// Base of the cleanup dialogs. They remove the record with the ID in gstrOpruimenID, its files, or both, depending on
// the check boxes, without another question.
class CleanupForm : public Form {
  Q_OBJECT

 public:
  using Form::Form;

  void Form_Load() override;

 protected:
  struct Controls {
    QLineEdit* txtOpruimenVan = nullptr;
    QCheckBox* chkVerwijderBestand = nullptr;
    QCheckBox* chkVerwijderID = nullptr;
    QPushButton* cmdOk = nullptr;
    QPushButton* cmdSluiten = nullptr;
    QLabel* lblGebruik = nullptr;
  };

  // Call once, directly after setupUi.
  void Wire(const Controls& controls);

  // The name of the record that will be removed.
  virtual QString NameOf(qint32 id, const Catalogue& catalogue) const = 0;
  // Where the record is used, for the user to read; may be empty. Throws runtime::Error.
  virtual QString UsageOf(qint32 id, const Catalogue& catalogue) const = 0;
  // Removes records and files in a fixed order; those removed before an error are not restored. Throws runtime::Error.
  virtual void CleanUp(const Catalogue& catalogue) = 0;

  virtual void InitControls();
  void InitCommands();

  // Deletes records through the write layer, which shows its own error.
  void DeleteRecords(qint32 id, const QString& table, const QString& keyField, const QString& databasePath);
  // The user cancelled: no message that the cleanup was done.
  void CancelCleanup() { allDeleted_ = false; }
  // SELECT of the record with the ID gstrOpruimenID; empty when that is not a number.
  static QString SelectByID(const QString& fields, const QString& table);

  bool DeletesFiles() const;
  bool DeletesRecord() const;

 private:
  void InitForm() {}
  void FillForm();
  void ShowUsage(qint32 id);
  bool OpruimenProceed() const { return true; }
  bool Opruimen();

  void chkVerwijderBestand_Click();
  void chkVerwijderID_Click();
  void cmdOk_Click();
  void cmdSluiten_Click();

  Controls controls_;
  bool allDeleted_ = true;  // false after a failed or cancelled delete
};
