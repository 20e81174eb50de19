// SPDX-License-Identifier: MIT
#pragma once

#include "data/Catalogue.h"
#include "data/Refusal.h"
#include "data/forms/EditorForm.h"
#include "platform/dao/Recordset.h"
#include "platform/desktop/FileChooser.h"

#include <functional>
#include <optional>

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

// What an item-spot and an item-pingle have in common in their editors: file, name, length, mix point and active. It
// chooses and accepts files, fills the fields, returns their values and shows where the record is used. Belongs to one
// editor, which must outlive it.
class AudioFields : public QObject {
  Q_OBJECT

 public:
  struct Kind {
    QString caption;            // without the text after " ... "
    QString chooserTitle;       // of the file dialog
    QString Catalogue::*table;  // of the current mode
    QStringList (*itemsUsing)(qint32 id, const Catalogue& catalogue);
  };
  AudioFields(const Kind& kind, EditorForm& editor);

  // The editor calls this once its controls exist.
  void Wire(const AudioControls& controls, QSize openingSize);
  // After the record is shown: reads the audio settings, uses a dropped file, and sets the focus.
  void Open();

  QString TableName() const;
  QString Caption() const;

  // The stored record; no row for a new one. Throws runtime::Error.
  dao::Recordset ReadRecord() const;
  void FillNew();
  // Empties the fields that a record fills.
  void Empty();
  // Each fills its controls only when the field has a usable value.
  void FillPath(const dao::Recordset& row);
  void FillNaam(const dao::Recordset& row);
  void FillLengteSec(const dao::Recordset& row);
  void FillMixPunt(const dao::Recordset& row);
  void FillAktief(const dao::Recordset& row);

  // The first failure, empty if there is none. Shows an error of its own when the database cannot be read.
  std::optional<Refusal> Check() const;
  QString PathToSave() const;
  QString NaamToSave() const;
  qint32 LengteSecToSave() const;
  qint32 MixPuntToSave() const;
  qint32 AktiefToSave() const;
  // Writes the record with `write`, as EditorForm::WriteRecord and with its result, and then adds its path to the list
  // of audio files if the user chose a file, or for a new record. Throws runtime::Error, also when the record was not
  // read completely or another user removed it; a path that could not be added is added by the next call.
  std::optional<bool> Write(
      const std::function<bool(qint32 id, const QString& databasePath, const QString& table)>& write);

 Q_SIGNALS:
  void changed();
  // A dropped file filled the fields of a new record.
  void filledFromFile();
  // Another number of dropped files waits.
  void waitingChanged();

 private:
  bool IsDuplicateCode() const;
  void RequireStillThere() const;
  void AddToAudioList(bool wasNew);

  void Form_DropFiles(const QStringList& files);
  void cmdPath_Click();
  void cmdFillName_Click();

  void SetMargins();
  void WireScrolling();
  void TakeDropped();
  void FillFromFile();
  void TakeFile(const QString& hostPath);
  void ShowWaiting();
  void ShowUsage();
  void WarnWhenUnmapped(const QString& hostPath);

  const Kind kind_;
  EditorForm& editor_;
  AudioControls controls_{};
  desktop::FileChooser codFile_;
  bool pathChanged_ = false;  // the path is not in the list of audio files yet
};
