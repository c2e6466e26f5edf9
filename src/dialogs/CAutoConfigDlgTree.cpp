#include "dialogs/CAutoConfigDlg.h"

#include "dialogs/ProjectMode.h"
#include "host/TreeCategories.h"
#include "platform/Messages.h"
#include "platform/Numbers.h"
#include "widgets/TreeControl.h"

// The tree of categories, and the pickers that follow it.

using namespace Qt::StringLiterals;

namespace {

QTreeWidgetItem* AddItem(QTreeWidgetItem& parent, const CString& name, const CString& id)
{
    auto* item = new QTreeWidgetItem(&parent, {name});
    widgets::SetData(*item, platform::_wtoi(id));
    return item;
}

} // namespace

void CAutoConfigDlg::FillConfigTree()
{
    const NvKtDataMng::CProj project;
    const SNvKtSpecId specId = project.GetCurrentSpecId();
    QTreeWidgetItem& root =
        *AddItem(*m_tree->invisibleRootItem(), project.GetCurrentSpec(), specId.strSpecId);
    root.setExpanded(true);
    CArray<SNvKtBigCategoryId> bigIds;
    NvKtDataMng::CAtt().GetAllBigCategoryIdsBySpec(specId, bigIds);
    for (const SNvKtBigCategoryId& id : bigIds)
        FillBigCategory(id, root);
    // With a first big category that has no child nothing is selected, and no rule shown, until the user
    // picks a category.
    QTreeWidgetItem* firstBig = root.child(0);
    QTreeWidgetItem* firstSmall = firstBig == nullptr ? nullptr : firstBig->child(0);
    if (firstSmall != nullptr) m_tree->setCurrentItem(firstSmall);
}

void CAutoConfigDlg::FillBigCategory(const SNvKtBigCategoryId& id, QTreeWidgetItem& root)
{
    const NvKtDataMng::CAtt host;
    CString name;
    host.GetBigCategoryName(id, name);
    QTreeWidgetItem& big = *AddItem(root, name, id.strBigCategoryId);
    CArray<SNvKtSmallCategoryId> smallIds;
    host.GetAllSmallCategoryIdsByBigCategory(id, smallIds);
    for (const SNvKtSmallCategoryId& smallId : smallIds) {
        CString smallName;
        host.GetSmallCategoryName(smallId, smallName);
        if (host::IsInCategoryTree(smallName)) AddItem(big, smallName, smallId.strSmallCategoryId);
    }
    big.setExpanded(true);
}

void CAutoConfigDlg::OnCategoryChanging()
{
    m_grid.setFocus();
    FlushGrid();
}

// A big category without children counts as a leaf: its path is one level off, so that the presenter finds no
// rules.
void CAutoConfigDlg::OnCategoryChanged()
{
    if (SelectedCategory() == nullptr) return;
    if (!OpenCategory()) {
        platform::Show(
            {platform::MessageKind::Plain, u"GetConfig return false"_s, platform::MessageCaption()});
        return;
    }
    FillRuleList(); // runs OnRuleChanged while the attribute list still shows the former category
    FillAttributeList();
    OnAttributeChanged();
    SyncPickerPosition();
}

bool CAutoConfigDlg::OpenCategory()
{
    try {
        ResetGridForCategory();
        CPath path{};
        GetCategoryPath(path);
        return AskForRules(path);
    } catch (...) {
        // The grid is empty by now, and the list still shows the former category's rules.
        ForgetRules();
        throw;
    }
}

void CAutoConfigDlg::ResetGridForCategory()
{
    m_grid.DeleteAllItems();
    SNvKtSmallCategoryId id;
    NvKtDataMng::SmallCategoryNameToId(GetCategoryText(), id);
    m_grid.SetupColumns(NvKtDataMng::CSysSmallCategoryMng(id).GetAttType());
}

CString CAutoConfigDlg::GetPickerPosition() const
{
    return NvKtDataMng::CSys().GetIndexPath(GetCategoryTreePath()).replace(u'\\', u'.');
}

void CAutoConfigDlg::SyncPickerPosition()
{
    if (!dialogs::IsBillMode() || !m_billPicker.IsWindowVisible()) return;
    m_billPicker.SetTreePosition(GetPickerPosition());
}

void CAutoConfigDlg::ToggleItemPicker()
{
    if (dialogs::ProjectMode() == SQdDeInfo::QuotaMode)
        ToggleQuotaPicker();
    else
        ToggleBillPicker();
}

void CAutoConfigDlg::ToggleQuotaPicker()
{
    m_quotaPicker.EnableWindow(true);
    if (m_quotaPicker.IsWindowVisible()) {
        m_quotaPicker.ShowWindow(false);
        return;
    }
    m_quotaPicker.ShowWindow(true);
    m_quotaPicker.MoveWndToRight(this);
    m_quotaPicker.InitDeData();
}

void CAutoConfigDlg::ToggleBillPicker()
{
    if (m_billPicker.IsWindowVisible()) {
        m_billPicker.ShowWindow(false);
        return;
    }
    const CString position = GetPickerPosition();
    m_billPicker.ShowWindow(true);
    m_billPicker.MoveWndToRight(this);
    m_billPicker.InitQdDeData();
    m_billPicker.SetTreePosition(position);
}
