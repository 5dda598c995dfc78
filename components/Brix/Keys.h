#pragma once

// Typed keys of clients and partnerships.

#include <compare>

/// The row id of a client; 0 is none.
class ClientId
{
public:
    constexpr ClientId() noexcept = default;
    constexpr explicit ClientId(long id) noexcept : m_id(id) {}
    constexpr long Get() const noexcept { return m_id; }
    friend auto operator<=>(ClientId, ClientId) = default;

private:
    long m_id = 0;
};

/// The row id of a partnership; 0 is none.
class PartnershipId
{
public:
    constexpr PartnershipId() noexcept = default;
    constexpr explicit PartnershipId(long id) noexcept : m_id(id) {}
    constexpr long Get() const noexcept { return m_id; }
    friend auto operator<=>(PartnershipId, PartnershipId) = default;

private:
    long m_id = 0;
};
