#pragma once

// The records of a client's tax year: HMRC's, staged, and the return's own.

#include <initializer_list>
#include <type_traits>
#include <vector>

#include "Brix/Keys.h"
#include "Brix/Records.h"

namespace HmrcApi
{

/// The ids of the client's CMTD_TaxYear rows of the year, lowest first. Normally none or one; two workstations that
/// fetched for the first time at once leave two, which count as one.
std::vector<long> StagedYearIds(ClientId client, short year);
/// The same; makes the row when there is none.
std::vector<long> EnsureStagedYear(ClientId client, short year);
/// Notes on the first of the rows that HMRC has just been asked.
void StampStagedYear(ClientId client, short year);

/// The ids of the client's tax forms of the year, lowest first; normally none or one.
std::vector<long> TaxFormIds(ClientId client, short year);
/// The first of them; makes the form when there is none.
long EnsureTaxForm(ClientId client, short year);

/// The rows under several parents as one list, numbered from 0. Rows added meanwhile are not among them.
template<class List>
class RowsUnder
{
public:
    RowsUnder(const std::vector<long>& parents, int parentOrdinal, std::initializer_list<Quarry::Sort> sort = {})
        : m_lists(parents.size())
    {
        for (std::size_t i = 0; i < parents.size(); ++i) {
            m_lists[i].Open({{parentOrdinal, parents[i]}}, sort);
            for (int position = 0; position < m_lists[i].GetCount(); ++position)
                m_rows.push_back({i, position});
        }
    }

    int GetCount() const noexcept { return static_cast<int>(m_rows.size()); }
    /// The list, standing on the row.
    List& operator[](int row)
    {
        const At& at = m_rows[static_cast<std::size_t>(row)];
        m_lists[at.list].MoveTo(at.position);
        return m_lists[at.list];
    }
    /// Leaves out the rows that `keep` refuses.
    template<class Keep>
    RowsUnder& Filter(Keep keep)
    {
        std::vector<At> kept;
        for (int row = 0; row < GetCount(); ++row)
            if (keep((*this)[row]))
                kept.push_back(m_rows[static_cast<std::size_t>(row)]);
        m_rows = std::move(kept);
        return *this;
    }
    /// The list of the first parent with a new row, which hangs under that parent.
    List& AddNew()
    {
        m_lists.front().AddNew();
        return m_lists.front();
    }

private:
    struct At
    {
        std::size_t list;
        int position;
    };
    std::vector<List> m_lists;
    std::vector<At> m_rows;
};

/// Sets a value of the current row unless it is the same in the reading program's terms, so that a row which another
/// program wrote in its own way does not count as changed.
template<class List, class T>
void Assign(List& list, T (List::*get)() const, void (List::*set)(const T&), const std::type_identity_t<T>& value)
{
    if (!((list.*get)() == value))
        (list.*set)(value);
}

} // namespace HmrcApi
