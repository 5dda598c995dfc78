#pragma once

// Clients and partnerships with work in the tracker, for tests that roll them forward.

#include <string>
#include <vector>

#include "MorvUt/enquiries/rules/TrackerOwner.h"

/// Adds trusts, partnerships, clients who have left or want no source, with sources, tasks and enquiries of the year
/// before, and some of the year: the same from the same seed. The current practice has the types of SeedTrackerTypes.
std::vector<TrackerOwner> AddRandomOwners(unsigned seed, int count, short year);

/// All rows of the tracker and all enquiries, ids aside, sorted.
std::string WorkInPractice();
