#pragma once

// What the process keeps of the client, or partnership, and year that it works on.

#include <set>
#include <string_view>
#include <utility>
#include <vector>

#include "Afx/text/CString.h"
#include "MorvUt/Export.h"
#include "MorvUt/taxyear/Singleton.h"

namespace Quarry
{
class Row;
}

/// The P11D values of employments by their GUIDs, which are compared without regard to case. Walks in the order in
/// which the GUIDs came in.
class MORVUT_API CEmploymentMap
{
public:
    using Entry = std::pair<CString, int>;

    /// The value of a GUID; null when there is none.
    const int* Find(std::string_view guid) const noexcept;
    /// A GUID that is there keeps its place and its spelling.
    void Set(const CString& guid, int value);

    bool empty() const noexcept { return m_entries.empty(); }
    std::size_t size() const noexcept { return m_entries.size(); }
    std::vector<Entry>::const_iterator begin() const noexcept { return m_entries.begin(); }
    std::vector<Entry>::const_iterator end() const noexcept { return m_entries.end(); }

private:
    std::vector<Entry> m_entries; // a client has a handful
};

/// The status of a submission that HMRC has accepted; and the real year before which none makes its return an
/// amendment.
inline constexpr int kAcceptedSubmission = 2;
inline constexpr short kFirstYearOfAmendments = 2008;

/// Facts about one client or partnership in one real tax year. A partnership has only `taxFormExists`, `dormant`,
/// `clientReviewExist` and `amending`. What reads the current connection throws Cellar::DatabaseError, and changes
/// nothing then.
class MORVUT_API CClientSingletonData
{
public:
    virtual ~CClientSingletonData();

    /// The client has a minister's employment with a calculated benefit of type 50, as the database says now.
    virtual bool HasIR214s() const;
    /// The employment has a P11D value other than 0. Null asks for any employment, whatever its value.
    virtual bool HasP11D(const char* employmentGuid) const;
    virtual bool BelongsToPartnership(long partnershipId) const;
    virtual bool IsMinister(long ministerId) const;
    /// Those of all employments, in the order of the schedules, with "," between them.
    virtual CString EmploymentGUIDs() const;

    // Each reads its field anew.
    virtual void UpdateP11D();
    virtual void UpdatePersonHasBusinessOrIsPartner();
    virtual void UpdatePartnerships();
    virtual void UpdateMinisters();
    virtual void UpdateClientReviewExist();
    virtual void UpdateAmending();

    /// Nothing is held.
    CClientSingletonData() = default;
    /// Reads everything.
    CClientSingletonData(long id, int partnership, short realYear);
    CClientSingletonData(const CClientSingletonData&) = default;
    CClientSingletonData& operator=(const CClientSingletonData&) = default;
    CClientSingletonData(CClientSingletonData&&) = default;
    CClientSingletonData& operator=(CClientSingletonData&&) = default;

    long clientId = 0;                         // of the partnership when isPartnership is set
    int isPartnership = 0;                     // not 0: clientId is a partnership's
    short year = 0;                            // real
    int taxFormExists = 0;                     // 1: there is one of this year
    int dormant = 0;                           // as the tax form says
    bool hasIR214s = false;                    // HasIR214s() when it was last asked
    bool personHasBusinessOrIsPartner = false; // is a sole trader, or in a partnership that has a business
    bool clientReviewExist = false;            // the tax form has a valid date of the client's review
    bool amending = false;                     // a return of this year was accepted online; never before 2008
    CEmploymentMap employmentP11D;             // in the order of the schedules
    std::set<long> partnerships;               // that the client is a member of, in any year
    std::set<long> ministers;                  // ids of the minister's records of this year
};

class CClientSingleton;
extern template class MORVUT_API CSingleton<CClientSingletonData, CClientSingleton>;

/// The cache. It listens to changes of the records that it was read from, and reads anew what they touch; it goes when
/// a record moves away, when a transaction is rolled back and when another practice is opened. What no listener
/// watches (docs/context.md) is read anew after `Destroy`.
class MORVUT_API CClientSingleton : public CSingleton<CClientSingletonData, CClientSingleton>
{
public:
    /// The facts about this client (partnership, when `isPartnership` is not 0) in this real tax year. The same three
    /// as last time: a comparison. The reference holds until others are asked for or the singleton ends, which any
    /// change of a record may bring about: copy what must outlast one. Throws Cellar::DatabaseError.
    static const CClientSingletonData& Data(long clientId, int isPartnership, short year)
    {
        const CClientSingletonData& held = Instance().m_data;
        if (held.clientId == clientId && held.isPartnership == isPartnership && held.year == year) [[likely]]
            return held;
        return Load(clientId, isPartnership, year);
    }

    void AddListeners() override;
    void RemoveListeners() override;

private:
    friend class CSingleton<CClientSingletonData, CClientSingleton>;
    struct Listeners; // their table, and those that have no name of their own
    CClientSingleton();
    static const CClientSingletonData& Load(long clientId, int isPartnership, short year);

    // Listeners. All may find no singleton, and any may end it.
    static void OnMinisters(const Quarry::Row& record);
    static void OnCalculatedBenefits(const Quarry::Row& record);
    static void OnEmployment(const Quarry::Row& record);
    static void OnUpdateEmployment(const Quarry::Row& oldRecord, const Quarry::Row& newRecord);
    static void OnProprietor(const Quarry::Row& record);
    static void OnPartnershipClient(const Quarry::Row& record);
    static void OnUpdateFBISubmission(const Quarry::Row& oldRecord, const Quarry::Row& newRecord);
    static void OnUpdatePartnershipFBISubmission(const Quarry::Row& oldRecord, const Quarry::Row& newRecord);
};
