// What the stories of the list of enquiries and of the dialog for one need beside it.

#include "MorvUt/enquiries/dialogs/ClientEnquiriesListDlg.h"
#include "MorvUt/users/UserData.h"
#include "support/Practice.h"
#include "support/Story.h"

namespace
{

class EnquiryDialogs : public ::testing::Test, protected ::Test::Practice, protected ::Test::Stories
{
protected:
    EnquiryDialogs()
    {
        ::Test::SetNow(2024, 3, 1);
        Script(::Test::FileText("MorvUt/enquiries/EnquiryDialogs.sql"));
        CUserData::SetUser("ANNA");
        AroundList("The list", false, 0, 0);
        AroundList("The list, read-only", true, 0, 0);
        AroundList("The list of a task", false, 10, 7);
        On("Listed", [this] {
            std::string text;
            for (int row = 0; row < List().GetItemCount(); ++row)
                text += std::to_string(List().GetItemImage(row)) + ' ' + List().GetItemText(row, 2).Str() + '\n';
            return text;
        });
        On("Tip of row", [this](const std::string& row) { return List().GetTip(std::stoi(row)).Str(); });
        On("Double click row", [this](const std::string& row) { Afx::UserActs::DoubleClick(List(), std::stoi(row)); });
        On("Warned", [] { EXPECT_EQ(::Test::Windows().Messages().back().style & MB_ICONWARNING, MB_ICONWARNING); });
        On("The client is read-only", [] { CUserData::SetReadOnly(1); });
        On("The client can be written", [] { CUserData::SetReadOnly(0); });
        On("Settings cannot be written",
           [this] { m_full.emplace(Quarry::GetConnection(), "BEFORE UPDATE", "BRIXClientEnquirySettings"); });
        On("Settings can be written", [this] { m_full.reset(); });
        On("Stored", InTable);
    }
    ~EnquiryDialogs() override
    {
        CUserData::SetReadOnly(0);
        CUserData::ClearPermissions();
    }

private:
    void AroundList(const char* words, bool isReadOnly, long source, long task)
    {
        Around(words, [=](::Test::Acts inside) {
            CClientEnquiriesListDlg list(Quarry::GetConnection(), 1, 0, 2024, isReadOnly, source, task);
            ::Test::Work(list, std::move(inside));
        });
    }
    CListCtrl& List() { return Control<CListCtrl>("Enquiries"); }

    std::optional<::Test::Trigger> m_full;
};

STORIES(EnquiryDialogs, "MorvUt/enquiries/EnquiryDialogs.story");

} // namespace
