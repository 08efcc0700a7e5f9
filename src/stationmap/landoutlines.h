// SPDX-License-Identifier: MIT
#pragma once

#include "stationmap/geoposition.h"

#include <vector>

/// The outline of a continent, an island or an inland sea. Closed; the first point is not repeated.
using Outline = std::vector<UnitVector>;

/// All land of the earth at 1:50 million, read from the program's resources. No two outlines cross, so a
/// place is land when an odd number of them surround it.
std::vector<Outline> readLandOutlines();
