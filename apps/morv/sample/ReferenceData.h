#pragma once

// What holds for everybody: the sample's tax years, countries and banks.

namespace Morv::Sample
{

/// What holds for the tax years: accounts need not be itemised below these turnovers.
void AddReferenceYears();
/// Some countries, with rates of double taxation agreements that are good for a sample and for no return.
void AddCountries();
void AddBanks();

} // namespace Morv::Sample
