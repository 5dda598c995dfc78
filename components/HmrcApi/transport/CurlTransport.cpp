// HTTP by libcurl.

#include <algorithm>
#include <chrono>
#include <cstring>
#include <memory>
#include <string_view>

#include <curl/curl.h>

#include "Afx/text/TextFold.h"
#include "HmrcApi/http/HttpModule.h"
#include "HmrcApi/transport/Pace.h"
#include "HmrcApi/transport/Transport.h"

namespace HmrcApi
{
namespace
{

using Outcome = HttpAnswer::Outcome;
using SteadyClock = std::chrono::steady_clock;

constexpr int kRedirects = 3;

struct FreeHandle
{
    void operator()(CURL* handle) const noexcept { curl_easy_cleanup(handle); }
};
struct FreeList
{
    void operator()(curl_slist* list) const noexcept { curl_slist_free_all(list); }
};
struct FreeUrl
{
    void operator()(CURLU* url) const noexcept { curl_url_cleanup(url); }
};

bool IsReady()
{
    static const bool ready = curl_global_init(CURL_GLOBAL_DEFAULT) == CURLE_OK;
    return ready;
}

std::string UrlPart(CURLU* url, CURLUPart part)
{
    char* text = nullptr;
    if (curl_url_get(url, part, &text, CURLU_DEFAULT_PORT) != CURLUE_OK)
        return {};
    std::string copy(text);
    curl_free(text);
    return Afx::FoldLower(copy);
}

/// Scheme, host and port in one text; empty for what is no address.
std::string OriginOf(const std::string& address)
{
    const std::unique_ptr<CURLU, FreeUrl> url(curl_url());
    if (!url || curl_url_set(url.get(), CURLUPART_URL, address.c_str(), 0) != CURLUE_OK)
        return {};
    const std::string port = UrlPart(url.get(), CURLUPART_PORT);
    return UrlPart(url.get(), CURLUPART_SCHEME) + "://" + UrlPart(url.get(), CURLUPART_HOST) +
           (port.empty() ? "" : ':' + port);
}

/// What one exchange needs while it runs.
struct Exchange
{
    const HttpRequest& request;
    HttpAnswer answer;
    bool isTooLarge = false;
    bool isCancelled = false;
};

std::size_t OnBody(char* data, std::size_t, std::size_t size, void* context)
{
    auto& exchange = *static_cast<Exchange*>(context);
    if (size > exchange.request.bodyLimit - std::min(exchange.request.bodyLimit, exchange.answer.body.size())) {
        exchange.isTooLarge = true;
        return 0; // ends the transfer
    }
    exchange.answer.body.append(data, size);
    return size;
}

std::size_t OnHeader(char* data, std::size_t, std::size_t size, void* context)
{
    auto& exchange = *static_cast<Exchange*>(context);
    constexpr std::string_view kName = "retry-after:";
    std::string_view line(data, size);
    if (line.starts_with("HTTP/"))
        exchange.answer.retryAfter.clear(); // the header of an earlier answer (100, a proxy's) counts no more
    if (line.size() < kName.size() || !Afx::EqualNoCase(line.substr(0, kName.size()), kName))
        return size;
    line.remove_prefix(kName.size());
    const std::size_t first = line.find_first_not_of(" \t\r\n");
    if (first != std::string_view::npos)
        exchange.answer.retryAfter = line.substr(first, line.find_last_not_of(" \t\r\n") - first + 1);
    return size;
}

int OnProgress(void* context, curl_off_t, curl_off_t, curl_off_t, curl_off_t)
{
    auto& exchange = *static_cast<Exchange*>(context);
    exchange.isCancelled = exchange.request.cancelled && exchange.request.cancelled();
    return exchange.isCancelled ? 1 : 0;
}

Outcome OutcomeOf(CURLcode code, const Exchange& exchange) noexcept
{
    if (exchange.isTooLarge)
        return Outcome::TooLarge;
    if (exchange.isCancelled)
        return Outcome::Cancelled;
    switch (code) {
    case CURLE_OK:
        return Outcome::Answered;
    case CURLE_OPERATION_TIMEDOUT:
        return Outcome::TimedOut;
    // The connection stood, and what came over it is not a whole answer.
    case CURLE_PARTIAL_FILE:
    case CURLE_GOT_NOTHING:
    case CURLE_RECV_ERROR:
    case CURLE_SEND_ERROR:
    case CURLE_BAD_CONTENT_ENCODING:
    case CURLE_WEIRD_SERVER_REPLY:
    case CURLE_HTTP2:
    case CURLE_HTTP2_STREAM:
        return Outcome::Incomplete;
    default:
        return Outcome::NoConnection;
    }
}

std::string MediaType(const char* contentType)
{
    std::string_view type = contentType ? contentType : "";
    type = type.substr(0, type.find(';'));
    while (!type.empty() && type.back() == ' ')
        type.remove_suffix(1);
    return Afx::FoldLower(type);
}

bool IsRedirect(long status) noexcept
{
    return status == 301 || status == 302 || status == 303 || status == 307 || status == 308;
}

/// Personal to the host first asked: its token, and what describes this computer.
bool IsPersonalHeader(std::string_view name)
{
    return Afx::EqualNoCase(name, "Authorization") || Afx::EqualNoCase(name.substr(0, 4), "Gov-");
}

HttpAnswer Refusal(std::string problem)
{
    HttpAnswer answer;
    answer.outcome = Outcome::NoConnection;
    answer.problem = std::move(problem);
    return answer;
}

/// One handle for the life of the object, so that its connection stays open between requests.
class CurlTransport : public ITransport
{
public:
    explicit CurlTransport(const HttpSettings& settings)
        : m_handle(IsReady() ? curl_easy_init() : nullptr), m_settings(settings)
    {}

    HttpAnswer Send(const HttpRequest& request) override
    {
        if (!m_handle)
            return Refusal("the HTTP library cannot start");
        const auto deadline = SteadyClock::now() + std::chrono::milliseconds(request.totalMilliseconds);
        const std::string firstOrigin = OriginOf(request.address);
        std::string address = request.address;
        HttpAnswer redirect;     // the one that led to the address
        bool isFirstHost = true; // and no other one has said where to go
        for (int redirects = 0;; ++redirects) {
            if (!MaySend(address, request.address))
                return redirects == 0 ? Refusal("the address is neither HTTPS nor on this computer")
                                      : Elsewhere(std::move(redirect), address);
            if (HasPace(address) && !TakeTurn(request.cancelled, MillisecondsTo(deadline)))
                return Unsent(request.cancelled && request.cancelled() ? Outcome::Cancelled : Outcome::TimedOut);
            isFirstHost = isFirstHost && OriginOf(address) == firstOrigin;
            const long long left = MillisecondsTo(deadline);
            if (left <= 0)
                return Unsent(Outcome::TimedOut);
            Exchange exchange{request, {}};
            const std::string next = Perform(address, isFirstHost, left, exchange);
            if (next.empty() || redirects >= kRedirects || request.method != "GET")
                return isFirstHost || exchange.answer.outcome != Outcome::Answered
                           ? std::move(exchange.answer)
                           : Elsewhere(std::move(exchange.answer), address);
            redirect = std::move(exchange.answer);
            address = next;
        }
    }

private:
    static HttpAnswer Unsent(Outcome outcome)
    {
        HttpAnswer answer;
        answer.outcome = outcome;
        return answer;
    }

    static HttpAnswer Elsewhere(HttpAnswer answer, const std::string& address)
    {
        answer.isElsewhere = true;
        answer.problem = OriginOf(address);
        return answer;
    }

    static long long MillisecondsTo(SteadyClock::time_point moment)
    {
        return std::chrono::duration_cast<std::chrono::milliseconds>(moment - SteadyClock::now()).count();
    }

    /// Plain HTTP stays on this computer, and an answer from outside does not lead to it.
    static bool MaySend(const std::string& address, const std::string& first)
    {
        if (IsLoopbackAddress(address))
            return IsLoopbackAddress(first);
        return Afx::EqualNoCase(std::string_view(address).substr(0, 8), "https://");
    }

    template<class Value>
    void Set(CURLoption option, Value value)
    {
        curl_easy_setopt(m_handle.get(), option, value);
    }

    void SetConnection(const std::string& address, const HttpRequest& request, long long milliseconds)
    {
        Set(CURLOPT_URL, address.c_str());
        Set(CURLOPT_PROTOCOLS_STR, "http,https");
        Set(CURLOPT_NOSIGNAL, 1L);
        Set(CURLOPT_CONNECTTIMEOUT_MS, static_cast<long>(request.connectMilliseconds));
        Set(CURLOPT_TIMEOUT_MS, static_cast<long>(milliseconds));
        Set(CURLOPT_SSL_VERIFYPEER, 1L);
        Set(CURLOPT_SSL_VERIFYHOST, 2L);
        if (m_settings.authorities.empty()) {
            Set(CURLOPT_SSL_OPTIONS, static_cast<long>(CURLSSLOPT_NATIVE_CA)); // Windows keeps them in no file
        } else {
            Set(CURLOPT_CAINFO, m_settings.authorities.c_str());
            Set(CURLOPT_PROXY_CAINFO, m_settings.authorities.c_str());
        }
        Set(CURLOPT_SSLVERSION, static_cast<long>(CURL_SSLVERSION_TLSv1_2));
        if (IsLoopbackAddress(address) || Afx::EqualNoCase(m_settings.proxy, kNoProxy))
            Set(CURLOPT_NOPROXY, "*");
        else if (!m_settings.proxy.empty())
            Set(CURLOPT_PROXY, m_settings.proxy.c_str()); // otherwise the environment's
        Set(CURLOPT_SUPPRESS_CONNECT_HEADERS, 1L);
        Set(CURLOPT_USERAGENT, "MorvUt/" MORVUT_VERSION_TEXT);
        Set(CURLOPT_ACCEPT_ENCODING, "gzip");
    }

    void SetBody(const HttpRequest& request)
    {
        if (request.method == "GET")
            return;
        Set(CURLOPT_CUSTOMREQUEST, request.method.c_str());
        Set(CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(request.body.size()));
        Set(CURLOPT_POSTFIELDS, request.body.c_str());
    }

    void SetCallbacks(Exchange& exchange, char* problem)
    {
        Set(CURLOPT_WRITEFUNCTION, &OnBody);
        Set(CURLOPT_WRITEDATA, static_cast<void*>(&exchange));
        Set(CURLOPT_HEADERFUNCTION, &OnHeader);
        Set(CURLOPT_HEADERDATA, static_cast<void*>(&exchange));
        Set(CURLOPT_XFERINFOFUNCTION, &OnProgress);
        Set(CURLOPT_XFERINFODATA, static_cast<void*>(&exchange));
        Set(CURLOPT_NOPROGRESS, 0L);
        Set(CURLOPT_ERRORBUFFER, problem);
    }

    /// One request and its answer; the address it redirects to, else an empty text.
    std::string Perform(const std::string& address, bool isFirstHost, long long milliseconds, Exchange& exchange)
    {
        std::unique_ptr<curl_slist, FreeList> headers;
        for (const auto& [name, value] : exchange.request.headers) {
            if (!isFirstHost && IsPersonalHeader(name))
                continue;
            curl_slist* longer = curl_slist_append(headers.get(), (name + ": " + value).c_str());
            if (!longer)
                continue;
            (void)headers.release(); // the longer list is the same list
            headers.reset(longer);
        }
        char problem[CURL_ERROR_SIZE] = "";
        curl_easy_reset(m_handle.get());
        SetConnection(address, exchange.request, milliseconds);
        SetBody(exchange.request);
        SetCallbacks(exchange, problem);
        Set(CURLOPT_HTTPHEADER, headers.get());

        const CURLcode code = curl_easy_perform(m_handle.get());
        const std::string next = Finish(code, problem, exchange);
        curl_easy_reset(m_handle.get()); // nothing in it may point to what ends here
        return next;
    }

    std::string Finish(CURLcode code, const char* problem, Exchange& exchange)
    {
        HttpAnswer& answer = exchange.answer;
        answer.outcome = OutcomeOf(code, exchange);
        long status = 0, ofProxy = 0;
        curl_easy_getinfo(m_handle.get(), CURLINFO_RESPONSE_CODE, &status);
        curl_easy_getinfo(m_handle.get(), CURLINFO_HTTP_CONNECTCODE, &ofProxy);
        if (code == CURLE_RECV_ERROR && ofProxy >= 300)
            answer.outcome = Outcome::NoConnection; // a proxy that did not lead on: nothing has been asked of anybody
        if (answer.outcome != Outcome::Answered) {
            answer.body.clear(); // a part of an answer is none
            if (answer.outcome == Outcome::TooLarge || answer.outcome == Outcome::Incomplete)
                answer.status = static_cast<int>(status);
            if (answer.outcome != Outcome::TooLarge &&
                answer.outcome != Outcome::Cancelled) // for the two that we caused the library has no good words
                answer.problem = *problem ? problem : curl_easy_strerror(code);
            return {};
        }
        const char* type = nullptr;
        const char* next = nullptr;
        curl_easy_getinfo(m_handle.get(), CURLINFO_CONTENT_TYPE, &type);
        curl_easy_getinfo(m_handle.get(), CURLINFO_REDIRECT_URL, &next);
        answer.status = static_cast<int>(status);
        answer.contentType = MediaType(type);
        return IsRedirect(status) && next ? std::string(next) : std::string();
    }

    std::unique_ptr<CURL, FreeHandle> m_handle;
    const HttpSettings m_settings;
};

} // namespace

std::unique_ptr<ITransport> MakeCurlTransport(const HttpSettings& settings)
{
    return std::make_unique<CurlTransport>(settings);
}

} // namespace HmrcApi
