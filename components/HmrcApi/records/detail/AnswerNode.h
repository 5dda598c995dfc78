#pragma once

// An object of an answer, read member by member.

#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>

#include "HmrcApi/json/Json.h"
#include "Kiln/CAmt.h"
#include "Kiln/CDate.h"

namespace HmrcApi::Detail
{

/// An object and its place in the answer. A known member of the wrong type is refused (ANSWER_MALFORMED), because its
/// figure must not turn into "not reported"; only a date that cannot be read counts as absent (HMRC's own data holds
/// such). JSON's null is absent. Refers to the value it is made from.
class AnswerNode
{
public:
    AnswerNode(const JsonValue& value, std::string path);

    /// Refuses an object that holds none of the members: it is something else, and not an answer that has nothing.
    void NeedsOneOf(std::initializer_list<const char*> names) const;
    std::string Text(const char* name) const; // empty when absent
    /// A text that identifies its record: absent or empty is refused.
    std::string Key(const char* name) const;
    Kiln::CAmt Amount(const char* name) const; // null when absent; not exact: refused (AMOUNT_NOT_EXACT)
    Kiln::CDate Date(const char* name) const;  // null when absent or no day
    std::optional<bool> Flag(const char* name) const;
    std::optional<AnswerNode> Object(const char* name) const;
    /// Each object of the array `name`; none when it is absent.
    template<class Visit>
    void Each(const char* name, Visit visit) const
    {
        const JsonValue* member = Member(name, JsonValue::Kind::Array, "array");
        for (std::size_t i = 0; member && i < member->items.size(); ++i)
            visit(AnswerNode(member->items[i], PathOf(name) + '/' + std::to_string(i)));
    }

private:
    std::string PathOf(const char* name) const { return m_path + '/' + name; }
    const JsonValue* Member(const char* name, JsonValue::Kind kind, const char* wanted) const;

    const JsonValue& m_value;
    std::string m_path; // JSON pointer, as in HMRC's own error lists
};

/// The parsed text; refused when it is not JSON.
JsonValue ParseAnswer(std::string_view json);

/// Parses and hands the outermost object on.
template<class Read>
auto WithRoot(std::string_view json, Read read)
{
    const JsonValue root = ParseAnswer(json);
    return read(AnswerNode(root, {}));
}

} // namespace HmrcApi::Detail
