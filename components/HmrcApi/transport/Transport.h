#pragma once

// The port behind which HTTP happens.

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "HmrcApi/Export.h"

namespace HmrcApi
{

/// How long a request may take that sets no limits of its own.
struct Timeouts
{
    unsigned connectMilliseconds = 10'000;
    unsigned totalMilliseconds = 60'000;
};
HMRCAPI_API Timeouts GetTimeouts() noexcept;
/// Shortens them for this process; {} puts the usual ones back. Longer ones are cut to the usual ones, because the
/// token lock of a workstation that still waits would be taken for one left behind.
HMRCAPI_API void SetTimeouts(Timeouts timeouts) noexcept;

struct HttpRequest
{
    std::string method = "GET";
    std::string address; // absolute
    std::vector<std::pair<std::string, std::string>> headers;
    std::string body;
    unsigned connectMilliseconds = GetTimeouts().connectMilliseconds;
    unsigned totalMilliseconds = GetTimeouts().totalMilliseconds;
    std::size_t bodyLimit = 8u * 1024 * 1024; // after decompression
    std::function<bool()> cancelled;          // asked during the request; may be empty
};

struct HttpAnswer
{
    enum class Outcome
    {
        Answered,
        NoConnection, // refused, unknown host, TLS failure
        Incomplete,   // dropped short of its length
        TimedOut,
        TooLarge,
        Cancelled,
        NoTransport // this installation cannot send
    };
    Outcome outcome = Outcome::NoConnection;
    int status = 0;          // also when TooLarge or Incomplete; 0: no answer began
    std::string contentType; // lower case, without parameters
    std::string retryAfter;  // as sent; empty when absent
    std::string body;
    std::string problem;      // for people, when not Answered or elsewhere; never holds a token
    bool isElsewhere = false; // a redirect led to another host, whoever answered then, or to where nothing is sent
};

/// Sends one request. Redirects of GET are followed, with the Authorization header only to the host first asked, and
/// not once another one has led back to it.
class HMRCAPI_API ITransport
{
public:
    virtual ~ITransport();
    virtual HttpAnswer Send(const HttpRequest& request) = 0;
};

/// The way out of this computer, where it is not to be the system's.
struct HttpSettings
{
    std::string authorities; // file of certificates (PEM) to trust in place of the system's; empty: the system's
    /// Address of the proxy; empty: the one of the environment (https_proxy, all_proxy); "none": none at all. What
    /// no_proxy names is asked directly in any case.
    std::string proxy;
};
inline constexpr char kNoProxy[] = "none"; // in any case
/// Registry values "HMRCCertificates" and "HMRCProxy".
HMRCAPI_API HttpSettings ReadHttpSettings();
/// The proxy through which HMRC is asked then, without what signs in to it; empty: directly.
HMRCAPI_API std::string ProxyInUse(const HttpSettings& settings);

/// The system's HTTP library (libcurl). TLS verification is always on, also of a proxy that speaks TLS; plain HTTP only
/// to loopback addresses, which are never reached through a proxy. A proxy hears the name of the host and nothing else
/// of a request. Requests to other hosts go at most twice a second from this process
/// (see Pace.h).
HMRCAPI_API std::unique_ptr<ITransport> MakeHttpTransport(const HttpSettings& settings = ReadHttpSettings());

/// The scheme is HTTP or HTTPS and the host is 127.0.0.0/8, [::1] or localhost.
HMRCAPI_API bool IsLoopbackAddress(const std::string& address);
/// Such an address that paths can be put behind: without a query or a fragment.
HMRCAPI_API bool IsLoopbackBase(const std::string& address);

} // namespace HmrcApi
