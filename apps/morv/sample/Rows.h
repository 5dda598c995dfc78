#pragma once

// Adding rows, for the sample.

#include "Brix/Records.h"

namespace Morv::Sample
{

/// HMRC's published example data is of 2017/18, and so are the returns to be worked on.
inline constexpr short kSampleYear = 2018;

/// Adds a row of the record class, filled by `fill`. Its id.
template<class Record, class Fill>
long Add(Fill fill)
{
    Record rows;
    rows.AddNew();
    fill(rows);
    rows.Update();
    return rows.GetID();
}

struct Form
{
    long id;
    long client;
    short year;
};

/// The same under a tax form, whose keys the row repeats.
template<class Record, class Fill>
long AddUnder(const Form& form, Fill fill)
{
    return Add<Record>([&](Record& row) {
        row.SetTaxFormID(form.id);
        row.SetClientID(form.client);
        row.SetYear(form.year);
        fill(row);
    });
}

} // namespace Morv::Sample
