// Identifiers as users type them, and what a stored code means.

#include <iostream>

#include "MorvUt/MorvUt.h"

namespace
{

void ShowIdentifiers()
{
    // A reason never repeats what was typed, so it may be shown and logged.
    for (const char* const utr : {"2234567890", "2234567891", "223456789"})
        std::cout << utr << ": " << (IsValidUTR(utr) ? CString("taken") : WhyNotUTR(utr)) << '\n';
    for (const char* const number : {"AA123456C", "AA 123456C"})
        std::cout << number << ": " << (IsValidNINumber(number) ? CString("taken") : WhyNotNINumber(number)) << '\n';
    std::cout << FormatSortCode("123456") << '\n';
}

void ShowCodes()
{
    const char* key = nullptr;
    const char* name = nullptr;
    if (GetMapShortNameFromIndex(mapPSBTypes, &key, 1140) && GetMapLongNameFromIndex(mapPSBTypes, &name, 1140))
        std::cout << "1140 is " << key << ", shown as " << name << '\n';
    int code = 0;
    if (GetMapIndexFromShortName(mapPSBTypes, key, &code))
        std::cout << key << " is " << code << '\n';
    if (!GetMapShortNameFromIndex(mapPSBTypes, &key, 1)) // what is not found is left as it was
        std::cout << "there is no 1, and the key is still " << key << '\n';
}

} // namespace

int main()
{
    ShowIdentifiers();
    ShowCodes();
    return 0;
}
