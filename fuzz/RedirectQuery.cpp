#include "HmrcApi/redirect/RedirectQuery.h"

#include <algorithm>
#include <string>

#include "fuzz/Targets.h"
#include "HmrcApi/transport/Uri.h"

namespace Fuzz
{
namespace
{

using HmrcApi::EncodeForm;
using HmrcApi::ReadRedirect;
using HmrcApi::RedirectAnswer;

constexpr char kState[] = "s-1";

bool IsVisible(std::string_view text)
{
    return std::all_of(text.begin(), text.end(), [](char c) { return c > ' ' && c <= '~'; });
}

/// What holds of a query that was taken.
void CheckTaken(std::string_view query, const RedirectAnswer& answer)
{
    Require(query.find("state") != query.npos || query.find('%') != query.npos, "no answer is taken without a state");
    if (answer.kind == RedirectAnswer::Kind::Code)
        Require(!answer.code.empty() && IsVisible(answer.code), "a code can be sent on");
    else
        Require(answer.kind == RedirectAnswer::Kind::Denied && answer.code.empty(), "what is no code is a refusal");
    Require(!ReadRedirect(query, std::string(kState) + 'x') && !ReadRedirect(query, "s-2"),
            "an answer belongs to one sign-in");
    for (const char* again : {"&state=s-1", "&state", "&%73tate=other"})
        Require(!ReadRedirect(std::string(query) + again, kState), "of two states neither is taken");
    const auto other = ReadRedirect("unknown=1&" + std::string(query) + "&unknown=%C3%28", kState);
    Require(other && other->kind == answer.kind && other->code == answer.code &&
                other->description == answer.description,
            "other members change nothing");
}

} // namespace

void RedirectQuery(std::string_view input)
{
    if (const auto answer = ReadRedirect(input, kState))
        CheckTaken(input, *answer);

    const auto code = ReadRedirect(EncodeForm({{"code", input}, {"state", kState}}), kState);
    Require(code.has_value() == (!input.empty() && IsVisible(input)), "what is visible is a code");
    Require(!code || (code->kind == RedirectAnswer::Kind::Code && code->code == input), "a code comes back");
    const auto denied = ReadRedirect(
        EncodeForm({{"error", "access_denied"}, {"error_description", input}, {"code", "c"}, {"state", kState}}),
        kState);
    Require(denied && denied->kind == RedirectAnswer::Kind::Denied && denied->code.empty() &&
                denied->description == input,
            "a refusal comes back with its reason, and with no code");
    if (input != kState)
        Require(!ReadRedirect(EncodeForm({{"code", "c"}, {"state", input}}), kState), "another state is not taken");
}

} // namespace Fuzz
