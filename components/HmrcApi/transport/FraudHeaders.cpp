#include "HmrcApi/transport/FraudHeaders.h"

#include <cstdlib>
#include <fstream>

#include "Afx/text/TextFold.h"
#include "Afx/time/Clock.h"
#include "HmrcApi/transport/Uri.h"
#include "Shellkit/Identity.h"
#include "Shellkit/Registry.h"

namespace HmrcApi
{
namespace
{

constexpr char kSetting[] = "HMRCFraudPreventionHeaders";
constexpr char kDeviceId[] = "HMRCDeviceID";

/// A UUID made once and kept in the settings; empty when they cannot keep it, since another one each time would lie.
std::string DeviceId()
{
    CRegistry registry;
    std::string id = registry.GetString(kDeviceId).Str();
    if (!id.empty())
        return id;
    id = Afx::FoldLower(Shellkit::FormatGuid(Shellkit::NewGuid()));
    return registry.SetString(kDeviceId, id.c_str()) ? id : std::string();
}

/// `UTC±hh:mm`.
std::string TimeZone()
{
    const auto minutesOf = [](const Afx::LocalTime& time) { return Afx::ToUnixMilliseconds(time) / 60'000; };
    const std::int64_t utc = minutesOf(Afx::Clock::Utc());
    auto offset = static_cast<int>(minutesOf(Afx::Clock::Local()) - utc);
    offset = (offset + (offset < 0 ? -7 : 7)) / 15 * 15; // the clock may have turned a minute between the two readings
    std::string text = offset < 0 ? "UTC-" : "UTC+";
    offset = offset < 0 ? -offset : offset;
    for (const int digit : {offset / 600, offset / 60 % 10, -1, offset % 60 / 10, offset % 10})
        text += digit < 0 ? ':' : static_cast<char>('0' + digit);
    return text;
}

#ifndef _WIN32
std::string FirstLine(const char* path)
{
    std::ifstream file(path);
    std::string line;
    std::getline(file, line);
    return line;
}
#endif

/// System and device; on Windows nothing yet.
std::string Device()
{
#ifdef _WIN32
    return {};
#else
    const std::string version = FirstLine("/proc/sys/kernel/osrelease");
    const std::string maker = FirstLine("/sys/class/dmi/id/sys_vendor");
    const std::string model = FirstLine("/sys/class/dmi/id/product_name");
    return EncodeForm(
        {{"os-family", "Linux"}, {"os-version", version}, {"device-manufacturer", maker}, {"device-model", model}});
#endif
}

std::string SystemUser()
{
#ifdef _WIN32
    const char* name = std::getenv("USERNAME");
#else
    const char* name = std::getenv("USER");
#endif
    return name && *name ? EncodeForm({{"os", name}}) : std::string();
}

} // namespace

std::vector<std::pair<std::string, std::string>> FraudPreventionHeaders()
{
    if (!CRegistry().GetBool(kSetting, true))
        return {};
    std::vector<std::pair<std::string, std::string>> headers{
        {"Gov-Client-Connection-Method", "DESKTOP_APP_DIRECT"},
        {"Gov-Client-Device-ID", DeviceId()},
        {"Gov-Client-Timezone", TimeZone()},
        {"Gov-Client-User-Agent", Device()},
        {"Gov-Client-User-IDs", SystemUser()},
        {"Gov-Vendor-Product-Name", PercentEncode(kProductName)},
        {"Gov-Vendor-Version", EncodeForm({{"morvut", MORVUT_VERSION_TEXT}})},
    };
    std::erase_if(headers, [](const auto& header) { return header.second.empty(); });
    return headers;
}

} // namespace HmrcApi
