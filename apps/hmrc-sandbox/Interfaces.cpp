#include "Interfaces.h"

#include <algorithm>

#include "Identifiers.h"
#include "Text.h"

namespace Sandbox
{

namespace
{

constexpr Interface kInterfaces[] = {
    {"/individual-paye/nino/{id}/annual-summary/{taxYear}", IdKind::Nino, "1.0", "read:individual-paye", "",
     "/individual-paye-test-support/paye/nino/{id}/tax-year/{taxYear}", "2.0", false, "paye", "EVERYTHING", ""},
    {"/national-insurance/sa/{id}/annual-summary/{taxYear}", IdKind::Utr, "1.0 1.1", "read:national-insurance", "",
     "/national-insurance-test-support/sa/{id}/annual-summary/{taxYear}", "1.0", true, "national-insurance",
     "HAPPY_PATH_1", "HAPPY_PATH_2"},
    {"/individual-employment/sa/{id}/annual-summary/{taxYear}", IdKind::Utr, "1.0 1.1 1.2",
     "read:individual-employment", "", "/individual-paye-test-support/sa/{id}/employments/annual-summary/{taxYear}",
     "1.0", true, "individual-employment", "HAPPY_PATH_1", "HAPPY_PATH_1", "offPayrollWorkFlag"},
    {"/individual-income/sa/{id}/annual-summary/{taxYear}", IdKind::Utr, "1.0 1.1 1.2", "read:individual-income", "",
     "/individual-paye-test-support/sa/{id}/income/annual-summary/{taxYear}", "1.0", true, "individual-income",
     "HAPPY_PATH_1", "HAPPY_PATH_1", "seissNetPaid"},
    {"/individual-benefits/sa/{id}/annual-summary/{taxYear}", IdKind::Utr, "1.0 1.1", "read:individual-benefits", "",
     "/individual-paye-test-support/sa/{id}/benefits/annual-summary/{taxYear}", "1.0", true, "individual-benefits",
     "HAPPY_PATH_1", "HAPPY_PATH_1"},
    {"/individual-tax/sa/{id}/annual-summary/{taxYear}", IdKind::Utr, "1.0 1.1", "read:individual-tax", "",
     "/individual-paye-test-support/sa/{id}/tax/annual-summary/{taxYear}", "1.0", true, "individual-tax",
     "HAPPY_PATH_1", "HAPPY_PATH_1"},
    {"/marriage-allowance/sa/{id}/status?taxYear={taxYear}", IdKind::Utr, "2.0", "read:marriage-allowance", "",
     "/marriage-allowance-test-support/sa/{id}/status/{taxYear}", "1.0", true, "",
     R"({"status":"None","deceased":false})", ""},
    {"/hello/user", IdKind::None, "1.0", "hello", R"({"message":"Hello User"})", "", "", false, "", "", ""},
    {"/hello/world", IdKind::None, "1.0", "", R"({"message":"Hello World"})", "", "", false, "", "", ""},
    {"/hello/application", IdKind::None, "1.0", "", R"({"message":"Hello Application"})", "", "", false, "", "", "", "",
     true},
};

/// Fills in what `path` has in the place of the pattern's variable segments; false when the shapes differ.
bool Fits(std::string_view pattern, std::string_view path, Route& route)
{
    const auto wanted = Split(pattern, '/');
    const auto given = Split(path, '/');
    if (wanted.size() != given.size())
        return false;
    for (std::size_t i = 0; i < wanted.size(); ++i) {
        if (wanted[i] == "{id}" || wanted[i] == "{taxYear}") {
            if (given[i].empty())
                return false;
            (wanted[i] == "{id}" ? route.identifier : route.taxYear) = given[i];
        } else if (wanted[i] != given[i])
            return false;
    }
    return true;
}

std::optional<Route> FindBy(std::string_view Interface::*pattern, std::string_view path)
{
    for (const Interface& interface : kInterfaces) {
        Route route{&interface, {}, {}};
        const std::string_view shape = interface.*pattern;
        if (!shape.empty() && Fits(shape.substr(0, shape.find('?')), path, route))
            return route;
    }
    return std::nullopt;
}

bool IsVersion(std::string_view text)
{
    const auto parts = Split(text, '.');
    return parts.size() == 2 && std::all_of(parts.begin(), parts.end(), [](std::string_view part) {
               return !part.empty() && part.find_first_not_of("0123456789") == std::string_view::npos;
           });
}

} // namespace

std::span<const Interface> Interfaces() { return kInterfaces; }

std::optional<Route> FindRoute(std::string_view path, const Parameters& parameters)
{
    std::optional<Route> route = FindBy(&Interface::path, path);
    if (const auto year = parameters.find("taxYear");
        route && route->interface->path.find('?') != std::string_view::npos && year != parameters.end())
        route->taxYear = year->second;
    return route;
}

std::optional<Route> FindSupportRoute(std::string_view path) { return FindBy(&Interface::supportPath, path); }

std::string DataPath(const Route& route)
{
    std::string path;
    const std::string_view shape = route.interface->path;
    for (const auto segment : Split(shape.substr(1, shape.find('?') - 1), '/')) {
        path += '/';
        path += segment == "{id}" ? route.identifier : segment == "{taxYear}" ? route.taxYear : std::string(segment);
    }
    return shape.find('?') == std::string_view::npos ? path : path + "?taxYear=" + route.taxYear;
}

bool HasVersion(std::string_view versions, std::string_view version)
{
    const auto list = Split(versions, ' ');
    return std::find(list.begin(), list.end(), version) != list.end();
}

std::optional<std::string_view> AcceptedVersion(std::string_view accept)
{
    constexpr std::string_view kBefore = "application/vnd.hmrc.";
    constexpr std::string_view kAfter = "+json";
    if (accept.size() < kBefore.size() + kAfter.size() || accept.substr(0, kBefore.size()) != kBefore ||
        accept.substr(accept.size() - kAfter.size()) != kAfter)
        return std::nullopt;
    const auto version = accept.substr(kBefore.size(), accept.size() - kBefore.size() - kAfter.size());
    return IsVersion(version) ? std::optional(version) : std::nullopt;
}

const char* CheckRoute(const Route& route)
{
    const IdKind kind = route.interface->id;
    if (kind == IdKind::Utr && !IsUtr(route.identifier))
        return "SA_UTR_INVALID";
    if (kind == IdKind::Nino && !IsNino(route.identifier))
        return "NINO_INVALID";
    if (kind != IdKind::None && !IsTaxYear(route.taxYear))
        return "TAX_YEAR_INVALID";
    return nullptr;
}

} // namespace Sandbox
