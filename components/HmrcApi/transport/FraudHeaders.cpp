#include "HmrcApi/transport/FraudHeaders.h"

#include "Afx/text/TextFold.h"
#include "Afx/time/Clock.h"
#include "Afx/time/DateTime.h"
#include "HmrcApi/transport/detail/Machine.h"
#include "HmrcApi/transport/Uri.h"
#include "Shellkit/Identity.h"
#include "Shellkit/Registry.h"

namespace HmrcApi
{
namespace
{

constexpr char kSetting[] = "HMRCFraudPreventionHeaders";
constexpr char kDeviceId[] = "HMRCDeviceID";
constexpr char kApplication[] = "morvut";

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

/// System and device; empty when the system does not tell.
std::string Device()
{
    const Detail::Machine machine = Detail::ReadMachine();
    if (machine.system.empty())
        return {};
    return EncodeForm({{"os-family", machine.system},
                       {"os-version", machine.version},
                       {"device-manufacturer", machine.maker},
                       {"device-model", machine.model}});
}

/// The system's user and the program's own; empty when neither is known.
std::string UserIds(const std::string& applicationUser)
{
    const std::string systemUser = Detail::SystemUser();
    FormFields ids;
    if (!systemUser.empty())
        ids.emplace_back("os", systemUser);
    if (!applicationUser.empty())
        ids.emplace_back(kApplication, applicationUser);
    return EncodeForm(ids);
}

/// Each percent-encoded, the commas between them not.
std::string List(const std::vector<std::string>& values)
{
    std::string text;
    for (const std::string& value : values)
        text += (text.empty() ? "" : ",") + PercentEncode(value);
    return text;
}

/// Now, "2020-09-21T14:30:05.123Z".
std::string Timestamp()
{
    std::string text = COleDateTime(Afx::Clock::Utc()).FormatIso().Str() + 'Z';
    text[text.find(' ')] = 'T';
    return text;
}

} // namespace

std::vector<std::pair<std::string, std::string>> FraudPreventionHeaders(const std::string& applicationUser)
{
    if (!CRegistry().GetBool(kSetting, true))
        return {};
    const Detail::NetworkAddresses addresses = Detail::ReadNetworkAddresses();
    std::vector<std::pair<std::string, std::string>> headers{
        {"Gov-Client-Connection-Method", "DESKTOP_APP_DIRECT"},
        {"Gov-Client-Device-ID", DeviceId()},
        {"Gov-Client-Local-IPs", List(addresses.ip)},
        {"Gov-Client-Local-IPs-Timestamp", addresses.ip.empty() ? std::string() : Timestamp()},
        {"Gov-Client-MAC-Addresses", List(addresses.mac)},
        {"Gov-Client-Timezone", TimeZone()},
        {"Gov-Client-User-Agent", Device()},
        {"Gov-Client-User-IDs", UserIds(applicationUser)},
        {"Gov-Vendor-Product-Name", PercentEncode(kProductName)},
        {"Gov-Vendor-Version", EncodeForm({{kApplication, MORVUT_VERSION_TEXT}})},
    };
    std::erase_if(headers, [](const auto& header) { return header.second.empty(); });
    return headers;
}

} // namespace HmrcApi
