#include "Quarry/Listeners.h"

#include <string>

#include "SmallPractice.h"

namespace
{

std::vector<std::string> g_heard;

std::string NameIn(const Quarry::Row* row)
{
    return row ? row->GetText(1).Str() + std::to_string(row->GetLong(0)) : std::string("none");
}

void Hear(const Quarry::DataChange& change) { g_heard.push_back(NameIn(change.oldRow) + ">" + NameIn(change.newRow)); }

void HearAlso(const Quarry::DataChange&) { g_heard.emplace_back("also"); }

constexpr int kNumber = 77;

class Listeners : public SmallPractice
{
protected:
    void SetUp() override
    {
        SmallPractice::SetUp();
        g_heard.clear();
    }
    static void AddRow(const char* name)
    {
        Quarry::CDataList list(kTask);
        list.AddNew();
        list.Set(kName, name);
        list.Update();
    }
};

TEST_F(Listeners, HearOfEachSavedChangeAtOnce)
{
    Quarry::AddDataChangedListenerForInsert(kNumber, "BRIX", Hear);
    Quarry::AddDataChangedListenerForUpdate(kNumber, "BRIX", Hear);
    Quarry::AddDataChangedListenerForDelete(kNumber, "BRIX", Hear);
    Quarry::CDataList list(kTask);
    list.AddNew();
    list.Set(kName, "a");
    EXPECT_TRUE(g_heard.empty()) << "nothing is saved yet";
    list.Update();
    list.Set(kName, "b");
    list.Update();
    list.Update(); // nothing changed
    list.Set(kName, "c");
    list.Delete();
    list.AddNew();
    list.Delete(); // never was there
    EXPECT_EQ(g_heard, (std::vector<std::string>{"none>a1", "a1>b1", "b1>none"}));
}

TEST_F(Listeners, HearOnlyWhatTheyAskedFor)
{
    Quarry::AddDataChangedListenerForInsert(kNumber + 1, "BRIX", Hear);
    Quarry::AddDataChangedListenerForInsert(kNumber, "OTHER", Hear);
    Quarry::AddDataChangedListenerForUpdate(kNumber, "BRIX", Hear);
    Quarry::AddDataChangedListenerForInsert(kNumber, "BRIX", HearAlso);
    Quarry::AddDataChangedListenerForInsert(kNumber, "BRIX", HearAlso);
    AddRow("a");
    EXPECT_EQ(g_heard, (std::vector<std::string>{"also"})) << "once, however often it was added";
    Quarry::RemoveDataChangedListenerForInsert(kNumber, "BRIX", HearAlso);
    AddRow("b");
    EXPECT_EQ(g_heard.size(), 1U);
}

void RemoveBothAndAddAnother(const Quarry::DataChange&)
{
    g_heard.emplace_back("first");
    Quarry::RemoveDataChangedListenerForInsert(kNumber, "BRIX", RemoveBothAndAddAnother);
    Quarry::RemoveDataChangedListenerForInsert(kNumber, "BRIX", HearAlso);
    Quarry::AddDataChangedListenerForInsert(kNumber, "BRIX", Hear);
}

TEST_F(Listeners, MayBeAddedAndRemovedWhileOneIsCalled)
{
    Quarry::AddDataChangedListenerForInsert(kNumber, "BRIX", RemoveBothAndAddAnother);
    Quarry::AddDataChangedListenerForInsert(kNumber, "BRIX", HearAlso);
    AddRow("a");
    EXPECT_EQ(g_heard, (std::vector<std::string>{"first"})) << "the removed one is not called, the added one not yet";
    AddRow("b");
    EXPECT_EQ(g_heard, (std::vector<std::string>{"first", "none>b2"}));
}

void RemoveAll(const Quarry::DataChange&)
{
    g_heard.emplace_back("removing");
    Quarry::RemoveAllListeners();
}

TEST_F(Listeners, MayAllGoWhileOneIsCalled)
{
    Quarry::AddDataChangedListenerForInsert(kNumber, "BRIX", RemoveAll);
    Quarry::AddDataChangedListenerForInsert(kNumber, "BRIX", Hear);
    AddRow("a");
    EXPECT_EQ(g_heard, (std::vector<std::string>{"removing"}));
}

void AddAnotherRow(const Quarry::DataChange& change)
{
    g_heard.push_back(NameIn(change.newRow));
    if (g_heard.size() > 2)
        return;
    Quarry::CDataList list(change.newRow->GetTable());
    list.AddNew();
    list.Set(1, "nested");
    list.Update();
}

TEST_F(Listeners, MayChangeDataThemselves)
{
    Quarry::AddDataChangedListenerForInsert(kNumber, "BRIX", AddAnotherRow);
    AddRow("a");
    EXPECT_EQ(g_heard, (std::vector<std::string>{"a1", "nested2", "nested3"}));
}

} // namespace
