#pragma once

// HMRC's errors, and ours, gathered per group and shown once.
//
// An error is four texts:
//
//   code      by which programs decide; its owner's spelling
//   message   one sentence or two for people, in English; holds no token, secret or National Insurance number. HMRC's
//             own may change, and may hold what a terminal obeys: show it by Afx::ToPrintable
//   third     what it is about: the cause, a place, or the field that HMRC names ("/dateOfBirth"); may be empty
//   status    of HTTP, three digits; empty when nothing was answered
//
// Codes are HMRC's as it sends them (NINO_INVALID, SERVER_ERROR), an OAuth error in upper case (INVALID_GRANT),
// HTTP_nnn for an answer that says nothing more, and ours:
//
//   Code                 When                                         Third             Status
//   NO_CREDENTIALS       the tokens cannot be had                     cause, see below  of the refresh, or empty
//   NO_HTTP_MODULE       the module that speaks HTTP cannot be loaded
//   NO_CONNECTION        nobody was reached
//   TIMED_OUT            no whole answer within the minute                              when an answer had begun
//   ANSWER_INCOMPLETE    the answer broke off                                           when an answer had begun
//   ANSWER_TOO_LARGE     more than 8 MiB                                                when an answer had begun
//   REDIRECTED           to another host, or to what is none                            as answered, or empty
//   ANSWER_MALFORMED     a 200 that is not the data asked for         place, as in      200
//                                                                     "/employments/0/taxTotal"
//                        a 200 that is a page instead of data         Content-Type      200
//   AMOUNT_NOT_EXACT     more than four decimals, or out of range     place             200
//   CANCELLED            by the user
//   UNSAVED_CHANGES      asked within a transaction that has begun
//   CHANGED_BY_ANOTHER_USER   a staging row, before it was written
//
// Causes of NO_CREDENTIALS: NOT_AUTHORISED, WRONG_SERVICE, TOKENS_UNREADABLE, NO_PRACTICE_KEY, NO_CREDENTIALS_FILE,
// TOKENS_NOT_SAVED, DATABASE_UNREADABLE, REFRESH_BUSY, or what became of a refresh (INVALID_GRANT, NO_CONNECTION).
//
// The third text of an answer that HMRC does not offer one of the two routes to its PAYE records (RESOURCE_FORBIDDEN,
// MATCHING_RESOURCE_NOT_FOUND, NOT_IMPLEMENTED) is the route's group, "PAYE" or "Employments": the other may be open.
//
// The third text Retry-After marks an error whose message tells when to try again.
//
// 404 NOT_FOUND is no error: see CResponse::IsNothingYet. Source of HMRC's codes: its reference guide.

#include <exception>
#include <string>
#include <string_view>
#include <vector>

#include "HmrcApi/Export.h"

namespace HmrcApi
{

/// A failure of one request, refresh or reading. what() is the message.
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

/// One entry of the handler: the same four texts.
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

/// What the user can do about an error: one sentence, never empty; for a code that is not known by its status, else to
/// report it. `cause` is the error's third text; for NO_CREDENTIALS it decides. ("NO_CREDENTIALS", "", "REFRESH_BUSY")
/// is "Wait until the other workstation or program has finished, then try again."; without a cause it is to authorise.
HMRCAPI_API std::string ActionFor(std::string_view code, std::string_view httpStatus, std::string_view cause = {});

/// The errors of one retrieval by group ("PAYE", "National Insurance"), in the order the groups were added. A group
/// without errors was asked and answered.
class HMRCAPI_API CAPIErrorHandler
{
public:
    struct Group
    {
        std::string name;
        std::vector<CAPIError> errors;
    };

    /// A group that is there stays as it is, with its errors.
    void AddGroup(const std::string& name);
    /// Adds to the group `name`, which is made when it is not there.
    void AddError(const std::string& name, const CAPIError& error);
    int GetErrorCount() const noexcept; // of all groups
    const std::vector<Group>& GetGroups() const noexcept { return m_groups; }
    /// One message box: a heading per group with errors, one line per error, "message (code)". None: nothing.
    void DisplayErrors() const;

private:
    std::vector<Group> m_groups;
};

} // namespace HmrcApi
