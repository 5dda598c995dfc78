#include "ControlBody.h"

#include <algorithm>
#include <cstdint>

#include "ControlError.h"

namespace Sandbox
{

namespace
{

std::string Join(std::initializer_list<const char*> names)
{
    std::string text;
    for (const char* name : names)
        text += (text.empty() ? "" : ", ") + std::string(name);
    return text;
}

const nlohmann::json* Member(const nlohmann::json& body, const char* name)
{
    const auto at = body.find(name);
    return at == body.end() ? nullptr : &*at;
}

} // namespace

nlohmann::json ParseControlBody(const std::string& body, std::initializer_list<const char*> members)
{
    nlohmann::json parsed =
        body.empty() ? nlohmann::json::object() : nlohmann::json::parse(body, nullptr, /*allow_exceptions*/ false);
    if (parsed.is_discarded())
        throw ControlError("the body is not JSON");
    CheckMembers(parsed, members);
    return parsed;
}

void CheckMembers(const nlohmann::json& body, std::initializer_list<const char*> members)
{
    if (!body.is_object())
        throw ControlError("the body is not a JSON object");
    for (const auto& item : body.items())
        if (std::none_of(members.begin(), members.end(), [&](const char* name) { return item.key() == name; }))
            throw ControlError("unknown member \"" + item.key() + "\"; there are: " + Join(members));
}

std::optional<std::string> TextMember(const nlohmann::json& body, const char* name)
{
    const auto* value = Member(body, name);
    if (value == nullptr)
        return std::nullopt;
    if (!value->is_string())
        throw ControlError(std::string(name) + " must be a text");
    return value->get<std::string>();
}

std::optional<bool> BoolMember(const nlohmann::json& body, const char* name)
{
    const auto* value = Member(body, name);
    if (value == nullptr)
        return std::nullopt;
    if (!value->is_boolean())
        throw ControlError(std::string(name) + " must be true or false");
    return value->get<bool>();
}

std::optional<int> IntMember(const nlohmann::json& body, const char* name, int least, int most)
{
    const auto* value = Member(body, name);
    if (value == nullptr)
        return std::nullopt;
    const std::string rule =
        std::string(name) + " must be a whole number from " + std::to_string(least) + " to " + std::to_string(most);
    if (!value->is_number_integer() || (value->is_number_unsigned() && value->get<std::uint64_t>() > INT64_MAX))
        throw ControlError(rule);
    const auto number = value->get<std::int64_t>();
    if (number < least || number > most)
        throw ControlError(rule);
    return static_cast<int>(number);
}

} // namespace Sandbox
