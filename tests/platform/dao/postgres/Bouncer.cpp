// SPDX-License-Identifier: MIT
#include "tests/platform/dao/postgres/Bouncer.h"

#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QThread>

#include <libpq-fe.h>
#include <sys/prctl.h>
#include <unistd.h>

#include <csignal>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace testing_support {
namespace {
const QString kProgram = u"/usr/sbin/pgbouncer"_s;
}

bool Bouncer::IsInstalled() {
  return QFileInfo::exists(kProgram);
}

Bouncer::Bouncer(const Cluster& cluster, int serverSessions) {
  QFile settings(folder_.filePath(u"pgbouncer.ini"_s));
  if (!settings.open(QIODevice::WriteOnly)) throw std::runtime_error("pgbouncer: no settings");
  settings.write((u"[databases]\n* = host="_s + cluster.SocketFolder() + u" user=planner"_s +
                  u"\n[pgbouncer]\nlisten_addr =\nlisten_port = 5432\nunix_socket_dir = "_s + folder_.path() +
                  u"\nauth_type = any\npool_mode = transaction\nmax_client_conn = 200\ndefault_pool_size = %1\n"_s.arg(
                      serverSessions))
                     .toUtf8());
  settings.close();
  QFile::setPermissions(settings.fileName(), QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther);
  Cluster::GiveTo(folder_.path());
  process_ = std::make_unique<QProcess>();
  process_->setStandardErrorFile(QProcess::nullDevice());
  process_->setStandardOutputFile(QProcess::nullDevice());
  process_->setWorkingDirectory(u"/"_s);
  process_->setChildProcessModifier([] {
    Cluster::GiveUpRoot();
    prctl(PR_SET_PDEATHSIG, SIGKILL);
  });
  process_->start(kProgram, {settings.fileName()});
  const QByteArray where = (u"postgresql://planner@/postgres?host="_s + folder_.path()).toUtf8();
  constexpr int kLooks = 1000;
  for (int look = 0; look < kLooks; ++look) {
    if (PQping(where.constData()) == PQPING_OK) return;
    QThread::msleep(5);
  }
  throw std::runtime_error("pgbouncer does not start");
}

Bouncer::~Bouncer() {
  process_->kill();
  process_->waitForFinished();
}

}  // namespace testing_support
