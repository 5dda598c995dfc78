#pragma once

#include <tuple>

namespace Test
{

/// A row of a table: what goes in, what comes out, and why the row is there.
template<class In, class Out>
struct Case
{
    In in;
    Out out;
    const char* why = "";
};

/// A row of a table with more columns; the last one tells why it is there.
template<class... Columns>
using Row = std::tuple<Columns..., const char*>;

} // namespace Test
