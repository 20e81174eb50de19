#pragma once
#include "tools/Arguments.h"

// The value of --station; 0, no number, when it is not told. runtime::Error for what cannot be a station's number.
qint16 StationNumber(const Arguments& arguments);
