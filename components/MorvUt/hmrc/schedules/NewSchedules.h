#pragma once

// Schedules of the return for HMRC's items that it lacks.

#include <initializer_list>
#include <vector>

#include "Afx/text/CString.h"
#include "Brix/Records.h"
#include "MorvUt/Export.h"
#include "MorvUt/hmrc/schedules/Matching.h"
#include "MorvUt/hmrc/schedules/ReturnYear.h"
#include "MorvUt/hmrc/staging/StagedYear.h"

namespace HmrcApi
{

/// What was made, and what people must know of it.
struct CreatedSchedules
{
    int employments = 0;
    int pensionsAndBenefits = 0;
    std::vector<CString> notes; // what of HMRC's did not become a schedule of its own, and why
};

/// Something of this kind would be made by NewScheduleWriter.
bool IsAnyEmploymentNew(const StagedYear& staged, const ReturnYear& own);
bool IsAnyPensionNew(const StagedYear& staged, const ReturnYear& own, bool (*isOfKind)(long kind));
/// HMRC sent allowances that hold a value.
bool HasAllowances(const StagedYear& staged);

/// The columns of a schedule of a pension or benefit, in the order in which callers know them.
struct NewPension
{
    int section, type; // of mapPSBCategorys, mapPSBTypes
    Kiln::CAmt amount, tax;
    bool isEstimate;
    CString payer, reference, worksNumber;
    Kiln::CDate start;
    CString description;
    bool isFromHmrc = false;
};

/// Adds schedules to one return, in a transaction that was begun with the intent to write before the return was read.
/// What is there stays as it is. Ordering numbers go on from the highest, a tax form is made when the first schedule
/// needs one. Throws Cellar::DatabaseError.
class MORVUT_API NewScheduleWriter
{
public:
    NewScheduleWriter(ClientId client, short year, ReturnYear own);

    /// All that is new: employments, private pensions, benefits, then state pensions.
    void AddAll(const StagedYear& staged);
    /// The employments that are new, with their benefits; for a return without any, one that holds HMRC's allowances.
    void AddEmployments(const StagedYear& staged);
    /// The pensions and benefits of these kinds that are new.
    void AddPensions(const StagedYear& staged, bool (*isOfKind)(long kind));

    /// Appends a row with a new GUID, `ordering`, which moves on, and the two texts. The caller fills in the figures
    /// and saves it.
    void Append(Brix::CNewEmploy& schedules, int& ordering, const CString& reference, const CString& employer);
    void Append(const NewPension& pension); // and saves it

    int NextEmploymentOrdering() const;
    const CreatedSchedules& GetCreated() const noexcept { return m_created; }

private:
    long TaxForm();
    void AddEmployment(const StagedEmployment& item, int& ordering);
    void AddBenefits(long employment, const StagedEmployment& item);
    void AddAllowancesHolder(int& ordering);
    void Add(const NewPension& pension); // which is not saved yet
    void AddKinds(const StagedYear& staged, std::initializer_list<bool (*)(long kind)> kinds);
    void AddUnsaved(const StagedYear& staged, const std::vector<Match>& matches, bool (*isOfKind)(long kind));
    void NoteOtherPensions(const StagedYear& staged, std::vector<Match> matches, bool (*isOfKind)(long kind));

    ClientId m_client;
    short m_year;
    ReturnYear m_own;
    int m_pensionOrdering; // of the next
    Brix::CNewEmploy m_employments;
    Brix::CNewEmployBenefits m_benefits;
    Brix::CPensionStateBenefits m_pensions;
    CreatedSchedules m_created;
};

} // namespace HmrcApi
