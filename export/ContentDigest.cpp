// SPDX-License-Identifier: MIT
#include "export/ContentDigest.h"

QByteArray ContentDigest::Of(const QByteArray& content) {
  return QCryptographicHash::hash(content, kAlgorithm).toHex();
}

void ContentDigest::Add(const QByteArray& block) {
  if (work_.valid()) work_.wait();
  work_ = std::async(std::launch::async, [this, block] { hash_.addData(block); });
}

QByteArray ContentDigest::Result() {
  if (work_.valid()) work_.wait();
  return hash_.result().toHex();
}
