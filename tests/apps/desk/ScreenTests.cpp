// What the screens' stories need beside the program, and what no story can tell.

#include "apps/desk/DeskTest.h"
#include "Password.h"

namespace
{

class Screens : public DeskTest
{
protected:
    Screens()
    {
        On("Start", [this] { Desk::Run({m_practice, {}, {}}); });
        On("Start where no practice is", [this] {
            ::Test::Windows().Answer(IDOK);
            Desk::Run({m_practice + ".not", {}, {}});
            EXPECT_TRUE(Quarry::HasConnection());
            return ::Test::Windows().Messages().at(0).text;
        });
        On("Type where the practice is", [this] { Here().Type(IDC_OPEN_PRACTICE, m_practice); });
        Is("Signed in", [] { return CUserData::m_strUser; });
        Is("Page", [this] { return dynamic_cast<CPropertySheet&>(Here().Window()).GetActiveIndex(); });
        Is("Width of Schedules", [this] { return Control<CListCtrl>("Schedules").GetColumns()[0].width; });
        On("Width of Schedules becomes",
           [this](const std::string& width) { Control<CListCtrl>("Schedules").SetColumnWidth(0, std::stoi(width)); });
        On("Statements are watched", [this] {
            Quarry::GetConnection().OnSent([this](std::string_view sent) {
                m_whole += sent.find("BRIXClient") != sent.npos && sent.find("WHERE") == sent.npos;
            });
        });
        Is("Whole lists read", [this] {
            Quarry::GetConnection().OnSent(nullptr);
            return m_whole;
        });
    }

private:
    int m_whole = 0; // statements that read all clients
};

STORIES(Screens, "apps/desk/Screens.story");

/// The sheets of the schedules, each on a practice of its own.
class ScheduleSheets : public DeskTest
{};

STORIES(ScheduleSheets, "apps/desk/Sheets.story");

} // namespace

TEST(Password, IsNoneWithoutAWholeHash)
{
    EXPECT_FALSE(Desk::IsPassword("correct horse", "pbkdf2-sha256$600000$00") || Desk::IsPassword("", CString()));
}
