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

// Makes a folder (host path; created when missing) contain exactly these files of the form. Each file is replaced
// atomically; unchanged files are not written; files from earlier runs that are no longer needed are deleted. A file
// with such a name that Spotrooster did not write is never changed: a runtime::Error with its name is thrown before
// anything is written. Other errors contain the file name too.
FolderChanges UpdatePlayoutFolder(const QString& folder, PlayoutForm form, const std::vector<PlayoutFile>& files);
