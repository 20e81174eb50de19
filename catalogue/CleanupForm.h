// SPDX-License-Identifier: MIT
#pragma once

#include "data/Catalogue.h"
#include "data/forms/Form.h"

#include <QString>

class QCheckBox;
class QLineEdit;
class QPushButton;

// What the cleanup dialogs share. They remove the record whose ID stands in gstrOpruimenID, its files, or both, as the
// check boxes say, without asking once more.
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
  };

  // Once, right after setupUi.
  void Wire(const Controls& controls);

  // The name of the record to be removed.
  virtual QString NameOf(qint32 id, const Catalogue& catalogue) const = 0;
  // The records and files go in a fixed order; what went before an error stays gone. Throws runtime::Error.
  virtual void CleanUp(const Catalogue& catalogue) = 0;

  virtual void InitControls();
  void InitCommands();

  // Deletes records through the write layer, which shows its own error.
  void DeleteRecords(qint32 id, const QString& table, const QString& keyField, const QString& databasePath);
  // The user would rather leave everything as it is: the cleanup ends as one that was not carried out.
  void GiveUp() { allDeleted_ = false; }
  // gstrOpruimenID in the statement that finds the record; the empty statement when it is no number.
  static QString SelectByID(const QString& fields, const QString& table);

  bool DeletesFiles() const;
  bool DeletesRecord() const;

 private:
  void InitForm() {}
  void FillForm();
  bool OpruimenProceed() const { return true; }
  bool Opruimen();

  void chkVerwijderBestand_Click();
  void chkVerwijderID_Click();
  void cmdOk_Click();
  void cmdSluiten_Click();

  Controls controls_;
  bool allDeleted_ = true;  // no delete of the write layer failed
};
