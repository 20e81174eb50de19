// SPDX-License-Identifier: MIT
#pragma once

namespace windows {

class Album;

// Pictures of daily work: marked lines, menus, dropped files, several spots for an item, what is not saved yet, missing
// files and a week with problems. Changes the paths of a few spots. Throws runtime::Error.
void TakeDaily(const Album& album);

}  // namespace windows
