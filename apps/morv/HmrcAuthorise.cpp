// hmrc authorise.

#include <cstdio>

#include "BrowserCommand.h"
#include "common/GiveAuthority.h"
#include "HmrcCommands.h"
#include "MorvUt/hmrc/fetch/FetchStates.h"

namespace Morv
{

namespace
{

/// Ends the wait for the browser when its command has failed. Once the code has come it no longer matters.
class WatchingWindowSystem : public Afx::ConsoleWindowSystem
{
public:
    explicit WatchingWindowSystem(BrowserCommand& browser) : m_browser(browser) {}
    void ShowWait(const std::string& text) override { m_isWaiting = !text.empty(); }
    bool WaitCancelled() override { return m_isWaiting && m_browser.HasFailed(); }

private:
    BrowserCommand& m_browser;
    bool m_isWaiting = false;
};

class BrowserWatch
{
public:
    explicit BrowserWatch(BrowserCommand& browser)
        : m_before(Afx::WindowSystem::Install(std::make_unique<WatchingWindowSystem>(browser)))
    {}
    ~BrowserWatch() { Afx::WindowSystem::Install(std::move(m_before)); }
    BrowserWatch(const BrowserWatch&) = delete;
    BrowserWatch& operator=(const BrowserWatch&) = delete;

private:
    std::unique_ptr<Afx::WindowSystem> m_before;
};

[[noreturn]] void ThrowError(const HmrcApi::CAuthorisation::Error& error)
{
    const bool isOfPractice = HmrcApi::IsBusy(error.code) || error.code == "TOKENS_NOT_SAVED";
    throw CommandError(isOfPractice                                       ? Exit::CannotOpen
                       : HmrcApi::IsUnreachable(error.code, error.status) ? Exit::HmrcUnreachable
                                                                          : Exit::Refused,
                       error.code.empty() ? "REFUSED" : error.code,
                       error.text.empty() ? "HMRC gave no authority" : error.text,
                       HmrcApi::ActionFor(error.code, error.status));
}

void Print(const HmrcApi::GatewayState& state)
{
    const std::string end = ShownDate(state.grantEnds);
    PrintLine("%s may read %s records at %s until %s.", state.gateway, state.ScopeInWords(), state.service, end);
}

} // namespace

void Authorise(const HmrcArguments& arguments, const CommonOptions& options)
{
    UseBase(options);
    if (const std::string why = WhyNotGateway(arguments.gateway); !why.empty())
        throw CommandError(Exit::BadInput, "BAD_GATEWAY", "--gateway: " + why,
                           "Give the ID as HMRC's letters show it.");
    const PracticeSession session(arguments.practice, options, Login::Needed);
    BrowserCommand browser;
    const BrowserWatch watch(browser);
    const auto error = GiveAuthority(arguments.gateway, [&](const std::string& address) {
        std::fprintf(stderr, "Open this address in a browser and give authority: %s\n", address.c_str());
        return arguments.browser.empty() || browser.Start(arguments.browser, address);
    });
    if (error && error->code == "CANCELLED" && browser.HasFailed())
        throw CommandError(Exit::Refused, "BROWSER_NOT_OPENED",
                           "--browser: the command ended with exit code " + std::to_string(browser.GetExit()),
                           "Name a command that opens the address given to it, or leave the option out and open it "
                           "yourself.");
    if (error)
        ThrowError(*error);
    const HmrcApi::GatewayState state = HmrcApi::ReadGatewayState(arguments.gateway);
    if (options.json)
        PrintJson(ToJson(state));
    else
        Print(state);
}

} // namespace Morv
