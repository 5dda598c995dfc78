#include "Quarry/Listeners.h"

#include <functional>
#include <string>
#include <utility>

#include "SmallPractice.h"

namespace
{

std::vector<std::string> g_heard;
std::function<void()> g_then; // what the next one that hears something does besides

std::string NameIn(const Quarry::Row* row)
{
    return row ? row->GetText(1).Str() + std::to_string(row->GetLong(0)) : std::string("none");
}

void Hear(const Quarry::DataChange& change)
{
    g_heard.push_back(NameIn(change.oldRow) + ">" + NameIn(change.newRow));
    if (const auto then = std::exchange(g_then, {}))
        then();
}

void HearAlso(const Quarry::DataChange&) { g_heard.emplace_back("also"); }
void HearLater(const Quarry::DataChange&) { g_heard.emplace_back("later"); }

constexpr int kNumber = 77;
using Heard = std::vector<std::string>;

class Listeners : public SmallPractice
{
protected:
    void SetUp() override
    {
        SmallPractice::SetUp();
        g_heard.clear();
    }
};

ON_BOTH_DATABASES(Listeners);

TEST_P(Listeners, HearOnlyWhatTheyAskedFor)
{
    Quarry::AddDataChangedListenerForInsert(kNumber + 1, "BRIX", Hear);
    Quarry::AddDataChangedListenerForInsert(kNumber, "OTHER", Hear);
    Quarry::AddDataChangedListenerForUpdate(kNumber, "BRIX", Hear);
    Quarry::AddDataChangedListenerForInsert(kNumber, "BRIX", HearAlso);
    Quarry::AddDataChangedListenerForInsert(kNumber, "BRIX", HearAlso);
    Added({});
    EXPECT_EQ(g_heard, (Heard{"also"})) << "once, however often it was added";
    Quarry::RemoveDataChangedListenerForInsert(kNumber, "BRIX", HearAlso);
    Added({});
    EXPECT_EQ(g_heard, (Heard{"also"}));
}

TEST_P(Listeners, MayBeAddedAndRemovedWhileOneIsCalled)
{
    for (const bool all : {false, true}) {
        g_heard.clear();
        Quarry::RemoveAllListeners();
        Quarry::AddDataChangedListenerForInsert(kNumber, "BRIX", Hear);
        Quarry::AddDataChangedListenerForInsert(kNumber, "BRIX", HearAlso);
        g_then = [all] {
            Quarry::RemoveDataChangedListenerForInsert(kNumber, "BRIX", Hear);
            all ? Quarry::RemoveAllListeners() : Quarry::RemoveDataChangedListenerForInsert(kNumber, "BRIX", HearAlso);
            Quarry::AddDataChangedListenerForInsert(kNumber, "BRIX", HearLater);
        };
        Added({});
        EXPECT_EQ(g_heard.size(), 1U) << "the removed one is not called, the added one not yet";
        Added({});
        EXPECT_EQ(g_heard.size(), 2U);
        EXPECT_EQ(g_heard.back(), "later");
    }
}

TEST_P(Listeners, MayChangeDataThemselves)
{
    Quarry::AddDataChangedListenerForInsert(kNumber, "BRIX", Hear);
    g_then = [] { Added({{kName, "nested"}}); };
    Added({{kName, "a"}});
    EXPECT_EQ(g_heard, (Heard{"none>a1", "none>nested2"}));
}

} // namespace
