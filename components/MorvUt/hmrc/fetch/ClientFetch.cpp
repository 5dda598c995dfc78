#include "MorvUt/hmrc/fetch/ClientFetch.h"

#include "Afx/Exceptions.h"
#include "Afx/windows/MessageBox.h"
#include "Brix/Records.h"
#include "Brix/Subjects.h"
#include "Cellar/DatabaseError.h"
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

/// Whom to ask about, and as whom.
struct ClientFetch::Request
{
    ClientId client;
    CAuthorisationStore store;
    IEndpointOverride::ResponseType type = IEndpointOverride::Live;
    PracticeOptions options;
    bool isAuthorised = false; // as the run knows already
    bool isTrust = false;
    CString nationalInsuranceNumber;
    CString utr;
};

/// PAYE records by one of the two routes, and National Insurance.
class ClientFetch::Groups
{
public:
    virtual ~Groups() = default;
    virtual void Ask(Retrieval& retrieval) = 0;
    virtual void Stage(Retrieval& retrieval, FetchResult& result) = 0;
};

namespace
{

using Request = ClientFetch::Request;

/// What stops a fetch before anything is asked of HMRC, in the order asked. A refusal with a text is shown.
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
    {FetchResult::Stopped::NotAuthorised,
     [](const Request& r) { return r.isAuthorised || r.store.HasAuthenticatedGatewayID(); },
     IDS_HMRC_NOT_ENABLED_FOR_USER},
    {FetchResult::Stopped::NoNINumber,
     [](const Request& r) { return !r.options.usesPayeInterface || !r.nationalInsuranceNumber.IsEmpty(); },
     IDS_HMRC_NINO_REQUIRED},
    {FetchResult::Stopped::NoUTR, [](const Request& r) { return IsValidUTR(r.utr); }, IDS_HMRC_UTR_REQUIRED},
    {FetchResult::Stopped::UnsavedChanges, [](const Request&) { return !Quarry::GetConnection().HasBegun(); },
     IDS_HMRC_UNSAVED_CHANGES},
};

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

/// `Records`: CPAYEPrepop or CEmploymentsPrepop, whose answers are staged alike.
template<class Records>
class GroupsBy : public ClientFetch::Groups
{
public:
    GroupsBy(const Request& request, const CString& identifier)
        : m_client(request.client), m_taxYear(GetCurrentRealTaxYear()), m_identifier(identifier.Str()),
          m_utr(request.utr.Str()), m_records(m_client, m_taxYear, m_identifier, request.type, request.store),
          m_nic(m_client, m_taxYear, m_utr, request.type, request.store)
    {}

    void Ask(Retrieval& retrieval) override
    {
        m_records.Ask(retrieval, m_identifier);
        m_nic.Ask(retrieval, m_utr);
    }

    void Stage(Retrieval& retrieval, FetchResult& result) override
    {
        const StagedYear staged = StageAnswers(retrieval);
        result.notes = m_records.GetNotes();
        const std::vector<CString> ofItems = NotesOf(staged);
        result.notes.insert(result.notes.end(), ofItems.begin(), ofItems.end());
        TellStates(staged, m_records.GetReturn() ? *m_records.GetReturn() : LoadReturnYear(m_client, GetYear()),
                   result);
        Fold(m_records, result);
        Fold(m_nic, result);
    }

private:
    short GetYear() const { return m_taxYear.GetRealTaxYear(); }

    /// What the year's rows hold afterwards. Without an answer nothing is locked. The groups share one level, which
    /// costs a server the fewest round trips. Only when a program that takes no locks has changed a row meanwhile, each
    /// stands in its own, so that the other is kept.
    StagedYear StageAnswers(Retrieval& retrieval)
    {
        if (!m_records.HasAnswer() && !m_nic.IsAnswered())
            return LoadStagedYear(m_client, GetYear());
        try {
            const Retrieval::Together together(retrieval);
            return StageGroups(retrieval);
        } catch (const Quarry::ChangedByAnotherUser&) {
            return StageGroups(retrieval);
        }
    }

    StagedYear StageGroups(Retrieval& retrieval)
    {
        Quarry::CTransaction transaction(Cellar::Intent::Write, Brix::SubjectOf(m_client));
        StagingWriter& writer = retrieval.GetWriter();
        if (retrieval.GetErrors().GetErrorCount() == 0)
            writer.SetComplete();
        m_records.Stage(retrieval);
        m_nic.Stage(retrieval);
        if (retrieval.GetErrors().GetErrorCount() != 0)
            writer.TakeBackComplete();
        StagedYear staged = writer.GetYear();
        transaction.Commit();
        return staged;
    }

    void TellStates(const StagedYear& staged, const ReturnYear& own, FetchResult& result) const
    {
        const bool hasRecords = !staged.employments.empty() || !staged.pensions.empty() || !staged.allowances.empty();
        const bool isFinalised = own.finalised.IsValid();
        const Kiln::CDate today = Kiln::CDate::Today();
        result.groups[0].state = StateOf(result.groups[0].name, *result.errors, m_records.HasAnswer(),
                                         StateOfNothing(GetYear(), hasRecords, isFinalised, today));
        result.groups[1].state =
            StateOf(result.groups[1].name, *result.errors, m_nic.HasAnswer(),
                    StateOfNothing(GetYear(), staged.nationalInsurance.has_value(), isFinalised, today));
        result.counts = CountItems(staged, own);
        result.counts.items = m_records.CountSent() + (m_nic.HasAnswer() ? 1 : 0); // the year has the other route's too
    }

    ClientId m_client;
    TaxYear m_taxYear;
    std::string m_identifier, m_utr;
    Records m_records;
    CNICPrepop m_nic;
};

/// Nothing is asked of HMRC while another program writes to the embedded database: each token, log line and row of the
/// answer would wait in vain.
void NeedWriteLock()
{
    if (Quarry::GetTransactionLevel() == 0 && Quarry::GetConnection().GetDialect().HasOneWriter())
        Quarry::CTransaction(Cellar::Intent::Write).Commit();
}

Request MakeRequest(ClientId client, const std::string& gatewayId, IEndpointOverride::ResponseType type, Desk* desk)
{
    Request request;
    request.client = client;
    request.store = CAuthorisationStore(gatewayId);
    request.type = type;
    request.options = desk ? desk->GetOptions() : ReadPracticeOptions();
    request.isAuthorised = desk && desk->GetGrant();
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

} // namespace

ClientFetch::ClientFetch(ClientId client, std::string gatewayId, IEndpointOverride::ResponseType type,
                         std::shared_ptr<Channel> channel, Desk* desk)
    : m_client(client), m_gatewayId(std::move(gatewayId)), m_type(type), m_channel(std::move(channel)), m_desk(desk),
      m_errors(std::make_shared<CAPIErrorHandler>())
{
    m_result.errors = m_errors;
}

ClientFetch::~ClientFetch() = default;

void ClientFetch::Fail(FetchResult::Stopped why, CString text)
{
    m_result.stopped = why;
    m_result.ok = false;
    m_result.message = std::move(text);
    m_isToBeShown = true;
}

template<class Work>
void ClientFetch::Try(Work work)
{
    try {
        work();
    } catch (const Cellar::DatabaseError& error) { // the statement says nothing to the user
        Fail(WhyStopped(error.GetCategory()), error.GetReason().c_str());
    } catch (const std::exception& problem) {
        Fail(FetchResult::Stopped::Failed, problem.what());
    } catch (CException* problem) { // of the framework: thrown as a pointer
        const CString text = problem->GetErrorMessage();
        problem->Delete();
        Fail(FetchResult::Stopped::Failed, text);
    }
}

/// True when nothing stops the fetch.
bool ClientFetch::MayFetch()
{
    for (const Check& check : kChecks) {
        if (check.mayGoOn(*m_request))
            continue;
        m_result.stopped = check.stopped;
        if (check.stopped == FetchResult::Stopped::NoRight)
            m_result.message = LibraryText(IDS_NO_PERMISSION);
        if (check.text != 0)
            m_result.message = LibraryText(check.text);
        m_isToBeShown = check.text != 0;
        return false;
    }
    return true;
}

void ClientFetch::Prepare()
{
    ThinLogOnceADay(m_request->options.logDays);
    m_logger = m_desk ? std::make_unique<DeskLogger>(*m_desk) : std::make_unique<Logger>();
    m_logger->SetDebugLevel(m_request->options.debugLevel);
    m_result.chain = m_logger->GetChainIdString();
    m_retrieval =
        std::make_unique<Retrieval>(m_client, TaxYear(GetCurrentRealTaxYear()).GetRealTaxYear(), m_request->store,
                                    m_errors, m_logger.get(), m_request->options, m_channel, m_desk);
    if (m_request->options.usesPayeInterface)
        m_groups = std::make_unique<GroupsBy<CPAYEPrepop>>(*m_request, m_request->nationalInsuranceNumber);
    else
        m_groups = std::make_unique<GroupsBy<CEmploymentsPrepop>>(*m_request, m_request->utr);
}

bool ClientFetch::Begin()
{
    Try([this] {
        m_request = std::make_unique<Request>(MakeRequest(m_client, m_gatewayId, m_type, m_desk));
        const bool usesPaye = m_request->options.usesPayeInterface;
        m_result.route = usesPaye ? FetchResult::Route::Paye : FetchResult::Route::Employments;
        m_result.groups = {{usesPaye ? CPAYEPrepop::kGroup : CEmploymentsPrepop::kGroup}, {CNICPrepop::kGroup}};
        if (!MayFetch())
            return;
        NeedWriteLock();
        Prepare();
    });
    return IsUnderWay();
}

void ClientFetch::Ask()
{
    if (IsUnderWay())
        Try([this] { m_groups->Ask(*m_retrieval); });
}

FetchResult ClientFetch::End()
{
    if (IsUnderWay())
        Try([this] {
            m_groups->Stage(*m_retrieval, m_result);
            m_errors->DisplayErrors();
            m_result.ok = m_errors->GetErrorCount() == 0;
        });
    if (m_isToBeShown)
        AfxMessageBox(m_result.message);
    return m_result;
}

} // namespace HmrcApi
