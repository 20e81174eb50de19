// SPDX-License-Identifier: MIT
#include "data/Globals.h"

Globals global;
