#include "Afx/text/TextFold.h"
#include "Brix/Records.h"
#include "MorvUt/context/singletons/ClientSingleton.h"
#include "MorvUt/context/singletons/detail/Owner.h"

namespace
{

using Brix::CTaxForm;
using Quarry::Where;

constexpr int kIR214 = 50; // type of a calculated benefit

/// The client's form of the year, or the partnership's.
template<class Form>
Form OpenForm(const CClientSingletonData& data)
{
    Form form;
    form.Open({{Context::Detail::OwnerColumn<Form>(), data.clientId}, {Form::kYear, data.year}});
    return form;
}

template<class Form>
bool IsReviewed(const Form& form)
{
    return !form.IsEOL() && form.GetClientReview().IsValid();
}

template<class Form>
void ReadForm(CClientSingletonData& data)
{
    const Form form = OpenForm<Form>(data);
    data.taxFormExists = !form.IsEOL();
    data.dormant = !form.IsEOL() && form.GetDormant();
    data.clientReviewExist = IsReviewed(form);
}

/// The rows under the client's tax form of the year: of two the first, which ReadForm reads too.
template<class Rows>
Where OfTaxForm(const CClientSingletonData& data)
{
    return Where::UnderFirst(Rows::kTaxFormID, CTaxForm::Declaration(),
                             {{CTaxForm::kClientID, data.clientId}, {CTaxForm::kYear, data.year}});
}

/// Whether this is a client: what only clients have must not be read for the client who has a partnership's number.
/// Nor for nobody: 0 stands in rows of whom the client is not the parent.
bool IsClient(const CClientSingletonData& data) noexcept { return data.isPartnership == 0 && data.clientId != 0; }

/// The partnerships that the client is a member of.
std::vector<long> PartnershipsOf(long clientId)
{
    using Brix::CPartnershipClients;
    std::vector<long> ids;
    CPartnershipClients rows;
    for (rows.Open({{CPartnershipClients::kClientID, clientId}}); !rows.IsEOL(); rows.MoveNext())
        if (const long id = rows.GetPClientID(); id != 0)
            ids.push_back(id);
    return ids;
}

bool HasProprietor(const Where& owner) { return Brix::CBTaxProprietor().Open({owner}); }

/// One of the partnerships is there and has a proprietor.
bool HaveBusiness(const std::vector<long>& partnerships)
{
    for (const std::vector<long>& piece : Where::InPieces(partnerships))
        if (HasProprietor(Where::Under(Brix::CBTaxProprietor::kPClientID, Brix::CPartnership::Declaration(),
                                       {Where::In(0, piece)})))
            return true;
    return false;
}

/// The owner, who must be there, has an accepted submission of the year.
template<class Submissions, class Owner>
bool HasAccepted(const CClientSingletonData& data)
{
    return Submissions().Open(
        {Where::Under(Context::Detail::OwnerColumn<Submissions>(), Owner::Declaration(), {{0, data.clientId}}),
         {Submissions::kYear, data.year},
         {Submissions::kStatus, kAcceptedSubmission}});
}

} // namespace

const int* CEmploymentMap::Find(std::string_view guid) const noexcept
{
    for (const auto& [key, value] : m_entries)
        if (Afx::EqualNoCase(key.Str(), guid))
            return &value;
    return nullptr;
}

void CEmploymentMap::Set(const CString& guid, int value)
{
    for (auto& [key, held] : m_entries)
        if (Afx::EqualNoCase(key.Str(), guid.Str())) {
            held = value;
            return;
        }
    m_entries.emplace_back(guid, value);
}

CClientSingletonData::~CClientSingletonData() = default;

CClientSingletonData::CClientSingletonData(long id, int partnership, short realYear)
    : clientId(id), isPartnership(partnership), year(realYear)
{
    // No object of a derived class is there yet, so these are the functions of this one.
    if (isPartnership) {
        ReadForm<Brix::CPartnershipTaxForm>(*this);
    } else {
        ReadForm<CTaxForm>(*this);
        hasIR214s = CClientSingletonData::HasIR214s();
        CClientSingletonData::UpdateP11D();
        CClientSingletonData::UpdatePersonHasBusinessOrIsPartner();
        CClientSingletonData::UpdatePartnerships();
        CClientSingletonData::UpdateMinisters();
    }
    CClientSingletonData::UpdateAmending();
}

bool CClientSingletonData::HasIR214s() const
{
    using Brix::CCalculatedBenefits;
    using Brix::CMinisters;
    return IsClient(*this) &&
           CCalculatedBenefits().Open({{CCalculatedBenefits::kType, kIR214},
                                       Where::Under(CCalculatedBenefits::kMinisterID, CMinisters::Declaration(),
                                                    {OfTaxForm<CMinisters>(*this)})});
}

bool CClientSingletonData::HasP11D(const char* employmentGuid) const
{
    if (!employmentGuid)
        return !employmentP11D.empty();
    const int* const value = employmentP11D.Find(employmentGuid);
    return value && *value != 0;
}

bool CClientSingletonData::BelongsToPartnership(long partnershipId) const
{
    return partnerships.count(partnershipId) != 0;
}

bool CClientSingletonData::IsMinister(long ministerId) const { return ministers.count(ministerId) != 0; }

CString CClientSingletonData::EmploymentGUIDs() const
{
    CString guids;
    const char* before = "";
    for (const auto& [guid, value] : employmentP11D) {
        guids += before;
        guids += guid;
        before = ",";
    }
    return guids;
}

void CClientSingletonData::UpdateP11D()
{
    using Brix::CNewEmploy;
    CNewEmploy rows;
    if (IsClient(*this))
        rows.Open({OfTaxForm<CNewEmploy>(*this)}, {{CNewEmploy::kOrdering}});
    employmentP11D = {};
    for (; !rows.IsEOL(); rows.MoveNext())
        employmentP11D.Set(rows.GetGUID(), rows.GetP11D());
}

void CClientSingletonData::UpdatePersonHasBusinessOrIsPartner()
{
    personHasBusinessOrIsPartner = IsClient(*this) && (HasProprietor({Brix::CBTaxProprietor::kClientID, clientId}) ||
                                                       HaveBusiness(PartnershipsOf(clientId)));
}

void CClientSingletonData::UpdatePartnerships()
{
    const auto ids = IsClient(*this) ? PartnershipsOf(clientId) : std::vector<long>();
    partnerships = {ids.begin(), ids.end()};
}

void CClientSingletonData::UpdateMinisters()
{
    using Brix::CMinisters;
    CMinisters rows;
    if (IsClient(*this))
        rows.Open({OfTaxForm<CMinisters>(*this)});
    ministers.clear();
    for (; !rows.IsEOL(); rows.MoveNext())
        ministers.insert(rows.GetID());
}

void CClientSingletonData::UpdateClientReviewExist()
{
    clientReviewExist =
        isPartnership ? IsReviewed(OpenForm<Brix::CPartnershipTaxForm>(*this)) : IsReviewed(OpenForm<CTaxForm>(*this));
}

void CClientSingletonData::UpdateAmending()
{
    amending = year >= kFirstYearOfAmendments &&
               (isPartnership ? HasAccepted<Brix::CPartnershipFBISubmissions, Brix::CPartnership>(*this)
                              : HasAccepted<Brix::CFBISubmissions, Brix::CClient>(*this));
}
