#include <algorithm>
#include <nlohmann/json.hpp>

#include "Errors.h"
#include "Handlers.h"
#include "Identifiers.h"

namespace Sandbox
{

namespace
{

using Json = nlohmann::ordered_json;

std::string Digits(int number, std::size_t width)
{
    const std::string digits = std::to_string(number);
    return std::string(width - digits.size(), '0') + digits;
}

std::string UtrOf(int number)
{
    const std::string rest = Digits(number, 9);
    return UtrCheckDigit(rest) + rest;
}

std::string NinoOf(int number) { return "AB" + Digits(number, 6) + "A"; }

Json UserOf(int number, const Json& services)
{
    const auto has = [&](const char* name) {
        return std::find(services.begin(), services.end(), name) != services.end();
    };
    Json user{{"userId", std::to_string(945350439000LL + number)},
              {"password", "sandbox" + std::to_string(number)},
              {"userFullName", "Ida Newton"},
              {"emailAddress", "ida.newton@example.com"},
              {"individualDetails",
               {{"firstName", "Ida"},
                {"lastName", "Newton"},
                {"dateOfBirth", "1960-06-01"},
                {"address", {{"line1", "45 Springfield Rise"}, {"line2", "Glasgow"}, {"postcode", "TS1 1PA"}}}}}};
    if (has("self-assessment"))
        user["saUtr"] = UtrOf(100'000 + number);
    if (has("national-insurance"))
        user["nino"] = NinoOf(number);
    return user;
}

} // namespace

Handled HandleTestUser(State& state, const Call& call)
{
    const bool authorised = FindBearer(state.tokens, call.authorization) != nullptr;
    if (call.path != "/create-test-user/individuals")
        return {ErrorAnswer("MATCHING_RESOURCE_NOT_FOUND"), authorised};
    if (call.method != "POST")
        return {ErrorAnswer("METHOD_NOT_ALLOWED"), authorised};
    const auto wishes = nlohmann::ordered_json::parse(call.body.empty() ? "{}" : call.body, nullptr, false);
    if (!wishes.is_object() || (wishes.contains("serviceNames") && !wishes["serviceNames"].is_array()))
        return {ErrorAnswer("BAD_REQUEST"), authorised};
    Answer answer;
    answer.status = 201;
    answer.body = UserOf(++state.testUsers, wishes.value("serviceNames", Json::array())).dump();
    return {answer, authorised};
}

} // namespace Sandbox
