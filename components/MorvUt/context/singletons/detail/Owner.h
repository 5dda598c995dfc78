#pragma once

// The column by which a tax form or a submission belongs to its client or partnership.

namespace Context::Detail
{

template<class Record>
constexpr int OwnerColumn() noexcept
{
    if constexpr (requires { Record::kClientID; })
        return Record::kClientID;
    else
        return Record::kPClientID;
}

} // namespace Context::Detail
