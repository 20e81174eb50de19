// SPDX-License-Identifier: MIT
#pragma once

// Registers the planning export and the settings dialog, so that other folders can show them.
void RegisterExportScreens();
