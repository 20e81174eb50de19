// SPDX-License-Identifier: MIT
#include "export/StationMemory.h"

#include "data/Globals.h"
#include "platform/runtime/HostPath.h"

#include <QDir>
#include <QSettings>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace {

// A slash in a key would begin a group.
QString KeyOfProgramFolder() {
  const QString folder = QDir::cleanPath(runtime::HostPath(global.programFolder));
  return QString::fromLatin1(QUrl::toPercentEncoding(folder));
}

}  // namespace

StationMemory::StationMemory(const QString& file)
    : stations_(std::make_unique<QSettings>(file, QSettings::IniFormat)), previous_(active_) {
  active_ = this;
}

StationMemory::~StationMemory() {
  active_ = previous_;
}

std::optional<qint16> StationMemory::Last() {
  if (active_ == nullptr) return {};
  bool isNumber = false;
  const short number = active_->stations_->value(KeyOfProgramFolder()).toString().toShort(&isNumber);
  return isNumber ? std::optional<qint16>(number) : std::nullopt;
}

void StationMemory::Chosen(qint16 number) {
  if (active_ != nullptr) active_->stations_->setValue(KeyOfProgramFolder(), int(number));
}
