// SPDX-License-Identifier: MIT
#include "tests/platform/files/support/FaultyFiles.h"

#include <algorithm>
#include <cerrno>

namespace files::test {

FaultyFiles::FaultyFiles(FileSystem& real)
    : HookedFileSystem(real, [this](FileCall& call, const Make& make) { return Around(call, make); }), real_(real) {}

void FaultyFiles::FailAt(int call, Fault fault) {
  calls_ = 0;
  failing_ = call;
  fault_ = fault;
  failed_ = false;
}

std::int64_t FaultyFiles::Around(FileCall& call, const Make& make) {
  if (const int error = Next(call)) return error;
  if (changes_ != nullptr) Note(call);
  return make();
}

int FaultyFiles::Next(FileCall& call) {
  const int number = calls_++;
  if (fault_ == Fault::None || number < failing_ || (number > failing_ && fault_ != Fault::Dead)) return 0;
  failed_ = true;
  switch (fault_) {
    case Fault::Error:
    case Fault::Dead:
      return -EIO;
    case Fault::DiskFull:
      return -ENOSPC;
    case Fault::Interrupted:
      return -EINTR;
    case Fault::ShortCount:
      call.most = (call.size + 1) / 2;
      return 0;
    case Fault::None:
      break;
  }
  return 0;
}

void FaultyFiles::Note(const FileCall& call) {
  switch (call.kind) {
    case FileCall::Write: {
      const ByteView bytes = call.bytes.first(std::min(call.bytes.size(), call.most));
      return changes_->push_back({Change::Write, call.path, call.offset, Bytes(bytes.begin(), bytes.end()), {}});
    }
    case FileCall::Truncate:
      return changes_->push_back({Change::Truncate, call.path, call.offset, {}, {}});
    case FileCall::Sync:
      return changes_->push_back({Change::Sync, call.path, 0, {}, {}});
    case FileCall::Open: {
      FileStatus status;
      const bool creates = call.request->mode != OpenMode::Read && call.request->mode != OpenMode::Write;
      if (creates && real_.RawStatus(call.path, &status) != 0)
        changes_->push_back({Change::Create, call.path, 0, {}, {}});
      return;
    }
    case FileCall::Rename:
    case FileCall::RenameNew:
      return changes_->push_back({Change::Rename, call.path, 0, {}, *call.other});
    case FileCall::Remove:
      return changes_->push_back({Change::Remove, call.path, 0, {}, {}});
    case FileCall::SyncFolder:
      return changes_->push_back({Change::SyncFolder, call.path, 0, {}, {}});
    default:
      return;
  }
}

}  // namespace files::test
