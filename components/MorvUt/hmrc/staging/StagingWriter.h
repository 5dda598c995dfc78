#pragma once

// The one place that writes staging rows.

#include <cstdint>
#include <span>
#include <utility>
#include <vector>

#include "Brix/Records.h"
#include "MorvUt/Export.h"
#include "MorvUt/hmrc/staging/StagedYear.h"

namespace HmrcApi
{

struct PensionKind;

/// Brings the rows of a client's year into line with what they must hold, one kind at a time: new items are added,
/// changed ones updated, those no longer sent are kept and marked withdrawn, those sent again are so no longer. It
/// knows no interface of HMRC's.
///
/// Each operation needs a transaction that was begun with the intent to write; it notes in CMTD_TaxYear, which is made
/// when it is not there, that HMRC has been asked. Rows are read once for a transaction, and again after a rollback;
/// for a year that HMRC is asked about for the first time only that is read.
/// Throws Quarry::ChangedByAnotherUser and Cellar::DatabaseError; the level must be rolled back then.
class MORVUT_API StagingWriter
{
public:
    StagingWriter(ClientId client, short year) noexcept; // real tax year

    void WriteEmployments(std::vector<StagedEmployment> items);  // and their benefits; the keys are worked out here
    void WritePensions(const std::vector<StagedPension>& items); // all kinds
    // Of these three each takes the items of its kinds.
    void WritePrivatePensions(const std::vector<StagedPension>& items);
    void WriteStateBenefits(const std::vector<StagedPension>& items); // unknown kinds among them
    void WriteStatePensions(const std::vector<StagedPension>& items); // the regular amount and the lump sum
    void WriteAllowances(const std::vector<StagedAllowance>& items);
    /// What HMRC does not send leaves the stored one as it is. Without any, nothing but the note of the year.
    void WriteNationalInsurance(const StagedNationalInsurance& figures);

    /// HMRC was asked and had nothing: only that is noted.
    void NoteAsked() { NoteYear(); }
    /// What is written from now on is all that a fetch asks HMRC for, which the year's row notes too, with the time.
    void SetComplete() noexcept { m_isComplete = true; }
    /// It was not all, since some of it could not be written: the year's row is of no complete answer.
    void TakeBackComplete();
    /// What the rows hold now.
    StagedYear GetYear();
    /// What was done since the last call.
    StagedCounts TakeCounts() noexcept { return std::exchange(m_counts, {}); }

private:
    static constexpr std::uint64_t kNever = ~std::uint64_t{0};
    /// A list and the connection's epoch in which it was read.
    template<class List>
    struct Rows
    {
        List list;
        std::uint64_t epoch = kNever;
    };
    template<class List>
    List& Load(Rows<List>& rows);
    bool HasRows();  // the year's row was there before: without it there is none below it
    long NoteYear(); // the id of the year's row
    void WriteBenefits(const std::vector<long>& employmentIds, const std::vector<StagedEmployment>& items,
                       const std::vector<StagedEmployment>& rows);
    void WritePensions(const std::vector<StagedPension>& all, std::span<const PensionKind> kinds);

    ClientId m_client;
    short m_year;
    StagedCounts m_counts;
    Rows<Brix::CMTD_Employments> m_employments;
    Rows<Brix::CMTD_EmploymentsCompanyBenefits> m_benefits;
    Rows<Brix::CMTD_PensionStateBenefits> m_pensions;
    Rows<Brix::CMTD_TaxFreeAllowances> m_allowances;
    Rows<Brix::CMTD_NIC> m_nationalInsurance;
    Rows<Brix::CMTD_TaxYear> m_years;
    bool m_hadYear = false, m_isNoted = false; // when m_years was read, and since
    bool m_isComplete = false;
};

} // namespace HmrcApi
