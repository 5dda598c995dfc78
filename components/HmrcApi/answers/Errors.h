#pragma once

// HMRC's errors, and ours, gathered per group and shown once.
//
// An error is four texts: the code, by which programs decide; the message, for people, which holds no token, secret or
// National Insurance number; the third, what it is about; the HTTP status, empty when nothing was answered. Codes keep
// their owner's spelling: HMRC's as it sends them (NINO_INVALID, SERVER_ERROR), an OAuth error in upper case
// (INVALID_GRANT), HTTP_nnn for an answer that says nothing more, and ours:
//
//   NO_CREDENTIALS     the tokens cannot be had; the third text is the cause, a code again
//   NO_HTTP_MODULE     the module that speaks HTTP cannot be loaded; nothing was sent
//   NO_CONNECTION, TIMED_OUT, ANSWER_INCOMPLETE   the network; no status, unless an answer had begun
//   REDIRECTED         a redirect led to another host, or to what is none
//   ANSWER_MALFORMED   a 200 that is not the data asked for; the third text is the place in it
//   ("/employments/0/taxTotal"),
//                      or Content-Type for a page instead of data
//   AMOUNT_NOT_EXACT   an amount beyond four decimals or out of range; the third text is its place
//   ANSWER_TOO_LARGE   more than 8 MiB
//   CANCELLED          by the user
//
// The third text Retry-After marks an error whose message tells when to try again.

#include <exception>
#include <string>
#include <string_view>
#include <vector>

#include "HmrcApi/Export.h"

namespace HmrcApi
{

/// A failure of one fetch.
class HMRCAPI_API HmrcApiErrorException : public std::exception
{
public:
    HmrcApiErrorException(std::string code, std::string text, std::string third, std::string status = {});
    ~HmrcApiErrorException() override;
    const char* what() const noexcept override { return m_text.c_str(); }
    const std::string& GetCode() const noexcept { return m_code; }
    const std::string& GetText() const noexcept { return m_text; }
    const std::string& GetThird() const noexcept { return m_third; }
    const std::string& GetStatus() const noexcept { return m_status; }

private:
    std::string m_code, m_text, m_third, m_status;
};

/// One entry of the handler.
class HMRCAPI_API CAPIError
{
public:
    CAPIError(std::string code, std::string message, std::string field, std::string status);
    const std::string& GetCode() const noexcept { return m_code; }
    const std::string& GetMessageText() const noexcept { return m_message; }
    const std::string& GetField() const noexcept { return m_field; } // the third text
    const std::string& GetHttpStatus() const noexcept { return m_status; }

private:
    std::string m_code, m_message, m_field, m_status;
};

/// What the user can do about an error: one sentence, never empty. `cause` is the error's third text; for
/// NO_CREDENTIALS it decides. ("NO_CREDENTIALS", "", "REFRESH_BUSY") is "Wait until the other workstation or program
/// has finished, then try again."; without a cause it is to authorise.
HMRCAPI_API std::string ActionFor(std::string_view code, std::string_view httpStatus, std::string_view cause = {});

/// The errors of one retrieval by group, in the order the groups were added.
class HMRCAPI_API CAPIErrorHandler
{
public:
    struct Group
    {
        std::string name;
        std::vector<CAPIError> errors;
    };

    void AddGroup(const std::string& name); // a group that is there stays as it is
    /// Adds to the group `name`, which is made when it is not there.
    void AddError(const std::string& name, const CAPIError& error);
    int GetErrorCount() const noexcept;
    const std::vector<Group>& GetGroups() const noexcept { return m_groups; }
    /// One message box: a heading per group with errors, one line per error, "message (code)". None: nothing.
    void DisplayErrors() const;

private:
    std::vector<Group> m_groups;
};

} // namespace HmrcApi
