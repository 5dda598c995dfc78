#include "Session.h"

#include "Afx/text/Numbers.h"
#include "MorvUt/MorvUt.h"
#include "MorvUt/StartUp.h"
#include "Output.h"

namespace Morv
{

namespace
{

void LogIn(const std::string& user, Login login)
{
    if (user.empty() && login == Login::IfGiven)
        return;
    Brix::CUser users;
    if (!user.empty()) {
        if (!FindUser(users, user))
            throw CommandError(Exit::BadInput, "UNKNOWN_USER",
                               "--user: there is no user " + Quoted(user) + " in this practice",
                               "morv user list shows who there is.");
        CUserData::ClearPermissions();
        CUserData::SetUser(users.GetUserID());
        return;
    }
    for (users.Open({}, {{Brix::CUser::kUserID}}); !users.IsEOL(); users.MoveNext())
        if (users.GetListed() && users.GetUserID().CompareNoCase(kBuiltInAdministrator) != 0) {
            CUserData::ClearPermissions();
            CUserData::SetUser(users.GetUserID());
            return;
        }
    throw CommandError(Exit::Refused, "NO_USER", "the practice has no listed user to work as",
                       "Add a user to the practice, or name one with --user.");
}

} // namespace

void UseYear(const CommonOptions& options)
{
    if (options.year.empty())
        return;
    const int year = Afx::ParseWhole<int>(options.year).value_or(0);
    if (year < GetMinRealTaxYear() || year > GetMaxRealTaxYear())
        throw CommandError(Exit::BadInput, "BAD_YEAR",
                           "--year: " + Quoted(options.year) + " is no tax year that is supported",
                           "Give the year in which the tax year ends, 1991 to 2025.");
    SetCurrentTaxYear(ConvertRealToRelativeTaxYear(static_cast<short>(year)));
}

PracticeSession::PracticeSession(const std::string& practice, const CommonOptions& options, Login login, Key key)
{
    UseYear(options);
    try {
        m_keyProblem = OpenPractice(practice);
        if (m_keyProblem && key == Key::Needed)
            throw CommandError(*m_keyProblem);
        LogIn(options.user, login);
    } catch (const Cellar::DatabaseError& error) {
        MorvUtShutDown();
        throw FromDatabaseError(error);
    } catch (...) {
        MorvUtShutDown();
        throw;
    }
}

PracticeSession::~PracticeSession() { MorvUtShutDown(); }

} // namespace Morv
