#include "embedded/windows/EmbeddedWindows.h"

#include "embedded/windows/BillPickerWindow.h"
#include "embedded/windows/CalculatorDialog.h"
#include "embedded/windows/CloudDiskDialog.h"
#include "embedded/windows/QuotaPickerWindow.h"

#include <QtWidgets/QApplication>

#include <utility>

using namespace Qt::StringLiterals;

namespace embedded {

namespace {

/// The role of a picker over its window, which is a child of the parent and so may go before the role does.
/// The window is made when it is first needed: a dialog creates its pickers when it opens, and many a dialog
/// is closed without either.
template <typename Role, typename Window>
class Picker : public Role
{
public:
    Picker(const LibraryContents& contents, std::shared_ptr<PickerMemory> memory)
        : m_contents(contents), m_memory(std::move(memory))
    {
    }
    ~Picker() override { delete m_window; }

    bool Create(CWnd* parent) override
    {
        if (parent == nullptr) return false;
        delete m_window;
        m_parent = parent;
        m_isEnabled = true;
        return true;
    }
    bool IsVisible() const override { return m_window && m_window->isVisible(); }
    void Show(bool visible) override
    {
        if (Window* const window = visible ? Made() : m_window.data()) window->setVisible(visible);
    }
    void EnableContent(bool enable) override
    {
        m_isEnabled = enable;
        if (m_window) m_window->EnableContent(enable);
    }
    void MoveWndToRight(CWnd* wnd) override
    {
        if (wnd == nullptr) return;
        if (Window* const window = Made()) window->PlaceBesideWindow(*wnd);
    }
    void InitData() override
    {
        if (Window* const window = Made()) window->Load();
    }

protected:
    /// The window, if it has been made.
    Window* PickerWindow() const { return m_window; }
    /// The window, made if it has not been; null without a parent.
    Window* Made()
    {
        if (!m_window && m_parent) {
            m_window = new Window(*m_parent, m_contents, m_memory);
            m_window->EnableContent(m_isEnabled);
            Prepare(*m_window);
        }
        return m_window;
    }
    /// Gives a new window what it was told before it was made.
    virtual void Prepare(Window&) {}

private:
    const LibraryContents& m_contents;
    std::shared_ptr<PickerMemory> m_memory;
    QPointer<QWidget> m_parent;
    QPointer<Window> m_window;
    bool m_isEnabled = true;
};

class BillPicker : public Picker<host::IBillPicker, BillPickerWindow>
{
public:
    using Picker::Picker;

    void SetShowGetQdNumDlg(bool show) override
    {
        m_asksNumber = show;
        if (PickerWindow() != nullptr) PickerWindow()->AskForNumber(show);
    }
    void SetTreePosition(const CString& position) override
    {
        // A window that has not been made has no chapters yet.
        if (PickerWindow() != nullptr) PickerWindow()->SelectChapter(position);
    }

protected:
    void Prepare(BillPickerWindow& window) override { window.AskForNumber(m_asksNumber); }

private:
    bool m_asksNumber = true;
};

using QuotaPicker = Picker<host::IPickerWindow, QuotaPickerWindow>;

} // namespace

EmbeddedWindows::EmbeddedWindows(EmbeddedHost& host)
    : m_host(host), m_billMemory(std::make_shared<PickerMemory>()),
      m_quotaMemory(std::make_shared<PickerMemory>())
{
}

EmbeddedWindows::~EmbeddedWindows() = default;

std::unique_ptr<host::IBillPicker> EmbeddedWindows::MakeBillPicker()
{
    return std::make_unique<BillPicker>(m_host.Contents(), m_billMemory);
}

std::unique_ptr<host::IPickerWindow> EmbeddedWindows::MakeQuotaPicker()
{
    return std::make_unique<QuotaPicker>(m_host.Contents(), m_quotaMemory);
}

int EmbeddedWindows::ShowCalculatorDlg(const CString& categoryText, const CString& text, CString& result,
                                       CWnd* parent)
{
    CalculatorDialog dialog(*m_host.Roles().calculation, categoryText, text, parent);
    if (dialog.exec() != QDialog::Accepted) return 0;
    result = dialog.Formula();
    return 1;
}

void EmbeddedWindows::ShowNetDisk(const CString& name, bool flag)
{
    CloudFolder folder(m_host.ProjectPath(), name, m_cloudFolder);
    CloudDiskDialog::Places places{name, m_host.RuleFolder(), m_host.ProjectPath()};
    CloudDiskDialog dialog(folder, std::move(places), flag, QApplication::activeWindow());
    dialog.exec();
    if (folder.WasChosen()) m_cloudFolder.clear();
}

CWnd* EmbeddedWindows::MainFrame()
{
    return m_frame;
}

void EmbeddedWindows::SetMainFrame(QWidget* frame)
{
    m_frame = frame;
}

void EmbeddedWindows::SetCloudFolder(const QString& nativeFolder)
{
    m_cloudFolder = nativeFolder;
}

} // namespace embedded
