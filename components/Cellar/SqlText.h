#pragma once

// Statement text that no user wrote.

#include <cstdint>
#include <string>
#include <string_view>

#include "Cellar/Export.h"

namespace Cellar
{

/// Text that goes into a statement as it stands. It is made from literals of the program, from checked identifiers
/// and from numbers, and from nothing else; what users type is bound as a parameter instead.
class CELLAR_API SqlText
{
public:
    SqlText() = default;
    template<std::size_t N>
    consteval SqlText(const char (&literal)[N]) : m_literal(literal, N - 1)
    {}
    /// A table or column name: letters, digits and '_', not starting with a digit. Throws DatabaseError otherwise.
    static SqlText Identifier(std::string_view name);
    static SqlText Number(std::int64_t value);

    SqlText& operator+=(const SqlText& other);
    friend CELLAR_API SqlText operator+(const SqlText& a, const SqlText& b);

    std::string_view View() const noexcept { return m_built.empty() ? m_literal : std::string_view(m_built); }
    bool IsEmpty() const noexcept { return View().empty(); }

private:
    std::string_view m_literal; // lives as long as the program
    std::string m_built;
};

} // namespace Cellar
