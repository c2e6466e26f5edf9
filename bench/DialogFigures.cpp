#include "bench/DialogFigures.h"

#include "bench/BareDialog.h"
#include "bench/Measure.h"
#include "dialogs/AutoConfigIds.h"
#include "dialogs/CAutoConfigDlg.h"
#include "editor/steps/LivelyWindows.h"
#include "embedded/windows/ItemPane.h"
#include "host/NvKtDataMng.h"
#include "platform/Numbers.h"
#include "platform/Paths.h"
#include "presenter/CAutoQdDeConfigFacade.h"
#include "widgets/TreeControl.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QElapsedTimer>
#include <QtCore/QProcess>
#include <QtCore/QTimer>
#include <QtGui/QPaintEvent>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QApplication>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QTreeWidget>

#include <algorithm>
#include <cstdlib>
#include <stdexcept>
#include <vector>

using namespace Qt::StringLiterals;
using namespace dialogs::autoconfig;

namespace bench {

namespace {

constexpr int ConditionsOfARule = 3;
const CString Category = u"给排水\\管道\\给水管"_s;
const CString Neighbour = u"给排水\\管道\\热水管"_s;
constexpr double TenthOfASecond = 100.0;
constexpr double FifthOfASecond = 200.0;
constexpr double FrameOf60Hz = 1000.0 / 60.0;

CPath PathOfCategory(const CString& category)
{
    SNvKtSpecId spec;
    SNvKtBigCategoryId big;
    SNvKtSmallCategoryId small;
    const CString specName = category.section(u'\\', 0, 0);
    if (!NvKtDataMng::SpecNameToId(specName, spec) ||
        !NvKtDataMng::BigCategoryNameToId(category.section(u'\\', 0, 1), big) ||
        !NvKtDataMng::SmallCategoryNameToId(category, small))
        throw std::runtime_error("the catalogue lacks the category of the measurement");
    CPath path{};
    path.specId = platform::_wtoi(spec.strSpecId);
    path.lMemberId = platform::_wtoi(big.strBigCategoryId);
    path.sMemberId = platform::_wtoi(small.strSmallCategoryId);
    return path;
}

/// A rule file in which the category has that many rules.
CString MakeRules(const QString& file, int rules)
{
    const CString path = platform::FromNative(file);
    CQdDeConfigPresenter presenter(path);
    for (int rule = 1; rule < rules; ++rule) {
        CPath place = PathOfCategory(Category);
        presenter.AddConfig(place, place.configId);
        for (int condition = 0; condition < ConditionsOfARule; ++condition)
            presenter.AddCondition(place, {u"公称直径"_s, u"1"_s, u"＝"_s, u""_s, u""_s,
                                           u"DN%1-%2"_s.arg(rule).arg(condition), u""_s, u""_s});
    }
    // The category beside it has a rule, too: its default rule alone would disable half of the controls.
    CPath beside = PathOfCategory(Neighbour);
    presenter.AddConfig(beside, beside.configId);
    presenter.Save();
    return path;
}

QTreeWidgetItem& ItemOf(const CAutoConfigDlg& dialog, const CString& name)
{
    const auto found = dialog.Item<widgets::TreeControl>(CategoryTree)
                           .findItems(name, Qt::MatchExactly | Qt::MatchRecursive);
    if (found.isEmpty()) throw std::runtime_error("the dialog lacks the category of the measurement");
    return *found.first();
}

/// Layouts and selections are made at once; what is left for the event loop is the painting.
void Paint()
{
    QCoreApplication::processEvents();
}

/// The dialog on a category with that many rules, and another category beside it.
class OpenDialog
{
public:
    OpenDialog(const QString& file, int rules) : m_dialog(MakeRules(file, rules)), m_rules(rules)
    {
        m_dialog.Create();
        m_dialog.show();
        m_large = &ItemOf(m_dialog, Category.section(u'\\', -1));
        m_other = &ItemOf(m_dialog, Neighbour.section(u'\\', -1));
        Choose(*m_large);
        if (m_dialog.Item<QTreeWidget>(RuleRows).topLevelItemCount() != m_rules)
            throw std::runtime_error("the dialog does not show the rules of the measurement");
    }

    void ChooseLarge() { Choose(*m_large); }
    void ChooseOther() { Choose(*m_other); }
    CAutoConfigDlg& Dialog() { return m_dialog; }

private:
    void Choose(QTreeWidgetItem& item)
    {
        m_dialog.Item<widgets::TreeControl>(CategoryTree).setCurrentItem(&item);
        Paint();
    }

    CAutoConfigDlg m_dialog;
    int m_rules;
    QTreeWidgetItem* m_large = nullptr;
    QTreeWidgetItem* m_other = nullptr;
};

/// Looks for the longest time in which the event loop of this thread did not come round.
class Standstill
{
public:
    Standstill()
    {
        constexpr int Beat = 1; // millisecond
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] {
            m_longest = std::max(m_longest, static_cast<double>(m_sinceLast.nsecsElapsed()) / 1e6);
            m_sinceLast.start();
        });
        m_sinceLast.start();
        m_timer.start(Beat);
    }

    /// Milliseconds so far.
    double Longest()
    {
        const double before = m_longest;
        m_longest = 0;
        while (m_longest == 0)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        return std::max(before, m_longest);
    }

private:
    QTimer m_timer;
    QElapsedTimer m_sinceLast;
    double m_longest = 0;
};

/// Ends the process when a dialog has been painted for the first time.
class FirstPaint : public QObject
{
public:
    FirstPaint() { qApp->installEventFilter(this); }
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        const auto* widget = qobject_cast<QWidget*>(watched);
        if (event->type() != QEvent::Paint || widget == nullptr ||
            qobject_cast<QDialog*>(widget->window()) == nullptr)
            return false;
        // What stands on the dialog is painted in the same turn.
        QMetaObject::invokeMethod(
            qApp, [] { std::_Exit(0); }, Qt::QueuedConnection);
        return false;
    }
};

void RunChild(const QString& program, const QString& work, const QString& project)
{
    QProcess child;
    child.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    child.start(program, {u"--child"_s, work, project});
    child.waitForFinished(-1);
    if (child.exitStatus() != QProcess::NormalExit || child.exitCode() != 0)
        throw std::runtime_error("a child process did not show its dialog");
}

} // namespace

bool CategoryChange(const QString& file, int rounds)
{
    constexpr int Rules = 1000;
    OpenDialog open(file, Rules);
    BareDialog bare;
    bare.Copy(open.Dialog());
    bare.show();
    const Timed timed = Alternate(
        rounds, [&] { open.ChooseLarge(); },
        [&] {
            bare.Fill();
            Paint();
        },
        [&] {
            open.ChooseOther();
            bare.Empty();
            Paint();
        });
    return Report({"category_change", "bare_widgets", 1.5}, timed.oursMs, timed.peerMs, timed.Ratio());
}

bool AddCondition(const QString& file, int rounds)
{
    constexpr int Rules = 5000;
    OpenDialog open(file, Rules);
    auto& button = open.Dialog().Item<QAbstractButton>(AddConditionButton);
    auto& value = open.Dialog().Item<QComboBox>(ValueCombo);
    int round = 0;
    CString last;
    const double spent = MedianOf(rounds, [&] {
        last = u"值%1"_s.arg(++round);
        value.setCurrentText(last);
        button.click();
        Paint();
    });
    const QList<QListWidgetItem*> shown =
        open.Dialog().Item<QListWidget>(Conditions).findItems(last, Qt::MatchContains);
    if (shown.isEmpty()) throw std::runtime_error("no condition was added");
    return Report({"add_condition", "tenth_of_a_second", 1.0}, spent, TenthOfASecond, spent / TenthOfASecond);
}

bool Start(const QString& program, const QString& project, int rounds)
{
    const Timed timed = Alternate(
        rounds, [&] { RunChild(program, u"start-dialog"_s, project); },
        [&] { RunChild(program, u"start-bare"_s, project); });
    return Report({"start", "bare_dialog", 2.0}, timed.oursMs, timed.peerMs, timed.Ratio());
}

void ShowConfigDialog()
{
    FirstPaint watch;
    CAutoQdDeConfigFacade::StartQdDeConfig(nullptr, {});
}

void ShowBareDialog()
{
    FirstPaint watch;
    BareDialog().exec();
}

bool Still(const CString& path, int rounds)
{
    const editor::LivelyWindows lively;
    double longest = 0;
    for (int round = 0; round < rounds; ++round) {
        Standstill standstill;
        {
            CQdDeConfigPresenter presenter(path);
            presenter.Save();
        }
        longest = std::max(longest, standstill.Longest());
    }
    return Report({"still", "fifth_of_a_second", 1.0}, longest, FifthOfASecond, longest / FifthOfASecond);
}

bool Search(int rounds)
{
    constexpr int Count = 10'000;
    std::vector<embedded::PickerItem> items;
    for (int i = 0; i < Count; ++i) {
        embedded::PickerItem item;
        item.number = CString::number(31001001001LL + i);
        item.name = (i % 3 == 0 ? u"镀锌钢管 DN%1"_s : u"复合管 %1 法兰阀门"_s).arg(i % 97);
        item.unit = u"m"_s;
        items.push_back(item);
    }
    return SearchIn("search", items, rounds);
}

bool SearchIn(const char* figure, const std::vector<embedded::PickerItem>& items, int rounds)
{
    embedded::ItemPane pane(u"查找"_s, u"清单项目"_s, embedded::ItemPane::SearchIn::Everything);
    pane.SetItems(items);
    pane.resize(600, 800);
    pane.show();
    auto* field = pane.findChild<QLineEdit*>();
    if (field == nullptr) throw std::runtime_error("the list has no search field");
    const CString typed = u"钢管 DN1"_s;
    qsizetype at = 0;
    const double spent = MedianOf(rounds, [&] {
        at = at % typed.size() + 1;
        field->setText(typed.left(at));
        Paint();
    });
    return Report({figure, "frame_of_60_hz", 1.0}, spent, FrameOf60Hz, spent / FrameOf60Hz);
}

} // namespace bench
