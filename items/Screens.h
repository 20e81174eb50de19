#pragma once

// Registers the item editor.
void RegisterItemScreens();
