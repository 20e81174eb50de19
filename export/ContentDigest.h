// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QCryptographicHash>

#include <future>

// The BLAKE2b-256 of content that arrives in blocks. Hashing takes as long as the rest of an export, so each block is
// hashed in another thread while the caller makes the next.
class ContentDigest {
 public:
  static QByteArray Of(const QByteArray& content);

  void Add(const QByteArray& block);
  // The digest of all blocks, in hexadecimal.
  QByteArray Result();

 private:
  static constexpr QCryptographicHash::Algorithm kAlgorithm = QCryptographicHash::Blake2b_256;

  QCryptographicHash hash_{kAlgorithm};
  std::future<void> work_;  // on the previous block; finished before hash_ is destroyed
};
