#pragma once
#include "data/SpotState.h"
#include "platform/dao/Recordset.h"

// The facts of an item-spot in a row that holds Path, LengteSec, StartDatum, StartUur, EindDatum, EindUur and Aktief.
// Whether its file is there is left open. Throws runtime::Error.
SpotFacts FactsOf(const dao::Recordset& row);
