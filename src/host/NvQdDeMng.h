#pragma once

#include "host/Roles.h"
#include "platform/Export.h"

#include <memory>

namespace NvQdDeMng {

/// The bill and quota picker of bill mode. Modeless; sends `host::QdPickedMessage` and
/// `host::DePickedMessage` to its parent. The window is made by `Create`; before that the picker is invisible
/// and its placing does nothing.
class KTQDDE_EXPORT CSelQdDeDlg
{
public:
    explicit CSelQdDeDlg(CWnd* parent = nullptr);
    ~CSelQdDeDlg();
    CSelQdDeDlg(const CSelQdDeDlg&) = delete;
    CSelQdDeDlg& operator=(const CSelQdDeDlg&) = delete;

    bool Create(CWnd* parent);
    void SetShowGetQdNumDlg(bool show);
    bool IsWindowVisible() const;
    void ShowWindow(bool visible);
    void MoveWndToRight(CWnd* wnd);
    void InitQdDeData();
    void SetTreePosition(const CString& position);

private:
    std::unique_ptr<host::IBillPicker> m_window;
    bool m_created = false;
};

/// The quota picker of quota mode. Modeless; sends `host::DePickedMessage` to its parent.
class KTQDDE_EXPORT CSelDeDlg
{
public:
    explicit CSelDeDlg(CWnd* parent = nullptr);
    ~CSelDeDlg();
    CSelDeDlg(const CSelDeDlg&) = delete;
    CSelDeDlg& operator=(const CSelDeDlg&) = delete;

    bool Create(CWnd* parent);
    bool IsWindowVisible() const;
    void ShowWindow(bool visible);
    void EnableWindow(bool enable);
    void MoveWndToRight(CWnd* wnd);
    void InitDeData();

private:
    std::unique_ptr<host::IPickerWindow> m_window;
    bool m_created = false;
};

} // namespace NvQdDeMng
