#pragma once

// The table of interfaces that the server speaks.

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "Http.h"

namespace Sandbox
{

/// What stands in an interface's path before the tax year.
enum class IdKind
{
    None, // neither identifier nor tax year
    Utr,
    Nino
};

/// One interface that the server speaks. A further one is a further row of the table.
struct Interface
{
    std::string_view path; // with "{id}" and "{taxYear}" for the variable segments, the latter also as a query
    IdKind id;
    std::string_view versions; // of the Accept header, separated by blanks; the last is the newest
    std::string_view scope;    // empty: open to everyone, no token needed
    std::string_view body;     // the answer of an interface without data; empty: it has data

    std::string_view supportPath;       // POST here primes the data; empty: nothing to prime
    std::string_view supportVersions;   // of its Accept header
    bool supportEchoes;                 // priming answers with the data, else with an empty object
    std::string_view scenarios;         // their group; empty: what is posted is the data
    std::string_view defaultScenario;   // primed when the request names none
    std::string_view startScenario;     // unprimed, with --scenario: this one; empty: the named one itself
    std::string_view newestMember = {}; // of the data: only the newest version's answers have it
    bool isForApplications = false;     // takes a token of client_credentials instead of a user's
};

/// Every interface.
std::span<const Interface> Interfaces();

/// An interface reached by a path, with what the path named.
struct Route
{
    const Interface* interface;
    std::string identifier;
    std::string taxYear;
};

/// The interface whose path has the shape of `path`; nothing for every other path, and for one with an empty segment.
/// `parameters`: of the query.
std::optional<Route> FindRoute(std::string_view path, const Parameters& parameters = {});

/// The same for the paths that prime data.
std::optional<Route> FindSupportRoute(std::string_view path);

/// The path by which the data of a route is asked for.
std::string DataPath(const Route& route);

/// Whether `version` is one of a blank-separated list.
bool HasVersion(std::string_view versions, std::string_view version);

/// The version that an Accept header "application/vnd.hmrc.<version>+json" asks for, nothing when it has another form.
std::optional<std::string_view> AcceptedVersion(std::string_view accept);

/// The code of what is wrong with a route's identifier or tax year, null when both are good.
const char* CheckRoute(const Route& route);

} // namespace Sandbox
