#include "MorvUt/context/singletons/ClientSingleton.h"

#include <type_traits>

#include "Afx/text/TextFold.h"
#include "Brix/Records.h"
#include "Cellar/DatabaseError.h"
#include "MorvUt/context/singletons/detail/Changes.h"
#include "MorvUt/context/singletons/detail/Owner.h"
#include "MorvUt/context/singletons/detail/Reload.h"

template class CSingleton<CClientSingletonData, CClientSingleton>;

using Brix::CBTaxProprietor;
using Brix::CCalculatedBenefits;
using Brix::CFBISubmissions;
using Brix::CMinisters;
using Brix::CNewEmploy;
using Brix::CPartnershipClients;
using Brix::CPartnershipFBISubmissions;
using Brix::CPartnershipTaxForm;
using Brix::CTaxForm;
using Context::Detail::Callback;
using Context::Detail::Event;
using Context::Detail::OwnerColumn;
using Quarry::DataChange;
using Quarry::Row;

namespace
{

template<class Record>
bool HaveSameKey(const Row& a, const Row& b) noexcept
{
    constexpr int kOwner = OwnerColumn<Record>();
    return a.GetLong(kOwner) == b.GetLong(kOwner) && a.GetShort(Record::kYear) == b.GetShort(Record::kYear);
}

template<class Record>
bool IsOfHeldKey(const CClientSingletonData& held, const Row& record) noexcept
{
    return held.clientId == record.GetLong(OwnerColumn<Record>()) && held.year == record.GetShort(Record::kYear);
}

} // namespace

/// A listener may end the singleton, after which it touches nothing of it; so they are static.
struct CClientSingleton::Listeners
{
    /// What is held, if that is of the kind; null also when nothing is.
    static CClientSingletonData* Held(bool isPartnership = false)
    {
        if (!Loaded())
            return nullptr;
        CClientSingletonData& held = Instance().m_data;
        return held.clientId != 0 && (held.isPartnership != 0) == isPartnership ? &held : nullptr;
    }

    /// What is held, if the record is of the held client and year.
    template<class Record>
    static CClientSingletonData* HeldFor(const Row& record, bool isPartnership = false)
    {
        CClientSingletonData* const held = Held(isPartnership);
        return held && IsOfHeldKey<Record>(*held, record) ? held : nullptr;
    }

    template<class Form>
    static constexpr bool kIsPartnerships = std::is_same_v<Form, CPartnershipTaxForm>;

    template<class Form>
    static void OnInsertForm(const Row& form)
    {
        if (CClientSingletonData* const held = HeldFor<Form>(form, kIsPartnerships<Form>)) {
            held->taxFormExists = 1;
            held->dormant = form.GetBool(Form::kDormant);
        }
    }

    template<class Form>
    static void OnDeleteForm(const Row& form)
    {
        if (HeldFor<Form>(form, kIsPartnerships<Form>))
            Destroy();
    }

    /// A form that moves to the held client and year goes unnoticed.
    template<class Form>
    static void OnUpdateForm(const Row& oldForm, const Row& newForm)
    {
        CClientSingletonData* const held = HeldFor<Form>(oldForm, kIsPartnerships<Form>);
        if (!held)
            return;
        if (!HaveSameKey<Form>(oldForm, newForm))
            Destroy();
        else if (const bool dormant = newForm.GetBool(Form::kDormant); dormant != oldForm.GetBool(Form::kDormant))
            held->dormant = dormant;
    }

    /// Both kinds act for a held client only, and compare their owner's id with the client's, of partnerships too.
    template<class Submissions>
    static void OnUpdateSubmission(const Row& oldRecord, const Row& newRecord)
    {
        if (!HaveSameKey<Submissions>(oldRecord, newRecord)) {
            Destroy();
            return;
        }
        CClientSingletonData* const held = HeldFor<Submissions>(newRecord);
        if (held && oldRecord.GetInt(Submissions::kStatus) != newRecord.GetInt(Submissions::kStatus))
            held->UpdateAmending();
    }

    /// A listener as Quarry calls it. The change is made, whether or not it can be read anew: when it cannot, all is
    /// read when it is next asked for, and whoever asks is told why not.
    template<auto listener>
    static void Call(const DataChange& change)
    try {
        if constexpr (std::is_invocable_v<decltype(listener), const Row&, const Row&>)
            listener(*change.oldRow, *change.newRow);
        else
            listener(change.newRow ? *change.newRow : *change.oldRow);
    } catch (const Cellar::DatabaseError&) {
        Destroy();
    }

    static const Callback kTable[];
};

const Callback CClientSingleton::Listeners::kTable[] = {
    {CTaxForm::kTableNumber, Event::Insert, &Call<&OnInsertForm<CTaxForm>>},
    {CTaxForm::kTableNumber, Event::Delete, &Call<&OnDeleteForm<CTaxForm>>},
    {CTaxForm::kTableNumber, Event::Update, &Call<&OnUpdateForm<CTaxForm>>},
    {CPartnershipTaxForm::kTableNumber, Event::Insert, &Call<&OnInsertForm<CPartnershipTaxForm>>},
    {CPartnershipTaxForm::kTableNumber, Event::Delete, &Call<&OnDeleteForm<CPartnershipTaxForm>>},
    {CPartnershipTaxForm::kTableNumber, Event::Update, &Call<&OnUpdateForm<CPartnershipTaxForm>>},
    {CMinisters::kTableNumber, Event::Insert, &Call<&OnMinisters>},
    {CMinisters::kTableNumber, Event::Delete, &Call<&OnMinisters>},
    {CCalculatedBenefits::kTableNumber, Event::Insert, &Call<&OnCalculatedBenefits>},
    {CCalculatedBenefits::kTableNumber, Event::Delete, &Call<&OnCalculatedBenefits>},
    {CNewEmploy::kTableNumber, Event::Insert, &Call<&OnEmployment>},
    {CNewEmploy::kTableNumber, Event::Delete, &Call<&OnEmployment>},
    {CNewEmploy::kTableNumber, Event::Update, &Call<&OnUpdateEmployment>},
    {CBTaxProprietor::kTableNumber, Event::Insert, &Call<&OnProprietor>},
    {CBTaxProprietor::kTableNumber, Event::Delete, &Call<&OnProprietor>},
    {CPartnershipClients::kTableNumber, Event::Insert, &Call<&OnPartnershipClient>},
    {CPartnershipClients::kTableNumber, Event::Delete, &Call<&OnPartnershipClient>},
    {CFBISubmissions::kTableNumber, Event::Update, &Call<&OnUpdateFBISubmission>},
    {CPartnershipFBISubmissions::kTableNumber, Event::Update, &Call<&OnUpdatePartnershipFBISubmission>},
};

CClientSingleton::CClientSingleton() { Context::Detail::EndCachesOnReload(); }

const CClientSingletonData& CClientSingleton::Load(long clientId, int isPartnership, short year)
{
    CClientSingletonData read(clientId, isPartnership, year);
    return Instance().m_data = std::move(read);
}

void CClientSingleton::AddListeners() { Context::Detail::AddCallbacks(Listeners::kTable); }
void CClientSingleton::RemoveListeners() { Context::Detail::RemoveCallbacks(Listeners::kTable); }

void CClientSingleton::OnMinisters(const Row& record)
{
    if (CClientSingletonData* const held = Listeners::HeldFor<CMinisters>(record))
        held->UpdateMinisters();
}

void CClientSingleton::OnCalculatedBenefits(const Row& record)
{
    CClientSingletonData* const held = Listeners::Held();
    if (held && held->IsMinister(record.GetLong(CCalculatedBenefits::kMinisterID)))
        held->hasIR214s = held->HasIR214s();
}

void CClientSingleton::OnEmployment(const Row& record)
{
    if (CClientSingletonData* const held = Listeners::HeldFor<CNewEmploy>(record))
        held->UpdateP11D();
}

/// One that comes to the held client and year, or leaves it, ends the singleton.
void CClientSingleton::OnUpdateEmployment(const Row& oldRecord, const Row& newRecord)
{
    CClientSingletonData* const held = Listeners::Held();
    if (!held || !(IsOfHeldKey<CNewEmploy>(*held, oldRecord) || IsOfHeldKey<CNewEmploy>(*held, newRecord)))
        return;
    const CString guid = newRecord.GetText(CNewEmploy::kGUID);
    const int value = newRecord.GetInt(CNewEmploy::kP11D);
    if (!HaveSameKey<CNewEmploy>(oldRecord, newRecord))
        Destroy();
    else if (!Afx::EqualNoCase(oldRecord.GetText(CNewEmploy::kGUID).Str(), guid.Str()))
        held->UpdateP11D();
    else if (oldRecord.GetInt(CNewEmploy::kP11D) != value)
        held->employmentP11D.Set(guid, value);
}

void CClientSingleton::OnProprietor(const Row& record)
{
    CClientSingletonData* const held = Listeners::Held();
    if (held && (held->clientId == record.GetLong(CBTaxProprietor::kClientID) ||
                 held->BelongsToPartnership(record.GetLong(CBTaxProprietor::kPClientID))))
        held->UpdatePersonHasBusinessOrIsPartner();
}

/// Whether the client has a business through a partnership stays as it was read.
void CClientSingleton::OnPartnershipClient(const Row& record)
{
    CClientSingletonData* const held = Listeners::Held();
    if (held && held->clientId == record.GetLong(CPartnershipClients::kClientID))
        held->UpdatePartnerships();
}

void CClientSingleton::OnUpdateFBISubmission(const Row& oldRecord, const Row& newRecord)
{
    Listeners::OnUpdateSubmission<CFBISubmissions>(oldRecord, newRecord);
}

void CClientSingleton::OnUpdatePartnershipFBISubmission(const Row& oldRecord, const Row& newRecord)
{
    Listeners::OnUpdateSubmission<CPartnershipFBISubmissions>(oldRecord, newRecord);
}
