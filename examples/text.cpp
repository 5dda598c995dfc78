// Text: UTF-8 and its lengths, case, formats, numbers, and what may reach a terminal.

#include <iostream>

#include "MorvUt/MorvUt.h"

namespace
{

void ShowLengths()
{
    const CString name("Zoë Łódzki");
    std::cout << name << ": " << name.GetLength() << " bytes, cut to three: " << Afx::CutUtf8(name.View(), 3) << '\n';
}

void ShowCase()
{
    const CString name("Zoë Łódzki");
    std::cout << (name.CompareNoCase("ZOË ŁÓDZKI") == 0 ? "the same: " : "another: ") << Afx::FoldUpper(name.View())
              << '\n';
}

void ShowFormat(__int64 pence)
{
    CString text;
    try {
        text.Format("%08I64d pence at %.1f %%, %-6s|", pence, 22.5, "net");
        text.AppendFormat(" as int: %d", pence);
    } catch (CInvalidArgException* refused) {
        std::cout << refused->GetErrorMessage() << '\n';
        refused->Delete();
    }
    std::cout << text << '\n';
}

void ShowBuffer()
{
    char buffer[8];
    Afx::BoundedCopy(buffer, sizeof buffer, "2023/24"); // seven characters and the end mark
    std::cout << buffer << '\n';
    try {
        Afx::BoundedCopy(buffer, sizeof buffer, "1999/2000");
    } catch (CInvalidArgException* refused) {
        std::cout << "refused, and the buffer is \"" << buffer << "\"\n";
        refused->Delete();
    }
}

void ShowNumbers()
{
    for (const char* const text : {" 12", "12 clients", "clients", "99999999999999999999"})
        std::cout << '"' << text << "\": " << Afx::AtoI64(text) << ' ' << StringToInt(text) << '\n';
}

void ShowOutsideText()
{
    std::cout << Afx::ToUtf8("Zo\xEB, \xA3") << '\n'; // Windows-1252
    std::cout << Afx::ToPrintable("Tax \x1b[2Jdue\n") << "|\n";
}

} // namespace

int main()
{
    ShowLengths();
    ShowCase();
    ShowFormat(123456);
    ShowFormat(__int64{1} << 40);
    ShowBuffer();
    ShowNumbers();
    ShowOutsideText();
    return 0;
}
