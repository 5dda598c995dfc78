#include "HmrcApi/records/detail/AnswerNode.h"

#include "Afx/text/Ascii.h"
#include "HmrcApi/answers/Errors.h"
#include "HmrcApi/json/ExactAmount.h"

namespace HmrcApi::Detail
{
namespace
{

[[noreturn]] void Refuse(const std::string& why, const std::string& path)
{
    throw HmrcApiErrorException("ANSWER_MALFORMED", "HMRC's answer cannot be read: " + why, path);
}

/// `YYYY-M-D` with one or two digits each for month and day; null when it is anything else or no such day.
Kiln::CDate ReadIsoDate(std::string_view text) noexcept
{
    int fields[3] = {};
    const std::size_t most[3] = {4, 2, 2};
    for (int i = 0; i < 3; ++i) {
        std::size_t count = 0;
        for (; count < text.size() && count < most[i] && Afx::IsDigit(text[count]); ++count)
            fields[i] = fields[i] * 10 + (text[count] - '0');
        if (count == 0 || (i == 0 && count != 4))
            return {};
        text.remove_prefix(count);
        if (i == 2 ? !text.empty() : text.empty() || text.front() != '-')
            return {};
        if (i < 2)
            text.remove_prefix(1);
    }
    const Kiln::CDate date(fields[0], fields[1], fields[2]);
    return date.IsValid() ? date : Kiln::CDate();
}

} // namespace

AnswerNode::AnswerNode(const JsonValue& value, std::string path) : m_value(value), m_path(std::move(path))
{
    if (!m_value.Is(JsonValue::Kind::Object))
        Refuse((m_path.empty() ? "it" : m_path) + " is no object", m_path);
}

void AnswerNode::NeedsOneOf(std::initializer_list<const char*> names) const
{
    std::string missing;
    for (const char* name : names) {
        if (m_value.Find(name))
            return;
        missing += (missing.empty() ? "" : ", ") + std::string(name);
    }
    Refuse((m_path.empty() ? "it" : m_path) + " holds none of " + missing, m_path);
}

std::string AnswerNode::Text(const char* name) const
{
    const JsonValue* member = Member(name, JsonValue::Kind::Text, "text");
    return member ? member->text : std::string();
}

std::string AnswerNode::Key(const char* name) const
{
    std::string text = Text(name);
    if (text.empty())
        Refuse(PathOf(name) + " is missing", PathOf(name));
    return text;
}

Kiln::CAmt AnswerNode::Amount(const char* name) const
{
    const JsonValue* member = Member(name, JsonValue::Kind::Number, "number");
    if (!member)
        return {};
    const std::optional<std::int64_t> value = ExactTenThousandths(member->text);
    if (!value)
        throw HmrcApiErrorException("AMOUNT_NOT_EXACT",
                                    "HMRC's answer holds an amount that cannot be kept exactly: " + PathOf(name),
                                    PathOf(name));
    return Kiln::CAmt(*value);
}

Kiln::CDate AnswerNode::Date(const char* name) const
{
    const JsonValue* member = m_value.Find(name);
    return member && member->Is(JsonValue::Kind::Text) ? ReadIsoDate(member->text) : Kiln::CDate();
}

std::optional<bool> AnswerNode::Flag(const char* name) const
{
    const JsonValue* member = Member(name, JsonValue::Kind::Boolean, "true or false");
    return member ? std::optional(member->boolean) : std::nullopt;
}

std::optional<AnswerNode> AnswerNode::Object(const char* name) const
{
    const JsonValue* member = m_value.Find(name);
    return member ? std::optional<AnswerNode>(std::in_place, *member, PathOf(name)) : std::nullopt;
}

const JsonValue* AnswerNode::Member(const char* name, JsonValue::Kind kind, const char* wanted) const
{
    const JsonValue* member = m_value.Find(name);
    if (member && !member->Is(kind))
        Refuse(PathOf(name) + " is no " + wanted, PathOf(name));
    return member;
}

JsonValue ParseAnswer(std::string_view json)
{
    JsonProblem problem;
    std::optional<JsonValue> root = ParseJson(json, &problem);
    if (!root)
        Refuse(problem.text, {});
    return *std::move(root);
}

} // namespace HmrcApi::Detail
