#include "Cellar/SqlText.h"

#include <algorithm>
#include <utility>

#include "Afx/text/Ascii.h"
#include "Cellar/DatabaseError.h"

namespace Cellar
{
namespace
{

bool IsIdentifier(std::string_view name) noexcept
{
    return !name.empty() && !Afx::IsDigit(name.front()) && std::all_of(name.begin(), name.end(), [](char c) {
        return Afx::IsLetter(c) || Afx::IsDigit(c) || c == '_';
    });
}

} // namespace

SqlText::SqlText(const SqlText& other)
    : m_literal(other.m_literal), m_built(other.m_built ? new std::string(*other.m_built) : nullptr)
{}

SqlText::SqlText(SqlText&& other) noexcept
    : m_literal(std::exchange(other.m_literal, {})), m_built(std::exchange(other.m_built, nullptr))
{}

SqlText& SqlText::operator=(const SqlText& other)
{
    SqlText copy(other);
    return *this = std::move(copy);
}

SqlText& SqlText::operator=(SqlText&& other) noexcept
{
    std::swap(m_literal, other.m_literal);
    std::swap(m_built, other.m_built);
    if (this != &other) {
        other.m_literal = {};
        delete std::exchange(other.m_built, nullptr);
    }
    return *this;
}

void SqlText::Drop(std::string* built) noexcept { delete built; }

SqlText SqlText::Identifier(std::string_view name)
{
    if (!IsIdentifier(name)) // the name is not repeated in the message: it may be anything that was typed
        throw DatabaseError(DatabaseError::Category::Syntax, "",
                            "a table or column name may hold letters, digits and '_' only, and starts with no digit",
                            "");
    SqlText text;
    text.m_built = new std::string(name);
    return text;
}

SqlText SqlText::Bracketed(std::string_view name) { return "[" + Identifier(name) + "]"; }

SqlText SqlText::Number(std::int64_t value)
{
    SqlText text;
    text.m_built = new std::string(std::to_string(value));
    return text;
}

SqlText& SqlText::operator+=(const SqlText& other)
{
    if (!m_built)
        m_built = new std::string(m_literal);
    m_literal = {};
    m_built->append(other.View());
    return *this;
}

SqlText operator+(const SqlText& a, const SqlText& b)
{
    SqlText text(a);
    text += b;
    return text;
}

} // namespace Cellar
