#pragma once

// Every answer about a client or partnership in a tax year at once, with its reason; of one, or of all of a practice.

#include <vector>

#include "Afx/text/CString.h"
#include "MorvUt/context/status/StatusRules.h"
#include "MorvUt/Export.h"

namespace Brix
{
class CClient;
class CPartnership;
} // namespace Brix

/// The answers are those of the functions of ClientStatus.h, by the same rules. Works on what was read: nothing is
/// asked of the database, and later changes are not seen.
class MORVUT_API ClientStatus
{
public:
    explicit ClientStatus(const StatusFacts& facts) : m_facts(facts) {}

    long GetId() const noexcept { return m_facts.id; }
    bool IsPartnership() const noexcept { return m_facts.isPartnership; }
    short GetYear() const noexcept { return m_facts.year; }

    bool Is(StatusQuestion question) const { return static_cast<bool>(AnswerOf(question)); }
    StatusAnswer AnswerOf(StatusQuestion question) const { return ::AnswerOf(question, m_facts); }

    // For the user.

    /// Why the answer is what it is: "The return for 2017/18 was finalised on 01/12/2018".
    CString ReasonText(StatusQuestion question) const;
    /// The reasons of all answers that are yes, and of those that are no although a record is near to a yes, in the
    /// order of the questions; none twice.
    std::vector<CString> Because() const;
    /// The one thing that a list says first: "died 03/11/2017", "dormant", "inactive since 06/04/2019", "amending",
    /// "finalised", "in progress" (a return that is not finalised) or "no return".
    CString Word() const;

private:
    CString TextOf(unsigned id, const StatusAnswer& answer) const;

    StatusFacts m_facts;
};

// These read the current connection and throw Cellar::DatabaseError.

/// Of one, in the real tax year. There need be none of that id.
MORVUT_API ClientStatus StatusOf(long id, bool isPartnership, short year);
/// Of every client, then every partnership, each in the order of their ids. One statement for each table, whatever
/// their number.
MORVUT_API std::vector<ClientStatus> StatusOfAll(short year);
/// For lists that read the records themselves: what one says by itself, and the status of many of whom that is known.
/// These are clients only or partnerships only, each after one of a smaller id; one statement for each table.
/// ForEachStatus (ClientView.h) does so for all.
MORVUT_API StatusFacts StatusFactsOf(const Brix::CClient& client);
MORVUT_API StatusFacts StatusFactsOf(const Brix::CPartnership& partnership);
MORVUT_API std::vector<ClientStatus> StatusOf(std::vector<StatusFacts> owners, short year);
/// The one of that id in what StatusOfAll gave; null when it is not there.
MORVUT_API const ClientStatus* FindStatus(const std::vector<ClientStatus>& all, long id, bool isPartnership) noexcept;
