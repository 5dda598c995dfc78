#include "Cellar/drivers/odbc/InsertShape.h"

#include "Afx/text/TextFold.h"
#include <algorithm>

namespace Cellar::Odbc
{
namespace
{

std::string_view WithoutBlanks(std::string_view text) noexcept
{
    const auto first = text.find_first_not_of(" \t\r\n");
    return first == text.npos ? std::string_view() : text.substr(first);
}

/// Takes everything up to the end of the bracket, name, string or character that `text` begins with.
void TakeOne(std::string_view& text) noexcept
{
    int depth = 0;
    std::size_t at = 0;
    do {
        const char c = text[at];
        if (c == '\'' || c == '"')
            at = std::min(text.find(c, at + 1), text.size() - 1);
        depth += c == '(' ? 1 : c == ')' ? -1 : 0;
        ++at;
    } while (depth > 0 && at < text.size());
    text.remove_prefix(at);
}

} // namespace

InsertShape ShapeOf(std::string_view statement) noexcept
{
    constexpr std::string_view kInsert = "INSERT", kValues = "VALUES";
    statement = WithoutBlanks(statement);
    if (!Afx::EqualNoCase(statement.substr(0, kInsert.size()), kInsert))
        return InsertShape::None;
    while (!statement.empty() && !Afx::EqualNoCase(statement.substr(0, kValues.size()), kValues))
        TakeOne(statement);
    statement = WithoutBlanks(statement.substr(std::min(kValues.size(), statement.size())));
    if (!statement.starts_with('('))
        return InsertShape::Query;
    TakeOne(statement);
    return WithoutBlanks(statement).empty() ? InsertShape::OneRow : InsertShape::Rows;
}

} // namespace Cellar::Odbc
