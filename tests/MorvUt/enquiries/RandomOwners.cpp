#include "RandomOwners.h"

#include <algorithm>
#include <random>
#include <sstream>

#include "Quarry/NewId.h"
#include "support/Practice.h"

namespace
{

using ::Test::Add;

constexpr std::size_t kLongestText = 4000;

class Filling
{
public:
    Filling(unsigned seed, short year) : m_random(seed), m_year(year) {}

    TrackerOwner AddOwner()
    {
        const bool isPartnership = Chance(4);
        const TrackerOwner owner{isPartnership ? Add<Brix::CPartnership>([](auto& row) { row.SetCode("P"); })
                                               : Add<Brix::CClient>([&](auto& row) {
                                                     row.SetTrust(Chance(4));
                                                     row.SetNoTaxReturnSource(Chance(5));
                                                 }),
                                 isPartnership};
        for (const int before : {0, 1})
            if (Chance(3)) {
                if (isPartnership)
                    AddYearly<Brix::CPartnershipYearly>(owner, m_year - before);
                else
                    AddYearly<Brix::CClientYearly>(owner, m_year - before);
            }
        AddSources(owner);
        AddEnquiries(owner);
        return owner;
    }

private:
    int Below(int end) { return std::uniform_int_distribution<int>(0, end - 1)(m_random); }
    bool Chance(int oneIn) { return Below(oneIn) == 0; }

    template<class Yearly>
    void AddYearly(const TrackerOwner& owner, int year)
    {
        Add<Yearly>([&](Yearly& row) {
            SetOwner(row, owner);
            row.SetYear(static_cast<short>(year));
            row.SetStatus(Below(2));
        });
    }

    void AddSources(const TrackerOwner& owner)
    {
        static const std::string kLong(kLongestText - 1, 'x');
        std::vector<std::string> jobs{"O'Brien's \"books\" %s", "Rental accounts", kLong + "1", kLong + "2",
                                      "VAT; DROP TABLE Source"};
        std::shuffle(jobs.begin(), jobs.end(), m_random);
        jobs.resize(static_cast<std::size_t>(Below(4)));
        m_sources.clear();
        if (!Chance(4))
            AddTwoYears(owner, owner.isPartnership ? 3 : 1, Chance(2) ? "Tax Return" : "Tax Return SA900", false);
        for (const std::string& job : jobs)
            AddTwoYears(owner, Chance(5) ? 7 : 2, job, !Chance(4)); // the practice has no type 7
    }

    void AddTwoYears(const TrackerOwner& owner, long type, const std::string& name, bool isJob)
    {
        m_sources.emplace_back(AddSource(owner, type, name, isJob, -1), type);
        if (Chance(4))
            AddSource(owner, type, CString(name).MakeUpper().Str(), isJob, 0);
    }

    long AddSource(const TrackerOwner& owner, long type, const std::string& name, bool isJob, int years)
    {
        const long id = Quarry::NewId(Brix::CSource::Declaration());
        Add<Brix::CSource>([&](Brix::CSource& row) {
            row.SetSourceID(id);
            SetOwner(row, owner);
            row.SetYear(static_cast<short>(m_year + years));
            row.SetSourceTypeID(type);
            row.SetStatus("done");
            row.SetDescription(name.c_str());
            row.SetUserCreated(isJob);
            row.SetShowReminder(Chance(2));
            row.SetCFStaff(Chance(2));
            if (Chance(3))
                row.SetDefaultTrackerGUID("GUID");
        });
        const bool isComplete = Chance(3);
        for (const long task : {1, 2, 5, 7, 19, 20, 23})
            if (!Chance(3))
                AddTask(id, task, isComplete || Chance(2));
        return id;
    }

    void AddTask(long source, long type, bool isComplete)
    {
        const Kiln::CDate leapDay(m_year / 4 * 4, 2, 29), due = Chance(3)   ? leapDay
                                                                : Chance(3) ? Kiln::CDate()
                                                                            : Kiln::CDate(m_year, 1, 31);
        Add<Brix::CSourceTask>([&](Brix::CSourceTask& row) {
            row.SetSourceID(source);
            row.SetTypeID(type);
            row.SetListOrder(Below(9));
            row.SetDueDate(due);
            row.SetReminderDate(Chance(2) ? due : Kiln::CDate());
            row.SetRequired(Chance(2));
            row.SetComplete(isComplete);
            if (Chance(2))
                row.SetAssignedTo("ann");
            if (Chance(3))
                row.SetDescription("Own task");
        });
    }

    void AddEnquiries(const TrackerOwner& owner)
    {
        static const std::vector<std::string> kQuestions{"P60", "p60 ", "O'Brien's \"letter\"",
                                                         std::string(kLongestText, 'y')};
        for (int i = Below(5); i > 0; --i)
            AddEnquiry(owner, kQuestions[static_cast<std::size_t>(Below(4))], Chance(5) ? 0 : -1);
    }

    void AddEnquiry(const TrackerOwner& owner, const std::string& what, int years)
    {
        Add<Brix::CClientEnquiry>([&](Brix::CClientEnquiry& row) {
            SetOwner(row, owner);
            row.SetYear(static_cast<short>(m_year + years));
            row.SetDescription(what.c_str());
            row.SetCarryForward(!Chance(4));
            if (m_sources.empty() || Chance(3))
                return;
            const auto& [id, type] = m_sources[static_cast<std::size_t>(Below(static_cast<int>(m_sources.size())))];
            row.SetSourceID(Chance(6) ? 1'000'000 : id); // or one that is gone
            if (Chance(2))
                row.SetSourceTypeID(type);
            row.SetTypeID(Below(8));
        });
    }

    std::mt19937 m_random;
    short m_year;
    std::vector<std::pair<long, long>> m_sources; // of the owner's year before: id, type
};

} // namespace

std::vector<TrackerOwner> AddRandomOwners(unsigned seed, int count, short year)
{
    Filling filling(seed, year);
    Quarry::CTransaction transaction(Cellar::Intent::Write);
    std::vector<TrackerOwner> owners;
    for (int i = 0; i < count; ++i)
        owners.push_back(filling.AddOwner());
    transaction.Commit();
    return owners;
}

std::string WorkInPractice()
{
    std::istringstream rows(
        ::Test::Practice::Rows(
            "SELECT s.ClientID, s.pClientID, s.Year, s.SourceTypeID, s.Status, s.ShowReminder, s.bUserCreated, "
            "s.strDefaultTrackerGUID, s.bCFStaff, t.TypeID, t.ListOrder, t.DueDate, t.ReminderDate, t.bRequired, "
            "t.bComplete, t.strAssignedTo, t.Description, s.Description FROM Source s LEFT JOIN SourceTask t ON "
            "t.SourceID = s.SourceID") +
        ::Test::Practice::Rows("SELECT e.lClientID, e.lpClientID, e.nYear, e.bCarryForward, e.SourceTypeID, e.TypeID, "
                               "e.dtStart, s.Year, s.SourceTypeID, s.Description, e.strDescription FROM ClientEnquiry "
                               "e LEFT JOIN Source s ON s.SourceID = e.SourceID"));
    std::vector<std::string> lines;
    for (std::string line; std::getline(rows, line);)
        lines.push_back(line.size() > kLongestText ? line.substr(0, 99) + "..." + line.substr(line.size() - 99) : line);
    std::sort(lines.begin(), lines.end());
    std::string text;
    for (const std::string& line : lines)
        text += line + '\n';
    return text;
}
