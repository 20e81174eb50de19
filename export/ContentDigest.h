// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QCryptographicHash>

#include <future>

// The BLAKE2b-256 of a content that comes in blocks. It is as much work as all else about an export, so each block is
// worked on by a thread of its own while the next comes into being.
class ContentDigest {
 public:
  static QByteArray Of(const QByteArray& content);

  void Add(const QByteArray& block);
  // Of all blocks, in hexadecimal.
  QByteArray Result();

 private:
  static constexpr QCryptographicHash::Algorithm kAlgorithm = QCryptographicHash::Blake2b_256;

  QCryptographicHash hash_{kAlgorithm};
  std::future<void> work_;  // on the block before; waited for before the hash goes
};
