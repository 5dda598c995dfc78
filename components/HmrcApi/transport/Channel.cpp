#include "HmrcApi/transport/Channel.h"

#include "HmrcApi/transport/FraudHeaders.h"
#include "HmrcApi/transport/Waiting.h"

namespace HmrcApi
{

Channel::Channel() : Channel(nullptr) {}
Channel::Channel(std::shared_ptr<ITransport> transport)
    : m_transport(std::move(transport)), m_cancelled(&WaitWindow::IsCancelled)
{}
Channel::~Channel() = default;

const std::shared_ptr<ITransport>& Channel::GetTransport()
{
    if (!m_transport)
        m_transport = MakeHttpTransport();
    return m_transport;
}

void Channel::SetUser(std::string user)
{
    if (user == m_user)
        return;
    m_user = std::move(user);
    m_fraudHeaders.reset();
}

void Channel::SetUnattended(std::function<bool()> cancelled)
{
    m_cancelled = std::move(cancelled);
    m_isUnattended = true;
}

const Channel::Headers& Channel::GetFraudHeaders()
{
    if (!m_fraudHeaders)
        m_fraudHeaders = std::make_unique<Headers>(FraudPreventionHeaders(m_user));
    return *m_fraudHeaders;
}

} // namespace HmrcApi
