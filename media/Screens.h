// SPDX-License-Identifier: MIT
#pragma once

// Makes both editors reachable for the other screens. Called once at start.
void RegisterMediaScreens();
