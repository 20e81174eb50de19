// SPDX-License-Identifier: MIT
#include "app/frmReservekopieen.h"

#include "app/ui_frmReservekopieen.h"
#include "data/Backup.h"
#include "data/Globals.h"
#include "data/SettingsFile.h"
#include "platform/dao/postgres/ServerAddress.h"
#include "platform/runtime/Clock.h"
#include "platform/runtime/Counted.h"
#include "platform/runtime/Trapped.h"

#include <QLocale>
#include <QScreen>

using namespace Qt::StringLiterals;
using runtime::Counted;
using runtime::Trapped;

namespace {

constexpr QSize kBackupsSize(680, 480);

// "vandaag", "gisteren", "3 dagen oud"
QString AgeOf(const BackupFile& copy, QDate today) {
  const qint64 days = copy.moment.date().daysTo(today);
  if (days < 0) return u"datum in de toekomst"_s;
  if (days == 0) return u"vandaag"_s;
  return days == 1 ? u"gisteren"_s : Counted(days, u"dag oud"_s, u"dagen oud"_s);
}

QString MomentOf(const BackupFile& copy) {
  return QLocale(QLocale::Dutch).toString(copy.moment, u"dddd d MMMM yyyy, HH:mm"_s);
}

QString SizeOf(const BackupFile& copy) {
  return QLocale(QLocale::Dutch).formattedDataSize(copy.size, 1, QLocale::DataSizeTraditionalFormat);
}

QString Summary(const QString& databasePath, const QList<BackupFile>& copies) {
  if (dao::IsServerPath(databasePath)) {
    return u"staat op een databaseserver; de beheerder maakt daar zelf kopieën van (pg_dump)."_s;
  }
  if (copies.isEmpty()) return u"nog geen reservekopie."_s;
  return u"%1, de laatste van %2 (%3)."_s.arg(Counted(copies.size(), u"kopie"_s, u"kopieën"_s),
                                              MomentOf(copies.first()), AgeOf(copies.first(), runtime::Now().date()));
}

}  // namespace

frmReservekopieen::frmReservekopieen(QWidget* owner, QString problem)
    : Form(owner), ui_(std::make_unique<Ui::frmReservekopieen>()), problem_(std::move(problem)), task_(this) {
  ui_->setupUi(this);
  connect(ui_->cmdSluiten, &QPushButton::clicked, this, [this] { Unload(); });
  resize(kBackupsSize.boundedTo(screen()->availableSize()));
}

frmReservekopieen::~frmReservekopieen() = default;

void frmReservekopieen::Form_Load() {
  Trapped(__func__, [&] {
    ui_->lstKopieen->SetEmptyText(u"De reservekopieën worden gezocht ..."_s);
    task_.Send([this, server = global.serverDatabasePath, local = global.localDatabasePath,
                settings = SettingsFile().Path()](const LatestTask::Token& token) {
      token.Post([this, copies = Copies{BackupsOf(server), BackupsOf(local), BackupsEnabled(settings)}] {
        ShowCopies(copies);
      });
    });
  });
}

void frmReservekopieen::ShowCopies(const Copies& copies) {
  read_ = true;
  ui_->lblGedeeld->setText(u"Gedeelde database: "_s + Summary(global.serverDatabasePath, copies.server));
  ui_->lblLokaal->setText(u"Lokale database: "_s + Summary(global.localDatabasePath, copies.local));
  QString problem;
  if (!problem_.isEmpty()) problem = u"De kopie van vandaag is niet gelukt: "_s + problem_;
  if (!copies.enabled) problem = u"Reservekopieën staan uit: Enabled=0 onder [Backup] in ovalis.ini."_s;
  ui_->lblProbleem->setText(problem);
  ui_->lblProbleem->setVisible(!problem.isEmpty());
  ui_->lstKopieen->SetEmptyText(u"Er zijn nog geen reservekopieën."_s);
  AddLines(u"Gedeelde database"_s, global.serverDatabasePath, copies.server);
  AddLines(u"Lokale database"_s, global.localDatabasePath, copies.local);
}

void frmReservekopieen::AddLines(const QString& database, const QString& databasePath,
                                 const QList<BackupFile>& copies) {
  const QString folder = BackupFolderOf(databasePath);
  for (const BackupFile& copy : copies) {
    controls::LineDetails details;
    details.word = AgeOf(copy, runtime::Now().date());
    details.trailing = SizeOf(copy);
    details.toolTip = folder + u'\\' + copy.name;
    ui_->lstKopieen->SetDetails(ui_->lstKopieen->AddItem(database + u", "_s + MomentOf(copy)), details);
  }
}
