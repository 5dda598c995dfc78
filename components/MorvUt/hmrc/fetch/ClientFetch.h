#pragma once

// One client's fetch in its three steps.

#include <memory>
#include <string>

#include "MorvUt/hmrc/fetch/Desk.h"
#include "MorvUt/hmrc/fetch/FetchData.h"

namespace HmrcApi
{

class Retrieval;

/// Begin and End use the practice's connection and show messages. Ask waits for HMRC; where it runs on a thread of its
/// own a desk does what it needs of the practice. What goes wrong in one step ends up in the result, and the next steps
/// do nothing but show it.
class ClientFetch
{
public:
    /// `channel`: null for one of its own. `desk`: null where Ask is called on the connection's thread.
    ClientFetch(ClientId client, std::string gatewayId, IEndpointOverride::ResponseType type,
                std::shared_ptr<Channel> channel = nullptr, Desk* desk = nullptr);
    ~ClientFetch();
    ClientFetch(const ClientFetch&) = delete;
    ClientFetch& operator=(const ClientFetch&) = delete;

    /// Whether there is something to ask.
    bool Begin();
    void Ask();
    /// Stages what HMRC has answered.
    FetchResult End();
    /// As it stands between the steps.
    const FetchResult& GetResult() const noexcept { return m_result; }

    class Groups; // what is asked for
    struct Request;

private:
    template<class Work>
    void Try(Work work);
    void Fail(FetchResult::Stopped why, CString text);
    bool IsUnderWay() const noexcept { return m_groups && m_result.stopped == FetchResult::Stopped::No; }
    bool MayFetch();
    void Prepare();

    ClientId m_client;
    std::string m_gatewayId;
    IEndpointOverride::ResponseType m_type;
    std::shared_ptr<Channel> m_channel;
    Desk* m_desk;

    FetchResult m_result;
    std::shared_ptr<CAPIErrorHandler> m_errors; // the result's
    bool m_isToBeShown = false;                 // the message of what stopped it
    std::unique_ptr<Logger> m_logger;
    std::unique_ptr<Request> m_request;
    std::unique_ptr<Retrieval> m_retrieval;
    std::unique_ptr<Groups> m_groups; // null: not begun
};

} // namespace HmrcApi
