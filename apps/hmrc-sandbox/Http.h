#pragma once

// A request and its answer, free of the server that carries them.

#include <chrono>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace Sandbox
{

/// Query and form parameters by name; a name may come twice.
using Parameters = std::multimap<std::string, std::string>;

/// One request as the rules see it, free of the server that carried it.
struct Call
{
    std::string method;
    std::string path;          // percent-decoded, without the query
    std::string accept;        // empty: no such header
    std::string authorization; // empty: no such header
    std::string contentType;
    std::map<std::string, std::string> fraudHeaders; // those that begin with Gov-, by their names in lower case
    std::string body;
    Parameters parameters; // of the query, and of the body when it is a form
    bool hasQuery = false;
};

/// What goes back.
struct Answer
{
    int status = 200;
    std::string body;
    std::string contentType = "application/json";
    std::vector<std::pair<std::string, std::string>> headers;
    std::string code;                   // HMRC's code or the OAuth error, for the list of requests; empty: none
    bool dropped = false;               // close the connection half-way through the announced body
    std::chrono::milliseconds delay{0}; // wait before the first byte
};

} // namespace Sandbox
