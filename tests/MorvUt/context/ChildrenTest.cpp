#include "MorvUt/context/Children.h"

#include <limits>
#include <optional>

#include "Afx/text/Ascii.h"
#include "MorvUt/taxyear/CurrentTaxYear.h"
#include "MorvUt/taxyear/DateRules.h"
#include "support/Practice.h"

namespace
{

using Kiln::CAmt;

// Clients: 1 the mother, 2 active, 3 not active, 4 with an active flag of 2, 5 not there. -1 is no client, 0 nobody.
class Children : public ::Test::OnPractice
{
protected:
    Children()
    {
        m_child.AddNew();
        m_child.Update();
        Sql("INSERT INTO BRIXClient (lID, bActive) VALUES (1, 1), (2, 1), (3, 0), (4, 2)");
    }
    ~Children() override { CCurrentTaxYearSingleton::Destroy(); }

    void Link(std::initializer_list<long> parents) const
    {
        Sql("DELETE FROM BRIXChildParentLink");
        Sql("DELETE FROM BRIXChildOtherParentLink");
        for (const long parent : parents)
            if (parent > 0)
                Sql("INSERT INTO BRIXChildParentLink (lChildID, lClientID) VALUES (%ld, %ld)", m_child.GetID(), parent);
            else if (parent < 0)
                Sql("INSERT INTO BRIXChildOtherParentLink (lChildID) VALUES (%ld)", m_child.GetID());
    }

    Brix::CChild m_child;
};

ON_BOTH_DATABASES(Children);

} // namespace

TEST_P(Children, HaveResponsibleParentsWhileLinksTouchTheYear)
{
    Link({1, -1});
    EXPECT_EQ(GetNumParentsResponsibleInYear(m_child, std::numeric_limits<int>::min()), 2) << "no dates: every year";
    Sql("UPDATE BRIXChildOtherParentLink SET dtStart = '1999-01-01', dtEnd = '1999-01-01'");
    for (const auto& [start, end, year, notYear, why] :
         ::Test::Table<const char*, const char*, int, int>("MorvUt/context/Children.tsv")) {
        if (::Test::IsOnServer() && start && !Afx::IsDigit(*start))
            continue; // which takes dates only
        Sql("UPDATE BRIXChildParentLink SET dtStart = %s, dtEnd = %s", start, end);
        EXPECT_EQ(GetNumParentsResponsibleInYear(m_child, year), 1) << why;
        EXPECT_EQ(GetNumParentsResponsibleInYear(m_child, notYear), 0) << why;
    }
    EXPECT_EQ(GetNumParents(m_child), 2);
}

TEST_P(Children, HaveAnAllowanceByTheirResponsibleParents)
{
    SetCurrentTaxYear(33); // 2023/24
    for (const auto& [second, third, amount, other, code, why] :
         ::Test::Table<long, long, std::optional<int>, long, int>("MorvUt/context/Children.tsv")) {
        Link({1, second, third});
        Sql("INSERT INTO BRIXChildOtherParentLink (lChildID, dtEnd) VALUES (%ld, '2023-04-05')",
            m_child.GetID()); // no longer responsible
        EXPECT_EQ(GetOtherParentClientID(m_child, 1), other) << why;
        EXPECT_EQ(GetDefaultAllowance(m_child, 1, amount ? CAmt(*amount) : CAmt()), code) << why;
    }
}

TEST_P(Children, PresetTheirSchedules)
{
    for (const auto& [year, birth, second, third, given, mark, allowance, inYear, marker, why] :
         ::Test::Table<int, long, long, long, long, bool, int, int, bool>("MorvUt/context/Children.tsv")) {
        SCOPED_TRACE(::testing::Message() << year << ' ' << birth);
        SetCurrentTaxYear(static_cast<short>(year - 1991));
        Link({1, second, third});
        m_child.SetBirth(LongToCDate(birth));
        m_child.Update();
        Brix::CChildSchedule schedule;
        schedule.AddNew();
        schedule.SetChildID(m_child.GetID());
        schedule.SetClientID(1);
        SetChildDefaults(schedule, CAmt(0), given, mark);
        EXPECT_EQ(schedule.GetAllowance(), allowance);
        EXPECT_EQ(schedule.GetAllowanceInYear(), inYear);
        EXPECT_EQ(schedule.GetShared(), marker);
    }
}
