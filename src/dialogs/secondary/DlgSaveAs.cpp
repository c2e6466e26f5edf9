#include "dialogs/secondary/DlgSaveAs.h"

#include "dialogs/secondary/FileNameRules.h"
#include "dialogs/template/DialogTemplates.h"
#include "host/NvKtProfile.h"
#include "host/RuleFilePlaces.h"
#include "platform/Files.h"
#include "platform/Messages.h"
#include "platform/Paths.h"
#include "widgets/ListControls.h"

#include <QtWidgets/QComboBox>
#include <QtWidgets/QListWidget>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;
using dialogs::DataExchange;
using dialogs::DialogEvent;
using dialogs::IdOk;

namespace {

enum SaveAsControl {
    FileList = 1000,
    TypeCombo = 1001,
    NameEdit = 1069,
};

} // namespace

DlgSaveAs::DlgSaveAs(int mode, CWnd* parent, const CString& currentPath)
    : TemplateDialog(dialogs::templates::SaveAs(), parent),
      m_folder(host::RuleFolder(NvKtProfile::GetAppProfile().GetAppFolder())), m_mode(mode),
      m_currentPath(currentPath)
{
    On(DialogEvent::ListSelection, FileList, &DlgSaveAs::OnFileSelected);
}

void DlgSaveAs::DoDataExchange(DataExchange& exchange)
{
    exchange.Text(NameEdit, m_fileName);
}

void DlgSaveAs::OnInitDialog()
{
    TemplateDialog::OnInitDialog();
    widgets::AddString(Item<QComboBox>(TypeCombo), u"XML文件(*.xml)"_s);
    // A click on the file that is selected already is no change of the selection, yet it renews the name.
    connect(&Item<QListWidget>(FileList), &QListWidget::itemClicked, this,
            [this] { Dispatch(DialogEvent::ListSelection, FileList); });
    ScanFolder(m_folder);
    for (const CString& name : std::as_const(m_fileNames))
        widgets::AddString(Item<QListWidget>(FileList), platform::BeforeLastStop(name));
    ApplyMode();
    widgets::SetCurSel(Item<QComboBox>(TypeCombo), 0);
    UpdateData(DataExchange::Direction::ToControls);
    // The name is what the user has to give, and it is typed at once. When a file is loaded it comes from the
    // list.
    if (m_mode != Load) GetDlgItem(NameEdit)->setFocus();
}

void DlgSaveAs::ScanFolder(const CString& folder)
{
    m_fileNames = platform::Files().FindFiles(folder, u".xml"_s);
}

void DlgSaveAs::ApplyMode()
{
    switch (m_mode) {
    case Load:
        setWindowTitle(u"调用"_s);
        SetItemText(IdOk, u"调用"_s);
        GetDlgItem(NameEdit)->setEnabled(false);
        break;
    case New:
        setWindowTitle(u"新建"_s);
        SetItemText(IdOk, u"新建"_s);
        break;
    case SaveAs:
        setWindowTitle(u"另存"_s);
        break;
    default:
        break;
    }
}

void DlgSaveAs::OnFileSelected()
{
    const auto& list = Item<QListWidget>(FileList);
    const int selected = widgets::GetCurSel(list);
    if (selected >= 0) m_fileName = list.item(selected)->text();
    UpdateData(DataExchange::Direction::ToControls);
}

bool DlgSaveAs::CheckFileName(const CString& name) const
{
    const bool good = std::none_of(name.begin(), name.end(), platform::IsForbiddenInFileNames);
    if (!good) platform::ShowWarning(u"文件名不能包含下列任何字符:\n \\ /:*?\"<>|"_s);
    return good;
}

CString DlgSaveAs::GetChosenPath() const
{
    const qsizetype stop = std::max<qsizetype>(m_fileName.lastIndexOf(u'.'), 0);
    const bool hasExtension = m_fileName.mid(stop).toLower() == u".xml";
    const CString path = m_folder + u'\\' + m_fileName;
    return hasExtension ? path : path + u".xml"_s;
}

// Only an extension in capitals is taken off before the look-up, and the list shows names without one. So a
// name typed with ".xml" is never found, and its file is overwritten without a question.
bool DlgSaveAs::FileExists()
{
    UpdateData(DataExchange::Direction::ToMembers);
    CString name = m_fileName;
    if (name.size() > 4 && name.endsWith(u".XML")) name.chop(4);
    return widgets::FindStringExact(Item<QListWidget>(FileList), name) >= 0;
}

bool DlgSaveAs::IsCurrentFile() const
{
    return GetChosenPath().compare(m_currentPath, Qt::CaseInsensitive) == 0;
}

/// Whether the name can be saved to: the user says so for a file that is there, the file system for a new
/// one.
bool DlgSaveAs::MayBeWritten()
{
    if (FileExists()) return platform::AskYesNo(u"是否覆盖已有配置文件"_s);
    const CString fault = dialogs::FileNameFault(platform::FileNameOf(GetChosenPath()));
    if (!fault.isEmpty()) platform::ShowWarning(fault);
    return fault.isEmpty();
}

void DlgSaveAs::OnOK()
{
    UpdateData(DataExchange::Direction::ToMembers);
    if (m_fileName.isEmpty() || !CheckFileName(m_fileName)) return;
    if (m_mode == New && IsCurrentFile()) {
        platform::ShowWarning(u"当前配置文件不能覆盖"_s);
        return;
    }
    if (m_mode != Load && !MayBeWritten()) return;
    EndDialog(IdOk);
}
