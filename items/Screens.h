// SPDX-License-Identifier: MIT
#pragma once

// Registers the item editor.
void RegisterItemScreens();
