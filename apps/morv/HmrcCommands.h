#pragma once

// The commands on HMRC's records, each in its own source.

#include <cstdint>
#include <memory>
#include <string>

#include "Afx/system/SignalGuard.h"
#include "Afx/windows/WindowSystem.h"
#include "Commands.h"
#include "MorvUt/hmrc/access/GatewayState.h"
#include "Output.h"

namespace Morv
{

struct HmrcArguments
{
    std::string practice, gateway, browser, chain, client;
    bool all = false, anew = false;
    std::int64_t accept = 0, reject = 0, skip = 0; // numbers of differences
    std::string as;                                // the hash of the one to accept
};

void Authorise(const HmrcArguments& arguments, const CommonOptions& options);
Exit Fetch(const HmrcArguments& arguments, const CommonOptions& options);
Exit Create(const HmrcArguments& arguments, const CommonOptions& options);
void Differences(const HmrcArguments& arguments, const CommonOptions& options);
/// The audit of what was decided about the client's figures.
void History(const HmrcArguments& arguments, const CommonOptions& options);
void ShowLog(const HmrcArguments& arguments, const CommonOptions& options);

/// --base, for the commands that ask HMRC.
void UseBase(const CommonOptions& options);

Json ToJson(const HmrcApi::GatewayState& gateway);
/// What a user must know of its grant now; empty: nothing.
CString WarningOf(const HmrcApi::GatewayState& gateway);

/// While it lives, message boxes are answered as on the console and not printed: the command itself says what they say.
class QuietMessages
{
public:
    QuietMessages();
    ~QuietMessages();
    QuietMessages(const QuietMessages&) = delete;
    QuietMessages& operator=(const QuietMessages&) = delete;

private:
    std::unique_ptr<Afx::WindowSystem> m_before;
};

/// While it lives Ctrl-C and its like wait, for a command that ends between two clients and says how far it came; when
/// it ends they take their course.
class SignalsWait
{
public:
    SignalsWait() = default;
    ~SignalsWait();
    SignalsWait(const SignalsWait&) = delete;
    SignalsWait& operator=(const SignalsWait&) = delete;

private:
    Afx::SignalGuard m_guard;
};

/// What one command did for many clients.
struct Tally
{
    int clients = 0, ok = 0;

    void Add(bool isOk)
    {
        ++clients;
        ok += isOk ? 1 : 0;
    }
    Exit Result() const { return ok == clients ? Exit::Done : Exit::Refused; }
    Json ToJson() const { return {{"clients", clients}, {"ok", ok}, {"failed", clients - ok}}; }
};

} // namespace Morv
