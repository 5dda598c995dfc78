#include "MorvUt/context/AccruedAllowance.h"

#include <algorithm>
#include <atomic>
#include <map>
#include <mutex>
#include <string>
#include <thread>
#include <unordered_map>
#include <vector>

#include "Brix/Records.h"
#include "MorvUt/context/detail/AccruedFigures.h"
#include "MorvUt/taxyear/CurrentTaxYear.h"
#include "Quarry/Listeners.h"
#include "Quarry/Session.h"
#include "Shellkit/NamedItems.h"

namespace
{

using Context::Detail::AccruedFigures;
using Context::Detail::AccruedSource;
using Kiln::CAmt;

constexpr short kYearBeforeTheFirst = 2002; // real year; the first that counts is 2002/03
constexpr std::size_t kClientsServed = 2;   // a client and a spouse, who share joint sources

/// The tables that a figure may be made from.
constexpr int kSourceTables[] = {
    Brix::CTaxForm::kTableNumber,
    Brix::CNewInterest::kTableNumber,
    Brix::CNewInterestGrid::kTableNumber,
    Brix::CNewInterestJoint::kTableNumber,
    Brix::CNewInterestJointGrid::kTableNumber,
    Brix::COtherForeignIncome::kTableNumber,
    Brix::COtherForeignIncomeGrid::kTableNumber,
    Brix::CPartnershipAccruedIncome::kTableNumber,
    Brix::CBTaxProprietor::kTableNumber,
    Brix::CBTaxAccountingPeriod::kTableNumber,
    Brix::CBTaxNoTaxInvestmentIncome::kTableNumber,
    Brix::CBTaxNoTaxInvestmentIncomeSplit::kTableNumber,
};

/// What one thread has worked out.
struct Cache
{
    short currentYear = 0; // the current real tax year when it was last used
    std::vector<long> clients;
    std::unordered_map<std::string, CAmt> results; // by source and year

    void Clear()
    {
        clients.clear();
        results.clear();
    }
    /// Makes room for a client: a third one, or another current year, empties the cache.
    void Serve(long clientId, short current)
    {
        const bool isServed = std::find(clients.begin(), clients.end(), clientId) != clients.end();
        if (currentYear != current || (!isServed && clients.size() >= kClientsServed))
            Clear();
        currentYear = current;
        if (!isServed || clients.empty())
            clients.push_back(clientId);
    }
};

/// Moves on whenever what was worked out may be wrong, on whichever thread.
std::atomic<unsigned> g_generation{1};

void Outdate() noexcept { g_generation.fetch_add(1, std::memory_order_acq_rel); }
void OnDataChanged(const Quarry::DataChange&) { Outdate(); }

/// The caches of all threads. A named item, so that they end at shut-down, in whichever order threads end.
class Caches
{
public:
    Caches() : m_rollbackListener(Quarry::AddRollbackListener(&Outdate)) {}
    Caches(const Caches&) = delete;
    Caches& operator=(const Caches&) = delete;
    ~Caches()
    {
        Quarry::RemoveRollbackListener(m_rollbackListener);
        for (const int table : kSourceTables) {
            Quarry::RemoveDataChangedListenerForInsert(table, "BRIX", &OnDataChanged);
            Quarry::RemoveDataChangedListenerForUpdate(table, "BRIX", &OnDataChanged);
            Quarry::RemoveDataChangedListenerForDelete(table, "BRIX", &OnDataChanged);
        }
        Outdate();
    }

    static Caches& Instance()
    {
        return *static_cast<Caches*>(GetGlobalDataItem(
            "MORVUT::AccruedAllowance", []() -> void* { return new Caches; },
            [](void* item) { delete static_cast<Caches*>(item); }));
    }

    /// Adding listeners that are there changes nothing; closing a practice may have removed them.
    static void Listen()
    {
        for (const int table : kSourceTables) {
            Quarry::AddDataChangedListenerForInsert(table, "BRIX", &OnDataChanged);
            Quarry::AddDataChangedListenerForUpdate(table, "BRIX", &OnDataChanged);
            Quarry::AddDataChangedListenerForDelete(table, "BRIX", &OnDataChanged);
        }
    }

    /// The calling thread's, emptied; a thread that has ended left it to the next one of its id.
    Cache& Emptied()
    {
        const std::lock_guard lock(m_mutex);
        Cache& cache = m_caches[std::this_thread::get_id()];
        cache.Clear();
        return cache;
    }

private:
    std::mutex m_mutex; // of the map, not of the caches
    std::map<std::thread::id, Cache> m_caches;
    int m_rollbackListener;
};

/// Good while `generation` is the process's.
struct ThreadsCache
{
    Cache* cache;
    unsigned generation;

    bool IsGood() const noexcept { return cache && generation == g_generation.load(std::memory_order_acquire); }
};
thread_local constinit ThreadsCache t_cache{nullptr, 0};

Cache& CacheFor(long clientId)
{
    if (!t_cache.IsGood()) {
        const unsigned generation = g_generation.load(std::memory_order_acquire); // first: no change may slip through
        Caches::Listen();
        t_cache = {&Caches::Instance().Emptied(), generation};
    }
    t_cache.cache->Serve(clientId, GetCurrentRealTaxYear());
    return *t_cache.cache;
}

CAmt LeftOf(const CAmt& broughtForward, const AccruedFigures& figures)
{
    const CAmt left = (broughtForward + figures.addition) - (figures.income + figures.deduction);
    return left > CAmt::kZero ? left : CAmt::kZero;
}

/// Walks back to a year whose result is known or whose figure brought forward was entered, and forward from there.
CAmt WorkOut(Cache& cache, const AccruedSource& source, short year)
{
    CString key;
    key.Format("%ld-%d-%s-%d-%d-", source.clientId, static_cast<int>(source.type), source.name, source.flagA ? 1 : 0,
               source.flagB ? 1 : 0);
    const auto keyOf = [&](int ofYear) { return key.Str() + std::to_string(ofYear); };
    std::vector<AccruedFigures> walked;
    CAmt left = CAmt::kZero;
    int before = year; // at the end of this year `left` was left
    for (; before > kYearBeforeTheFirst; --before) {
        if (const auto known = cache.results.find(keyOf(before)); known != cache.results.end()) {
            left = known->second;
            break;
        }
        walked.push_back(Context::Detail::ReadAccruedFigures(source, static_cast<short>(before)));
        if (walked.back().broughtForward.IsValid()) {
            left = walked.back().broughtForward;
            --before;
            break;
        }
    }
    for (; !walked.empty(); walked.pop_back()) {
        left = LeftOf(left, walked.back());
        cache.results.emplace(keyOf(++before), left);
    }
    return left;
}

} // namespace

CAmt GetAccruedAllowanceBFWD(long clientId, SchedType type, const char* name, bool flagA, bool flagB, short year)
{
    if (year <= kYearBeforeTheFirst)
        return CAmt::kZero;
    return WorkOut(CacheFor(clientId), {clientId, type, name, flagA, flagB}, year);
}

void ClearAccruedAllowanceBFWDCache()
{
    if (t_cache.IsGood())
        t_cache.cache->Clear();
}
