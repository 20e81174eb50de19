// SPDX-License-Identifier: MIT
#include "export/playout/FilesNotThere.h"

#include "export/playout/BlockReader.h"
#include "export/playout/SoundFiles.h"

#include <algorithm>
#include <tuple>

namespace {

using Record = FileNotThere::Record;

std::vector<FileNotThere> AllFiles(const Catalogue& catalogue, const QDateTime& moment) {
  std::vector<FileNotThere> files;
  const BlockParts parts(catalogue);
  for (const BlockSpot& spot : parts.Spots())
    files.push_back({Record::ItemSpot, spot.id, spot.naam, spot.facts.path, spot.facts.aktief});
  for (const BlockJingle& jingle : parts.Jingles())
    files.push_back({Record::ItemPingle, jingle.id, jingle.naam, jingle.path, jingle.aktief});
  for (const Block& block : ReadBlocks(catalogue)) {
    if (block.filling != Block::Filling::Files) continue;
    const QStringList paths = FilesOf({block}, moment);
    for (const QString& path : paths) {
      const bool isJingle =
          std::ranges::any_of(parts.Jingles(), [&](const auto& jingle) { return jingle.path == path; });
      if (!isJingle) files.push_back({Record::Item, block.id, block.naam, path, block.aktief});
    }
  }
  return files;
}

}  // namespace

FilesNotThere FindFilesNotThere(const Catalogue& catalogue, const QDateTime& moment) {
  const std::vector<FileNotThere> all = AllFiles(catalogue, moment);
  QStringList paths;
  for (const FileNotThere& file : all) {
    if (!file.path.isEmpty()) paths += file.path;
  }
  paths.removeDuplicates();
  const SoundFiles seen = LookAtFiles(paths, Look::Presence);
  FilesNotThere found;
  for (const FileNotThere& file : all) {
    const runtime::Presence presence =
        file.path.isEmpty() ? runtime::Presence::NotThere : seen.value(file.path).presence;
    if (presence == runtime::Presence::NotThere) found.files.push_back(file);
    if (presence == runtime::Presence::NotReachable || presence == runtime::Presence::Denied) ++found.notReachable;
  }
  std::ranges::stable_sort(found.files, {},
                           [](const FileNotThere& file) { return std::tuple(!file.aktief, file.naam.toCaseFolded()); });
  return found;
}
