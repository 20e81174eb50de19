// SPDX-License-Identifier: MIT
#pragma once

#include "export/playout/Block.h"

// The block that one screen hands to the listening window which it opens: as it is on the screen, saved or not.
// User-interface thread only.
void HandOverBlock(Block block);
// An empty block when none was handed over.
Block TakeBlockToHear();
