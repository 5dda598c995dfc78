#pragma once

// Answers that are broken on purpose.

#include <deque>
#include <functional>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Http.h"

namespace Sandbox
{

/// How a fault changes an answer.
enum class FaultAction
{
    Error,      // HMRC's error answer of a code
    OAuthError, // the OAuth endpoints' error answer
    Html,       // a proxy's error page
    Empty,      // no body
    Malformed,  // text that is not JSON
    TooLarge,   // good JSON of more than 8 MiB
    TooDeep,    // good JSON of more than 32 levels
    CutOff,     // the ordinary answer, half of it, with the length of that half
    Dropped,    // the ordinary answer, the connection closed half-way
    Slow,       // the ordinary answer, late
    Redirect    // 307 to the same path, which then answers
};

/// A fault that is waiting for its path.
struct Fault
{
    std::string path; // a whole path or its first segments
    std::string name;
    FaultAction action = FaultAction::Error;
    int times = 1;           // answers still to break; not used when `always`
    bool always = false;     // until the faults are cleared
    int status = 0;          // of the answer; 0: the fault's own
    int retryAfter = -1;     // seconds, as a Retry-After header; negative: none
    int delayMs = 0;         // wait before answering
    std::string location;    // where a redirect leads; empty: the same path
    std::string code;        // of an Error; the `error` member of an OAuthError
    std::string description; // of an OAuthError
};

/// The fault that a control body describes; throws ControlError with what is wrong with it.
Fault ParseFault(const nlohmann::json& body);

/// The names that a control body may give, HMRC's codes last.
std::vector<std::string> FaultNames();

/// As ParseFault reads it, with the answers still to break.
nlohmann::ordered_json FaultToJson(const Fault& fault);

/// The faults that are set, in the order in which they were set: the first that fits a path is used up first.
class Faults
{
public:
    void Add(Fault fault) { m_faults.push_back(std::move(fault)); }
    void Clear() { m_faults.clear(); }
    const std::deque<Fault>& Pending() const { return m_faults; }

    /// The fault for this request, counted down; nothing when its answer is an ordinary one.
    std::optional<Fault> Take(const Call& call);

private:
    std::deque<Fault> m_faults;
};

/// The answer of `call` with the next fault of its path, or the ordinary one. A fault that spoils the ordinary answer
/// on its way back lets it happen first, so a dropped token answer has used the code or refresh token up.
Answer AnswerWithFaults(Faults& faults, const Call& call, const std::function<Answer()>& ordinary);

} // namespace Sandbox
