#pragma once

// What the process keeps of the logged-in user behind CUserData.

#include <bitset>
#include <utility>
#include <vector>

#include "Afx/text/CString.h"

namespace Users::Detail
{

/// A password: its bytes, which may hold zeros, and an end mark. Overwritten before its memory is given back.
class Secret
{
public:
    Secret() = default;
    explicit Secret(std::string_view bytes);
    Secret(Secret&& other) noexcept : m_bytes(std::exchange(other.m_bytes, {})) {}
    Secret& operator=(Secret&& other) noexcept
    {
        m_bytes.swap(other.m_bytes);
        return *this;
    }
    ~Secret();

    const char* GetString() const noexcept { return m_bytes.empty() ? "" : m_bytes.data(); }
    int GetLength() const noexcept { return m_bytes.empty() ? 0 : static_cast<int>(m_bytes.size()) - 1; }
    void Encipher(); // in place, with the key of this process

private:
    std::vector<char> m_bytes;
};

/// From the user's row.
struct Particulars
{
    CString fullName, email, telephone, gatewayId, fbiUserName, tallywickUserName;
    Secret fbiPassword, tallywickPassword;
    std::vector<unsigned char> storedFBIPassword;
    bool rememberFBIPassword = false;
    bool fbiSendImmediately = false;
};

/// A permission row: the number and whether it is allowed.
using PermissionRow = std::pair<int, bool>;
/// The rows of the role, or of the user when the role is empty.
std::vector<PermissionRow> ReadPermissionRows(const CString& userId, const CString& role);

inline constexpr int kPermissionEnd = 100; // numbers are 1 to 99

struct LoggedIn
{
    bool hasLoggedIn = false;
    Particulars particulars;
    std::bitset<kPermissionEnd> allowed; // by permission number; no row: not allowed
};
LoggedIn& Current() noexcept;

} // namespace Users::Detail
