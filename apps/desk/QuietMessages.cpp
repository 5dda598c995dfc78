#include "QuietMessages.h"

namespace Desk
{
namespace
{

class QuietWindowSystem : public Afx::WindowSystem
{
public:
    explicit QuietWindowSystem(std::unique_ptr<Afx::WindowSystem> before) : m_before(std::move(before)) {}
    std::unique_ptr<Afx::WindowSystem> GiveBack() { return std::move(m_before); }

    int MessageBox(const std::string&, unsigned style) override { return Afx::SafeAnswer(style); }
    void RunDialog(CDialog& dialog) override { m_before->RunDialog(dialog); }
    void Wait(int change) override { m_before->Wait(change); }
    void ShowWait(const std::string& text) override { m_before->ShowWait(text); }
    bool WaitCancelled() override { return m_before->WaitCancelled(); }
    bool OpenBrowser(const std::string& address) override { return m_before->OpenBrowser(address); }
    bool ShowHelp(const std::string& file, unsigned topic) override { return m_before->ShowHelp(file, topic); }
    std::unique_ptr<Afx::WindowPeer> MakePeer(CWnd& window) override { return m_before->MakePeer(window); }
    std::unique_ptr<CDC> MeasuringContext() const override { return m_before->MeasuringContext(); }
    std::string GetClipboard() override { return m_before->GetClipboard(); }
    void SetClipboard(const std::string& text) override { m_before->SetClipboard(text); }

private:
    std::unique_ptr<Afx::WindowSystem> m_before;
};

} // namespace

QuietMessages::QuietMessages()
{
    if (auto before = Afx::WindowSystem::Install(nullptr))
        Afx::WindowSystem::Install(std::make_unique<QuietWindowSystem>(std::move(before)));
}

QuietMessages::~QuietMessages()
{
    if (auto* const quiet = dynamic_cast<QuietWindowSystem*>(Afx::WindowSystem::Current()))
        Afx::WindowSystem::Install(quiet->GiveBack());
}

} // namespace Desk
