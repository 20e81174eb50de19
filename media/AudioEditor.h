// SPDX-License-Identifier: MIT
#pragma once

#include "data/forms/EditorForm.h"
#include "platform/dao/Recordset.h"
#include "platform/desktop/FileChooser.h"

class AudioPreview;
class QCheckBox;
class QFrame;
class QLabel;
class QLineEdit;
class QPushButton;
class QScrollArea;

// The controls that both audio editors have, under the same names.
struct AudioControls {
  QScrollArea* scrInhoud;
  QFrame* linKnoppen;
  QLineEdit* txtPath;
  QPushButton* cmdPath;
  QLineEdit* txtNaam;
  QPushButton* cmdFillName;
  QLineEdit* txtLengteSec;
  QLabel* lblLuidheid;
  QCheckBox* chkAktief;
  AudioPreview* preview;
  QLabel* lblToelichting;  // next to the buttons: where the record is used, or how many files are queued
  QPushButton* cmdOk;
  QPushButton* cmdAnnuleren;
};

// Base of the two audio editors: opening, file choice, name, length, mix point, validation, duplicate check, saving and
// closing. A derived form adds its table, its words, its own fields and its write functions.
class AudioEditor : public EditorForm {
  Q_OBJECT

 protected:
  struct Words {
    QString caption;       // without the text after " ... "
    QString chooserTitle;  // of the file dialog
  };
  AudioEditor(const Words& words, QWidget* owner);

  // The form calls this once its controls exist.
  void Wire(const AudioControls& controls, QSize openingSize);

  // The table of the current mode.
  virtual QString TableName() const = 0;
  // Fills the fields of a new record.
  virtual void FillNew();
  // Fills additional fields for a dropped file.
  virtual void FillDropped() {}
  // Fills the fields from a record, in the order required for the form.
  virtual void FillRecord(const dao::Recordset& row) = 0;
  void InitControls() override;
  // Names of the items that use the record. Throws runtime::Error.
  virtual QStringList ItemsUsing(qint32 id) const = 0;
  // The checks after those of path and name.
  virtual bool OwnFieldsValid() { return true; }
  // Inserts (isNew_) or updates the record; true on success.
  virtual bool Write(qint32 id, const QString& databasePath, const QString& table) = 0;

  // Parts of FillRecord; each fills its controls only when the field has a usable value.
  void FillPath(const dao::Recordset& row);
  void FillNaam(const dao::Recordset& row);
  void FillLengteSec(const dao::Recordset& row);
  void FillMixPunt(const dao::Recordset& row);
  void FillAktief(const dao::Recordset& row);

  // Values for Write.
  QString PathToSave() const;
  QString NaamToSave() const;
  qint32 LengteSecToSave() const;
  qint32 MixPuntToSave() const;
  qint32 AktiefToSave() const;

  void InitForm() override;
  void FillForm() override;
  void Loaded() override;
  bool OpslaanProceed() override;
  void Opslaan() override;
  void Form_Unload() override;

 private:
  bool IsDuplicateCode();

  void Form_DropFiles(const QStringList& files);
  void cmdPath_Click();
  void cmdFillName_Click();
  void cmdOk_Click();
  void cmdAnnuleren_Click();
  void txtNaam_Change();
  void txtPath_Change();
  void txtLengteSec_Change();
  void chkAktief_Click();

  void SetMargins();
  void WireScrolling();
  void TakeDropped();
  void FillFromFile();
  void TakeFile(const QString& hostPath);
  void ShowWaiting();
  void ShowUsage();
  void WarnWhenUnmapped(const QString& hostPath);
  dao::Recordset ReadRecord() const;

  const Words words_;
  AudioControls controls_{};
  desktop::FileChooser codFile_;
  bool pathChanged_ = false;  // the user chose a file
};
