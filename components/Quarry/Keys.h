#pragma once

// Typed keys of clients and partnerships.

#include <compare>

/// The id of a row; 0 is none. `Key` is the type of one table's keys, so that none passes for another table's.
template<class Key>
class RowKey
{
public:
    constexpr RowKey() noexcept = default;
    constexpr explicit RowKey(long id) noexcept : m_id(id) {}
    constexpr long Get() const noexcept { return m_id; }
    friend auto operator<=>(const RowKey&, const RowKey&) = default;

private:
    long m_id = 0;
};

class ClientId : public RowKey<ClientId>
{
public:
    using RowKey::RowKey;
};

class PartnershipId : public RowKey<PartnershipId>
{
public:
    using RowKey::RowKey;
};
