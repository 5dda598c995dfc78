#pragma once

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

} // namespace Test
