#include "SampleScenes.h"

#include "dialogs/AutoConfigIds.h"
#include "dialogs/secondary/CDlgGetQdNum.h"
#include "dialogs/secondary/DlgSaveAs.h"
#include "dialogs/secondary/wizard/COnlineAutoConfigDlg.h"
#include "editor/dialogs/HistoryWindow.h"
#include "editor/dialogs/NewProjectDialog.h"
#include "editor/dialogs/TransferDialog.h"
#include "editor/steps/ProgressWindow.h"
#include "embedded/data/history/History.h"
#include "embedded/data/project/ProjectFolder.h"
#include "host/UserMessage.h"
#include "platform/Files.h"
#include "sample/SampleProject.h"
#include "widgets/ListControls.h"

#include <QtCore/QCoreApplication>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QTabWidget>
#include <QtWidgets/QTreeWidget>

#include <stdexcept>
#include <utility>

using namespace Qt::StringLiterals;
using namespace dialogs::autoconfig;

namespace {

/// What is to be seen of the main dialog.
struct SampleView
{
    CString category = u"给水管"_s;
    bool ranges = false;
    CString attribute = u"公称直径"_s;
};

void SelectCategory(QTreeWidget& tree, const CString& name)
{
    const auto found = tree.findItems(name, Qt::MatchExactly | Qt::MatchRecursive);
    if (found.isEmpty()) throw std::runtime_error("no category " + name.toStdString());
    tree.setCurrentItem(found.first());
}

void Show(const CAutoConfigDlg& dialog, const SampleView& view)
{
    SelectCategory(dialog.Item<QTreeWidget>(CategoryTree), view.category);
    auto& rules = dialog.Item<QTreeWidget>(RuleRows);
    rules.setCurrentItem(rules.topLevelItem(0));
    auto& attributes = dialog.Item<QListWidget>(Attributes);
    for (QListWidgetItem* item : attributes.findItems(view.attribute, Qt::MatchExactly))
        attributes.setCurrentItem(item);
    dialog.Item<QTabWidget>(PageTab).setCurrentIndex(view.ranges ? 1 : 0);
    dialog.Item<QComboBox>(LowerBound).setEditText(u"50"_s);
    dialog.Item<QComboBox>(UpperBound).setEditText(u"100"_s);
}

/// Puts quota items into the rule as the picker does.
void PickQuotas(CAutoConfigDlg& dialog)
{
    for (const auto& [number, name] :
         {std::pair{u"示10-1-1"_s, u"室内镀锌钢管 螺纹连接 公称直径(mm以内)15"_s},
          std::pair{u"示10-1-2"_s, u"室内镀锌钢管 螺纹连接 公称直径(mm以内)20"_s}}) {
        const SPickedDe record{10, 1, number, name, u"10m"_s, u"管道长度"_s};
        host::UserMessage message(host::DePickedMessage, &record);
        QCoreApplication::sendEvent(&dialog, &message);
    }
}

std::unique_ptr<QWidget> MakeConfig(SampleOnShow& sample, SQdDeInfo::EQdDeMode mode, const SampleView& view)
{
    sample.Project().SetMode(mode);
    auto dialog = std::make_unique<CAutoConfigDlg>(CString());
    dialog->Create();
    Show(*dialog, view);
    if (mode == SQdDeInfo::QuotaMode) PickQuotas(*dialog);
    sample.Project().SetMode(SQdDeInfo::BillMode);
    return dialog;
}

std::unique_ptr<QWidget> MakeWizard(SampleOnShow& sample)
{
    auto wizard = std::make_unique<COnlineAutoConfigDlg>(
        CString(), sample.Project().BillLibrary(), sample.Project().QuotaLibrary(), u"说明"_s, true, nullptr);
    wizard->Create();
    Show(*wizard, {});
    return wizard;
}

std::unique_ptr<QWidget> MakeSaveAs()
{
    auto dialog = std::make_unique<DlgSaveAs>(DlgSaveAs::New, nullptr, CString());
    dialog->Create();
    dialog->Item<QLineEdit>(1069).setText(u"住宅给排水"_s);
    return dialog;
}

std::unique_ptr<QWidget> MakeBillNumber()
{
    auto dialog = std::make_unique<CDlgGetQdNum>();
    dialog->SetNumber(u"031001001"_s);
    dialog->Create();
    return dialog;
}

std::unique_ptr<QWidget> MakeImport(SampleOnShow& sample)
{
    auto dialog = std::make_unique<editor::TransferDialog>(nullptr, editor::TransferDialog::Direction::Import,
                                                           sample.Project());
    auto* kinds = dialog->findChild<QComboBox*>();
    kinds->setCurrentIndex(kinds->findData(static_cast<int>(embedded::TableKind::Bill)));
    return dialog;
}

/// The window over a step that is half done.
std::unique_ptr<QWidget> MakeProgress()
{
    struct Step
    {
        editor::StepControl control;
    };
    struct Window : Step, editor::ProgressWindow
    {
        Window() : ProgressWindow(nullptr, u"正在刷新…"_s, control)
        {
            control.Report(1, 2);
            ShowState();
        }
    };
    return std::make_unique<Window>();
}

std::unique_ptr<QWidget> MakeChangedHistory(SampleOnShow& sample)
{
    const CString file = sample.Project().CurrentRuleFile();
    embedded::History(embedded::ProjectFolder(sample.Folder())).Keep(file);
    QByteArray rules = platform::Files().Read(file).value_or(QByteArray());
    rules.replace("DN20", "DN25");
    platform::Files().WriteInPlace(file, rules);
    return std::make_unique<editor::HistoryWindow>(nullptr, sample.Project(), file);
}

} // namespace

SampleOnShow::SampleOnShow()
{
    sample::CreateSampleProject(Folder());
    m_project = std::make_unique<editor::Project>(Folder());
    m_project->BecomeHost(nullptr);
}

std::vector<Scene> SampleScenes(SampleOnShow& sample)
{
    constexpr auto Bills = SQdDeInfo::BillMode;
    return {
        {u"new-project"_s,
         [] { return std::make_unique<editor::NewProjectDialog>(nullptr, u"/home/user/新工程"_s); }},
        {u"progress"_s, [] { return MakeProgress(); }},
        {u"config"_s, [&sample] { return MakeConfig(sample, Bills, {}); }},
        {u"config-range"_s, [&sample] { return MakeConfig(sample, Bills, {.ranges = true}); }},
        {u"config-quota"_s, [&sample] { return MakeConfig(sample, SQdDeInfo::QuotaMode, {}); }},
        {u"save-as"_s, [] { return MakeSaveAs(); }},
        {u"bill-number"_s, [] { return MakeBillNumber(); }},
        {u"wizard"_s, [&sample] { return MakeWizard(sample); }},
        {u"import"_s, [&sample] { return MakeImport(sample); }},
        {u"history"_s, [&sample] { return MakeChangedHistory(sample); }},
    };
}
