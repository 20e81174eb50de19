// SPDX-License-Identifier: MIT
// Preloaded into the server of a test: writes to its tables fail with ENOSPC while the file in SPOTROOSTER_FULL_DISK
// exists.
#include <dlfcn.h>
#include <sys/types.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <string>
#include <string_view>

namespace {

bool IsFull(int file) {
  const char* flag = std::getenv("SPOTROOSTER_FULL_DISK");
  if (flag == nullptr || ::access(flag, F_OK) != 0) return false;
  std::array<char, 4096> path{};
  const std::string link = "/proc/self/fd/" + std::to_string(file);
  const ssize_t length = ::readlink(link.c_str(), path.data(), path.size());
  return length > 0 &&
         std::string_view(path.data(), static_cast<std::size_t>(length)).find("/base/") != std::string_view::npos;
}

}  // namespace

extern "C" ssize_t pwrite64(int file, const void* bytes, size_t count, off64_t offset) {
  using Write = ssize_t (*)(int, const void*, size_t, off64_t);
  static const Write kReal = reinterpret_cast<Write>(::dlsym(RTLD_NEXT, "pwrite64"));
  if (!IsFull(file)) return kReal(file, bytes, count, offset);
  errno = ENOSPC;
  return -1;
}

extern "C" ssize_t pwrite(int file, const void* bytes, size_t count, off_t offset) {
  return pwrite64(file, bytes, count, offset);
}
