#include "MorvUt/hmrc/schedules/CreateFromHmrc.h"

#include "Afx/windows/MessageBox.h"
#include "Brix/Subjects.h"
#include "MorvUt/hmrc/schedules/Notes.h"
#include "MorvUt/res/Strings.h"
#include "MorvUt/users/UserData.h"
#include "Quarry/Session.h"

namespace HmrcApi
{
namespace
{

CreateResult Refused(unsigned text, bool isShown)
{
    CreateResult result;
    result.message = LibraryText(text);
    if (!isShown)
        AfxMessageBox(result.message);
    return result;
}

} // namespace

CreateResult CreateFromHmrc(ClientId client, TaxYear taxYear)
{
    if (!TheUser().TaxReturnSaveAllowed(true))
        return Refused(IDS_NO_PERMISSION, true);
    if (CUserData::CheckForReadOnlyWithError())
        return Refused(IDS_CLIENT_READ_ONLY, true);
    const short year = taxYear.GetRealTaxYear();
    Quarry::CTransaction transaction(Cellar::Intent::Write, Brix::SubjectOf(client));
    const ReturnYear own = LoadReturnYear(client, year);
    if (own.finalised.IsValid()) {
        transaction.Rollback(); // no lock is held while the message is shown
        return Refused(IDS_CLIENT_READ_ONLY, false);
    }
    const StagedYear staged = LoadStagedYear(client, year);
    NewScheduleWriter writer(client, year, own);
    writer.AddAll(staged);
    transaction.Commit();

    CreateResult result;
    result.ok = true;
    result.created = writer.GetCreated();
    const std::vector<CString> notes = NotesOf(staged);
    result.created.notes.insert(result.created.notes.end(), notes.begin(), notes.end());
    return result;
}

} // namespace HmrcApi
