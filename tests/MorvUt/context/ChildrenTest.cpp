#include "MorvUt/context/Children.h"

#include <gtest/gtest.h>

#include <limits>

#include "MorvUt/taxyear/CurrentTaxYear.h"
#include "MorvUt/taxyear/TaxYear.h"
#include "support/Case.h"
#include "support/Practice.h"

namespace
{

using namespace Brix;
using Kiln::CAmt;
using Kiln::CDate;

class Children : public testing::Test
{
protected:
    Children()
    {
        m_child.AddNew();
        m_child.Update();
        SetCurrentTaxYear(ToRelativeTaxYear(2024));
    }
    ~Children() override { CCurrentTaxYearSingleton::Destroy(); }

    void Link(long clientId, CDate start = {}, CDate end = {}) const
    {
        ::Test::Add<CChildParentLink>([&](CChildParentLink& link) {
            link.SetChildID(m_child.GetID());
            link.SetClientID(clientId);
            link.SetStart(start);
            link.SetEnd(end);
        });
    }
    void LinkOther(CDate end = {}) const
    {
        ::Test::Add<CChildOtherParentLink>([&](CChildOtherParentLink& link) {
            link.SetChildID(m_child.GetID());
            link.SetEnd(end);
        });
    }
    static long AddClient(int active)
    {
        const long id = ::Test::Add<CClient>([](CClient&) {});
        ::Test::Practice::Sql("UPDATE BRIXClient SET bActive = %d WHERE lID = %ld", active, id);
        return id;
    }

    const ::Test::Practice m_practice;
    CChild m_child;
};

} // namespace

TEST_F(Children, HaveResponsibleParentsWhileLinksTouchTheYear)
{
    // start, end, a year that the link counts for, one that it does not
    const CDate none;
    const ::Test::Row<CDate, CDate, int, int> rows[] = {
        {{2019, 5, 1}, none, 2020, 2019, "begun after the year before"},
        {{2019, 5, 1}, none, 9999, 2019, "and never ended"},
        {{2019, 4, 5}, none, 2019, 2018, "begun on the last day"},
        {none, {2019, 4, 6}, 2020, 2021, "ended on the first day"},
        {none, {2019, 4, 5}, 2019, 2020, "ended on the last day of the year before"},
    };
    for (const auto& [start, end, year, notYear, why] : rows) {
        ::Test::Practice::Sql("DELETE FROM BRIXChildParentLink");
        Link(1, start, end);
        EXPECT_EQ(GetNumParentsResponsibleInYear(m_child, notYear), 0) << why;
        EXPECT_EQ(GetNumParentsResponsibleInYear(m_child, year), 1) << why;
    }
    LinkOther();
    ::Test::Practice::Sql("UPDATE BRIXChildOtherParentLink SET dtStart = 'some time'");
    EXPECT_EQ(GetNumParentsResponsibleInYear(m_child, std::numeric_limits<int>::min()), 1) << "no dates: every year";
    EXPECT_EQ(GetNumParents(m_child), 2);
    EXPECT_EQ(GetNumParents(CChild()), 0) << "no child";
}

TEST_F(Children, HaveTheFirstOtherClientAsOtherParent)
{
    LinkOther();
    EXPECT_EQ(GetOtherParentClientID(m_child, 7), -1) << "the other parent is no client";
    Link(7);
    EXPECT_EQ(GetOtherParentClientID(m_child, 7), -1);
    Link(9);
    Link(8);
    EXPECT_EQ(GetOtherParentClientID(m_child, 7), 9);
    EXPECT_EQ(GetOtherParentClientID(m_child, 1), 7);
}

TEST_F(Children, HaveAnAllowanceByTheirResponsibleParents)
{
    const long mother = AddClient(1), inactive = AddClient(0), active = AddClient(1), oddly = AddClient(2);
    const CAmt nothing(0), penny(100), null, below(-1);
    enum
    {
        Nobody = 0,
        NoClient = -1
    };
    // the second and third parent, amount, code
    const ::Test::Row<long, long, CAmt, int> rows[] = {
        {Nobody, Nobody, penny, 1, "one parent"},
        {NoClient, Nobody, nothing, 1, "the other is no client"},
        {NoClient, Nobody, penny, 3, "but an amount is shared"},
        {NoClient, Nobody, null, 1, "no amount is not above zero"},
        {inactive, Nobody, below, 1, "a client of former times"},
        {inactive, Nobody, penny, 3, "an amount is shared"},
        {active, Nobody, below, 3, "an active client"},
        {oddly, Nobody, nothing, 1, "active is 1 and nothing else"},
        {4711, Nobody, nothing, 1, "no such client"},
        {NoClient, active, nothing, 4, "three parents"},
        {inactive, active, penny, 4, "whatever the amount"},
    };
    for (const auto& [second, third, amount, code, why] : rows) {
        ::Test::Practice::Sql("DELETE FROM BRIXChildParentLink");
        ::Test::Practice::Sql("DELETE FROM BRIXChildOtherParentLink");
        LinkOther({2023, 4, 5}); // no longer responsible
        Link(mother);
        for (const long parent : {second, third})
            if (parent == NoClient)
                LinkOther();
            else if (parent != Nobody)
                Link(parent);
        EXPECT_EQ(GetDefaultAllowance(m_child, mother, amount), code) << why;
    }
}

TEST_F(Children, PresetTheirSchedules)
{
    const long mother = AddClient(1), father = AddClient(1);
    Link(mother);
    // current year, day of birth, a second parent, that one given, marked as shared; allowance, in the year, marker
    const ::Test::Row<short, CDate, bool, bool, bool, int, int, bool> rows[] = {
        {2024, {2024, 4, 5}, false, true, false, 1, 1, true, "one parent, born this year"},
        {2024, {2024, 4, 6}, false, false, true, 1, 0, true, "born next year"},
        {2002, {2001, 5, 1}, false, false, true, 1, 0, true, "no allowance in the year before 2003"},
        {2003, {2002, 5, 1}, false, false, true, 1, 1, true, "but in 2003"},
        {2024, {}, true, true, false, 3, 0, false, "shared: not marked"},
        {2024, {}, true, false, true, 3, 0, false, "with somebody else"},
        {2024, {2023, 4, 6}, true, true, true, 3, 3, true, "with this one"},
    };
    for (const auto& [year, birth, both, isGiven, mark, allowance, inYear, marker, why] : rows) {
        SetCurrentTaxYear(ToRelativeTaxYear(year));
        ::Test::Practice::Sql("DELETE FROM BRIXChildParentLink WHERE lClientID = %ld", father);
        if (both)
            Link(father);
        m_child.SetBirth(birth);
        m_child.Update();
        CChildSchedule schedule;
        schedule.AddNew();
        schedule.SetChildID(m_child.GetID());
        schedule.SetClientID(mother);
        SetChildDefaults(schedule, CAmt(0), isGiven ? father : mother, mark);
        EXPECT_EQ(schedule.GetAllowance(), allowance) << why;
        EXPECT_EQ(schedule.GetAllowanceInYear(), inYear) << why;
        EXPECT_EQ(schedule.GetShared(), marker) << why;
    }
}
