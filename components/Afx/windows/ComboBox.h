#pragma once

// The combo box.

#include <cstdint>
#include <optional>
#include <vector>

#include "Afx/windows/Wnd.h"

/// A list of texts, each with a number of the program's own, of which one is chosen. With an edit (SetEditable) any
/// text can be typed. The parent is told of a choice (CBN_SELCHANGE), of typing (CBN_EDITCHANGE), and when the list
/// drops and closes. Indices count from 0; kNone (-1) is none.
class AFX_API CComboBox : public CWnd
{
    DECLARE_DYNCREATE(CComboBox)

    static constexpr int kNone = -1;

    /// Each gives the item's index.
    int AddString(const char* text, std::uintptr_t data = 0);
    int InsertString(int index, const char* text, std::uintptr_t data = 0);
    /// The number of items left; kNone when there is no such item.
    int DeleteString(int index);
    /// Takes away all items, the choice and the text of the edit.
    void ResetContent();
    int GetCount() const noexcept { return static_cast<int>(m_items.size()); }
    int GetCurSel() const noexcept { return m_selected; }
    /// Chooses an item without telling the parent; kNone: no item. Gives what is chosen then.
    int SetCurSel(int index);
    /// False, and unchanged, when there is no such item.
    bool GetLBText(int index, CString& text) const;
    std::uintptr_t GetItemData(int index) const noexcept; // 0 without such an item
    void SetItemData(int index, std::uintptr_t data) noexcept;
    /// The first item after `after` (kNone: from the start) with this text, whatever its case.
    int FindStringExact(int after, const char* text) const noexcept;
    /// The first item after `after`, going round, that begins with this text, whatever its case.
    int FindString(int after, const char* start) const noexcept;
    /// Chooses the item of FindStringExact; kNone, and unchanged, when there is none.
    int SelectString(const char* text);

    void SetEditable(bool editable) noexcept { m_editable = editable; }
    bool IsEditable() const noexcept { return m_editable; }
    void ShowDropDown(bool show = true);
    bool GetDroppedState() const noexcept { return m_dropped; }

protected:
    friend struct Afx::UserActs;

    /// The user has chosen an item; the parent is told after it.
    virtual void OnChosen() {}
    /// Up and Down choose, Home and End, Page keys by ten; Alt+Down and F4 drop; Enter and Escape close, Escape with
    /// the choice from before.
    bool OnKey(unsigned key, unsigned modifiers) override;
    /// With an edit types; without one goes to the next item that begins so.
    void OnChar(unsigned character, unsigned repeat, unsigned flags) override;
    unsigned OnGetDlgCode() override;
    void OnSetText(const char* text) override;
    void OnKillFocus(CWnd* newFocus) override;
    void TakeStyle(const CWnd& control) override;

private:
    struct Item
    {
        CString text;
        std::uintptr_t data;
    };

    /// What was chosen, and the text in the edit, when the list dropped.
    struct Before
    {
        int index;
        CString text;
    };

    const Item* At(int index) const noexcept;
    void Choose(int index);
    void TakeBackChoice();
    void TellChosen();
    void Typed(const CString& text);

    std::vector<Item> m_items;
    int m_selected = kNone;
    std::optional<Before> m_beforeDrop; // while it is dropped, until its list is another
    bool m_editable = false;
    bool m_dropped = false;
};
