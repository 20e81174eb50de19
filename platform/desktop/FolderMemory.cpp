// SPDX-License-Identifier: MIT
#include "platform/desktop/FolderMemory.h"

#include "platform/desktop/Background.h"
#include "platform/runtime/Probe.h"

#include <QFileInfo>
#include <QSettings>

#include <chrono>

namespace desktop {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

constexpr auto kPatience = 1s;
const QString kSuffix = u" (soort)"_s;  // appended to the kind's name

bool IsThere(const QString& folder) {
  return InBackground([folder] { return runtime::Probe(folder, kPatience); }) == runtime::Presence::There;
}

}  // namespace

FolderMemory::FolderMemory(const QString& file)
    : folders_(std::make_unique<QSettings>(file, QSettings::IniFormat)), previous_(active_) {
  active_ = this;
}

FolderMemory::~FolderMemory() {
  active_ = previous_;
}

QString FolderMemory::FolderOf(const QString& kind) {
  if (active_ == nullptr || kind.isEmpty()) return {};
  const QString folder = active_->folders_->value(kind).toString();
  return !folder.isEmpty() && IsThere(folder) ? folder : QString();
}

QString FolderMemory::SuffixOf(const QString& kind) {
  return active_ == nullptr || kind.isEmpty() ? QString() : active_->folders_->value(kind + kSuffix).toString();
}

void FolderMemory::Chosen(const QString& kind, const QString& file) {
  if (active_ == nullptr || kind.isEmpty()) return;
  active_->folders_->setValue(kind, QFileInfo(file).path());
  active_->folders_->setValue(kind + kSuffix, QFileInfo(file).suffix());
}

}  // namespace desktop
