#pragma once

// HMRC's errors, and ours, gathered per group and shown once.

#include <exception>
#include <string>
#include <string_view>
#include <vector>

#include "HmrcApi/Export.h"

namespace HmrcApi
{

/// A failure of one fetch: code, text, and the path, field or HTTP status that it is about (may be empty).
class HMRCAPI_API HmrcApiErrorException : public std::exception
{
public:
    HmrcApiErrorException(std::string code, std::string text, std::string third, std::string status = {});
    ~HmrcApiErrorException() override;
    const char* what() const noexcept override { return m_text.c_str(); }
    const std::string& GetCode() const noexcept { return m_code; }
    const std::string& GetText() const noexcept { return m_text; }
    const std::string& GetThird() const noexcept { return m_third; }
    const std::string& GetStatus() const noexcept { return m_status; } // HTTP status, empty when there was no answer

private:
    std::string m_code, m_text, m_third, m_status;
};

/// One entry: HMRC's or our code, the message, the path or field, the HTTP status.
class HMRCAPI_API CAPIError
{
public:
    CAPIError(std::string code, std::string message, std::string field, std::string status);
    const std::string& GetCode() const noexcept { return m_code; }
    const std::string& GetMessageText() const noexcept { return m_message; }
    const std::string& GetField() const noexcept { return m_field; }
    const std::string& GetHttpStatus() const noexcept { return m_status; }

private:
    std::string m_code, m_message, m_field, m_status;
};

/// What the user can do about an error of this code and HTTP status: one sentence, never empty.
HMRCAPI_API std::string ActionFor(std::string_view code, std::string_view httpStatus);

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
