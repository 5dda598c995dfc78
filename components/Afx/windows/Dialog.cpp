#include "Afx/windows/Dialog.h"

#include <algorithm>
#include <vector>

#include "Afx/text/Ascii.h"
#include "Afx/windows/Button.h"
#include "Afx/windows/Edit.h"
#include "Afx/windows/MessageBox.h"
#include "Afx/windows/Static.h"
#include "Afx/windows/WindowSystem.h"

namespace
{

constexpr int kFailed = -1;

/// The dialogs that wait for the user, the one before all last. Never destroyed.
std::vector<CDialog*>& Modal()
{
    static auto& modal = *new std::vector<CDialog*>;
    return modal;
}

/// While it lives the dialog is the one that takes input. Leaves it closed, however it ends.
class BeforeAll
{
public:
    explicit BeforeAll(CDialog& dialog) : m_dialog(dialog), m_before(CWnd::GetFocus()) { Modal().push_back(&dialog); }
    BeforeAll(const BeforeAll&) = delete;
    BeforeAll& operator=(const BeforeAll&) = delete;
    ~BeforeAll()
    {
        if (m_dialog.IsOpen())
            m_dialog.EndDialog(IDCANCEL);
        if (m_dialog.HasFocusWithin())
            CWnd::KillFocus();
        m_dialog.DropPeers();
        std::erase(Modal(), &m_dialog);
        if (CWnd* const window = m_before.Get(); window && !CWnd::GetFocus())
            window->SetFocus();
    }

private:
    CDialog& m_dialog;
    WindowRef m_before;
};

/// The controls that Tab can reach, in its order.
void CollectTabStops(const CWnd& window, std::vector<CWnd*>& stops)
{
    for (CWnd* const child : window.Children()) {
        if (!child->IsShown() || !child->IsWindowEnabled())
            continue;
        if (child->IsTabStop())
            stops.push_back(child);
        else
            CollectTabStops(*child, stops);
    }
}

} // namespace

IMPLEMENT_DYNAMIC(CDialog, CWnd)

CDialog::~CDialog() { std::erase(Modal(), this); }

CDialog* CDialog::GetTopModal() noexcept { return Modal().empty() ? nullptr : Modal().back(); }

int CDialog::DoModal()
{
    if (m_open)
        return kFailed;
    m_open = true;
    m_result = IDCANCEL;
    try {
        Run();
    } catch (...) {
        if (m_made)
            DestroyWindow(); // so that it opens anew
        throw;
    }
    if (m_made)
        DestroyWindow();
    return m_result;
}

void CDialog::Run()
{
    const BeforeAll beforeAll(*this);
    MakeControls();
    Afx::WindowSystem* const system = Afx::WindowSystem::Current();
    if (Open() && system) {
        MakePeers();
        system->RunDialog(*this);
    }
}

/// Fills it and sets the focus. Whether it is still open then.
bool CDialog::Open()
{
    if (OnInitDialog() && m_open)
        if (CWnd* const first = GetNextDlgTabItem(nullptr))
            GotoDlgCtrl(first);
    return m_open;
}

bool CDialog::Create(CWnd* parent, unsigned id)
{
    if (!CWnd::Create(parent, id))
        return false;
    m_open = true;
    MakeControls();
    OnInitDialog();
    if (parent->GetPeer())
        MakePeers();
    return true;
}

bool CDialog::DestroyWindow()
{
    m_made = m_open = false;
    return CWnd::DestroyWindow();
}

void CDialog::MakeControls()
{
    if (!m_layout || m_made)
        return;
    m_made = true;
    if (Text().IsEmpty() && m_layout->title)
        SetWindowText(m_layout->title);
    Afx::MakeControls(*this, *m_layout);
    const CSize size = Afx::Arrange(*this, *m_layout);
    MoveWindow({GetRect().left, GetRect().top, GetRect().left + size.cx, GetRect().top + size.cy});
}

void CDialog::EndDialog(int result) noexcept
{
    m_result = result;
    m_open = false;
}

void CDialog::GotoDlgCtrl(CWnd* control)
{
    const WindowRef there(control);
    control->SetFocus();
    if (there && CWnd::GetFocus() == control)
        if (auto* const edit = dynamic_cast<CEdit*>(control))
            edit->SetSel(0, -1);
}

CWnd* CDialog::GetNextDlgTabItem(CWnd* from, bool back) const
{
    std::vector<CWnd*> stops;
    CollectTabStops(*this, stops);
    if (stops.empty())
        return nullptr;
    auto here = std::find(stops.begin(), stops.end(), from);
    for (; here == stops.end() && from; from = from->GetParent()) // as the editor of a grid stands in the grid
        here = std::find(stops.begin(), stops.end(), from);
    if (here == stops.end())
        return back ? stops.back() : stops.front();
    if (back)
        return here == stops.begin() ? stops.back() : *(here - 1);
    return here + 1 == stops.end() ? stops.front() : *(here + 1);
}

void CDialog::GotoNext(bool back)
{
    if (CWnd* const next = GetNextDlgTabItem(CWnd::GetFocus(), back))
        GotoDlgCtrl(next);
}

/// To the next field in which nothing stands, once round.
void CDialog::GotoNextEmpty(CWnd& focus)
{
    CWnd* const first = GetNextDlgTabItem(&focus);
    for (CWnd* next = first; next;) {
        const auto* const edit = dynamic_cast<const CEdit*>(next);
        if (edit && !edit->IsReadOnly() && edit->Text().IsEmpty())
            return GotoDlgCtrl(next);
        next = GetNextDlgTabItem(next);
        if (next == first)
            return;
    }
}

bool CDialog::OnInitDialog()
{
    const bool filled = UpdateData(false);
    if (!filled)
        EndDialog(kFailed);
    return filled;
}

void CDialog::OnOK()
{
    if (UpdateData(true))
        EndDialog(IDOK);
}

void CDialog::OnCancel() { EndDialog(IDCANCEL); }

bool CDialog::OnHelp(unsigned) { return false; }

bool CDialog::OnCommand(WPARAM wParam, LPARAM lParam)
{
    if (CWnd::OnCommand(wParam, lParam))
        return true;
    const bool isInside = GetParent() != nullptr; // OK and Cancel are those of the dialog around it
    switch (wParam & Afx::kCommandIdMask) {
    case IDOK:
        if (!isInside)
            OnOK();
        return !isInside;
    case IDCANCEL:
        if (!isInside)
            OnCancel();
        return !isInside;
    default:
        return false;
    }
}

bool CDialog::OnDialogKey(CWnd& focus, unsigned key, unsigned modifiers)
{
    if (modifiers == Afx::kAlt)
        return key < 128 && PressMnemonic(Afx::UpperAscii(static_cast<char>(key)));
    if (modifiers == Afx::kControl && key == VK_OEM_PERIOD) {
        GotoNextEmpty(focus);
        return true;
    }
    switch (key) {
    case VK_TAB:
        if (modifiers & Afx::kControl)
            return false;
        GotoNext((modifiers & Afx::kShift) != 0);
        return true;
    case VK_RETURN:
        PressDefault(focus);
        return true;
    case VK_ESCAPE:
        PressUnlessDisabled(IDCANCEL);
        return true;
    case VK_F1: {
        CWnd* control = &focus; // the editor of a grid is the grid's
        while (control->GetParent() && !dynamic_cast<CDialog*>(control->GetParent()))
            control = control->GetParent();
        for (CWnd* window = control; window; window = window->GetParent())
            if (auto* const dialog = dynamic_cast<CDialog*>(window))
                if (dialog->OnHelp(static_cast<unsigned>(control->GetDlgCtrlID())))
                    return true;
        return false;
    }
    default:
        return false;
    }
}

/// Enter: the button that has the focus, else the default button, else OK.
void CDialog::PressDefault(CWnd& focus)
{
    const auto isPush = [](const CButton* button) {
        return button && button->GetKind() != CButton::Kind::CheckBox && button->GetKind() != CButton::Kind::Radio;
    };
    if (auto* const button = dynamic_cast<CButton*>(&focus); isPush(button)) {
        Afx::UserActs::Click(*button);
        return;
    }
    std::vector<CWnd*> stops;
    CollectTabStops(*this, stops);
    for (CWnd* const stop : stops)
        if (auto* const button = dynamic_cast<CButton*>(stop); button && button->GetKind() == CButton::Kind::Default) {
            DeliverCommand(static_cast<unsigned>(button->GetDlgCtrlID())); // the focus stays
            return;
        }
    PressUnlessDisabled(IDOK);
}

/// OK or Cancel by its key; the dialog need not have the button, or may hide it.
void CDialog::PressUnlessDisabled(unsigned id)
{
    if (const CWnd* const button = GetDlgItem(static_cast<int>(id)); !button || button->IsWindowEnabled())
        DeliverCommand(id);
}

/// Alt and a letter: a button of that mnemonic is clicked, a label leads to the control after it.
bool CDialog::PressMnemonic(char letter)
{
    std::vector<CWnd*> windows(Children());
    for (std::size_t i = 0; i < windows.size(); ++i) {
        CWnd* const window = windows[i];
        if (!window->IsShown())
            continue;
        if (!window->IsTabStop())
            windows.insert(windows.begin() + static_cast<std::ptrdiff_t>(i) + 1, window->Children().begin(),
                           window->Children().end());
        if (!window->NamesItself() || Afx::MnemonicOf(window->Text()) != letter)
            continue;
        if (dynamic_cast<CButton*>(window))
            return Afx::UserActs::Click(*window);
        if (window->IsKindOf(RUNTIME_CLASS(CStatic)) && i + 1 < windows.size()) {
            GotoDlgCtrl(windows[i + 1]);
            return true;
        }
    }
    return false;
}
