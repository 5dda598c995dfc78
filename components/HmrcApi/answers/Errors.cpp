#include "HmrcApi/answers/Errors.h"

#include "Afx/windows/MessageBox.h"

namespace HmrcApi
{
namespace
{

struct Action
{
    std::string_view code; // empty: any
    std::string_view sentence;
    std::string_view cause = {}; // empty: any
};

struct StatusAction
{
    std::string_view status; // or its beginning
    std::string_view sentence;
};

constexpr std::string_view kAuthoriseAgain = "Authorise the Government Gateway user ID with HMRC again.";
constexpr std::string_view kTryLater = "Try again later.";
constexpr std::string_view kTryInMinutes = "Try again in a few minutes.";
constexpr std::string_view kNewerVersion =
    "Look for a newer version of this program; if there is none, report this error to its supplier.";
constexpr std::string_view kReport =
    "Report this error, with the time at which it happened, to the program's supplier.";
constexpr std::string_view kAgentAuthority = "Check that this Government Gateway user ID may act for the client, and "
                                             "that the client has authorised the practice "
                                             "as agent for Self Assessment (form 64-8 or online).";
constexpr std::string_view kFetchByUtr =
    "HMRC may have closed its PAYE interface to this program: set the practice's option nPAYEInterface to 0, which "
    "fetches by the four individual interfaces, authorise again, then fetch again.";
constexpr std::string_view kFetchByNino =
    "HMRC may have closed its individual interfaces to this program: set the practice's option nPAYEInterface to 1, "
    "which fetches by the PAYE interface, authorise again, then fetch again.";
constexpr std::string_view kSignInToNetwork =
    "Open any page in a browser and sign in to the network or proxy, then try again.";

// The first row that fits decides. HMRC's codes as published, then ours.
constexpr Action kActions[] = {
    {"", "Try again at the time that the message names.", "Retry-After"},
    {"SA_UTR_INVALID", "Correct the client's UTR."},
    {"NINO_INVALID", "Correct the client's National Insurance number."},
    {"TAX_YEAR_INVALID", "Choose another tax year."},
    {"UNAUTHORIZED", kAgentAuthority},
    {"FORBIDDEN", kAgentAuthority},
    {"MISSING_CREDENTIALS", kAuthoriseAgain},
    {"INVALID_CREDENTIALS", kAuthoriseAgain},
    {"INCORRECT_ACCESS_TOKEN_TYPE", kAuthoriseAgain},
    {"INVALID_SCOPE", kAuthoriseAgain},
    {"RESOURCE_FORBIDDEN", kFetchByUtr, "PAYE"},
    {"MATCHING_RESOURCE_NOT_FOUND", kFetchByUtr, "PAYE"},
    {"NOT_IMPLEMENTED", kFetchByUtr, "PAYE"},
    {"RESOURCE_FORBIDDEN", kFetchByNino, "Employments"},
    {"MATCHING_RESOURCE_NOT_FOUND", kFetchByNino, "Employments"},
    {"NOT_IMPLEMENTED", kFetchByNino, "Employments"},
    {"RESOURCE_FORBIDDEN", kReport},
    {"HTTPS_REQUIRED", kReport},
    {"MATCHING_RESOURCE_NOT_FOUND", kNewerVersion},
    {"METHOD_NOT_ALLOWED", kNewerVersion},
    {"ACCEPT_HEADER_INVALID", kNewerVersion},
    {"NOT_IMPLEMENTED", kNewerVersion},
    {"MESSAGE_THROTTLED_OUT", kTryInMinutes},
    {"SERVER_ERROR", kTryInMinutes},
    {"GATEWAY_TIMEOUT", kTryInMinutes},
    {"INTERNAL_SERVER_ERROR", kTryLater},
    {"SCHEDULED_MAINTENANCE", "Wait until HMRC's maintenance is over, then try again."},
    {"INVALID_GRANT", kAuthoriseAgain},
    {"INVALID_CLIENT", kReport},
    {"INVALID_REQUEST", kAuthoriseAgain},
    {"ACCESS_DENIED", "Start the authorisation again and choose to grant authority on HMRC's page."},
    {"NO_CREDENTIALS", kAuthoriseAgain},
    {"NOT_AUTHORISED", kAuthoriseAgain},
    {"WRONG_SERVICE",
     "Authorise the Government Gateway user ID for this service of HMRC: the authority at hand is for another."},
    {"TOKENS_UNREADABLE", "Open the practice with the key it was made with, or authorise with HMRC again."},
    {"NO_PRACTICE_KEY", "Put the practice's key file back beside the database."},
    {"NO_CREDENTIALS_FILE", "Ask the program's supplier for a version that holds them."},
    {"TOKENS_NOT_SAVED", "Make room on the disk, or the practice's database writable, then try again."},
    {"DATABASE_UNREADABLE", "Have the practice's database mended, or make it readable, then try again."},
    {"REFRESH_BUSY", "Wait until the other workstation or program has finished, then try again."},
    {"NO_CONNECTION", "Check this computer's internet connection, then try again."},
    {"NO_HTTP_MODULE", "Install this program again, with all of its parts."},
    {"TIMED_OUT", kTryInMinutes},
    {"ANSWER_INCOMPLETE", kTryInMinutes},
    {"REDIRECTED", kSignInToNetwork},
    {"ANSWER_MALFORMED", kSignInToNetwork, "Content-Type"},
    {"ANSWER_MALFORMED", kReport},
    {"ANSWER_TOO_LARGE", kReport},
    {"AMOUNT_NOT_EXACT", kReport},
    {"CANCELLED", "Start again when you are ready."},
    {"CHANGED_BY_ANOTHER_USER", "Fetch again."},
    {"UNSAVED_CHANGES", "Save or cancel what has been changed, then fetch again."},
    {"NO_REDIRECT_PORT", "Close the other program that waits for HMRC's answer, then authorise again."},
    {"BROWSER_NOT_OPENED", "Set a default browser on this computer, then authorise again."},
    {"AUTHORISATION_TIMED_OUT", "Start the authorisation again and sign in on HMRC's page."},
};

constexpr StatusAction kStatusActions[] = {
    {"5", kTryInMinutes},
    {"429", kTryInMinutes},
    {"408", kTryLater},
    {"401", kAuthoriseAgain},
};

} // namespace

HmrcApiErrorException::HmrcApiErrorException(std::string code, std::string text, std::string third, std::string status)
    : m_code(std::move(code)), m_text(std::move(text)), m_third(std::move(third)), m_status(std::move(status))
{}

HmrcApiErrorException::~HmrcApiErrorException() = default;

CAPIError::CAPIError(std::string code, std::string message, std::string field, std::string status)
    : m_code(std::move(code)), m_message(std::move(message)), m_field(std::move(field)), m_status(std::move(status))
{}

std::string ActionFor(std::string_view code, std::string_view httpStatus, std::string_view cause)
{
    constexpr std::string_view kNoCredentials = "NO_CREDENTIALS", kByStatus = "HTTP_";
    if (code == kNoCredentials && !cause.empty() && cause != code)
        return ActionFor(cause, httpStatus);
    for (const Action& action : kActions)
        if ((action.code.empty() || action.code == code) && (action.cause.empty() || action.cause == cause))
            return std::string(action.sentence);
    if (httpStatus.empty() && code.starts_with(kByStatus))
        httpStatus = code.substr(kByStatus.size());
    for (const StatusAction& action : kStatusActions)
        if (httpStatus.starts_with(action.status))
            return std::string(action.sentence);
    return std::string(kReport);
}

void CAPIErrorHandler::AddGroup(const std::string& name)
{
    for (const Group& group : m_groups)
        if (group.name == name)
            return;
    m_groups.push_back({name, {}});
}

void CAPIErrorHandler::AddError(const std::string& name, const CAPIError& error)
{
    AddGroup(name);
    for (Group& group : m_groups)
        if (group.name == name)
            group.errors.push_back(error);
}

int CAPIErrorHandler::GetErrorCount() const noexcept
{
    std::size_t count = 0;
    for (const Group& group : m_groups)
        count += group.errors.size();
    return static_cast<int>(count);
}

void CAPIErrorHandler::DisplayErrors() const
{
    std::string text;
    for (const Group& group : m_groups) {
        if (group.errors.empty())
            continue;
        text += (text.empty() ? "" : "\n\n") + group.name;
        for (const CAPIError& error : group.errors)
            text += '\n' + error.GetMessageText() + " (" + error.GetCode() + ')';
    }
    if (!text.empty())
        AfxMessageBox(text.c_str());
}

} // namespace HmrcApi
