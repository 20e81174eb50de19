// SPDX-License-Identifier: MIT
#pragma once

// Registers both editors and the listening window. Called once at start-up.
void RegisterMediaScreens();
