// SPDX-License-Identifier: MIT
#pragma once

#include "catalogue/SpotView.h"
#include "data/UnreadableReason.h"
#include "data/forms/Screens.h"

#include <QMainWindow>

#include <memory>

struct ExportedLog;

class DailyBackup;
class ManualOpener;
class QTimer;
class StatusPanel;
namespace Ui {
class frmMain;
}

// The main window: toolbar and menus that open the screens, the station's name, date and time, and the status bar.
class frmMain : public QMainWindow {
  Q_OBJECT

 public:
  frmMain();
  ~frmMain() override;

  // Reads the settings, lets the user choose the station, sets the database paths and reads the station's name and
  // mode. Call once, before the window is shown; the window itself calls it again for the first station of a folder.
  void Form_Load();

 Q_SIGNALS:
  // The next step of the load, as text for the splash screen.
  void loading(const QString& step);

 private:
  void ConnectEvents();
  void InitForm();
  void InitStatusBar();
  bool ChooseStation();
  void OpenStation();
  void ChangeStation();
  void ResumeExport();
  void ShowStation();
  void ShowTime();
  void RefreshStatus();
  void ShowExport(const ExportedLog& exported);
  void ShowMode(const UnreadableReason& reason);
  void BackUpServer(const UnreadableReason& reason);
  // Shows a screen and waits until it is closed.
  void Open(Screen screen);

  void tlbMain_ButtonClick(const QString& key);
  void fraVandaag_Tonen(SpotView view);
  void mnuAndereZender_Click();
  void mnuNieuweZender_Click();
  void mnuItemPingles_Click();
  void mnuOverzichten_Click();
  void mnuWeek_Click();
  void mnuOntbreekt_Click();
  void mnuOfflineLog_Click();
  void fraExport_MapOpenen(const QString& hostFolder);
  void mnuExportsVerwerken_Click();
  void mnuReservekopieen_Click();
  void mnuHandleiding_Click();
  void mnuVersie_Click();

  std::unique_ptr<Ui::frmMain> ui_;
  std::unique_ptr<DailyBackup> backup_;
  std::unique_ptr<ManualOpener> manual_;
  QTimer* tmrKlok_;
  StatusPanel* pnlRadio_;
  StatusPanel* pnlModus_;
  StatusPanel* pnlLog_;
  StatusPanel* pnlKopie_;
};
