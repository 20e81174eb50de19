// SPDX-License-Identifier: MIT
#pragma once

#include "export/playout/Block.h"

// The block that a screen passes to the listening window it opens, including unsaved changes. User-interface thread
// only.
void SetBlockToHear(Block block);
// Returns the block and clears it; an empty block when none was set.
Block TakeBlockToHear();
