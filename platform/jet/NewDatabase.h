#pragma once

#include "platform/jet/Bytes.h"

namespace jet {

/// The file that this library makes when it makes a new database: header, maps, the four engine tables and their rows,
/// sixteen pages, each as the original engine makes it. Dates are `now`, in days since 1899-12-30.
Bytes NewDatabase(double now);

}  // namespace jet
