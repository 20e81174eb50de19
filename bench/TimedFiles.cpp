// SPDX-License-Identifier: MIT
#include "bench/TimedFiles.h"

#include <chrono>

namespace bench {

TimedFiles::Spent& TimedFiles::Spent::operator+=(const Spent& more) {
  calls += more.calls;
  syncs += more.syncs;
  writes += more.writes;
  bytesWritten += more.bytesWritten;
  waitedMilliseconds += more.waitedMilliseconds;
  return *this;
}

TimedFiles::TimedFiles()
    : HookedFileSystem(files::HostFileSystem(),
                       [this](const files::FileCall& call, const Make& make) { return Count(call, make); }) {}

std::int64_t TimedFiles::Count(const files::FileCall& call, const Make& make) {
  using files::FileCall;
  const bool syncs = call.kind == FileCall::Sync || call.kind == FileCall::SyncFolder;
  ++spent_.calls;
  spent_.syncs += syncs ? 1 : 0;
  if (call.kind == FileCall::Write) {
    ++spent_.writes;
    spent_.bytesWritten += static_cast<double>(call.bytes.size());
  }
  if (!syncs && call.kind != FileCall::Remove) return make();
  const auto begin = std::chrono::steady_clock::now();
  const std::int64_t result = make();
  const std::chrono::duration<double, std::milli> waited = std::chrono::steady_clock::now() - begin;
  spent_.waitedMilliseconds += waited.count();
  return result;
}

}  // namespace bench
