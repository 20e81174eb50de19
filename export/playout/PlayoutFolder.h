// SPDX-License-Identifier: MIT
#pragma once

#include "export/playout/PlayoutForm.h"

#include <QString>

#include <vector>

struct FolderChanges {
  int written = 0;
  int unchanged = 0;
  int removed = 0;
};

// Brings a folder (host path; made when missing) to hold these files of the form. Each is replaced in one step, one
// that already has its content is not touched, and a file that was made here earlier and is none of them goes. A file
// of such a name that was not made here is never touched: a runtime::Error names it before anything is written. Other
// errors name the file too.
FolderChanges UpdatePlayoutFolder(const QString& folder, PlayoutForm form, const std::vector<PlayoutFile>& files);
