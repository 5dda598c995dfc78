#include "Cellar/detail/Arguments.h"

#include <string>

#include "Cellar/DatabaseError.h"
#include "Cellar/detail/ValueTypes.h"

namespace Cellar::Detail
{
namespace
{

[[noreturn]] void Refuse(const std::string& why) { throw DatabaseError(DatabaseError::Category::Syntax, "", why, ""); }

} // namespace

void CheckArguments(const PreparedText& prepared, std::span<const Value> values)
{
    if (values.size() != prepared.placeholders.size())
        Refuse("the statement has " + std::to_string(prepared.placeholders.size()) + " placeholders and " +
               std::to_string(values.size()) + " values");
    for (std::size_t i = 0; i < values.size(); ++i) {
        const PlaceholderRule& rule = RuleOf(prepared.placeholders[i].type);
        if (!values[i].IsNull() && !rule.fits(values[i]))
            Refuse("value " + std::to_string(i + 1) + " must be " + rule.wanted + " for its " + std::string(rule.text));
    }
}

} // namespace Cellar::Detail
