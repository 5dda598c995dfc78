#include <algorithm>
#include <cstddef>
#include <optional>

#include "Cellar/DatabaseError.h"
#include "Cellar/Dialect.h"
#include "fuzz/Targets.h"

namespace Fuzz
{
namespace
{

using Cellar::PreparedText;

/// Question marks outside strings and names: an engine takes each for a parameter. Nothing when a mark stays open.
std::optional<std::size_t> CountParameters(std::string_view statement)
{
    std::size_t count = 0;
    char close = '\0'; // of the string or name that is open
    for (std::size_t i = 0; i < statement.size(); ++i) {
        const char c = statement[i];
        if (close == '\0') {
            count += c == '?';
            close = c == '\'' || c == '"' ? c : c == '[' ? ']' : '\0';
        } else if (c == close) {
            const bool isDoubled = i + 1 < statement.size() && statement[i + 1] == c;
            if (isDoubled)
                ++i;
            else
                close = '\0';
        }
    }
    return close == '\0' ? std::optional(count) : std::nullopt;
}

std::optional<PreparedText> Translate(const Cellar::Dialect& dialect, std::string_view statement)
{
    try {
        return dialect.Translate(statement);
    } catch (const Cellar::DatabaseError& refusal) {
        Require(refusal.GetCategory() == Cellar::DatabaseError::Category::Syntax && !refusal.GetReason().empty(),
                "a statement is refused for its syntax, with a reason");
        return std::nullopt;
    }
}

bool HasSamePlaceholders(const PreparedText& a, const PreparedText& b)
{
    return std::equal(a.placeholders.begin(), a.placeholders.end(), b.placeholders.begin(), b.placeholders.end(),
                      [](const auto& x, const auto& y) { return x.type == y.type; });
}

} // namespace

void SqlText(std::string_view input)
{
    const std::optional<PreparedText> model = Translate(Cellar::SqlServerDialect(), input); // changes least
    for (const Cellar::Dialect* dialect :
         {&Cellar::SqliteDialect(), &Cellar::PostgresDialect(), &Cellar::SqlServerDialect()}) {
        const std::optional<PreparedText> own = Translate(*dialect, input);
        Require(own.has_value() || !model, "what one database takes the others take");
        if (!own || !model)
            continue;
        Require(CountParameters(own->text) == own->placeholders.size(), "one question mark for each value");
        Require(HasSamePlaceholders(*own, *model), "every database is given the same values");
        Require(own->effect == model->effect && own->usesSessionId == model->usesSessionId,
                "a statement has one effect on every database");
    }
}

} // namespace Fuzz
