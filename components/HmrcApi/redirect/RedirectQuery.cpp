#include "HmrcApi/redirect/RedirectQuery.h"

#include <algorithm>

#include "HmrcApi/transport/Uri.h"

namespace HmrcApi
{
namespace
{

struct Members
{
    std::optional<std::string> state, code, error, description;

    /// Where the member of this name goes; null for those that are ignored.
    std::optional<std::string>* Find(std::string_view name) noexcept
    {
        return name == "state"               ? &state
               : name == "code"              ? &code
               : name == "error"             ? &error
               : name == "error_description" ? &description
                                             : nullptr;
    }
};

/// Nothing when a member stands twice, or when an escape is none: neither may be guessed.
std::optional<Members> ReadMembers(std::string_view query)
{
    Members members;
    while (!query.empty()) {
        const std::string_view part = query.substr(0, query.find('&'));
        query.remove_prefix(std::min(part.size() + 1, query.size()));
        const std::size_t equals = std::min(part.find('='), part.size());
        const auto name = DecodeFormText(part.substr(0, equals));
        const auto value = DecodeFormText(part.substr(std::min(equals + 1, part.size())));
        if (!name || !value)
            return std::nullopt;
        std::optional<std::string>* const member = members.Find(*name);
        if (member && member->has_value())
            return std::nullopt;
        if (member)
            *member = *value;
    }
    return members;
}

/// Equal, in a time that does not tell where they differ.
bool IsSameSecret(std::string_view a, std::string_view b) noexcept
{
    unsigned difference = a.size() == b.size() ? 0 : 1;
    for (std::size_t i = 0; i < a.size() && i < b.size(); ++i)
        difference |= static_cast<unsigned char>(a[i]) ^ static_cast<unsigned char>(b[i]);
    return difference == 0;
}

bool IsCode(std::string_view text) noexcept
{
    return !text.empty() && std::all_of(text.begin(), text.end(), [](char c) { return c > ' ' && c <= '~'; });
}

} // namespace

std::optional<RedirectAnswer> ReadRedirect(std::string_view query, std::string_view state)
{
    const std::optional<Members> members = ReadMembers(query);
    if (!members || !members->state || !IsSameSecret(*members->state, state))
        return std::nullopt;
    if (members->error)
        return RedirectAnswer{RedirectAnswer::Kind::Denied, {}, members->description.value_or(std::string())};
    if (!members->code || !IsCode(*members->code))
        return std::nullopt;
    return RedirectAnswer{RedirectAnswer::Kind::Code, *members->code, {}};
}

} // namespace HmrcApi
