#include <chrono>
#include <cstdlib>
#include <iostream>

#include <wx/app.h>
#include <wx/bitmap.h>
#include <wx/dcclient.h>
#include <wx/dcmemory.h>
#include <wx/dialog.h>
#include <wx/image.h>
#include <wx/init.h>

#ifdef __WXGTK__
#include <gtk/gtk.h>
#endif

#include "AfxWx/detail/Peer.h"

namespace AfxWx
{
namespace
{

class Application : public wxApp
{
public:
    bool OnInit() override { return true; }
    /// A fault of ours. In a program that is being developed it ends the program where it is.
    void OnAssertFailure(const wxChar* file, int line, const wxChar* function, const wxChar* condition,
                         const wxChar* message) override
    {
        std::cerr << wxString(file) << ':' << line << ": " << wxString(function) << ": " << wxString(condition) << ' '
                  << wxString(message) << std::endl;
#ifndef NDEBUG
        std::abort();
#endif
    }
    /// Those of the model are caught before (System::Perform).
    bool OnExceptionInMainLoop() override { throw; }
};

/// The toolkit while it runs.
class Toolkit
{
public:
    explicit Toolkit(const std::string& name)
    {
        wxApp::SetInstance(new Application);
        m_name = name;
        char* arguments[] = {m_name.data(), nullptr};
        int count = 1;
        m_runs = wxEntryStart(count, arguments) && wxTheApp->CallOnInit();
        if (m_runs) {
            wxTheApp->SetAppDisplayName(ToWx(name));
            wxTheApp->SetExitOnFrameDelete(false);
        }
    }
    Toolkit(const Toolkit&) = delete;
    Toolkit& operator=(const Toolkit&) = delete;
    ~Toolkit()
    {
        if (!m_runs)
            return;
        wxTheApp->OnExit();
        wxEntryCleanup();
    }
    bool Runs() const noexcept { return m_runs; }

private:
    std::string m_name;
    bool m_runs = false;
};

/// A window system of the toolkit, which goes before the toolkit does.
class Installed
{
public:
    Installed() : m_before(Afx::WindowSystem::Install(MakeWindowSystem())) {}
    Installed(const Installed&) = delete;
    Installed& operator=(const Installed&) = delete;
    ~Installed() { Afx::WindowSystem::Install(std::move(m_before)); }

private:
    std::unique_ptr<Afx::WindowSystem> m_before;
};

} // namespace

int RunApplication(const std::string& name, const std::function<int()>& application, int noDisplay)
{
    const Toolkit toolkit(name);
    if (!toolkit.Runs())
        return noDisplay;
    const Installed installed;
    return application();
}

#ifdef __WXGTK__
namespace
{

void HasPainted(GdkFrameClock*, gpointer painted) { *static_cast<bool*>(painted) = true; }

/// Lets a window that has just been shown, or has changed, be painted.
void WaitForPaint(GtkWidget* window)
{
    constexpr std::chrono::seconds kPatience{2};
    GdkFrameClock* const clock = gtk_widget_get_frame_clock(window);
    if (!clock)
        return;
    bool painted = false;
    const gulong watch = g_signal_connect(clock, "after-paint", G_CALLBACK(HasPainted), &painted);
    gtk_widget_queue_draw(window);
    for (const auto end = std::chrono::steady_clock::now() + kPatience;
         !painted && std::chrono::steady_clock::now() < end;)
        gtk_main_iteration_do(FALSE);
    g_signal_handler_disconnect(clock, watch);
}

bool Picture(const wxWindow& window, const std::string& path)
{
    auto* const widget = static_cast<GtkWidget*>(window.GetHandle());
    WaitForPaint(widget);
    GdkWindow* const drawn = gtk_widget_get_window(widget);
    GdkPixbuf* const picture =
        gdk_pixbuf_get_from_window(drawn, 0, 0, gdk_window_get_width(drawn), gdk_window_get_height(drawn));
    const bool isWritten = picture && gdk_pixbuf_save(picture, path.c_str(), "png", nullptr, nullptr);
    if (picture)
        g_object_unref(picture);
    return isWritten;
}

} // namespace
#else
namespace
{

bool Picture(wxWindow& window, [[maybe_unused]] const std::string& path)
{
    window.Update();
    wxClientDC drawn(&window);
    wxBitmap picture(drawn.GetSize());
    wxMemoryDC memory(picture);
    memory.Blit(wxPoint(), drawn.GetSize(), &drawn, wxPoint());
    memory.SelectObject(wxNullBitmap);
#if wxUSE_LIBPNG
    if (!wxImage::FindHandler(wxBITMAP_TYPE_PNG))
        wxImage::AddHandler(new wxPNGHandler);
    return picture.SaveFile(ToWx(path), wxBITMAP_TYPE_PNG);
#else
    return false;
#endif
}

} // namespace
#endif

bool SaveScreenshot(const std::string& path)
{
    const System* const system = System::Current();
    wxDialog* const top = system ? system->TopWindow() : nullptr;
    return top && Picture(*top, path);
}

} // namespace AfxWx
