// SPDX-License-Identifier: MIT
#pragma once

#include "catalogue/OverviewTexts.h"
#include "data/Catalogue.h"
#include "data/forms/Form.h"
#include "data/forms/RecordEdits.h"
#include "data/forms/Screens.h"
#include "platform/controls/ListLine.h"

#include <QString>

#include <vector>

class QCheckBox;
class QLineEdit;
class QPushButton;
class OverviewActions;
class OverviewBar;
class OverviewSort;
class WaitingLine;

namespace controls {
class ListBox;
class QuietLine;
}  // namespace controls

// Base of the overview lists: a list of the names of one table's records, with buttons that open the editor and the
// cleanup dialog. A derived list adds its controls, its words and its special rules.
class OverviewForm : public Form {
  Q_OBJECT

 public:
  void Form_Load() override;

 protected:
  // The common controls; null when a list does not have one.
  struct Controls {
    controls::ListBox* lstOverzicht = nullptr;
    QLineEdit* txtZoek = nullptr;
    controls::QuietLine* lblAantal = nullptr;
    OverviewBar* barRegel = nullptr;
    WaitingLine* linWachten = nullptr;
    QPushButton* cmdNieuw = nullptr;
    QPushButton* cmdOpen = nullptr;
    QPushButton* cmdVerwijder = nullptr;
    QPushButton* cmdSluiten = nullptr;
    QPushButton* cmdDesaktiveer = nullptr;
    QCheckBox* chkAktieve = nullptr;
    QCheckBox* chkNietAktieve = nullptr;
  };
  using SetAktief = bool (*)(qint32 id, qint32 aktief, const QString& databasePath, const QString& table);

  // `one`, `many`: words for one and for several records in texts.
  OverviewForm(QWidget* owner, RecordKind kind, const QString& one, const QString& many, Screen detailEditor);

  // Call once, directly after setupUi.
  template <class Ui>
  void Wire(const Ui& ui) {
    WireControls(ControlsOf(ui));
  }

  // Makes the window accept dropped audio files: an editor with a new record opens for each.
  void AcceptAudio();

  virtual QString TableOf(const Catalogue& catalogue) const = 0;
  // The WHERE clause when both check boxes are checked, with a blank at the end; may be empty.
  virtual QString BothFilter(const QString& table) const = 0;

  virtual void InitForm();
  virtual void InitCommands();
  virtual void cmdVerwijder_Click() = 0;
  // The write function of cmdDesaktiveer; null without that button.
  virtual SetAktief Deactivator() const { return nullptr; }

  // What the list shows while offline changes wait for an export.
  virtual QString WaitingNote() const;
  // Called after the list was filled.
  virtual void OnRefilled() {}
  // The list's columns, and the key of each line for sorting by one of them: empty while they are not known.
  virtual controls::ColumnTexts Captions() const = 0;
  virtual std::vector<qint64> SortKeys(controls::LineColumn column) const = 0;
  // Once the keys are known.
  void Sort();
  virtual QString CountText() const { return CountTextOf(View()); }
  virtual QString EmptyText() const { return EmptyTextOf(View()); }

  void FillLstOverzicht();
  // Reads the list again: after every other screen is closed, and for F5.
  void Refill();
  void ShowCount();

  controls::ListBox& List() const { return *controls_.lstOverzicht; }
  const Controls& Shared() const { return controls_; }
  OverviewView View() const;
  // The selected line's ID. Throws runtime::Error when no line is selected.
  qint32 SelectedID() const;

  // Buttons of a derived list that act on the selected line, for its context menu.
  virtual QList<QPushButton*> LineButtons() const { return {}; }

  // For cmdVerwijder of lists with a cleanup dialog. The caller traps errors.
  void OpenCleanup(Screen cleanup);

 private:
  // Finds the controls by the names that they have in every list.
  template <class Ui>
  static Controls ControlsOf(const Ui& ui) {
    Controls controls{ui.lstOverzicht, ui.txtZoek, ui.lblAantal,    ui.barRegel,  ui.linWachten,
                      ui.cmdNieuw,     ui.cmdOpen, ui.cmdVerwijder, ui.cmdSluiten};
    if constexpr (requires { ui.cmdDesaktiveer; }) {
      controls.cmdDesaktiveer = ui.cmdDesaktiveer;
      controls.chkAktieve = ui.chkAktieve;
      controls.chkNietAktieve = ui.chkNietAktieve;
    }
    return controls;
  }

  void WireControls(const Controls& controls);
  void WireMarked();
  QString Filter(const QString& table) const;
  void ShowDetail();
  void SetUpIcons();
  void ShowWaiting() noexcept;

  void cmdTonen_Click();
  void chkAktieve_Click();
  void chkNietAktieve_Click();
  void lstOverzicht_Click();
  void lstOverzicht_DblClick();
  void cmdOpen_Click();
  void cmdNieuw_Click();
  void cmdDesaktiveer_Click();
  void cmdSluiten_Click();
  void txtZoek_Change();
  void Form_DropFiles(const QStringList& files);

  RecordKind kind_;
  QString one_;
  QString many_;
  Screen detailEditor_;
  Controls controls_;
  OverviewActions* actions_ = nullptr;
  OverviewSort* sort_ = nullptr;
  bool read_ = false;  // the list was read at least once
};
