// SPDX-License-Identifier: MIT
#include "tests/support/FileFaults.h"

#include <string>
#include <utility>

namespace testing_support {
namespace {

bool IsOfDatabase(const std::filesystem::path& path) {
  const std::string name = path.filename().string();
  return name.ends_with(".mdb") || name.ends_with(".ldb") || name.ends_with("-journal");
}

}  // namespace

FileFaults::FileFaults(std::function<int(const files::FileCall& call)> hook)
    : files_(files::HostFileSystem(),
             [hook = std::move(hook)](const files::FileCall& call, const files::HookedFileSystem::Make& make) {
               const int failure = IsOfDatabase(call.path) ? 0 : hook(call);
               return failure != 0 ? -failure : make();
             }),
      scope_(files_) {}

}  // namespace testing_support
