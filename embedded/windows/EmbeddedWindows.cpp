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
        m_window = new Window(*parent, m_contents, m_memory);
        return true;
    }
    bool IsVisible() const override { return m_window && m_window->isVisible(); }
    void Show(bool visible) override
    {
        if (m_window) m_window->setVisible(visible);
    }
    void EnableContent(bool enable) override
    {
        if (m_window) m_window->EnableContent(enable);
    }
    void MoveWndToRight(CWnd* wnd) override
    {
        if (m_window && wnd != nullptr) m_window->PlaceBesideWindow(*wnd);
    }
    void InitData() override
    {
        if (m_window) m_window->Load();
    }

protected:
    Window* PickerWindow() const { return m_window; }

private:
    const LibraryContents& m_contents;
    std::shared_ptr<PickerMemory> m_memory;
    QPointer<Window> m_window;
};

class BillPicker : public Picker<host::IBillPicker, BillPickerWindow>
{
public:
    using Picker::Picker;

    bool Create(CWnd* parent) override
    {
        const bool created = Picker::Create(parent);
        SetShowGetQdNumDlg(m_asksNumber);
        return created;
    }
    void SetShowGetQdNumDlg(bool show) override
    {
        m_asksNumber = show;
        if (PickerWindow() != nullptr) PickerWindow()->AskForNumber(show);
    }
    void SetTreePosition(const CString& position) override
    {
        if (PickerWindow() != nullptr) PickerWindow()->SelectChapter(position);
    }

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
    if (m_netDisk) {
        m_netDisk();
        return;
    }
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

void EmbeddedWindows::SetNetDisk(std::function<void()> run)
{
    m_netDisk = std::move(run);
}

void EmbeddedWindows::SetCloudFolder(const QString& nativeFolder)
{
    m_cloudFolder = nativeFolder;
}

} // namespace embedded
