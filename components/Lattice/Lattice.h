#pragma once

// The grid control, whole.

#include "Lattice/Cell.h"
#include "Lattice/Grid.h"
#include "Lattice/GridCells.h"
#include "Lattice/TabbedText.h"
