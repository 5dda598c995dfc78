#pragma once

// Statement text that no user wrote.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "Cellar/Export.h"

namespace Cellar
{

/// As many values as one statement binds, in every database: SQL Server takes 2100.
inline constexpr std::size_t kMostValues = 2000;

/// Text that goes into a statement as it stands. It is made from literals of the program, from checked identifiers
/// and from numbers, and from nothing else; what users type is bound as a parameter instead. Texts from literals are
/// free to make and to copy. A text that was moved from is empty.
class CELLAR_API SqlText
{
public:
    constexpr SqlText() noexcept = default;
    /// Only what the compiler can read: a literal, or a constant array with static lifetime.
    template<std::size_t N>
    consteval SqlText(const char (&literal)[N]) : m_literal(literal, N - 1)
    {}
    SqlText(const SqlText& other);
    SqlText(SqlText&& other) noexcept;
    SqlText& operator=(const SqlText& other);
    SqlText& operator=(SqlText&& other) noexcept;
    constexpr ~SqlText()
    {
        if (m_built)
            Drop(m_built);
    }

    /// A table or column name: letters, digits and '_', not starting with a digit. Throws DatabaseError otherwise.
    static SqlText Identifier(std::string_view name);
    /// The same in brackets: [name].
    static SqlText Bracketed(std::string_view name);
    static SqlText Number(std::int64_t value);

    SqlText& operator+=(const SqlText& other);
    friend CELLAR_API SqlText operator+(const SqlText& a, const SqlText& b);

    std::string_view View() const noexcept { return m_built ? std::string_view(*m_built) : m_literal; }
    bool IsEmpty() const noexcept { return View().empty(); }

private:
    static void Drop(std::string* built) noexcept;

    std::string_view m_literal;     // lives as long as the program
    std::string* m_built = nullptr; // owned; what was put together at run time (a plain pointer can be a constant)
};

} // namespace Cellar
