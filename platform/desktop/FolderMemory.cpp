#include "platform/desktop/FolderMemory.h"

#include "platform/desktop/Background.h"
#include "platform/runtime/Probe.h"

#include <QFileInfo>
#include <QSettings>

#include <chrono>

namespace desktop {
namespace {

using namespace std::chrono_literals;

constexpr auto kPatience = 1s;

FolderMemory* youngest = nullptr;

bool IsThere(const QString& folder) {
  return InBackground([folder] { return runtime::Probe(folder, kPatience); }) == runtime::Presence::There;
}

}  // namespace

FolderMemory::FolderMemory(const QString& file)
    : folders_(std::make_unique<QSettings>(file, QSettings::IniFormat)), older_(youngest) {
  youngest = this;
}

FolderMemory::~FolderMemory() {
  youngest = older_;
}

QString FolderMemory::FolderOf(const QString& kind) {
  if (youngest == nullptr || kind.isEmpty()) return {};
  const QString folder = youngest->folders_->value(kind).toString();
  return !folder.isEmpty() && IsThere(folder) ? folder : QString();
}

void FolderMemory::Chosen(const QString& kind, const QString& file) {
  if (youngest != nullptr && !kind.isEmpty()) youngest->folders_->setValue(kind, QFileInfo(file).path());
}

}  // namespace desktop
