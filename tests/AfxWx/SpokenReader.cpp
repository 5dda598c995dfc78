// Reads the window of a program from outside, as a screen reader on Windows does, and compares it with what the program
// says of its model (SpokenWindow.cpp).
// usage: SpokenReader PROGRAM

#include <windows.h>
// in this order
#include <oleacc.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <functional>
#include <iostream>
#include <mutex>
#include <set>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

namespace
{

constexpr DWORD kPatience = 20'000; // milliseconds
using Fields = std::vector<std::string>;

int failures = 0;
std::vector<std::string> heard, renamed; // names of the objects that events told of

bool Expect(bool holds, const std::string& what)
{
    if (!holds) {
        std::cout << what << std::endl;
        ++failures;
    }
    return holds;
}

std::string ToUtf8(const wchar_t* text)
{
    std::string bytes(4096, '\0');
    const int size =
        WideCharToMultiByte(CP_UTF8, 0, text, -1, bytes.data(), static_cast<int>(bytes.size()), nullptr, nullptr);
    bytes.resize(static_cast<std::size_t>(std::max(size - 1, 0)));
    return bytes;
}

VARIANT Child(long id)
{
    VARIANT child{};
    child.vt = VT_I4;
    child.lVal = id;
    return child;
}

std::string NameOf(IAccessible* object, long id = CHILDID_SELF)
{
    BSTR text = nullptr;
    std::string name = object && object->get_accName(Child(id), &text) == S_OK && text ? ToUtf8(text) : std::string();
    SysFreeString(text);
    return name;
}

using Property = HRESULT (__stdcall IAccessible::*)(VARIANT, VARIANT*);

/// A role, or states.
long NumberOf(IAccessible* object, Property property, long id = CHILDID_SELF)
{
    VARIANT value{};
    return (object->*property)(Child(id), &value) == S_OK ? value.lVal : 0;
}

void CALLBACK Hear(HWINEVENTHOOK, DWORD event, HWND window, LONG object, LONG child, DWORD, DWORD)
{
    IAccessible* source = nullptr;
    VARIANT part{};
    if (AccessibleObjectFromEvent(window, static_cast<DWORD>(object), static_cast<DWORD>(child), &source, &part) !=
        S_OK)
        return;
    (event == EVENT_OBJECT_FOCUS ? heard : renamed).push_back(NameOf(source, part.lVal));
    source->Release();
}

/// The program, and what it says.
class Program
{
public:
    explicit Program(const char* command) : m_output(_popen(command, "rt")), m_reader([this] { Read(); }) {}
    /// What it ended with.
    int End()
    {
        m_reader.join();
        return _pclose(m_output);
    }
    std::vector<Fields> Lines(const std::string& kind)
    {
        const std::lock_guard lock(m_mutex);
        std::vector<Fields> found;
        for (const Fields& line : m_said)
            if (line.front() == kind)
                found.emplace_back(line.begin() + 1, line.end());
        return found;
    }

private:
    void Read()
    {
        for (char bytes[4096]; std::fgets(bytes, sizeof bytes, m_output);) {
            Fields fields;
            std::istringstream parts(std::string(bytes, std::strcspn(bytes, "\n")));
            for (std::string field; std::getline(parts, field, '\t');)
                fields.push_back(field);
            const std::lock_guard lock(m_mutex);
            m_said.push_back(fields);
        }
    }

    std::FILE* m_output;
    std::mutex m_mutex;
    std::vector<Fields> m_said;
    std::thread m_reader;
};

/// Lets events come until it holds.
bool Wait(const std::function<bool()>& holds, const std::string& what)
{
    for (const DWORD start = GetTickCount(); !holds(); Sleep(10)) {
        for (MSG message; PeekMessage(&message, nullptr, 0, 0, PM_REMOVE);)
            DispatchMessage(&message);
        if (GetTickCount() - start > kPatience)
            return Expect(false, "waited in vain for " + what);
    }
    return true;
}

void Press(int key)
{
    for (const DWORD flags : {0UL, static_cast<DWORD>(KEYEVENTF_KEYUP)})
        keybd_event(static_cast<BYTE>(key), 0, flags, 0);
}

/// The windows inside one.
std::vector<IAccessible*> ObjectsIn(HWND window)
{
    std::vector<IAccessible*> objects;
    const auto add = [](HWND inside, LPARAM found) CALLBACK -> BOOL {
        void* object = nullptr;
        if (AccessibleObjectFromWindow(inside, static_cast<DWORD>(OBJID_CLIENT), IID_IAccessible, &object) == S_OK)
            reinterpret_cast<std::vector<IAccessible*>*>(found)->push_back(static_cast<IAccessible*>(object));
        return TRUE;
    };
    EnumChildWindows(window, add, reinterpret_cast<LPARAM>(&objects));
    return objects;
}

void ReadTable(Program& program, IAccessible* table, int rows, int columns)
{
    long cells = 0;
    table->get_accChildCount(&cells);
    Expect(cells == rows * columns, "cells: " + std::to_string(cells));
    for (const Fields& cell : program.Lines("cell")) {
        const int id = std::stoi(cell[0]) * columns + std::stoi(cell[1]) + 1;
        const std::string where = "cell " + cell[0] + ", " + cell[1] + ": ", name = NameOf(table, id);
        const long state = NumberOf(table, &IAccessible::get_accState, id);
        Expect(name == cell[5] || (state & STATE_SYSTEM_FOCUSED), where + name + " for " + cell[5]);
        Expect(NumberOf(table, &IAccessible::get_accRole, id) == ROLE_SYSTEM_CELL, where + "role");
        Expect(((state & STATE_SYSTEM_READONLY) == 0) == (cell[4] == "1"), where + "read-only");
        long left = 0, top = 0, width = 0, height = 0;
        VARIANT at{};
        Expect(table->accLocation(&left, &top, &width, &height, Child(id)) == S_OK && width > 0, where + "no place");
        RECT shown{};
        HWND window = nullptr;
        WindowFromAccessibleObject(table, &window);
        GetWindowRect(window, &shown);
        if (PtInRect(&shown, {left + 2, top + 2}))
            Expect(table->accHitTest(left + 2, top + 2, &at) == S_OK && at.vt == VT_I4 && at.lVal == id,
                   where + "not where it says");
    }
}

void FollowKeys(Program& program)
{
    for (const int key : {VK_RIGHT, VK_DOWN, VK_DOWN, VK_DOWN, VK_UP, VK_HOME, VK_END, VK_LEFT}) {
        const std::size_t before = heard.size();
        Press(key);
        Wait([&] { return heard.size() > before && heard.back() == program.Lines("at").back().at(0); },
             "the sentence after key " + std::to_string(key));
    }
    Expect(heard.back().rfind("Ticked", 0) == 0, "not at the cell to tick");
    Press(VK_SPACE);
    if (Wait([&] { return !program.Lines("holds").empty(); }, "the cell to be ticked"))
        Wait([&] { return std::count(renamed.begin(), renamed.end(), "Ticked, " + program.Lines("holds").back()[0]); },
             "the new name of a cell that is ticked");
}

} // namespace

int main(int, char** arguments)
{
    CoInitialize(nullptr);
    for (const DWORD event : {EVENT_OBJECT_FOCUS, EVENT_OBJECT_NAMECHANGE})
        SetWinEventHook(event, event, nullptr, Hear, 0, 0, WINEVENT_OUTOFCONTEXT);
    Program program(arguments[1]);
    Wait([&] { return !program.Lines("ready").empty(); }, "the program");
    Wait([&] { return !program.Lines("at").empty() && !heard.empty(); }, "the cell that the grid begins with");
    std::set<std::string> names;
    IAccessible* table = nullptr;
    for (IAccessible* const object : ObjectsIn(FindWindowA(nullptr, program.Lines("ready").at(0).at(0).c_str()))) {
        names.insert(NameOf(object));
        if (NumberOf(object, &IAccessible::get_accRole) == ROLE_SYSTEM_TABLE && NameOf(object) == "Amounts")
            table = object;
    }
    for (const Fields& control : program.Lines("control"))
        Expect(names.count(control.at(0)) > 0, "no control called " + control.at(0));
    if (Expect(table != nullptr, "no table")) {
        const Fields grid = program.Lines("grid").at(0);
        ReadTable(program, table, std::stoi(grid.at(1)), std::stoi(grid.at(2)));
        FollowKeys(program);
    }
    if (failures > 0) {
        for (const std::string& name : names)
            std::cout << "there is: " << name << std::endl;
        for (const std::string& name : heard)
            std::cout << "heard: " << name << std::endl;
    }
    Press(VK_ESCAPE);
    const int code = program.End();
    Expect(code == 0, "it ended with " + std::to_string(code));
    return failures > 0;
}
