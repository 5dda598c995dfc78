#include "MorvUt/users/UserData.h"

#include "Afx/windows/MessageBox.h"
#include "MorvUt/res/Strings.h"
#include "MorvUt/users/detail/LoggedIn.h"
#include "Shellkit/Bytes.h"
#include "Shellkit/MemoryCipher.h"
#include "Shellkit/NamedItems.h"

namespace
{

constexpr char kReadOnlyPIN[] = "MORVUT::ReadOnlyPIN";

void ShowClientIsReadOnly()
{
    const Afx::ResourceContextGuard resources(MorvUtResources());
    AfxMessageBox(IDS_CLIENT_READ_ONLY);
}

const Users::Detail::Particulars& Mine() noexcept { return Users::Detail::Current().particulars; }

} // namespace

namespace Users::Detail
{

Secret::Secret(std::string_view bytes)
{
    m_bytes.reserve(bytes.size() + 1);
    m_bytes.assign(bytes.begin(), bytes.end());
    m_bytes.push_back('\0');
}

Secret::~Secret() { Shellkit::Wipe(m_bytes.data(), m_bytes.size()); }

void Secret::Encipher()
{
    if (GetLength() > 0)
        Encrypt(reinterpret_cast<unsigned char*>(m_bytes.data()), static_cast<unsigned>(GetLength()));
}

LoggedIn& Current() noexcept
{
    static LoggedIn current;
    return current;
}

} // namespace Users::Detail

CString CUserData::m_strUser;
CStringArray CUserData::m_arrUsers;
CStringArray CUserData::m_arrUserFullnames;
CArray<CUserData::CUserGroupItem> CUserData::m_UserGroups;
int CUserData::m_bReadOnly = 0;
int CUserData::m_nLocalReadOnly = 0;
CString CUserData::m_strApplicationName;
CString CUserData::m_strKeyBase;

CUserData& TheUser() noexcept
{
    static CUserData user;
    return user;
}

CUserData::CUserData() noexcept { Users::Detail::Current().hasLoggedIn = false; }
CUserData::~CUserData() = default;

int CUserData::HasUserLoggedIn() const noexcept { return Users::Detail::Current().hasLoggedIn; }
void CUserData::SetUserLoggedIn() noexcept { Users::Detail::Current().hasLoggedIn = true; }

int CUserData::HasGroup(const char* name) const noexcept
{
    for (const CUserGroupItem& group : m_UserGroups)
        if (group.m_strName == name)
            return 1;
    return 0;
}

CString CUserData::GetGroupInList() const
{
    CString list("(");
    for (const CUserGroupItem& group : m_UserGroups) {
        if (list.GetLength() > 1)
            list += ", ";
        list += "'" + group.m_strName + "'";
    }
    return list + ")";
}

const char* CUserData::GetFullUserName() const noexcept { return Mine().fullName; }
const char* CUserData::GetEmailAddress() const noexcept { return Mine().email; }
const char* CUserData::GetTelephone() const noexcept { return Mine().telephone; }
const char* CUserData::GetFBIUserName() const noexcept { return Mine().fbiUserName; }
const char* CUserData::GetFBIPassword() const noexcept { return Mine().fbiPassword.GetString(); }
std::vector<unsigned char> CUserData::GetEncryptedFBIPassword() const { return Mine().storedFBIPassword; }
int CUserData::RememberFBIPassword() const noexcept { return Mine().rememberFBIPassword; }
int CUserData::FBICanSendImmediately() const noexcept { return Mine().fbiSendImmediately; }
const char* CUserData::GetGatewayID() const noexcept { return Mine().gatewayId; }
const char* CUserData::GetTallywickUserName() const noexcept { return Mine().tallywickUserName; }
const char* CUserData::GetTallywickPassword() const noexcept { return Mine().tallywickPassword.GetString(); }
int CUserData::GetTallywickPasswordLength() const noexcept { return Mine().tallywickPassword.GetLength(); }

void CUserData::SetTallywickUserNameAndPassword(CString user, CString password)
{
    Users::Detail::Secret enciphered(password.View());
    enciphered.Encipher();
    Users::Detail::Particulars& particulars = Users::Detail::Current().particulars;
    particulars.tallywickUserName = user;
    particulars.tallywickPassword = std::move(enciphered);
}

int CUserData::IsReadOnly() { return m_bReadOnly || m_nLocalReadOnly > 0 || IsReadOnlyPIN(); }
int CUserData::IsReadOnlyBecauseLocked() noexcept { return m_bReadOnly; }
int CUserData::IsReadOnlyPIN() { return Shellkit::GetSharedFlag(kReadOnlyPIN); }
void CUserData::SetReadOnly(int readOnly) noexcept { m_bReadOnly = readOnly; }
void CUserData::SetReadOnlyPIN(int readOnly) { Shellkit::SetSharedFlag(kReadOnlyPIN, readOnly != 0); }
void CUserData::SetLocalReadOnly() noexcept { ++m_nLocalReadOnly; }

void CUserData::ReleaseLocalReadOnly() noexcept
{
    if (m_nLocalReadOnly > 0)
        --m_nLocalReadOnly;
}

int CUserData::CheckForReadOnlyWithError()
{
    if (!IsReadOnly())
        return 0;
    ShowClientIsReadOnly();
    return 1;
}

int CUserData::IsReadOnlyBecauseLockedWithError()
{
    if (!m_bReadOnly)
        return 0;
    ShowClientIsReadOnly();
    return 1;
}
