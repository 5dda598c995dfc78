#include "MorvUt/hmrc/fetch/FetchMany.h"

#include <deque>
#include <memory>

#include "HmrcApi/transport/Pace.h"
#include "MorvUt/hmrc/access/SharedPace.h"
#include "MorvUt/hmrc/fetch/ClientFetch.h"
#include "MorvUt/hmrc/fetch/Workers.h"

namespace HmrcApi
{
namespace
{

constexpr std::size_t kInHand = 16;  // clients begun and not ended: the first of them may take long
constexpr unsigned kPatience = 5000; // milliseconds that requests have once the user has cancelled

class ManyFetches
{
public:
    ManyFetches(const std::vector<ClientId>& clients, const std::string& gatewayId, const ManyOptions& options)
        : m_clients(clients), m_gatewayId(gatewayId), m_options(options), m_turns([this] { return TakeSecond(); }),
          m_workers(options.cancelled, kPatience, options.type == IEndpointOverride::Live)
    {}

    ManyFetched Run(const std::function<void(std::size_t place, const FetchResult&)>& each)
    {
        for (;;) {
            m_workers.DoWhatIsLeft();
            Begin();
            m_fetched.ended = m_patience.GetEnd();
            if (m_inHand.empty())
                return m_fetched;
            if (!m_inHand.front().isAsked) {
                m_workers.Wait();
                continue;
            }
            const FetchResult result = m_inHand.front().fetch->End();
            m_inHand.pop_front();
            Note(result);
            each(m_fetched.done++, result);
            m_fetched.ended = m_patience.GetEnd();
            if (m_fetched.ended == Absence::Unusable)
                return m_fetched; // those under way could not be written either: they are as good as not asked about
        }
    }

private:
    struct UnderWay
    {
        std::unique_ptr<ClientFetch> fetch;
        bool isAsked = false;
    };

    std::int64_t TakeSecond()
    {
        std::int64_t wait = 0;
        m_workers.Do([&wait] { wait = TakeSharedSecond(); });
        return wait;
    }

    void Begin()
    {
        while (MayBegin()) {
            Workers::Worker* const worker = m_workers.FindIdle();
            if (!worker)
                return;
            UnderWay& next = m_inHand.emplace_back();
            next.fetch = std::make_unique<ClientFetch>(m_clients[m_begun++], m_gatewayId, m_options.type,
                                                       m_workers.ChannelOf(*worker), &m_workers);
            next.isAsked = !next.fetch->Begin();
            if (!next.isAsked)
                m_workers.Give(
                    *worker, [fetch = next.fetch.get()] { fetch->Ask(); }, [&next] { next.isAsked = true; });
        }
    }

    bool MayBegin()
    {
        if (m_begun == m_clients.size() || m_patience.GetEnd() != Absence::None || m_inHand.size() >= kInHand)
            return false;
        if (m_options.cancelled && m_options.cancelled()) {
            m_patience.Add(Absence::Cancelled);
            return false;
        }
        return m_inHand.empty() || !IsDoubtful();
    }

    bool IsDoubtful() const
    {
        if (m_patience.IsDoubtful())
            return true;
        for (const UnderWay& each : m_inHand)
            if (each.isAsked && AbsenceOf(each.fetch->GetResult()) != Absence::None)
                return true;
        return false;
    }

    void Note(const FetchResult& result)
    {
        const Absence absence = AbsenceOf(result);
        if (result.stopped == FetchResult::Stopped::No) {
            m_fetched.isAnyAsked = true;
            m_fetched.isAnyReached = m_fetched.isAnyReached || !IsUnreachable(*result.errors);
        } else if (absence == Absence::None) {
            return; // of whom nothing was asked tells nothing
        }
        m_patience.Add(absence);
    }

    const std::vector<ClientId>& m_clients;
    const std::string& m_gatewayId;
    const ManyOptions& m_options;
    std::size_t m_begun = 0;
    Patience m_patience;
    ManyFetched m_fetched;
    std::deque<UnderWay> m_inHand; // in the order of the clients; references to its elements stay good
    SharedTurns m_turns;
    Workers m_workers; // ends before what it works on, and whose turns it takes
};

} // namespace

ManyFetched FetchManyFromHmrc(const std::vector<ClientId>& clients, const std::string& gatewayId,
                              const std::function<void(std::size_t place, const FetchResult&)>& each,
                              const ManyOptions& options)
{
    return ManyFetches(clients, gatewayId, options).Run(each);
}

} // namespace HmrcApi
