#pragma once

#include "platform/jet/Pages.h"

#include <set>

namespace jet {

/// The pages that the file calls free although a table, an index, a long value or a map lives there: who took one of
/// them would overwrite what it holds. With them the pages past the end of the file that some map names already. Empty
/// for a sound file. Where a definition or a map cannot be read, nobody knows what is in use: then all free pages that
/// hold anything are named.
std::set<std::uint32_t> FindWronglyFreePages(PageSource& pages);

}  // namespace jet
