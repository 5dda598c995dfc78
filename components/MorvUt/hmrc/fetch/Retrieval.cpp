#include "MorvUt/hmrc/fetch/Retrieval.h"

#include "MorvUt/hmrc/access/ClientData.h"
#include "MorvUt/hmrc/access/Scope.h"
#include "MorvUt/users/UserData.h"
#include "Quarry/Session.h"

namespace HmrcApi
{
namespace
{

std::shared_ptr<CAuthorisationStore> MakeStore(const CAuthorisationStore& store, Desk* desk)
{
    return desk ? std::make_shared<DeskStore>(store, *desk) : std::make_shared<CAuthorisationStore>(store);
}

} // namespace

Retrieval::Retrieval(ClientId client, short year, const CAuthorisationStore& store,
                     std::shared_ptr<CAPIErrorHandler> errors, Logger* logger, const PracticeOptions& options,
                     std::shared_ptr<Channel> channel, Desk* desk)
    : m_store(MakeStore(store, desk)), m_errors(std::move(errors)), m_logger(logger), m_options(options),
      m_channel(std::move(channel)), m_desk(desk), m_writer(client, year)
{
    m_store->SetLogger(logger);
}

bool Retrieval::MayAsk() const { return m_desk || !Quarry::GetConnection().HasBegun(); }

CAuthorisation& Retrieval::Authorise(bool isLive)
{
    if (!m_authorisation) {
        m_authorisation = std::make_unique<CAuthorisation>(m_store, std::make_shared<CScope>(m_options),
                                                           std::make_shared<CClientData>());
        if (m_channel)
            m_authorisation->SetChannel(m_channel);
        Channel& channel = m_authorisation->GetChannel();
        channel.SetUser(CUserData::m_strUser.Str());
        m_authorisation->SetCancel(channel.GetCancelled());
    }
    COAuth2Tokens inHand; // of the group before
    if (!isLive || m_authorisation->get_authtokens(inHand) || m_authorisation->LoadTokens(m_logger))
        return *m_authorisation;
    const CAuthorisation::Error& error = m_authorisation->GetLastError();
    throw HmrcApiErrorException("NO_CREDENTIALS", "Unable to load user's HMRC credentials", error.code, error.status);
}

} // namespace HmrcApi
