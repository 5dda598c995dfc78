#pragma once

// Real windows for the window model, made with the desktop's own toolkit.

#include <functional>
#include <memory>
#include <string>

#include "Afx/windows/WindowSystem.h"
#include "AfxWx/Export.h"

namespace AfxWx
{

/// Told what the window system shows; for programs that work or picture their own windows. Each is called from the loop
/// of what has just been shown, once it can be seen and worked.
class AFXWX_API Observer
{
public:
    virtual ~Observer();
    virtual void DialogRuns(CDialog& dialog);
    virtual void MessageRuns(const std::string& text, unsigned style);
    /// An address, or a topic of a help file, is about to be opened. True: it has been seen to.
    virtual bool Opens(const std::string& address);
    virtual bool Helps(const std::string& file, unsigned topic);
};

/// The window system, for the thread that started the toolkit; it is given to Afx::WindowSystem::Install. `observer`
/// may be null, and otherwise outlives it.
AFXWX_API std::unique_ptr<Afx::WindowSystem> MakeWindowSystem(Observer* observer = nullptr);

/// Starts the toolkit under this name, with a window system installed, runs `application` and ends the toolkit.
/// Its result; `noDisplay` when there is no display to show windows on. What `application` throws is passed on.
AFXWX_API int RunApplication(const std::string& name, const std::function<int()>& application, int noDisplay = 1);

/// Writes a picture of the dialog that waits for the user, without its frame, as PNG. False when there is none, or the
/// file cannot be written.
AFXWX_API bool SaveScreenshot(const std::string& path);

} // namespace AfxWx
