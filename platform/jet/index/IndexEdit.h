// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/pages/Pages.h"
#include "platform/jet/values/Bytes.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace jet {

// Changes of one index page in place, without taking it apart: the usual case. `ends` are IndexPage::Ends of the page.

// Puts an entry behind the last one. False, and nothing changed, when it lacks what the page's entries share or there
// is no room.
bool AppendEntry(PageBytes& page, ByteView entry);
// Puts an entry at place `at`. False, and nothing changed, as above, and before the first entry of a page whose
// entries share something: that one holds it for all.
bool InsertEntry(PageBytes& page, std::vector<std::uint16_t> ends, std::size_t at, ByteView entry);
// Takes out the entry at place `at`; not the first one of a page whose entries share something.
void RemoveEntry(PageBytes& page, std::vector<std::uint16_t> ends, std::size_t at);

}  // namespace jet
