// Settings: the profile of the program, and values of the application's registry key.

#include <iostream>

#include "MorvUt/MorvUt.h"

namespace
{

class ExampleApp : public CWinApp
{};

void ShowProfile(CWinApp& app)
{
    app.WriteProfileInt("Preferences", "RememberYOA", 1);
    app.WriteProfileInt("Preferences", "LastYOA", 20);
    app.WriteProfileString("Preferences", "DataDirectory", " /srv/tax ");
    std::cout << app.GetProfileInt("preferences", "lastyoa", 0) << ' '         // names ignore case
              << app.GetProfileInt("Preferences", "DataDirectory", -1) << " [" // no number: the default
              << app.GetProfileString("Preferences", "DataDirectory") << "]\n";
    std::cout << GetCurrentRealTaxYear() << '\n'; // real = relative + 1991
}

void ShowRegistry()
{
    CRegistry key; // the application's own
    key.SetString("DbgHMRCEnableHelloScope", "Yes");
    std::cout << key.GetBool("DbgHMRCEnableHelloScope", false) << ' ' << key.GetInt("DbgHMRCEnableHelloScope", 7)
              << '\n';
    key.SetString("DbgHMRCEnableHelloScope", nullptr);
    std::cout << key.GetBool("DbgHMRCEnableHelloScope", false) << '\n';
}

} // namespace

int main()
{
    ExampleApp app;
    ShowProfile(app);
    ShowRegistry();
    return 0;
}
