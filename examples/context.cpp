// Asks what is kept of a client, and changes what it was read from.
// usage: context FILE

#include "Example.h"

namespace
{

constexpr short kYear = 2024;

void Show(long clientId)
{
    const CClientSingletonData& client = CClientSingleton::Data(clientId, 0, kYear);
    if (client.HasP11D(nullptr)) // of any employment, whatever its value
        std::cout << "employments " << client.EmploymentGUIDs() << "; P11D of A1: " << client.HasP11D("a1") << '\n';
    else
        std::cout << "no employment\n";
}

long AddTaxForm(long clientId)
{
    Brix::CTaxForm form;
    form.AddNew();
    form.SetClientID(clientId);
    form.SetYear(kYear);
    form.Update();
    return form.GetID();
}

void AddEmployment(long formId, long clientId, const char* guid, int ordering)
{
    Brix::CNewEmploy employment;
    employment.AddNew();
    employment.SetTaxFormID(formId);
    employment.SetClientID(clientId); // as the form says: listeners read it here
    employment.SetYear(kYear);
    employment.SetGUID(guid);
    employment.SetOrdering(ordering);
    employment.Update();
}

int Work(const char* path)
{
    if (const std::string why = OpenPractice(path, "alice"); !why.empty()) {
        std::cerr << why << '\n';
        return 1;
    }
    Quarry::CTransaction sheet;
    Brix::CClient client;
    client.AddNew();
    client.Update();
    const long id = client.GetID();
    Show(id);
    const long form = AddTaxForm(id);
    AddEmployment(form, id, "B2", 2);
    AddEmployment(form, id, "A1", 1);
    Show(id);
    sheet.Rollback();
    std::cout << "kept after the rollback: " << CClientSingleton::Loaded() << '\n';
    return 0;
}

} // namespace

int main(int argc, char** argv)
{
    return RunExample([&] { return argc == 2 ? Work(argv[1]) : Usage("usage: context FILE"); });
}
