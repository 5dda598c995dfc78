#pragma once

// Message maps, for classes that publish their own. The handlers are virtual functions, so a map routes nothing: it
// says which messages a class handles, and does not compile when the class has no such handler of its own.
//
//     class CCodeEdit : public CEdit
//     {
//         DECLARE_MESSAGE_MAP()
//         afx_msg void OnChar(unsigned character, unsigned repeat, unsigned flags);
//     };
//     BEGIN_MESSAGE_MAP(CCodeEdit, CEdit)
//         ON_WM_CHAR()
//     END_MESSAGE_MAP()

#include <type_traits>

/// Marks a handler that stands in a message map.
#define afx_msg

#define DECLARE_MESSAGE_MAP()                                                                                          \
protected:                                                                                                             \
    static void CheckMessageMap();

#define BEGIN_MESSAGE_MAP(theClass, baseClass)                                                                         \
    void theClass::CheckMessageMap()                                                                                   \
    {                                                                                                                  \
        using MapClass [[maybe_unused]] = theClass;                                                                    \
        static_assert(std::is_base_of_v<baseClass, theClass>, #theClass " does not derive from " #baseClass);

#define ON_WM_CHAR()                                                                                                   \
    static_assert(std::is_same_v<decltype(&MapClass::OnChar), void (MapClass::*)(unsigned, unsigned, unsigned)>,       \
                  "the class has no OnChar of its own");

#define END_MESSAGE_MAP() }
