// Users and what they may do, in stories: acts, and below each what it shows.

#include <functional>
#include <map>

#include "Afx/system/Application.h"
#include "Cellar/DatabaseError.h"
#include "MorvUt/users/ReadOnlyManager.h"
#include "MorvUt/users/StaffRights.h"
#include "Shellkit/Envelope.h"
#include "UsersTest.h"

namespace
{

class UserStories : public UsersTest
{
protected:
    UserStories() { TellTo(m_told); }
    ~UserStories() override
    {
        CUserData::SetReadOnly(0);
        CUserData::SetReadOnlyPIN(0);
        CUserData::m_nLocalReadOnly = 0;
    }

    /// "login Bob": what is known of who is logged in then, and what the user is told.
    std::string Act(const std::string& line)
    {
        const std::size_t blank = std::min(line.find(' '), line.size());
        m_rest = line.substr(std::min(blank + 1, line.size()));
        std::string shown;
        m_told = "";
        try {
            shown = m_acts.at(line.substr(0, blank))();
        } catch (const Cellar::DatabaseError&) {
            shown = "refused by the database; " + ShownUser();
        }
        EXPECT_EQ(Afx::ResourceContext::Current(), nullptr) << "the caller's resources are back";
        return (shown.empty() ? "" : shown + '\n') + m_told;
    }

private:
    struct App : CWinApp
    {
        void OnUserChanged() override { heard = CUserData::m_strUser; }
        CString heard;
    };

    static std::string Shown(const std::vector<int>& rights)
    {
        std::string text = "rights";
        for (const int number : rights)
            text += ' ' + std::to_string(number);
        return text;
    }
    std::string ShownUser() const
    {
        const CUserData& user = TheUser();
        std::string text = CUserData::m_strUser.Str() + " (" + user.GetFullUserName() + "), ";
        if (m_app.heard != CUserData::m_strUser || !user.HasUserLoggedIn())
            text += "of which nobody is told, ";
        text += Shown(Allowed()) + ", groups " + user.GetGroupInList().Str();
        for (const auto& group : CUserData::m_UserGroups)
            text += ' ' + std::to_string(group.m_nID);
        text += ", among";
        for (int i = 0; i < CUserData::m_arrUsers.GetSize(); ++i)
            text += ' ' + CUserData::m_arrUsers[i].Str() + " (" + CUserData::m_arrUserFullnames[i].Str() + ')';
        return text;
    }
    /// What the functions for any user say.
    std::string RightsOfAnother() const
    {
        static constexpr std::pair<int, int (*)(CString)> kQueries[] = {
            {27, CUserData::UserHasReviewToolUse},
            {28, CUserData::UserHasReviewToolViewEventsLog},
            {29, CUserData::UserHasReviewToolStartOrCompleteReviewsAssignedToAnotherUser},
            {30, CUserData::UserHasReviewToolFinaliseReviews},
            {31, CUserData::UserHasReviewToolEditTolerances},
            {74, CUserData::IsTaxExchangeAllowedForUser},
        };
        std::vector<int> rights;
        for (const auto& [number, query] : kQueries)
            if (query(m_rest.c_str()))
                rights.push_back(number);
        return Shown(rights);
    }
    std::string RightsOfStaff() const
    {
        std::vector<int> rights;
        const auto staff = FindStaff(m_rest.c_str());
        for (const StaffRight& right : staff->rights)
            if (right.isAllowed)
                rights.push_back(right.number);
        return Shown(rights);
    }

    static std::string Staff()
    {
        std::string ids;
        for (const StaffMember& listed : ListStaff())
            ids += (ids.empty() ? "" : " ") + listed.id.Str();
        return ids;
    }

    static std::string Particulars()
    {
        const CUserData& user = TheUser();
        std::string text;
        for (const char* const each :
             {user.GetFullUserName(), user.GetEmailAddress(), user.GetTelephone(), user.GetGatewayID(),
              user.GetFBIUserName(), user.GetFBIPassword(), user.GetTallywickUserName(), user.GetTallywickPassword()})
            text += std::string(each) + '|';
        return text + Shellkit::OpenText(user.GetEncryptedFBIPassword()).value_or("none") + ", remembered " +
               std::to_string(user.RememberFBIPassword()) + ", sent at once " +
               std::to_string(user.FBICanSendImmediately());
    }
    static std::string ReadOnly()
    {
        const int isReadOnly = CUserData::IsReadOnly(), isLocked = CUserData::IsReadOnlyBecauseLocked();
        EXPECT_EQ(CUserData::CheckForReadOnlyWithError(), isReadOnly);
        EXPECT_EQ(CUserData::IsReadOnlyBecauseLockedWithError(), isLocked);
        EXPECT_EQ(CUserData::IsReadOnlyPIN(), UsingReadOnlyPin());
        return std::to_string(isReadOnly) + ", locked " + std::to_string(isLocked) + ", PIN " +
               std::to_string(UsingReadOnlyPin());
    }
    std::string MaySaveReturns() const
    {
        const bool is = TheUser().TaxReturnSaveAllowed(false);
        EXPECT_EQ(TheUser().TaxReturnSaveAllowed(m_rest == "asked"), is);
        return is ? "yes" : "no";
    }

    const std::map<std::string, std::function<std::string()>> m_acts{
        {"sql", [this] { return Script(m_rest), ""; }},
        {"login", [this] { return CUserData::SetUser(m_rest.c_str()), ShownUser(); }},
        {"clear", [this] { return CUserData::ClearPermissions(), ShownUser(); }},
        {"has-group", [this] { return std::to_string(TheUser().HasGroup(m_rest.empty() ? nullptr : m_rest.c_str())); }},
        {"of-another", [this] { return RightsOfAnother(); }},
        {"of-staff", [this] { return RightsOfStaff(); }},
        {"may-save-returns", [this] { return MaySaveReturns(); }},
        {"particulars", [] { return Particulars(); }},
        {"seal-passwords", // one of them; the other one is no envelope
         [this] {
             Sql("UPDATE BRIXUser SET vbFBIPassword = %b, vbTallywickPassword = %b WHERE strFullName = 'Bob Example'",
                 Shellkit::Seal(Shellkit::KeyId::Application, m_rest).value(), Cellar::Bytes{1, 2, 3});
             return "";
         }},
        {"read-only", [] { return ReadOnly(); }},
        {"set-locked", [this] { return CUserData::SetReadOnly(std::stoi(m_rest)), ""; }},
        {"set-pin", [this] { return CUserData::SetReadOnlyPIN(std::stoi(m_rest)), ""; }},
        {"set-local", [] { return CUserData::SetLocalReadOnly(), ""; }},
        {"release-local", [] { return CUserData::ReleaseLocalReadOnly(), ""; }},
        {"work-read-only",
         [] {
             CReadOnlyManager manager;
             for (int i = 0; i < 3; ++i)
                 manager.SetLocalReadOnly();
             return ReadOnly();
         }},
        {"staff", [] { return Staff(); }},
        {"why-not-new", [this] { return WhyNotNewStaff(m_rest.c_str(), "Another", "").Str(); }},
    };
    std::string m_rest, m_told; // of the act
    App m_app;
};

ON_BOTH_DATABASES(UserStories);

TEST_P(UserStories, GoAsTold)
{
    ::Test::ExpectTranscript("MorvUt/users/stories/users.txt", [this](const std::string& act) { return Act(act); });
}

} // namespace
