#pragma once

// How a thread that asks HMRC has its work with the practice done by the one thread whose connection it is.

#include <functional>
#include <optional>
#include <string>

#include "MorvUt/hmrc/access/AuthorisationStore.h"
#include "MorvUt/hmrc/access/Logger.h"
#include "MorvUt/hmrc/access/PracticeOptions.h"

namespace HmrcApi
{

/// Where the practice is written and read. It keeps what a run over many clients reads once, for its own thread.
class Desk
{
public:
    virtual ~Desk();

    /// The practice's options as they were when the first client's fetch began.
    const PracticeOptions& GetOptions();
    /// The authority as the run read or wrote it last. Null when there is none, and when it is to be read again: nobody
    /// has yet, what was known may have changed, or the access token is near its end.
    const CAuthorisationStore* GetGrant();
    /// Null: it is to be read again.
    void KeepGrant(const CAuthorisationStore* grant);

    /// Has `work` done there and returns when it is; what it throws is thrown here. Not for the desk's own thread.
    virtual void Do(const std::function<void()>& work) = 0;
    /// Leaves `work` there, to be done before what this thread gives later. It throws nothing.
    virtual void Leave(std::function<void()> work) = 0;

private:
    std::optional<PracticeOptions> m_options;
    std::optional<CAuthorisationStore> m_grant;
};

/// A store whose operations on the database happen at the desk. What it loads first may be what the run knows already;
/// from then on it reads the row: what was loaded has been refused, or is to be replaced.
class DeskStore : public CAuthorisationStore
{
public:
    DeskStore(const CAuthorisationStore& store, Desk& desk) : CAuthorisationStore(store), m_desk(desk) {}
    ~DeskStore() override;

    bool LoadTokens() override;
    bool UpdateTokens() override;
    bool LockStore() override;
    bool UnlockStore() override;
    bool HasAuthenticatedGatewayID() const override;
    Update UpdateLoaded() override;
    bool UpdateConsent() override;
    bool Rehearse() override;
    bool GetLockHolder(std::string& workstation, std::string& user) override;

private:
    template<class Work>
    auto AtDesk(Work work) const
    {
        std::optional<decltype(work())> result;
        m_desk.Do([&] { result = work(); });
        return *result;
    }

    /// The same, and what the store holds afterwards is the run's grant, if `isKept` says so of the result.
    template<class Work, class IsKept>
    auto KeptAtDesk(Work work, IsKept isKept);

    Desk& m_desk;
    bool m_isFirst = true; // nothing was loaded yet
};

/// A log whose lines are written at the desk; nobody waits for that. It must outlive them.
class DeskLogger : public Logger
{
public:
    explicit DeskLogger(Desk& desk) : m_desk(desk) {}
    ~DeskLogger() override;
    void Log(const std::string& a1, const std::string& a2, const std::string& a3, const std::string& a4,
             const std::string& a5) override;

private:
    Desk& m_desk;
};

} // namespace HmrcApi
