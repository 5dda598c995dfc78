#pragma once

// Values for columns.

#include <string>

#include "Cellar/Value.h"

namespace Test
{

/// A value for a column of the type, another one for each `nth` from 0 to 3. Texts hold what could end a literal or a
/// statement, or be cut or filled in on its way.
inline Cellar::Value SampleValue(Cellar::ColumnType type, int nth)
{
    const std::string texts[] = {"O'Brien \"& Sons\"; DROP TABLE BRIXClient; -- /* */ [x] \\ \n\t", "100% %s %d %% %ld",
                                 "Zo\u00eb \U0001F600 \u00bd", std::string(9'999, '\'') + "%"};
    const Cellar::Value inOrderOfTypes[] = {2020 + nth,
                                            2020 + nth,
                                            nth % 2 == 0,
                                            texts[nth],
                                            Cellar::Bytes{0, static_cast<std::uint8_t>(nth)},
                                            Kiln::CDate(2024, 4, 5 + nth),
                                            COleDateTime(2024, 4, 5 + nth, 12, 30, 0, 5),
                                            Kiln::CAmt(123'456 + nth),
                                            0.1 + nth};
    return inOrderOfTypes[static_cast<std::size_t>(type)];
}

} // namespace Test
