#include "data/Globals.h"

Globals global;
