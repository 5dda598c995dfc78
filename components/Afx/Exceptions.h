#pragma once

// Exceptions in the MFC manner: made with new, thrown as pointers, ended with Delete().

#include "Afx/Object.h"
#include "Afx/text/CString.h"

/// The base of the framework's exceptions. Whoever catches one calls `Delete`.
class AFX_API CException : public CObject
{
    DECLARE_DYNAMIC(CException)
    CException() = default;
    explicit CException(CString message) : m_message(std::move(message)) {}
    ~CException() override;

    void Delete() { delete this; }
    /// What went wrong, for people.
    virtual CString GetErrorMessage() const { return m_message; }

private:
    CString m_message;
};

/// Stops an operation that the user has already been told about.
class AFX_API CUserException : public CException
{
    DECLARE_DYNAMIC(CUserException)
    using CException::CException;
    ~CUserException() override;
};

/// A caller's mistake: an argument that the operation cannot take.
class AFX_API CInvalidArgException : public CException
{
    DECLARE_DYNAMIC(CInvalidArgException)
    using CException::CException;
    ~CInvalidArgException() override;
};
