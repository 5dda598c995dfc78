#include "Practice.h"

#include <array>
#include <string>

#include "Families.h"
#include "MorvUt/context/TrackerTypes.h"
#include "Partnerships.h"
#include "ReferenceData.h"
#include "Tracker.h"
#include "Users.h"

namespace Morv
{

namespace
{

using namespace Sample;
using Kiln::CDate;

enum class Kind
{
    Individual,
    Trust,
    Estate
};

struct Client
{
    std::string name;
    Kind kind = Kind::Individual;
    bool hasNINumber = true;
    bool hasGoodUTR = true;
    bool isActive = true;
    bool isDormant = false;
    CDate died = {};
    bool wantsSource = true;
};

// The first clients of every sample, one of each sort that a fetch meets. They have the sample's year only.
const std::array<Client, kSampleClients>& FirstClients()
{
    static const std::array<Client, kSampleClients> clients{{
        {"Harriet Ashworth"},
        {"Tobias Penhallow"},
        {"Margaret Ellison"},
        {"Cecil Drummond"},
        {"Priya Raman"},
        {"Oscar Lindqvist", Kind::Individual, false},       // no National Insurance number yet
        {"Beatrice Okafor", Kind::Individual, true, false}, // UTR mistyped
        {"Walter Greenhalgh", Kind::Individual, true, true, true, false, CDate(2017, 11, 3)},
        {"Imogen Farquhar", Kind::Individual, true, true, false}, // no longer a client
        {"Desmond Achebe", Kind::Individual, true, true, true, true},
        {"The Larkspur Settlement", Kind::Trust, false},
        {"Estate of Edith Marlowe", Kind::Estate, false},
    }};
    return clients;
}

// Clients beyond the first come in rows of 20, so that every sort is met early: a couple at 3 and 4, 8 and 9, 13 and
// 14, 18 and 19, an estate at 10, a trust at 20.
int PlaceOf(int number) { return (number - kSampleClients - 1) % 20 + 1; }
bool IsSecondOfCouple(int number) { return PlaceOf(number) % 5 == 4; }

Client MakeClient(int number, const std::string& spouseSurname, Dice& dice)
{
    const int place = PlaceOf(number);
    if (place == 20)
        return {TrustName(dice), Kind::Trust, false};
    const std::string first = FirstName(dice);
    const std::string surname = spouseSurname.empty() ? Surname(dice) : spouseSurname;
    if (place == 10)
        return {"Estate of " + first + " " + surname,
                Kind::Estate,
                false,
                true,
                true,
                false,
                CDate(dice.Between(2015, 2018), dice.Between(1, 12), dice.Between(1, 28))};
    Client client{first + " " + surname};
    client.isActive = !dice.Chance(4);
    client.isDormant = dice.Chance(2);
    client.wantsSource = !dice.Chance(3);
    if (dice.Chance(2))
        client.died = CDate(dice.Between(2012, 2019), dice.Between(1, 12), dice.Between(1, 28));
    return client;
}

CString UTROf(int number, const Client& client)
{
    constexpr std::int64_t kStart = 100'000'000, kStep = 7919;
    std::string utr = MakeUTR(kStart + number * kStep).Str();
    if (!client.hasGoodUTR)
        utr[9] = utr[9] == '9' ? '0' : static_cast<char>(utr[9] + 1);
    return CString(utr);
}

long AddClient(int number, const Client& made)
{
    return Add<Brix::CClient>([&](Brix::CClient& client) {
        CString code;
        code.Format("C%04d", number);
        client.SetCode(code);
        client.SetName(CString(made.name));
        client.SetUTR(UTROf(number, made));
        client.SetNINumber(made.hasNINumber ? MakeNINumber(number) : CString());
        client.SetTrust(made.kind != Kind::Individual);
        client.SetEntityType(made.kind == Kind::Estate ? "Estate" : made.kind == Kind::Trust ? "Trust" : "Individual");
        client.SetActive(made.isActive);
        client.SetDeath(made.died);
        client.SetNoTaxReturnSource(!made.wantsSource);
    });
}

void AddInactivity(long client, Dice& dice)
{
    const int year = dice.Between(2010, 2017);
    Add<Brix::CClientPeriodsInactivity>([&](Brix::CClientPeriodsInactivity& period) {
        period.SetClientID(client);
        if (!dice.Chance(10))
            period.SetStart(CDate(year, dice.Chance(60) ? 4 : 5, 6));
        if (!dice.Chance(25))
            period.SetEnd(CDate(year + dice.Between(1, 3), 4, 5));
    });
}

void AddYearly(long client, bool isActive)
{
    for (const int year : {kSampleYear - 1, kSampleYear + 0})
        Add<Brix::CClientYearly>([&](Brix::CClientYearly& yearly) {
            yearly.SetClientID(client);
            yearly.SetYear(static_cast<short>(year));
            yearly.SetStatus(!isActive && year == kSampleYear ? 1 : 0); // has left
        });
}

/// The clients that are not in the first rows, with what they need of each other.
class Filling
{
public:
    void AddClient(int number)
    {
        Dice dice(static_cast<std::uint64_t>(number));
        const bool isSecond = IsSecondOfCouple(number) && m_before.number == number - 1;
        const Client made = MakeClient(number, isSecond ? m_surname : std::string(), dice);
        Individual client{Morv::AddClient(number, made), number};
        if (made.kind == Kind::Individual)
            AddIndividual(client, made, dice);
        if (dice.Chance(4))
            AddInactivity(client.id, dice);
        if (dice.Chance(15))
            AddYearly(client.id, made.isActive);
        AddWork({client.id, false, made.kind != Kind::Individual}, number, made, dice);
        if (isSecond)
            AddFamily(m_before, client, dice);
        else if (made.kind == Kind::Individual && PlaceOf(number) % 5 == 2)
            AddSingleParent(client, dice);
        m_surname = made.name.substr(made.name.rfind(' ') + 1);
        m_before = std::move(client);
        if ((number - kSampleClients) % kClientsPerPartnership == 0)
            AddFirm();
    }

private:
    static constexpr int kClientsPerPartnership = 25;
    static constexpr std::size_t kMostPartners = 4;

    void AddIndividual(Individual& client, const Client& made, Dice& dice)
    {
        const int place = PlaceOf(client.number);
        client.isActive = made.isActive;
        client.isDormant = made.isDormant;
        client.isMinister = place == 6;
        client.firstYear = static_cast<short>(place == 2 ? 2008 : kSampleYear - dice.Between(1, 3));
        AddReturns(client, dice);
        if (place == 7)
            AddSoleTrade(client);
        if (place % 4 == 1 && m_partners.size() < kMostPartners)
            m_partners.push_back(client);
    }

    static void AddWork(const Owner& owner, int number, const Client& made, Dice& dice)
    {
        if (!made.isActive)
            return;
        const char* const assigned = AssignedTo(number);
        const long source = made.wantsSource ? AddReturnSource(owner, kSampleYear, dice.Below(9), assigned) : 0;
        if (made.wantsSource && dice.Chance(20))
            AddReturnSource(owner, kSampleYear - 1, 20, assigned);
        if (dice.Chance(5))
            AddJob(owner, kSampleYear, "Rental accounts", assigned);
        if (dice.Chance(15))
            AddEnquiry(owner, kSampleYear, number, dice.Chance(50) ? source : 0);
        if (dice.Chance(5))
            AddEnquiry(owner, kSampleYear - 1, number + 1, 0);
    }

    static void AddFamily(const Individual& client, const Individual& spouse, Dice& dice)
    {
        if (dice.Chance(70))
            AddJointInterest(client, spouse, dice);
        for (int child = dice.Below(4); child > 0; --child)
            AddChild(FirstName(dice), dice.Between(2001, 2018), client, &spouse, dice.Chance(5) ? 1 : 0);
    }

    static void AddSingleParent(const Individual& client, Dice& dice)
    {
        if (dice.Chance(50))
            AddChild(FirstName(dice), dice.Between(2001, 2018), client, nullptr, dice.Below(3));
    }

    void AddFirm()
    {
        AddPartnership(m_firm++, m_partners);
        m_partners.clear();
    }

    int m_firm = 3;
    Individual m_before;
    std::string m_surname; // of the client before
    std::vector<Individual> m_partners;
};

void AddFirstClient(int number)
{
    const Client& made = FirstClients()[static_cast<std::size_t>(number - 1)];
    Individual client{AddClient(number, made), number};
    if (made.kind == Kind::Individual && made.isActive)
        client.forms.push_back(AddForm(client.id, kSampleYear, made.isDormant));
    if (!made.isActive)
        return;
    const Owner owner{client.id, false, made.kind != Kind::Individual};
    const long source = AddReturnSource(owner, kSampleYear, number % 6, AssignedTo(number));
    if (number <= 3)
        AddEnquiry(owner, kSampleYear, number, number == 2 ? source : 0);
    if (number == 3)
        AddChild("Alfred Ellison", 2009, client, nullptr, 1);
}

void SetOptions(short payeInterface, bool retrieval)
{
    Brix::COptions options;
    if (!options.Open())
        options.AddNew();
    options.SetPAYEInterface(payeInterface);
    options.SetHMRCRetrieval(retrieval);
    options.Update();
}

} // namespace

void FillNewPractice()
{
    SetOptions(1, false);
    SeedTrackerTypes();
}

void FillSamplePractice(int clients, const std::function<void()>& made)
{
    SetOptions(1, true);
    SeedTrackerTypes();
    AddSourceType(kOtherSource); // of the sample's own jobs
    AddReferenceYears();
    AddCountries();
    AddBanks();
    AddUsers(clients > kSampleClients);
    AddFirstPartnerships();
    Filling filling;
    for (int number = 1; number <= clients; ++number) {
        if (number <= kSampleClients)
            AddFirstClient(number);
        else
            filling.AddClient(number);
        made();
    }
}

} // namespace Morv
