#include "DialogScenes.h"

#include "dialogs/process/MessageBoxes.h"
#include "dialogs/secondary/CDlgGetQdNum.h"
#include "dialogs/secondary/DlgSaveAs.h"
#include "dialogs/template/DialogTemplates.h"
#include "widgets/ListControls.h"
#include "widgets/TreeControl.h"

#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QTabWidget>

using namespace Qt::StringLiterals;

namespace {

std::unique_ptr<QWidget> MakeSaveAs(int mode, int selected)
{
    auto dialog = std::make_unique<DlgSaveAs>(mode, nullptr, CString());
    dialog->Create();
    auto& list = dialog->Item<QListWidget>(1000);
    if (selected >= 0) list.setCurrentRow(selected);
    return dialog;
}

std::unique_ptr<QWidget> MakeBox(platform::MessageKind kind, const CString& text)
{
    return dialogs::MakeMessageBox({kind, text, platform::MessageCaption()}, nullptr);
}

std::unique_ptr<QWidget> MakeGetQdNum(PictureHost& host, int length, int suffixLength, bool existing)
{
    host.SetEnCodeRule(length, suffixLength);
    auto dialog = std::make_unique<CDlgGetQdNum>();
    dialog->SetNumber(u"030801001001"_s.left(length));
    dialog->Create();
    if (existing) dialog->Item<QAbstractButton>(1111).click();
    return dialog;
}

void FillTemplate(const dialogs::TemplateDialog& dialog)
{
    auto& tree = dialog.Item<QTreeWidget>(2000);
    auto* spec = new QTreeWidgetItem(&tree, {u"给排水"_s});
    auto* big = new QTreeWidgetItem(spec, {u"管道"_s});
    new QTreeWidgetItem(big, {u"给水管"_s});
    new QTreeWidgetItem(big, {u"排水管"_s});
    tree.expandAll();
    auto& rules = dialog.Item<QTreeWidget>(1008);
    rules.setHeaderLabels({u"序号"_s, u"范围"_s});
    new QTreeWidgetItem(&rules, {u"1"_s, u"公称直径(mm)＞50"_s});
    new QTreeWidgetItem(&rules, {u"2"_s, u"默认"_s});
    for (const int id : {1009, 1010}) {
        auto& list = dialog.Item<QListWidget>(id);
        for (const CString& line : {u"公称直径(mm)"_s, u"材质"_s, u"具体构件"_s})
            widgets::AddString(list, line);
    }
    auto& tab = dialog.Item<QTabWidget>(2001);
    for (const CString& page : {u"取值"_s, u"范围"_s})
        tab.addTab(new QWidget, page);
    for (const auto& [id, text] : {std::pair{1017, u"＞"_s}, {1018, u"＜"_s}, {1021, u"＝"_s}}) {
        auto& combo = dialog.Item<QComboBox>(id);
        widgets::AddString(combo, text);
        widgets::SetCurSel(combo, 0);
    }
}

// Of the six combos over the tab those of the other page are hidden, and in the wizard form the file
// commands.
std::unique_ptr<QWidget> MakeTemplate(bool ranges, bool wizard)
{
    auto dialog = std::make_unique<dialogs::TemplateDialog>(dialogs::templates::AutoConfig(), nullptr);
    dialog->Create();
    FillTemplate(*dialog);
    for (const int id : {1021, 1022})
        dialog->GetDlgItem(id)->setVisible(!ranges);
    for (const int id : {1017, 1018, 1019, 1020})
        dialog->GetDlgItem(id)->setVisible(ranges);
    widgets::SetCurSel(dialog->Item<QTabWidget>(2001), ranges ? 1 : 0);
    for (const int id : {7000, 7001, 7002, 7011})
        dialog->GetDlgItem(id)->setVisible(!wizard);
    for (const int id : {7006, 7007, 7008, 2002, 2003, 2004, 2005, 2006, 2007})
        dialog->GetDlgItem(id)->setVisible(wizard);
    return dialog;
}

} // namespace

std::vector<Scene> DialogScenes(PictureHost& host)
{
    return {
        {u"save-as-load"_s, [] { return MakeSaveAs(DlgSaveAs::Load, 3); }},
        {u"save-as-new"_s, [] { return MakeSaveAs(DlgSaveAs::New, -1); }},
        {u"save-as-save"_s, [] { return MakeSaveAs(DlgSaveAs::SaveAs, 0); }},
        {u"bill-number-new"_s, [&host] { return MakeGetQdNum(host, 9, 3, false); }},
        {u"bill-number-existing"_s, [&host] { return MakeGetQdNum(host, 12, 3, true); }},
        {u"bill-number-no-rule"_s, [&host] { return MakeGetQdNum(host, -1, -1, false); }},
        {u"box-warning"_s,
         [] { return MakeBox(platform::MessageKind::Warning, u"当前配置文件不能覆盖!"_s); }},
        {u"box-question"_s,
         [] { return MakeBox(platform::MessageKind::Question, u"是否覆盖已有配置文件?"_s); }},
        {u"box-report"_s, [] { return MakeBox(platform::MessageKind::Information, u"另存成功."_s); }},
        {u"box-long"_s,
         [] {
             return MakeBox(platform::MessageKind::Warning, u"文件名不能包含下列任何字符:\n \\ /:*?\"<>|!"_s);
         }},
        {u"template-values"_s, [] { return MakeTemplate(false, false); }},
        {u"template-ranges"_s, [] { return MakeTemplate(true, false); }},
        {u"template-wizard"_s, [] { return MakeTemplate(true, true); }},
    };
}
