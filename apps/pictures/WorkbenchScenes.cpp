#include "WorkbenchScenes.h"

#include "editor/docks/details/SeriesDialog.h"
#include "editor/docks/findings/FindingsWatch.h"
#include "editor/docks/takeoff/TakeoffHits.h"
#include "editor/files/ComparisonWindow.h"
#include "editor/office/JoinedDialog.h"
#include "editor/window/MainWindow.h"
#include "editor/workbench/ConflictDialog.h"
#include "editor/workbench/Workbench.h"
#include "platform/Files.h"
#include "platform/Paths.h"
#include "rules/document/RuleWriter.h"
#include "sample/SampleProject.h"

#include <QtCore/QCoreApplication>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QDockWidget>

#include <stdexcept>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

/// The editor in the documents: as on a small screen, so that its texts can be read where the picture is
/// scaled.
constexpr QSize PicturedEditor(1366, 740);
/// How high the dock is that a picture is about, in pixels.
constexpr int PicturedDock = 340;
/// Where much is written, so that the file stays small.
constexpr QSize PicturedBill(1180, 640);

const CString Pipes = u"给排水\\管道\\给水管"_s;

/// Leaves nothing behind that the next window would offer again.
struct EditorOnShow : editor::MainWindow
{
    using MainWindow::MainWindow;
    ~EditorOnShow() override { Session().Close(); }
};

std::unique_ptr<EditorOnShow> MakeEditor(const SampleOnShow& sample, bool opened = true)
{
    auto window = std::make_unique<EditorOnShow>(editor::RecentProjects(sample.SettingsFile()));
    if (opened) window->OpenProject(sample.Folder());
    window->resize(PicturedEditor);
    return window;
}

QDockWidget& RaiseDock(QWidget& window, const QString& name)
{
    QDockWidget& dock = *static_cast<editor::MainWindow&>(window).Bench().FindDock(name);
    dock.raise();
    return dock;
}

/// Tries a component in the panel beside the rules.
void TryComponent(QWidget& window)
{
    const QDockWidget& dock = RaiseDock(window, u"trial"_s);
    for (const auto& [attribute, value] :
         {std::pair(u"材质"_s, u"镀锌钢管"_s), std::pair(u"连接方式"_s, u"螺纹连接"_s),
          std::pair(u"公称直径"_s, u"65"_s), std::pair(u"水平管长度"_s, u"12.5"_s)})
        if (auto* field = dock.findChild<QComboBox*>(attribute)) field->setEditText(value);
}

rules::Condition Equal(const CString& attribute, const CString& value)
{
    rules::Condition condition;
    condition.attribute = attribute;
    condition.equalOperator = u"＝"_s;
    condition.value = value;
    return condition;
}

/// Adds a rule that says too little: it takes the components of those behind it, and has no items.
std::unique_ptr<QWidget> MakeFindings(const SampleOnShow& sample)
{
    auto window = MakeEditor(sample);
    editor::WorkSession& session = window->Session();
    session.ChooseCategory(Pipes);
    rules::Rule rule;
    rule.conditions = {Equal(u"材质"_s, u"PPR管"_s)};
    session.Do(rules::InsertRules(session.Draft(), Pipes, 6, {rule}, u"增加规则"_s));
    return window;
}

void WaitForFindings(QWidget& window)
{
    const auto& watch = *window.findChild<editor::FindingsWatch*>();
    while (!watch.IsCurrent())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

/// The rules that price the sample take-off table, with the table open.
std::unique_ptr<QWidget> MakeBill(const SampleOnShow& sample)
{
    auto window = MakeEditor(sample);
    const CString folder = window->OpenedProject()->RuleFolder();
    window->Session().Open(folder + u'\\' + sample::TakeoffConfiguration() + u".xml"_s);
    window->Session().ChooseCategory(u"给排水\\管道\\排水管"_s);
    window->resize(PicturedBill);
    return window;
}

void OpenTakeoff(QWidget& window, const CString& table)
{
    QDockWidget& dock = RaiseDock(window, u"bill"_s);
    auto& bench = static_cast<editor::MainWindow&>(window).Bench();
    bench.resizeDocks({&dock}, {PicturedDock}, Qt::Vertical);
    auto& hits = *window.findChild<editor::TakeoffHits*>();
    hits.Open(table);
    while (hits.Now() == editor::TakeoffHits::State::Reading ||
           hits.Now() == editor::TakeoffHits::State::Pricing)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    WaitForFindings(window);
}

/// The rules of the sample project, open at the water pipes.
struct RulesOnShow
{
    explicit RulesOnShow(SampleOnShow& sample)
    {
        session.SetProject(&sample.Project());
        session.Open(sample.Project().CurrentRuleFile());
        session.ChooseCategory(Pipes);
    }
    ~RulesOnShow() { session.Close(); }

    const rules::Rule& Rule(std::size_t position) const { return session.Category()->rules[position]; }
    /// The file with the draft in it.
    QByteArray Bytes() const { return rules::WriteRules(session.File().Bytes(), session.Draft().Wanted()); }

    editor::WorkSession session;
};

std::unique_ptr<QWidget> MakeSeries(SampleOnShow& sample)
{
    struct Window : RulesOnShow, editor::SeriesDialog
    {
        explicit Window(SampleOnShow& on)
            : RulesOnShow(on), SeriesDialog(session, Pipes, 0, u"公称直径"_s, nullptr)
        {
            for (QComboBox* combo : findChildren<QComboBox*>()) {
                const int form = combo->findText(u"含上限"_s, Qt::MatchContains);
                if (form >= 0) combo->setCurrentIndex(form);
            }
        }
    };
    return std::make_unique<Window>(sample);
}

/// What a colleague has made of the rules: another name, one rule more and one less.
void EditAsAColleague(editor::WorkSession& session)
{
    rules::Rule changed = session.Category()->rules[5];
    changed.bills[0].record.strName += u" 室内"_s;
    session.Do(rules::ChangeRule(session.Draft(), Pipes, 5, changed, {}));
    rules::Rule added = session.Category()->rules[8];
    added.conditions = {Equal(u"材质"_s, u"铜管"_s)};
    session.Do(rules::InsertRules(session.Draft(), Pipes, 9, {added}, {}));
    session.Do(rules::DeleteRules(session.Draft(), Pipes, {0}));
}

/// The other file is read when the window comes up, and is gone then.
std::unique_ptr<QWidget> MakeComparison(SampleOnShow& sample)
{
    RulesOnShow shown(sample);
    EditAsAColleague(shown.session);
    const CString current = sample.Project().CurrentRuleFile();
    const CString other = sample.Project().RuleFolder() + u"\\住宅三期.xml"_s;
    platform::Files().WriteInPlace(other, shown.Bytes());
    const editor::FileChoices files{{shown.session.File().Name(), current}, {u"住宅三期"_s, other}};
    auto window = std::make_unique<editor::ComparisonWindow>(nullptr, files, current, other);
    platform::Files().Remove(other);
    return window;
}

/// Two rules that were edited here and elsewhere.
std::vector<rules::Conflict> SomeConflicts(SampleOnShow& sample)
{
    const RulesOnShow shown(sample);
    rules::Conflict changed{.kind = rules::ConflictKind::Changed, .category = Pipes, .base = shown.Rule(5)};
    changed.mine = changed.theirs = changed.base;
    changed.mine->bills[0].record.strName += u" 室内"_s;
    changed.theirs->conditions[1] = Equal(u"连接方式"_s, u"沟槽连接"_s);
    changed.minePlace = changed.theirsPlace = 5;
    rules::Conflict removed{.kind = rules::ConflictKind::Removed, .category = Pipes, .base = shown.Rule(8)};
    removed.mine = removed.base;
    removed.mine->bills[0].record.strName += u" 热水"_s;
    removed.minePlace = 8;
    return {changed, removed};
}

std::unique_ptr<QWidget> MakeConflicts(SampleOnShow& sample)
{
    struct Found
    {
        std::vector<rules::Conflict> conflicts;
    };
    struct Window : Found, editor::ConflictDialog
    {
        explicit Window(std::vector<rules::Conflict> found)
            : Found{std::move(found)}, ConflictDialog(conflicts, WordsForFile(u"DefaultConfig"_s), nullptr)
        {
        }
    };
    return std::make_unique<Window>(SomeConflicts(sample));
}

std::unique_ptr<QWidget> MakeJoined(SampleOnShow& sample)
{
    RulesOnShow shown(sample);
    shared::JoinedStates joined;
    joined.configuration = u"安装规则"_s;
    joined.version = 4;
    rules::Rule mine = shown.Rule(1);
    mine.bills[0].record.strName += u" 热水"_s;
    const auto edit = [&](std::size_t position) {
        shown.session.Do(rules::ChangeRule(shown.session.Draft(), Pipes, position, mine, {}));
        return shown.Bytes();
    };
    EditAsAColleague(shown.session); // without the first rule
    joined.theirs = shown.Bytes();
    joined.merged = edit(0);
    shown.session.Discard();
    joined.mine = edit(1);
    return std::make_unique<editor::JoinedDialog>(joined, nullptr);
}

} // namespace

std::vector<Scene> WorkbenchScenes(SampleOnShow& sample)
{
    const CString table = platform::FolderOf(sample.Project().RuleFolder()) + u"\\给排水构件表.csv"_s;
    sample::WriteSampleTakeoff(table);
    return {
        {u"editor-start"_s, [&sample] { return MakeEditor(sample, false); }},
        {u"editor"_s, [&sample] { return MakeEditor(sample); }},
        {u"workbench-trial"_s, [&sample] { return MakeEditor(sample); }, &TryComponent},
        {u"workbench-findings"_s, [&sample] { return MakeFindings(sample); }, &WaitForFindings},
        {u"workbench-bill"_s, [&sample] { return MakeBill(sample); },
         [table](QWidget& window) { OpenTakeoff(window, table); }},
        {u"series"_s, [&sample] { return MakeSeries(sample); }},
        {u"comparison"_s, [&sample] { return MakeComparison(sample); }},
        {u"conflict"_s, [&sample] { return MakeConflicts(sample); }},
        {u"joined"_s, [&sample] { return MakeJoined(sample); }},
    };
}
