#pragma once

// What the requests of one retrieval have in common.

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "HmrcApi/Export.h"
#include "HmrcApi/transport/Transport.h"

namespace HmrcApi
{

/// Lives as long as one retrieval, or a run over many clients: the way out, and the fraud prevention headers, which are
/// collected once. Every authorisation of the retrieval gets the same channel: its requests, of data and of tokens, go
/// over one connection a host, which stays open between them and is opened again when the server has closed it
/// meanwhile. Used by one thread.
class HMRCAPI_API Channel
{
public:
    using Headers = std::vector<std::pair<std::string, std::string>>;

    Channel(); // HTTP
    explicit Channel(std::shared_ptr<ITransport> transport);
    ~Channel();
    Channel(const Channel&) = delete;
    Channel& operator=(const Channel&) = delete;

    const std::shared_ptr<ITransport>& GetTransport(); // made at its first use
    /// Who is logged in to the program, for the headers that are collected from now on.
    void SetUser(std::string user);
    const Headers& GetFraudHeaders();
    /// From now on requests show no wait window, and `cancelled` (empty: nothing) ends them in place of its Cancel: for
    /// a thread that must not show anything.
    void SetUnattended(std::function<bool()> cancelled);
    bool IsUnattended() const noexcept { return m_isUnattended; }
    /// What ends requests and the waits between them; may be empty.
    const std::function<bool()>& GetCancelled() const noexcept { return m_cancelled; }

private:
    std::shared_ptr<ITransport> m_transport;
    std::string m_user;
    std::unique_ptr<Headers> m_fraudHeaders;
    std::function<bool()> m_cancelled;
    bool m_isUnattended = false;
};

} // namespace HmrcApi
