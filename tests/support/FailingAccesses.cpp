// SPDX-License-Identifier: MIT
#include "tests/support/FailingAccesses.h"

#include "data/Globals.h"
#include "platform/dao/Database.h"
#include "platform/dao/postgres/Connection.h"
#include "platform/runtime/Probe.h"
#include "tests/support/Cluster.h"
#include "tests/support/Proxy.h"

#include <atomic>
#include <cerrno>
#include <utility>

using namespace Qt::StringLiterals;

namespace testing_support {
namespace {
constexpr std::size_t kLongestEnd = 16;  // bytes: only the end of a transaction that changed nothing
}  // namespace

class FailingAccesses::OnFile {
 public:
  OnFile(int first, int last) : first_(first), last_(last) {}

 private:
  int Look(const QString& path) {
    if (!path.endsWith(u"OvalistoServer.mdb"_s)) return 0;
    const int access = ++accesses_;
    return access >= first_ && access <= last_ ? EIO : 0;
  }

  const int first_;
  const int last_;
  std::atomic<int> accesses_ = 0;
  runtime::ProbeLookScope look_{[this](const QString& path) { return Look(path); }};
};

class FailingAccesses::OnConnection {
 public:
  OnConnection(int first, int last) {
    const QString schema = before_.mid(before_.lastIndexOf(u'\\'));
    global.serverDatabasePath = u"postgresql://planner@/postgres?host="_s + proxy_.SocketFolder() + schema;
    // The connection is made and the definitions are read before the first access that counts.
    dao::OpenDatabase(global.serverDatabasePath).OpenRecordset(u"SELECT ID FROM tblItems"_s);
    proxy_.CutLinesBefore([this, first, last](std::string_view said) {
      if (said.size() <= kLongestEnd) return false;
      const int access = ++accesses_;
      return access >= first && access <= last;
    });
  }
  ~OnConnection() {
    dao::CloseKeptConnections();
    global.serverDatabasePath = before_;
  }
  OnConnection(const OnConnection&) = delete;
  OnConnection& operator=(const OnConnection&) = delete;

 private:
  const QString before_ = global.serverDatabasePath;
  std::atomic<int> accesses_ = 0;
  Proxy proxy_{SharedCluster().SocketFolder()};
};

FailingAccesses::FailingAccesses(int first, int last) {
  if (OnServer()) {
    onConnection_ = std::make_unique<OnConnection>(first, last);
  } else {
    onFile_ = std::make_unique<OnFile>(first, last);
  }
}

FailingAccesses::~FailingAccesses() = default;

}  // namespace testing_support
