// Reads the window of a program from outside, as a screen reader on Windows does. What the program tells of its model
// (SpokenWindow.cpp) must be found there in the same words.
// usage: SpokenReader PROGRAM

#include <windows.h>
// in this order
#include <oleacc.h>

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <iostream>
#include <string>
#include <vector>

namespace
{

using Lines = std::vector<std::string>;

constexpr DWORD kPatience = 20'000; // milliseconds
constexpr char kTold[] = "SpokenWindow.txt";

Lines found;
bool failed = false;

void Fail(const std::string& what)
{
    std::cout << what << std::endl;
    failed = true;
}

/// What the program has told of this kind so far.
Lines Told(const std::string& kind)
{
    Lines told;
    std::ifstream file(kTold);
    for (std::string line; std::getline(file, line) && !file.eof();)
        if (line.rfind(kind + '\t', 0) == 0)
            told.push_back(line);
    return told;
}

/// Whether it is among what was found after the first `before` lines.
bool IsFound(const std::string& line, std::ptrdiff_t before = 0)
{
    return std::count(found.begin() + before, found.end(), line) > 0;
}

VARIANT Part(long id)
{
    VARIANT part{};
    part.vt = VT_I4;
    part.lVal = id;
    return part;
}

std::string NameOf(IAccessible& object, long id = CHILDID_SELF)
{
    BSTR text = nullptr;
    char name[1024]{};
    if (object.get_accName(Part(id), &text) == S_OK && text)
        WideCharToMultiByte(CP_UTF8, 0, text, -1, name, sizeof name, nullptr, nullptr);
    SysFreeString(text);
    return name;
}

/// A role, or states.
long NumberOf(IAccessible& object, decltype(&IAccessible::get_accRole) property, long id = CHILDID_SELF)
{
    VARIANT value{};
    return (object.*property)(Part(id), &value) == S_OK ? value.lVal : 0;
}

void LookAtCell(IAccessible& table, long id)
{
    const bool isReadOnly = NumberOf(table, &IAccessible::get_accState, id) & STATE_SYSTEM_READONLY;
    std::string line =
        "cell\t" + std::to_string(id) + '\t' + NameOf(table, id) + (isReadOnly ? "\tread-only" : "\teditable");
    if (const long role = NumberOf(table, &IAccessible::get_accRole, id); role != ROLE_SYSTEM_CELL)
        line += "\tof role " + std::to_string(role);
    long left = 0, top = 0, width = 0, height = 0;
    const auto isAt = [&](long x, long y) {
        VARIANT hit{};
        return table.accHitTest(x, y, &hit) == S_OK && hit.vt == VT_I4 && hit.lVal == id;
    };
    if (table.accLocation(&left, &top, &width, &height, Part(id)) != S_OK || !isAt(left + 2, top + 2) ||
        !isAt(left + width - 2, top + height - 2))
        line += "\tnot where it says";
    found.push_back(line);
}

BOOL CALLBACK LookAt(HWND window, LPARAM)
{
    void* object = nullptr;
    if (AccessibleObjectFromWindow(window, static_cast<DWORD>(OBJID_CLIENT), IID_IAccessible, &object) != S_OK)
        return TRUE;
    IAccessible& control = *static_cast<IAccessible*>(object);
    found.push_back("control\t" + NameOf(control));
    if (NumberOf(control, &IAccessible::get_accRole) == ROLE_SYSTEM_TABLE) {
        long cells = 0;
        control.get_accChildCount(&cells);
        found.push_back("table\t" + NameOf(control) + '\t' + std::to_string(cells));
        for (long id = 1; id <= cells; ++id)
            LookAtCell(control, id);
    }
    control.Release();
    return TRUE;
}

void CALLBACK Hear(HWINEVENTHOOK, DWORD event, HWND window, LONG object, LONG child, DWORD, DWORD)
{
    IAccessible* source = nullptr;
    VARIANT part{};
    if (AccessibleObjectFromEvent(window, static_cast<DWORD>(object), static_cast<DWORD>(child), &source, &part) !=
        S_OK)
        return;
    found.push_back((event == EVENT_OBJECT_FOCUS ? "at\t" : "renamed\t") + std::to_string(part.lVal) + '\t' +
                    NameOf(*source, part.lVal));
    source->Release();
}

void Press(int key)
{
    for (const DWORD flags : {0UL, static_cast<DWORD>(KEYEVENTF_KEYUP)})
        keybd_event(static_cast<BYTE>(key), 0, flags, 0);
}

/// Lets events come until what the program tells of a key has been heard. No key: of what it begins with.
bool Follow(int key, const std::string& kind)
{
    Lines told = Told(kind);
    const std::size_t toldBefore = told.size();
    const std::ptrdiff_t foundBefore = std::ssize(found);
    if (key)
        Press(key);
    for (const DWORD start = GetTickCount(); GetTickCount() - start < kPatience; Sleep(10)) {
        for (MSG message; PeekMessage(&message, nullptr, 0, 0, PM_REMOVE);)
            DispatchMessage(&message);
        told = Told(kind);
        if (told.size() > toldBefore && IsFound(told.back(), foundBefore))
            return true;
    }
    Fail("not heard after key " + std::to_string(key) + ": " + (told.empty() ? kind : told.back()));
    return false;
}

} // namespace

int main(int, char** arguments)
{
    CoInitialize(nullptr);
    for (const DWORD event : {EVENT_OBJECT_FOCUS, EVENT_OBJECT_NAMECHANGE})
        SetWinEventHook(event, event, nullptr, Hear, 0, 0, WINEVENT_OUTOFCONTEXT);
    std::remove(kTold);
    std::FILE* const program = _popen((std::string(arguments[1]) + " > " + kTold).c_str(), "r");
    if (Follow(0, "at")) {
        EnumChildWindows(GetForegroundWindow(), LookAt, 0);
        for (const char* const kind : {"control", "table", "cell"})
            for (const std::string& line : Told(kind))
                if (!IsFound(line))
                    Fail("not found: " + line);
        for (const int key : {VK_RIGHT, VK_DOWN, VK_DOWN, VK_DOWN, VK_UP, VK_HOME, VK_END, VK_LEFT, VK_SPACE})
            if (!Follow(key, key == VK_SPACE ? "renamed" : "at"))
                break;
    }
    if (failed)
        for (const std::string& line : found)
            std::cout << "found: " << line << std::endl;
    Press(VK_ESCAPE);
    if (const int code = _pclose(program))
        Fail("it ended with " + std::to_string(code));
    return failed;
}
