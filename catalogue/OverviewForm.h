// SPDX-License-Identifier: MIT
#pragma once

#include "catalogue/OverviewTexts.h"
#include "data/Catalogue.h"
#include "data/forms/Form.h"
#include "data/forms/Screens.h"

#include <QString>

class QCheckBox;
class QLineEdit;
class QPushButton;

namespace controls {
class ListBox;
class QuietLine;
}  // namespace controls

// The family of the overview lists: the names of one table's records, and the doors to everything that edits them.
// A member brings its controls and words, and what is special about it.
class OverviewForm : public Form {
  Q_OBJECT

 public:
  void Form_Load() override;

 protected:
  // The controls that the family shares; null where a member has none.
  struct Controls {
    controls::ListBox* lstOverzicht = nullptr;
    QLineEdit* txtZoek = nullptr;
    controls::QuietLine* lblAantal = nullptr;
    QPushButton* cmdNieuw = nullptr;
    QPushButton* cmdOpen = nullptr;
    QPushButton* cmdVerwijder = nullptr;
    QPushButton* cmdSluiten = nullptr;
    QPushButton* cmdDesaktiveer = nullptr;
    QCheckBox* chkAktieve = nullptr;
    QCheckBox* chkNietAktieve = nullptr;
  };
  using SetAktief = bool (*)(qint32 id, qint32 aktief, const QString& databasePath, const QString& table);

  // The words for one and for several records, as texts use them.
  OverviewForm(QWidget* owner, const QString& one, const QString& many, Screen detailEditor);

  // Once, right after setupUi.
  template <class Ui>
  void Wire(const Ui& ui) {
    WireControls(ControlsOf(ui));
  }

  // Sound files dropped on the window become new records, each in its editor.
  void AcceptAudio();

  virtual QString TableOf(const Catalogue& catalogue) const = 0;
  // The part of the statement that stands for both check boxes checked, with its closing blank.
  virtual QString BothFilter(const QString& table) const = 0;

  virtual void InitForm();
  virtual void InitCommands();
  virtual void cmdVerwijder_Click() = 0;
  // What cmdDesaktiveer writes with; null where a member has no such button.
  virtual SetAktief Deactivator() const { return nullptr; }

  // The list was filled anew.
  virtual void Refilled() {}
  virtual QString CountText() const { return CountTextOf(View()); }
  virtual QString EmptyText() const { return EmptyTextOf(View()); }

  void FillLstOverzicht();
  // What follows every visit to another screen, and F5.
  void Refill();
  void ShowCount();

  controls::ListBox& List() const { return *controls_.lstOverzicht; }
  const Controls& Shared() const { return controls_; }
  OverviewView View() const;
  // The selected line's ID; an error when none is selected.
  qint32 SelectedID() const;

  // What cmdVerwijder does where a cleanup dialog removes the record; without a trap of its own.
  void OpenCleanup(Screen cleanup);

 private:
  // By the names that they have in every list.
  template <class Ui>
  static Controls ControlsOf(const Ui& ui) {
    Controls controls{ui.lstOverzicht, ui.txtZoek,      ui.lblAantal, ui.cmdNieuw,
                      ui.cmdOpen,      ui.cmdVerwijder, ui.cmdSluiten};
    if constexpr (requires { ui.cmdDesaktiveer; }) {
      controls.cmdDesaktiveer = ui.cmdDesaktiveer;
      controls.chkAktieve = ui.chkAktieve;
      controls.chkNietAktieve = ui.chkNietAktieve;
    }
    return controls;
  }

  void WireControls(const Controls& controls);
  QString Filter(const QString& table) const;
  void ShowDetail();
  void SetUpIcons();

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

  QString one_;
  QString many_;
  Screen detailEditor_;
  Controls controls_;
  bool read_ = false;  // the list could be read at least once
};
