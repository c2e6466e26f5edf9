#include "host/HostWindows.h"
#include "host/Installation.h"
#include "host/NvQdDeMng.h"

namespace NvQdDeMng {

CSelQdDeDlg::CSelQdDeDlg(CWnd* parent) : m_window(host::Windows().MakeBillPicker())
{
    if (parent != nullptr) Create(parent);
}

CSelQdDeDlg::~CSelQdDeDlg() = default;

bool CSelQdDeDlg::Create(CWnd* parent)
{
    m_created = m_window->Create(parent);
    return m_created;
}

void CSelQdDeDlg::SetShowGetQdNumDlg(bool show)
{
    m_window->SetShowGetQdNumDlg(show);
}
bool CSelQdDeDlg::IsWindowVisible() const
{
    return m_created && m_window->IsVisible();
}

void CSelQdDeDlg::ShowWindow(bool visible)
{
    if (m_created) m_window->Show(visible);
}

void CSelQdDeDlg::MoveWndToRight(CWnd* wnd)
{
    if (m_created) m_window->MoveWndToRight(wnd);
}

void CSelQdDeDlg::InitQdDeData()
{
    if (m_created) m_window->InitData();
}

void CSelQdDeDlg::SetTreePosition(const CString& position)
{
    if (m_created) m_window->SetTreePosition(position);
}

CSelDeDlg::CSelDeDlg(CWnd* parent) : m_window(host::Windows().MakeQuotaPicker())
{
    if (parent != nullptr) Create(parent);
}

CSelDeDlg::~CSelDeDlg() = default;

bool CSelDeDlg::Create(CWnd* parent)
{
    m_created = m_window->Create(parent);
    return m_created;
}

bool CSelDeDlg::IsWindowVisible() const
{
    return m_created && m_window->IsVisible();
}

void CSelDeDlg::ShowWindow(bool visible)
{
    if (m_created) m_window->Show(visible);
}

void CSelDeDlg::EnableWindow(bool enable)
{
    if (m_created) m_window->EnableContent(enable);
}

void CSelDeDlg::MoveWndToRight(CWnd* wnd)
{
    if (m_created) m_window->MoveWndToRight(wnd);
}

void CSelDeDlg::InitDeData()
{
    if (m_created) m_window->InitData();
}

} // namespace NvQdDeMng

int KtGlobalDlg::CFaceGlobalDlg::ShowCalculatorDlg(const CString& categoryText, const CString& text,
                                                   CString& result, CWnd* parent)
{
    return host::Windows().ShowCalculatorDlg(categoryText, text, result, parent);
}

KtNetService::CNetDiskFunc& KtNetService::CNetDiskFunc::GetInstance()
{
    static CNetDiskFunc instance;
    return instance;
}

void KtNetService::CNetDiskFunc::ShowDialog(const CString& name, bool flag)
{
    host::Windows().ShowNetDisk(name, flag);
}

CWnd* acedGetAcadFrame()
{
    return host::Windows().MainFrame();
}
