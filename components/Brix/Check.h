#pragma once

// Whether a practice fits together.

#include <string>
#include <vector>

#include "Brix/Export.h"
#include "Cellar/Connection.h"

namespace Brix
{

/// Something that does not fit together in a practice.
struct Fault
{
    std::string table;
    long id; // 0: the table or the file as a whole
    std::string fault;
};
/// The file's own integrity, missing tables and columns, rows without their parent, copied keys that differ, staging
/// keys that stand twice, unreadable dates and amounts, sequences of ids that are behind their rows.
BRIX_API std::vector<Fault> CheckPractice(Cellar::CConnection& connection);

} // namespace Brix
