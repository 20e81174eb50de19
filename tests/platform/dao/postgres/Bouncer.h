// SPDX-License-Identifier: MIT
#pragma once

#include "tests/support/Cluster.h"

#include <QTemporaryDir>

#include <memory>

class QProcess;

namespace testing_support {

// A pgbouncer in transaction mode in front of a cluster: each transaction may get another server session.
class Bouncer {
 public:
  static bool IsInstalled();
  explicit Bouncer(const Cluster& cluster, int serverSessions = 3);
  ~Bouncer();
  Bouncer(const Bouncer&) = delete;
  Bouncer& operator=(const Bouncer&) = delete;

  QString SocketFolder() const { return folder_.path(); }

 private:
  QTemporaryDir folder_;
  std::unique_ptr<QProcess> process_;
};

}  // namespace testing_support
