#include "dialogs/CAutoConfigDlg.h"

#include "dialogs/secondary/DlgSaveAs.h"
#include "host/HostWindows.h"
#include "host/RuleFilePlaces.h"
#include "platform/Messages.h"
#include "store/RuleFile.h"

#include <functional>
#include <optional>
#include <vector>

// The file commands. The dialog neither flushes the grid nor saves before any of them: a new and a loaded
// file leave what was typed into the grid behind without a question. What had reached the tree is saved by
// the store, which writes the former file before it loads one of another path.

using namespace Qt::StringLiterals;

std::optional<CString> CAutoConfigDlg::AskForFile(int mode, const CString& startPath)
{
    DlgSaveAs dialog(mode, this, startPath);
    if (dialog.DoModal() != dialogs::IdOk) return std::nullopt;
    return dialog.GetChosenPath();
}

bool CAutoConfigDlg::RunLoad(const std::function<bool()>& load)
{
    try {
        return load();
    } catch (...) {
        if (!ShowsStoredRules()) ReloadRules();
        throw;
    }
}

// The caption is part of the load: the host is asked for it when the former rules are gone, and may raise.
bool CAutoConfigDlg::LoadAndName(const std::function<bool()>& load)
{
    return RunLoad([&] {
        if (!load()) return false;
        RefreshCaption();
        return true;
    });
}

// A tree that a load has built was in memory at the same time as the former one, so no node of it stands at
// the address of a node that is shown.
bool CAutoConfigDlg::ShowsStoredRules() const
{
    std::vector<ConfigNode*> stored;
    return m_presenter->GetConfig(m_shownCategory, stored) && stored == m_rules;
}

// With no small category selected there are no rules to be shown.
void CAutoConfigDlg::ReloadRules()
{
    CPath path{};
    if (GetCategoryPath(path))
        RefillRules(path);
    else
        ForgetRules();
}

void CAutoConfigDlg::OnNewFile()
{
    const auto path = AskForFile(DlgSaveAs::New, m_presenter->GetCurConfigDetailPath());
    if (path && LoadAndName([&] { return m_presenter->NewFile(*path); })) ReloadRules();
}

void CAutoConfigDlg::OnLoadFile()
{
    const auto path = AskForFile(DlgSaveAs::Load, m_presenter->GetCurConfigDetailPath());
    if (!path) return;
    if (LoadAndName([&] { return m_presenter->ReLoad(*path); }))
        ReloadRules();
    else
        platform::ShowWarning(u"文件功能不匹配"_s);
}

// The dialog stays on the former file: title and later saves are that one's.
void CAutoConfigDlg::OnSaveAs()
{
    const auto path = AskForFile(DlgSaveAs::SaveAs, CString());
    if (path && m_presenter->SaveAs(*path)) platform::ShowReport(u"另存成功"_s);
}

// The current file is read from disk again whether something was imported or not, so whatever was not saved
// is gone.
void CAutoConfigDlg::OnImportFromNetDisk()
{
    KtNetService::CNetDiskFunc::GetInstance().ShowDialog(store::TemplateFolder(), true);
    RefreshCaption();
    const CString path = host::RuleFileIn(store::RuleFolder(), m_presenter->GetCurConfig());
    RunLoad([&] { return m_presenter->ReLoad(path); });
    ReloadRules();
}
