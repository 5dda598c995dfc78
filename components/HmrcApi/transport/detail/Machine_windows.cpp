#include "HmrcApi/transport/detail/Machine.h"

#include "Afx/Platform.h" // before the system's own, which it keeps small

#include <winsock2.h>

#include <iphlpapi.h>

#include "Afx/text/WideText_windows.h"
#include "HmrcApi/transport/detail/AddressText.h"

namespace HmrcApi::Detail
{
namespace
{

constexpr wchar_t kWindows[] = L"SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion";
constexpr wchar_t kFirmware[] = L"HARDWARE\\DESCRIPTION\\System\\BIOS";

/// A text of this computer's registry; empty without one.
std::string MachineText(const wchar_t* key, const wchar_t* name)
{
    wchar_t text[256] = L"";
    DWORD size = sizeof text;
    const bool isThere =
        RegGetValueW(HKEY_LOCAL_MACHINE, key, name, RRF_RT_REG_SZ, nullptr, text, &size) == ERROR_SUCCESS;
    return isThere ? Afx::Narrow(text) : std::string();
}

/// "10.0.22631": since Windows 10 the system tells its version here, and to programs without a manifest an older one.
std::string WindowsVersion()
{
    DWORD major = 0, minor = 0, size = sizeof major;
    const bool isNew = RegGetValueW(HKEY_LOCAL_MACHINE, kWindows, L"CurrentMajorVersionNumber", RRF_RT_REG_DWORD,
                                    nullptr, &major, &size) == ERROR_SUCCESS;
    size = sizeof minor;
    RegGetValueW(HKEY_LOCAL_MACHINE, kWindows, L"CurrentMinorVersionNumber", RRF_RT_REG_DWORD, nullptr, &minor, &size);
    const std::string build = MachineText(kWindows, L"CurrentBuildNumber");
    return (isNew ? std::to_string(major) + '.' + std::to_string(minor) : MachineText(kWindows, L"CurrentVersion")) +
           (build.empty() ? "" : '.' + build);
}

/// The adapters, one behind the other; the first stands at the beginning. Empty when the system does not tell.
std::vector<BYTE> ReadAdapters()
{
    constexpr ULONG kWithout = GAA_FLAG_SKIP_ANYCAST | GAA_FLAG_SKIP_MULTICAST | GAA_FLAG_SKIP_DNS_SERVER;
    std::vector<BYTE> adapters;
    ULONG size = 16 * 1024;
    for (int attempt = 0; attempt < 3; ++attempt) { // one more may come between asking and reading
        adapters.resize(size);
        const ULONG status = GetAdaptersAddresses(AF_UNSPEC, kWithout, nullptr,
                                                  reinterpret_cast<IP_ADAPTER_ADDRESSES*>(adapters.data()), &size);
        if (status == ERROR_SUCCESS)
            return adapters;
        if (status != ERROR_BUFFER_OVERFLOW)
            break;
    }
    return {};
}

std::string Variable(const wchar_t* name)
{
    wchar_t text[256];
    const DWORD length = GetEnvironmentVariableW(name, text, 256);
    return length < 256 ? Afx::Narrow({text, length}) : std::string();
}

} // namespace

Machine ReadMachine()
{
    return {"Windows", WindowsVersion(), MachineText(kFirmware, L"SystemManufacturer"),
            MachineText(kFirmware, L"SystemProductName")};
}

NetworkAddresses ReadNetworkAddresses()
{
    NetworkAddresses found;
    const std::vector<BYTE> adapters = ReadAdapters();
    const auto* each = adapters.empty() ? nullptr : reinterpret_cast<const IP_ADAPTER_ADDRESSES*>(adapters.data());
    for (; each; each = each->Next) {
        if (each->IfType == IF_TYPE_SOFTWARE_LOOPBACK)
            continue;
        for (const auto* address = each->FirstUnicastAddress; address; address = address->Next)
            if (std::string ip = IpText(*address->Address.lpSockaddr); !ip.empty())
                found.ip.push_back(std::move(ip));
        if (std::string mac = MacText({each->PhysicalAddress, each->PhysicalAddressLength}); !mac.empty())
            found.mac.push_back(std::move(mac));
    }
    return found;
}

std::string SystemUser()
{
    const std::string domain = Variable(L"USERDOMAIN"), name = Variable(L"USERNAME");
    return name.empty() || domain.empty() ? name : domain + '\\' + name;
}

} // namespace HmrcApi::Detail
