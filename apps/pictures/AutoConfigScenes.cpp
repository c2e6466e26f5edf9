#include "AutoConfigScenes.h"

#include "PictureProject.h"
#include "dialogs/AutoConfigIds.h"
#include "dialogs/CAutoConfigDlg.h"
#include "host/NvKtDataMng.h"
#include "widgets/ListControls.h"
#include "widgets/TreeControl.h"

#include <QtWidgets/QComboBox>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTabWidget>

#include <stdexcept>

using namespace Qt::StringLiterals;
using namespace dialogs::autoconfig;

namespace {

/// The rule that the pictures show first.
constexpr int FirstRule = 0;

/// The dialog with its presenter, so that a scene can put items into the rules.
class PicturedDlg : public CAutoConfigDlg
{
public:
    PicturedDlg() : CAutoConfigDlg(CString()) {}
    using CAutoConfigDlg::Presenter;
};

/// What is to be seen.
struct View
{
    SQdDeInfo::EQdDeMode mode = SQdDeInfo::BillMode;
    CString category; ///< small category of the specialty 给排水
    bool ranges = false;
    bool defaultRule = false;
    enum { NoRules, OnlyDefault, SeveralRules } rules = SeveralRules;
};

QTreeWidgetItem* CategoryItem(const PicturedDlg& dialog, const CString& name)
{
    const auto found =
        dialog.Item<QTreeWidget>(CategoryTree).findItems(name, Qt::MatchExactly | Qt::MatchRecursive);
    if (found.isEmpty()) throw std::runtime_error("no category " + name.toStdString());
    return found.first();
}

CPath PathOf(const QTreeWidgetItem& small)
{
    const auto id = [](const QTreeWidgetItem& item) { return item.data(0, Qt::UserRole).toInt(); };
    CPath path{};
    path.sMemberId = id(small);
    path.lMemberId = id(*small.parent());
    path.specId = id(*small.parent()->parent());
    return path;
}

void AddConditions(CQdDeConfigPresenter& presenter, const CPath& path)
{
    presenter.AddCondition(path, {u"材质"_s, u"1"_s, u"＝"_s, {}, {}, u"镀锌钢管"_s, {}, {}});
    presenter.AddCondition(path, {u"公称直径"_s, u"0"_s, {}, u"＞"_s, u"≤"_s, {}, u"15"_s, u"50"_s});
}

void AddItems(CQdDeConfigPresenter& presenter, CPath path)
{
    std::vector<ConfigNode*> rules;
    const NvKtDataMng::CAtt host;
    const QdStruct bill{u"031001001001"_s, {},     u"镀锌钢管"_s, u"m"_s, u"1"_s, {}, host.GetQdCode(),
                        u"管道长度"_s,     u"是"_s};
    presenter.AddQd(bill, path, rules);
    path.qdId = presenter.GetConfig(path)->GetQd().back()->GetId();
    for (const CString& number : {u"示10-1"_s, u"示10-2"_s}) {
        DeStruct quota{u"室内管道安装 镀锌钢管（螺纹连接） 公称直径15mm以内"_s,
                       u"10m"_s,
                       u"10"_s,
                       number,
                       host.GetQdDeCode(),
                       u"管道长度"_s,
                       u"否"_s};
        presenter.AddDe2QdNode(quota, path, rules);
        quota.strDeCode = host.GetDeCode();
        presenter.AddDe2ConfigNode(quota, path, rules);
    }
}

void FillRules(const PicturedDlg& dialog, const CString& category)
{
    CPath path = PathOf(*CategoryItem(dialog, category));
    for (int rule = 0; rule < 6; ++rule) {
        dialog.Presenter().AddConfig(path, path.configId);
        AddConditions(dialog.Presenter(), path);
        AddItems(dialog.Presenter(), path);
    }
}

CPath DefaultRuleOf(const PicturedDlg& dialog, const CString& category)
{
    CPath path = PathOf(*CategoryItem(dialog, category));
    path.configId = 1;
    return path;
}

/// Brings the dialog into the state of the view. Selecting the category anew shows what was filled in.
void Show(const PicturedDlg& dialog, const View& view)
{
    auto& tree = dialog.Item<QTreeWidget>(CategoryTree);
    tree.setCurrentItem(tree.topLevelItem(0));
    tree.setCurrentItem(CategoryItem(dialog, view.category));
    auto& rules = dialog.Item<QTreeWidget>(RuleRows);
    rules.setCurrentItem(rules.topLevelItem(view.defaultRule ? rules.topLevelItemCount() - 1 : FirstRule));
    dialog.Item<QTabWidget>(PageTab).setCurrentIndex(view.ranges ? 1 : 0);
    dialog.Item<QComboBox>(LowerBound).setEditText(u"15"_s);
    dialog.Item<QComboBox>(UpperBound).setEditText(u"50"_s);
    dialog.Item<QComboBox>(ValueCombo).setEditText(u"镀锌钢管"_s);
}

/// The dialog outlives its host: a picture asks the host nothing any more.
std::unique_ptr<QWidget> MakeDialog(const View& view)
{
    const PictureProject project(view.mode);
    auto dialog = std::make_unique<PicturedDlg>();
    dialog->Create();
    if (view.rules == View::SeveralRules) FillRules(*dialog, view.category);
    if (view.rules == View::NoRules) dialog->Presenter().DelConfig(DefaultRuleOf(*dialog, view.category));
    Show(*dialog, view);
    return dialog;
}

void OpenValues(QWidget& window)
{
    dynamic_cast<PicturedDlg&>(window).Item<QComboBox>(ValueCombo).showPopup();
}

} // namespace

std::vector<Scene> AutoConfigScenes()
{
    const auto scene = [](const QString& name, const View& view) {
        return Scene{name, [view] { return MakeDialog(view); }};
    };
    constexpr auto Bills = SQdDeInfo::BillMode;
    constexpr auto Quotas = SQdDeInfo::QuotaMode;
    Scene values = scene(u"main-bill-value-list"_s, {Bills, u"给水管"_s});
    values.open = OpenValues;
    return {
        values,
        scene(u"main-bill-values"_s, {Bills, u"给水管"_s}),
        scene(u"main-bill-ranges"_s, {Bills, u"给水管"_s, true}),
        scene(u"main-bill-default-rule"_s, {Bills, u"给水管"_s, false, true}),
        scene(u"main-bill-five-columns"_s, {Bills, u"阀门"_s}),
        scene(u"main-bill-default-only"_s, {Bills, u"水表"_s, false, true, View::OnlyDefault}),
        scene(u"main-bill-empty"_s, {Bills, u"水表"_s, false, false, View::NoRules}),
        scene(u"main-quota-values"_s, {Quotas, u"给水管"_s}),
        scene(u"main-quota-ranges"_s, {Quotas, u"给水管"_s, true}),
        scene(u"main-quota-default-rule"_s, {Quotas, u"给水管"_s, false, true}),
        scene(u"main-quota-empty"_s, {Quotas, u"水表"_s, true, false, View::NoRules}),
    };
}
