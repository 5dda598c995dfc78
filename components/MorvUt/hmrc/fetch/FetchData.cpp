#include "MorvUt/hmrc/fetch/FetchData.h"

#include "Afx/Exceptions.h"
#include "Afx/windows/MessageBox.h"
#include "Brix/Records.h"
#include "Brix/Subjects.h"
#include "MorvUt/context/status/ClientStatus.h"
#include "MorvUt/hmrc/access/LogKeeping.h"
#include "MorvUt/hmrc/access/PracticeOptions.h"
#include "MorvUt/hmrc/fetch/EmploymentsPrepop.h"
#include "MorvUt/hmrc/fetch/NicPrepop.h"
#include "MorvUt/hmrc/fetch/PayePrepop.h"
#include "MorvUt/hmrc/fetch/Retrieval.h"
#include "MorvUt/hmrc/schedules/Notes.h"
#include "MorvUt/hmrc/schedules/ReturnYear.h"
#include "MorvUt/identifiers/TaxIdentifiers.h"
#include "MorvUt/res/Strings.h"
#include "MorvUt/taxyear/CurrentTaxYear.h"
#include "MorvUt/users/UserData.h"
#include "Quarry/Session.h"

namespace HmrcApi
{
namespace
{

/// Whom to ask about, and as whom.
struct Request
{
    ClientId client;
    CAuthorisationStore store;
    IEndpointOverride::ResponseType type = IEndpointOverride::Live;
    PracticeOptions options;
    bool isTrust = false;
    CString nationalInsuranceNumber;
    CString utr;
};

/// What stops a fetch before anything is asked of HMRC, in the order asked. A refusal with a text is shown here.
struct Check
{
    FetchResult::Stopped stopped;
    bool (*mayGoOn)(const Request& request);
    unsigned text; // 0: none, or shown by the check itself
};

constexpr Check kChecks[] = {
    {FetchResult::Stopped::Trust, [](const Request& r) { return !r.isTrust; }, 0},
    {FetchResult::Stopped::NoRight, [](const Request&) { return TheUser().HMRCDataGetAllowed(true); }, 0},
    {FetchResult::Stopped::NotEnabled, [](const Request& r) { return r.options.isRetrievalEnabled; },
     IDS_HMRC_NOT_ENABLED},
    {FetchResult::Stopped::NotAuthorised, [](const Request& r) { return r.store.HasAuthenticatedGatewayID(); },
     IDS_HMRC_NOT_ENABLED_FOR_USER},
    {FetchResult::Stopped::NoNINumber,
     [](const Request& r) { return !r.options.usesPayeInterface || !r.nationalInsuranceNumber.IsEmpty(); },
     IDS_HMRC_NINO_REQUIRED},
    {FetchResult::Stopped::NoUTR, [](const Request& r) { return IsValidUTR(r.utr); }, IDS_HMRC_UTR_REQUIRED},
    {FetchResult::Stopped::UnsavedChanges, [](const Request&) { return !Quarry::GetConnection().HasBegun(); },
     IDS_HMRC_UNSAVED_CHANGES},
};

/// True when nothing stops the fetch.
bool MayFetch(const Request& request, FetchResult& result)
{
    for (const Check& check : kChecks) {
        if (check.mayGoOn(request))
            continue;
        result.stopped = check.stopped;
        if (check.stopped == FetchResult::Stopped::NoRight)
            result.message = LibraryText(IDS_NO_PERMISSION);
        if (check.text != 0) {
            result.message = LibraryText(check.text);
            AfxMessageBox(result.message);
        }
        return false;
    }
    return true;
}

void Fold(const CSchedulePrepop& prepop, FetchResult& result)
{
    result.staged += prepop.GetStagedCounts();
    result.newData = result.newData || prepop.HasNewData();
    result.clear = result.clear && !prepop.HasDifferences();
}

GroupState StateOf(const std::string& group, const CAPIErrorHandler& errors, bool isThere, GroupState ofNothing)
{
    for (const CAPIErrorHandler::Group& each : errors.GetGroups())
        if (each.name == group && each.errors.empty())
            return isThere ? GroupState::There : ofNothing;
    return GroupState::Unknown;
}

template<class Records>
void TellStates(const Records& records, const CNICPrepop& nic, const StagedYear& staged, const ReturnYear& own,
                short year, FetchResult& result)
{
    const bool hasRecords = !staged.employments.empty() || !staged.pensions.empty() || !staged.allowances.empty();
    const bool isFinalised = own.finalised.IsValid();
    const Kiln::CDate today = Kiln::CDate::Today();
    result.groups[0].state = StateOf(result.groups[0].name, *result.errors, records.HasAnswer(),
                                     StateOfNothing(year, hasRecords, isFinalised, today));
    result.groups[1].state = StateOf(result.groups[1].name, *result.errors, nic.HasAnswer(),
                                     StateOfNothing(year, staged.nationalInsurance.has_value(), isFinalised, today));
    result.counts = CountItems(staged, own);
    result.counts.items = (records.HasAnswer() ? result.counts.items : 0) + (nic.HasAnswer() ? 1 : 0);
}

/// What the year's rows hold afterwards. Without an answer nothing is locked.
template<class Records>
StagedYear StageAnswers(Retrieval& retrieval, Records& records, CNICPrepop& nic, ClientId client, short year)
{
    if (!records.HasAnswer() && !nic.IsAnswered())
        return LoadStagedYear(client, year);
    Quarry::CTransaction transaction(Cellar::Intent::Write, Brix::SubjectOf(client));
    records.Stage(retrieval);
    nic.Stage(retrieval);
    StagedYear staged = retrieval.GetWriter().GetYear();
    transaction.Commit();
    return staged;
}

/// Nothing is asked of HMRC while another program writes to the embedded database: each token, log line and row of the
/// answer would wait in vain.
void NeedWriteLock()
{
    if (Quarry::GetTransactionLevel() == 0 && Quarry::GetConnection().GetDialect().HasOneWriter())
        Quarry::CTransaction(Cellar::Intent::Write).Commit();
}

/// `Records`: CPAYEPrepop or CEmploymentsPrepop, whose answers are staged alike.
template<class Records>
void FetchBy(Retrieval& retrieval, const Request& request, const std::string& identifier, FetchResult& result)
{
    const TaxYear taxYear(GetCurrentRealTaxYear());
    const short year = taxYear.GetRealTaxYear();
    const std::string& utr = request.utr.Str();
    Records records(request.client, taxYear, identifier, request.type, request.store);
    CNICPrepop nic(request.client, taxYear, utr, request.type, request.store);
    records.Ask(retrieval, identifier);
    nic.Ask(retrieval, utr);

    const StagedYear staged = StageAnswers(retrieval, records, nic, request.client, year);
    result.notes = NotesOf(staged);
    TellStates(records, nic, staged, records.GetReturn() ? *records.GetReturn() : LoadReturnYear(request.client, year),
               year, result);
    Fold(records, result);
    Fold(nic, result);
}

void FetchAll(const Request& request, const std::shared_ptr<CAPIErrorHandler>& errors, std::shared_ptr<Channel> channel,
              FetchResult& result)
{
    ThinLogOnceADay(request.options.logDays);
    Logger logger;
    logger.SetDebugLevel(request.options.debugLevel);
    result.chain = logger.GetChainIdString();
    Retrieval retrieval(request.client, TaxYear(GetCurrentRealTaxYear()).GetRealTaxYear(), request.store, errors,
                        &logger, request.options, std::move(channel));
    if (request.options.usesPayeInterface)
        FetchBy<CPAYEPrepop>(retrieval, request, request.nationalInsuranceNumber.Str(), result);
    else
        FetchBy<CEmploymentsPrepop>(retrieval, request, request.utr.Str(), result);
}

Request MakeRequest(ClientId client, const std::string& gatewayId, IEndpointOverride::ResponseType type)
{
    Request request;
    request.client = client;
    request.store = CAuthorisationStore(gatewayId);
    request.type = type;
    request.options = ReadPracticeOptions();
    Brix::CClient list;
    if (list.Open({{0, client.Get()}})) {
        request.isTrust = IsTrust(list, false);
        request.nationalInsuranceNumber = list.GetNINumber();
        request.nationalInsuranceNumber.Trim();
        request.utr = list.GetUTR();
    }
    return request;
}

FetchResult::Stopped WhyStopped(Cellar::DatabaseError::Category category) noexcept
{
    using Category = Cellar::DatabaseError::Category;
    if (category == Category::Busy)
        return FetchResult::Stopped::Busy;
    const bool isUnusable = category == Category::LostConnection || category == Category::ReadOnly;
    return isUnusable ? FetchResult::Stopped::Unusable : FetchResult::Stopped::Failed;
}

void ShowException(const char* text, FetchResult& result, FetchResult::Stopped why = FetchResult::Stopped::Failed)
{
    result.stopped = why;
    result.ok = false;
    result.message = text;
    AfxMessageBox(text);
}

} // namespace

CString FetchResult::Reason() const
{
    return stopped == Stopped::Trust ? LibraryText(IDS_HMRC_NOT_FOR_TRUSTS) : message;
}

FetchResult FetchFromHmrc(ClientId client, const std::string& gatewayId, IEndpointOverride::ResponseType type,
                          std::shared_ptr<Channel> channel)
{
    const auto errors = std::make_shared<CAPIErrorHandler>();
    FetchResult result;
    result.errors = errors;
    try {
        const Request request = MakeRequest(client, gatewayId, type);
        result.route = request.options.usesPayeInterface ? FetchResult::Route::Paye : FetchResult::Route::Employments;
        result.groups = {{request.options.usesPayeInterface ? CPAYEPrepop::kGroup : CEmploymentsPrepop::kGroup},
                         {CNICPrepop::kGroup}};
        if (!MayFetch(request, result))
            return result;
        NeedWriteLock();
        FetchAll(request, errors, std::move(channel), result);
        errors->DisplayErrors();
        result.ok = errors->GetErrorCount() == 0;
    } catch (const Cellar::DatabaseError& error) { // the statement says nothing to the user
        ShowException(error.GetReason().c_str(), result, WhyStopped(error.GetCategory()));
    } catch (const std::exception& problem) {
        ShowException(problem.what(), result);
    } catch (CException* problem) { // of the framework: thrown as a pointer
        const CString text = problem->GetErrorMessage();
        problem->Delete();
        ShowException(text, result);
    }
    return result;
}

} // namespace HmrcApi

bool GetHMRCApiData(ClientId client, const std::string& gatewayId, bool& newData, bool& clear,
                    HmrcApi::IEndpointOverride::ResponseType type)
{
    newData = false;
    clear = true;
    const HmrcApi::FetchResult result = HmrcApi::FetchFromHmrc(client, gatewayId, type);
    newData = result.newData;
    clear = result.clear;
    return result.ok;
}
