#pragma once

// Message maps, for classes that publish their own. Handlers that are virtual functions of the base need no routing: a
// map names them, and does not compile when the class has no such handler of its own. Commands, notifications and
// changes of place are routed to the handler of the first row that fits, of the derived class before its base.
//
//     class CCodeDialog : public CDialog
//     {
//         DECLARE_MESSAGE_MAP()
//         afx_msg void OnCheck();
//     };
//     BEGIN_MESSAGE_MAP(CCodeDialog, CDialog)
//     ON_BN_CLICKED(kCheckId, OnCheck)
//     END_MESSAGE_MAP()

#include <type_traits>

#include "Afx/windows/Messages.h"

/// Marks a handler that stands in a message map.
#define afx_msg

#define DECLARE_MESSAGE_MAP()                                                                                          \
protected:                                                                                                             \
    bool OnMapped(Afx::MapMessage& message) override;

#define BEGIN_MESSAGE_MAP(theClass, baseClass)                                                                         \
    bool theClass::OnMapped(Afx::MapMessage& message)                                                                  \
    {                                                                                                                  \
        using MapClass [[maybe_unused]] = theClass;                                                                    \
        using MapBase = baseClass;                                                                                     \
        using MapKind [[maybe_unused]] = Afx::MapMessage::Kind;                                                        \
        static_assert(std::is_base_of_v<baseClass, theClass>, #theClass " does not derive from " #baseClass);

#define END_MESSAGE_MAP()                                                                                              \
    return MapBase::OnMapped(message);                                                                                 \
    }

#define AFX_MAP_OWN(handler, ...)                                                                                      \
    static_assert(std::is_same_v<decltype(&MapClass::handler), __VA_ARGS__>,                                           \
                  "the class has no " #handler " of its own");
#define ON_WM_CHAR() AFX_MAP_OWN(OnChar, void (MapClass::*)(unsigned, unsigned, unsigned))
#define ON_WM_KILLFOCUS() AFX_MAP_OWN(OnKillFocus, void (MapClass::*)(CWnd*))
#define ON_WM_WINDOWPOSCHANGING()                                                                                      \
    if (message.kind == MapKind::PositionChanging) {                                                                   \
        OnWindowPosChanging(message.position);                                                                         \
        return true;                                                                                                   \
    }

/// A command of `id` with this notification: `handler` takes nothing.
#define ON_CONTROL(notification, controlId, handler)                                                                   \
    if (message.kind == MapKind::Command && message.id == (controlId) && message.code == (notification)) {             \
        handler();                                                                                                     \
        return true;                                                                                                   \
    }
#define ON_COMMAND(commandId, handler) ON_CONTROL(0u, commandId, handler)
#define ON_BN_CLICKED(controlId, handler) ON_CONTROL(BN_CLICKED, controlId, handler)
#define ON_EN_CHANGE(controlId, handler) ON_CONTROL(EN_CHANGE, controlId, handler)
#define ON_EN_KILLFOCUS(controlId, handler) ON_CONTROL(EN_KILLFOCUS, controlId, handler)
#define ON_CBN_SELCHANGE(controlId, handler) ON_CONTROL(CBN_SELCHANGE, controlId, handler)
/// A notification: `handler` takes the header and where the result goes.
#define ON_NOTIFY(notification, controlId, handler)                                                                    \
    if (message.kind == MapKind::Notify && message.id == (controlId) && message.code == (notification)) {              \
        handler(message.header, message.result);                                                                       \
        return true;                                                                                                   \
    }
