// SPDX-License-Identifier: MIT
#include "platform/runtime/FileLock.h"

#include "platform/files/Error.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/FileCalls.h"
#include "platform/runtime/HostPath.h"

#include <optional>

namespace runtime {
namespace {

std::optional<QString> HostPathIfMapped(const QString& pathText) {
  try {
    return HostPath(pathText);
  } catch (const Error&) {
    return std::nullopt;
  }
}

}  // namespace

FileLock::FileLock(const QString& pathText) {
  const std::optional<QString> path = HostPathIfMapped(pathText);
  if (!path) return;
  try {
    lock_ = std::make_unique<files::FileLock>(NativePath(*path));
    state_ = lock_->What();
  } catch (const files::Error& error) {
    throw Error(QString::fromUtf8(error.what()));
  }
}

}  // namespace runtime
