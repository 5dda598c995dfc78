#pragma once

// The user's browser, and what one needs to sign in with it.

#include "HmrcApi/Fakes.h"
#include "HmrcApi/LocalServer.h"

namespace HmrcApi::Fakes
{

/// A port that was free a moment ago.
inline unsigned short FreePort()
{
    LocalServer probe;
    probe.Start();
    return probe.Port();
}

/// The value of a query member, decoded.
inline std::string QueryOf(const std::string& address, const std::string& name)
{
    httplib::Params params;
    httplib::detail::parse_query_text(address.substr(address.find('?') + 1), params);
    const auto found = params.find(name);
    return found == params.end() ? std::string() : found->second;
}

/// The browser's request to the redirect address, on one family of addresses; its status.
inline int Visit(const std::string& host, const std::string& redirect, const std::string& query)
{
    const std::size_t port = redirect.rfind(':');
    httplib::Client browser(host, std::stoi(redirect.substr(port + 1)));
    const auto answer = browser.Get((redirect.substr(redirect.find('/', port)) + query).c_str());
    return answer ? answer->status : 0;
}

class Dialogue : public Plumbing
{
protected:
    Dialogue()
    {
        authorisation->SetRedirectPorts(ports);
        authorisation->SetBrowserTimeout(5000);
        authorisation->SetCancel({});
    }

    /// The browser takes the user to the redirect address with `answer` and the state.
    void Answer(const std::string& answer)
    {
        authorisation->SetBrowser([this, answer](const std::string& address) {
            page = address;
            status = Stored("nAuthorisedStatus");
            return Visit("127.0.0.1", QueryOf(page, "redirect_uri"), answer + "&state=" + QueryOf(page, "state")) ==
                   200;
        });
    }

    const std::vector<unsigned short> ports{FreePort(), FreePort(), FreePort()};
    std::string page, status; // at the browser
};

} // namespace HmrcApi::Fakes
