// SPDX-License-Identifier: MIT
#include "export/playout/BlockToHear.h"

#include <utility>

namespace {

Block& Waiting() {
  static Block block;
  return block;
}

}  // namespace

void SetBlockToHear(Block block) {
  Waiting() = std::move(block);
}

Block TakeBlockToHear() {
  return std::exchange(Waiting(), Block());
}
