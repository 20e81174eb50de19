// SPDX-License-Identifier: MIT
#include "app/frmMain.h"

#include "app/DailyBackup.h"
#include "app/FirstStart.h"
#include "app/ManualOpener.h"
#include "app/StationStatus.h"
#include "app/StatusPanel.h"
#include "app/Version.h"
#include "app/frmNieuweZender.h"
#include "app/frmReservekopieen.h"
#include "app/frmVersie.h"
#include "app/ui_frmMain.h"
#include "catalogue/Screens.h"
#include "catalogue/frmOntbreekt.h"
#include "catalogue/frmWeek.h"
#include "data/DatabasePaths.h"
#include "data/Globals.h"
#include "data/LogQueue.h"
#include "data/Lookups.h"
#include "data/Settings.h"
#include "export/InterruptedExport.h"
#include "export/frmExportsVerwerken.h"
#include "export/frmRadioDetail.h"
#include "export/reports/frmOverzichten.h"
#include "platform/desktop/Icons.h"
#include "platform/desktop/ScaledFont.h"
#include "platform/runtime/Clock.h"
#include "platform/runtime/Counted.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/Trapped.h"

#include <QDesktopServices>
#include <QLocale>
#include <QTimer>
#include <QToolButton>
#include <QUrl>

#include <optional>
#include <utility>

using namespace Qt::StringLiterals;
using desktop::IconTint;
using runtime::Trapped;

namespace {

constexpr int kSecond = 1000;  // ms

// "dinsdag 11 maart 2025, week 11"
QString DateLine(QDate date) {
  const QLocale dutch(QLocale::Dutch);
  return dutch.toString(date, u"dddd d MMMM yyyy"_s) + u", week "_s + QString::number(date.weekNumber());
}

QString NotExportedText(const std::optional<int>& count, const UnreadableReason& reason) {
  if (!count) return u"wijzigingen nog niet geteld: %1"_s.arg(reason.brief);
  return runtime::Counted(*count, u"wijziging"_s, u"wijzigingen"_s) + u" nog niet geëxporteerd"_s;
}

}  // namespace

frmMain::frmMain()
    : ui_(std::make_unique<Ui::frmMain>()),
      backup_(std::make_unique<DailyBackup>()),
      manual_(std::make_unique<ManualOpener>()),
      tmrKlok_(new QTimer(this)),
      pnlRadio_(new StatusPanel(this)),
      pnlModus_(new StatusPanel(this)),
      pnlLog_(new StatusPanel(this)),
      pnlKopie_(new StatusPanel(this)) {
  ui_->setupUi(this);
  ConnectEvents();
  InitForm();
  InitStatusBar();
  constexpr QSize kOpeningSize(960, 560);
  resize(kOpeningSize);
}

frmMain::~frmMain() = default;

void frmMain::ConnectEvents() {
  for (QAction* action : ui_->tlbMain->actions()) {
    connect(action, &QAction::triggered, this,
            [this, action] { tlbMain_ButtonClick(action->property("key").toString()); });
  }
  connect(ui_->actAndereZender, &QAction::triggered, this, &frmMain::mnuAndereZender_Click);
  connect(ui_->actNieuweZender, &QAction::triggered, this, &frmMain::mnuNieuweZender_Click);
  connect(ui_->actItemPingles, &QAction::triggered, this, &frmMain::mnuItemPingles_Click);
  connect(ui_->actOverzichten, &QAction::triggered, this, &frmMain::mnuOverzichten_Click);
  connect(ui_->actWeek, &QAction::triggered, this, &frmMain::mnuWeek_Click);
  connect(ui_->cmdWeek, &QPushButton::clicked, this, &frmMain::mnuWeek_Click);
  connect(ui_->actOntbreekt, &QAction::triggered, this, &frmMain::mnuOntbreekt_Click);
  connect(ui_->actOfflineLog, &QAction::triggered, this, &frmMain::mnuOfflineLog_Click);
  connect(ui_->actExportsVerwerken, &QAction::triggered, this, &frmMain::mnuExportsVerwerken_Click);
  connect(ui_->actReservekopieen, &QAction::triggered, this, &frmMain::mnuReservekopieen_Click);
  connect(ui_->actHandleiding, &QAction::triggered, this, &frmMain::mnuHandleiding_Click);
  connect(ui_->actVersie, &QAction::triggered, this, &frmMain::mnuVersie_Click);
  connect(ui_->fraVandaag, &TodayPanel::spotsAsked, this, &frmMain::fraVandaag_Tonen);
  connect(ui_->fraVandaag, &TodayPanel::catalogueRead, this, &frmMain::ShowMode);
  connect(ui_->fraVandaag, &TodayPanel::catalogueRead, this, &frmMain::BackUpServer);
  connect(ui_->fraVandaag, &TodayPanel::blocksAsked, ui_->actItems, &QAction::trigger);
  connect(ui_->fraVandaag, &TodayPanel::exportAsked, ui_->actExporteren, &QAction::trigger);
  connect(ui_->fraVandaag, &TodayPanel::waitingAsked, ui_->actOfflineLog, &QAction::trigger);
  connect(ui_->fraExport, &ExportResultPanel::folderAsked, this, &frmMain::fraExport_MapOpenen);
  connect(tmrKlok_, &QTimer::timeout, this, &frmMain::ShowTime);
}

void frmMain::InitForm() {
  const struct {
    QAction* action;
    QString icon;
  } icons[] = {{ui_->actItems, u"items"_s},
               {ui_->actItemSpots, u"item-spots"_s},
               {ui_->actItemPingles, u"item-pingles"_s},
               {ui_->actWeek, u"kalender"_s},
               {ui_->actOntbreekt, u"bestand"_s},
               {ui_->actOverzichten, u"afdrukken"_s},
               {ui_->actExporteren, u"exporteren"_s},
               {ui_->actAndereZender, u"radio"_s},
               {ui_->actNieuweZender, u"nieuw"_s},
               {ui_->actReservekopieen, u"schijf"_s},
               {ui_->actInstellingen, u"instellingen"_s},
               {ui_->actAfsluiten, u"afsluiten"_s},
               {ui_->actHandleiding, u"handleiding"_s},
               {ui_->actVersie, u"info"_s}};
  for (const auto& entry : icons)
    entry.action->setIcon(desktop::Icon(entry.icon));
  ui_->cmdWeek->setIcon(desktop::Icon(u"kalender"_s));
  auto* gap = new QWidget(this);
  gap->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
  ui_->tlbMain->insertWidget(ui_->actAfsluiten, gap);
  // Tool bar buttons accept no focus by default.
  for (auto* button : ui_->tlbMain->findChildren<QToolButton*>()) {
    if (button->objectName().isEmpty()) button->setFocusPolicy(Qt::TabFocus);
  }
  ui_->lblRadio->setFont(desktop::ScaledFont(font(), 2, QFont::DemiBold));
  ui_->lblDatum->setFont(desktop::ScaledFont(font(), 1.1, QFont::Normal));
  setFocus();  // instead of the first button
  tmrKlok_->setTimerType(Qt::PreciseTimer);
}

void frmMain::InitStatusBar() {
  pnlRadio_->setObjectName(u"pnlRadio"_s);
  pnlModus_->setObjectName(u"pnlModus"_s);
  pnlLog_->setObjectName(u"pnlLog"_s);
  pnlKopie_->setObjectName(u"pnlKopie"_s);
  for (StatusPanel* panel : {pnlRadio_, pnlModus_, pnlLog_, pnlKopie_})
    ui_->staBalk->addWidget(panel);
  pnlKopie_->Show(u"let-op"_s, u"De lokale kopie is leeg"_s, IconTint::Warning);
  auto* version = new QLabel(VersionText(), this);
  version->setObjectName(u"lblVersie"_s);
  version->setProperty("hint", true);
  version->setContentsMargins(0, 0, 12, 0);
  ui_->staBalk->addPermanentWidget(version);
}

void frmMain::Form_Load() {
  Trapped(__func__, [&] {
    Q_EMIT loading(u"Instellingen lezen ..."_s);
    GetSettings();
    FormDatabasePaths();
    Q_EMIT loading(u"Zender kiezen ..."_s);
    ChooseStation();
    OpenStation();
  });
}

// False without a choice: the number and the paths are unchanged.
bool frmMain::ChooseStation() {
  frmRadioDetail stations(this);
  stations.ShowModal();
  FormDatabasePaths();
  return stations.HasChosen();
}

void frmMain::OpenStation() {
  Q_EMIT loading(u"Zender openen ..."_s);
  ResumeExport();
  SetRadioNaam();
  setWindowTitle(u"Spotrooster "_s + global.stationName);
  SetOnlineYn();
  ShowStation();
}

void frmMain::ChangeStation() {
  const qint16 present = global.stationNumber;
  global.stationNumber = 0;  // the list of stations is in the database without a number
  FormDatabasePaths();
  if (ChooseStation()) {
    // A database that cannot be read leaves name and mode as they are: never those of the previous station.
    global.stationName.clear();
    global.online = false;
    OpenStation();
  } else {
    global.stationNumber = present;
    FormDatabasePaths();
  }
}

// Before anything is logged. The program starts even after a failure: the next export tries again.
void frmMain::ResumeExport() {
  Trapped(__func__, [&] { FinishInterruptedExport(global.localDatabasePath); });
  try {
    QueueUnloggedStatements();
  } catch (const runtime::Error&) {
    // A local database that cannot be read is reported by what needs it first.
  }
  Trapped(__func__, [&] {
    LogQueuedStatements();
    AddQueuedAudioLines();
  });
}

void frmMain::ShowStation() {
  ui_->fraExport->hide();
  ui_->lblRadio->setText(global.stationName);
  ui_->lblRadio->setToolTip(global.stationName);
  ui_->actItems->setEnabled(HasScreen(Screen::Items));
  ui_->actItemSpots->setEnabled(HasScreen(Screen::ItemSpots));
  ui_->actItemPingles->setEnabled(HasScreen(Screen::ItemPingles));
  ui_->actExporteren->setEnabled(HasScreen(Screen::PlanningExporteren));
  ui_->actOfflineLog->setEnabled(HasScreen(Screen::OfflineLog));
  ui_->actInstellingen->setEnabled(HasScreen(Screen::Defaults));
  ui_->fraVandaag->EnableButtons(HasScreen(Screen::ItemSpots), HasScreen(Screen::Items),
                                 HasScreen(Screen::PlanningExporteren), HasScreen(Screen::OfflineLog));
  ShowTime();
  RefreshStatus();
}

void frmMain::ShowTime() {
  const QDateTime now = runtime::Now();
  ui_->lblDatum->setText(DateLine(now.date()));
  ui_->ledUur->SetValue(now.time().hour());
  ui_->ledMinuut->SetValue(now.time().minute());
  ui_->ledSeconde->SetValue(now.time().second());
  tmrKlok_->start(kSecond - now.time().msec());
}

void frmMain::RefreshStatus() {
  const QString number = global.stationNumber == 0 ? QString() : u" (zender %1)"_s.arg(global.stationNumber);
  pnlRadio_->Show(u"radio"_s, (global.stationName.isEmpty() ? u"Geen zender"_s : global.stationName) + number);
  ShowMode({});
  const StationStatus status = ReadStationStatus();
  pnlLog_->Show(u"log"_s, NotExportedText(status.notExported, status.unreadable),
                status.notExported ? IconTint::Text : IconTint::Warning, status.unreadable.full);
  pnlKopie_->setVisible(status.copyEmpty);
  ui_->fraVandaag->ShowNotExported(status.notExported, status.unreadable);
  if (const auto exported = std::exchange(global.exported, std::nullopt)) ShowExport(*exported);
  ui_->fraVandaag->Count();
}

// Below the fold of a page that scrolls nobody would see it: the window grows as far as the screen allows.
void frmMain::ShowExport(const ExportedLog& exported) {
  ui_->fraExport->Show(exported);
  const int missing = ui_->pagMain->minimumSizeHint().height() - ui_->scrMain->viewport()->height();
  const int below = screen()->availableGeometry().bottom() - frameGeometry().bottom();
  if (!isMaximized() && missing > 0 && below > 0) resize(width(), height() + std::min(missing, below));
  QTimer::singleShot(0, this, [this] { ui_->scrMain->ensureWidgetVisible(ui_->fraExport); });
}

void frmMain::ShowMode(const UnreadableReason& reason) {
  const QString mode = global.online ? u"Online"_s : u"Offline"_s;
  const bool isReadable = reason.brief.isEmpty();
  pnlModus_->Show(global.online ? u"online"_s : u"offline"_s, isReadable ? mode : mode + u": "_s + reason.brief,
                  global.online && isReadable ? IconTint::Text : IconTint::Warning, reason.full);
}

// Only after the catalogue was read, so that opening the station never waits for it.
void frmMain::BackUpServer(const UnreadableReason& reason) {
  if (reason.brief.isEmpty()) backup_->Start();
}

void frmMain::Open(Screen screen) {
  ShowScreen(screen, this);
  RefreshStatus();
}

void frmMain::tlbMain_ButtonClick(const QString& key) {
  Trapped(__func__, [&] {
    if (key == u"Item-spots"_s) Open(Screen::ItemSpots);
    if (key == u"Items"_s) Open(Screen::Items);
    if (key == u"Exporteren"_s) Open(Screen::PlanningExporteren);
    if (key == u"Instellingen"_s) Open(Screen::Defaults);
    if (key == u"Afsluiten"_s) close();
  });
}

void frmMain::fraVandaag_Tonen(SpotView view) {
  Trapped(__func__, [&] {
    ShowItemSpotsOnly(view, this);
    RefreshStatus();
  });
}

void frmMain::mnuAndereZender_Click() {
  Trapped(__func__, [&] { ChangeStation(); });
}

void frmMain::mnuNieuweZender_Click() {
  Trapped(__func__, [&] {
    if (IsFirstStart()) {
      if (OfferFirstStation(this)) Form_Load();
      return;
    }
    frmNieuweZender form(this);
    form.ShowModal();
    if (form.Made()) ChangeStation();
  });
}

void frmMain::mnuItemPingles_Click() {
  Trapped(__func__, [&] { Open(Screen::ItemPingles); });
}

void frmMain::mnuOverzichten_Click() {
  Trapped(__func__, [&] { frmOverzichten(this).ShowModal(); });
}

void frmMain::mnuWeek_Click() {
  Trapped(__func__, [&] {
    frmWeek(this).ShowModal();
    RefreshStatus();
  });
}

void frmMain::mnuOntbreekt_Click() {
  Trapped(__func__, [&] {
    frmOntbreekt(this).ShowModal();
    RefreshStatus();
  });
}

void frmMain::mnuOfflineLog_Click() {
  Trapped(__func__, [&] { Open(Screen::OfflineLog); });
}

void frmMain::fraExport_MapOpenen(const QString& hostFolder) {
  Trapped(__func__, [&] {
    if (!QDesktopServices::openUrl(QUrl::fromLocalFile(hostFolder)))
      throw runtime::Error(u"De map '%1' kan hier niet geopend worden."_s.arg(hostFolder));
  });
}

void frmMain::mnuExportsVerwerken_Click() {
  Trapped(__func__, [&] {
    frmExportsVerwerken(this).ShowModal();
    RefreshStatus();
  });
}

void frmMain::mnuReservekopieen_Click() {
  Trapped(__func__, [&] { frmReservekopieen(this, backup_->Problem()).ShowModal(); });
}

void frmMain::mnuHandleiding_Click() {
  Trapped(__func__, [&] { manual_->Open(); });
}

void frmMain::mnuVersie_Click() {
  Trapped(__func__, [&] { frmVersie(this).ShowModal(); });
}
