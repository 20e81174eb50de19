// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/pages/PageSource.h"
#include "platform/jet/values/Bytes.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace jet {

// In-place changes of one index page, for the usual case. `ends`: IndexPage::Ends of the page; becomes the new one.

// Appends an entry. Returns false without a change when it lacks the page's shared prefix or there is no room.
bool AppendEntry(PageBytes& page, ByteView entry);
// Inserts sorted entries before those now at the ascending `positions`. Returns how many were inserted: the first ones,
// up to one that does not fit, as above, or belongs at position 0 of a page with a shared prefix, which is stored in
// the first entry.
std::size_t InsertEntries(PageBytes& page, std::vector<std::uint16_t>& ends, std::span<const std::size_t> positions,
                          std::span<const ByteView> entries);
// Divides the entries of a page, with its head: those before position `at` are put on `lower`, the others on `upper`.
void SplitEntries(const PageBytes& page, const std::vector<std::uint16_t>& ends, std::size_t at, PageBytes& lower,
                  PageBytes& upper);
// Removes the entries at these ascending positions; not the first one of a page with a shared prefix.
void RemoveEntries(PageBytes& page, std::vector<std::uint16_t>& ends, std::span<const std::size_t> positions);

}  // namespace jet
