#include "bench/WorkbenchFigures.h"

#include "bench/CheckFigures.h"
#include "bench/Measure.h"
#include "bench/RuleFileGenerator.h"
#include "editor/docks/findings/FindingsWatch.h"
#include "editor/project/Project.h"
#include "editor/workbench/Workbench.h"
#include "platform/Files.h"
#include "store/CXmlQdDeConfig.h"

#include <QtWidgets/QApplication>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QTableView>
#include <QtWidgets/QTableWidget>

#include <stdexcept>

using namespace Qt::StringLiterals;

namespace bench {

namespace {

constexpr qsizetype FileSize = 9'400'000;
constexpr int RulesToSearch = 20'000;
constexpr double TenthOfASecond = 100.0;
constexpr double FrameOf60Hz = 1000.0 / 60.0;
constexpr QSize WindowSize(1200, 760);
const CString Specialty = u"电气"_s;
const CString Pipes = u"给排水\\管道\\给水管"_s;

void Paint()
{
    QCoreApplication::processEvents();
}

/// The project as the editor has it, with the workbench on it.
class OpenWorkbench
{
public:
    explicit OpenWorkbench(const QString& folder)
        : m_project(folder), m_workbench(m_session, {.run = [](const auto& step) { step(); },
                                                     .openFile = {},
                                                     .readOthers = {},
                                                     .save = {},
                                                     .tell = {}})
    {
        m_project.BecomeHost(nullptr);
        m_session.SetProject(&m_project);
        m_workbench.resize(WindowSize);
        m_workbench.show();
        Paint();
    }
    ~OpenWorkbench() { m_session.SetProject(nullptr); }
    OpenWorkbench(const OpenWorkbench&) = delete;
    OpenWorkbench& operator=(const OpenWorkbench&) = delete;

    CString Path() const { return m_project.CurrentRuleFile(); }
    void Write(const QByteArray& bytes) const
    {
        static_cast<void>(platform::Files().CreateFolder(m_project.RuleFolder()));
        platform::Files().Replace(Path(), bytes);
    }
    void Open()
    {
        m_session.Open(Path());
        Paint();
    }
    int Lines() const { return m_workbench.findChild<QTableView*>()->model()->rowCount(); }

    editor::WorkSession& Session() { return m_session; }
    editor::Workbench& Window() { return m_workbench; }

private:
    editor::Project m_project;
    editor::WorkSession m_session;
    editor::Workbench m_workbench;
};

/// A rule with three conditions and an item, told apart from the others by its number.
rules::Rule RuleOf(int number)
{
    rules::Rule rule;
    const auto is = [&](const CString& attribute, const CString& value) {
        rules::Condition condition;
        condition.attribute = attribute;
        condition.equalOperator = u"＝"_s;
        condition.value = value;
        rule.conditions.push_back(condition);
    };
    is(u"材质"_s, u"管材%1"_s.arg(number % 17));
    is(u"公称直径"_s, CString::number(number % 300));
    is(u"系统类型"_s, u"系统%1"_s.arg(number));
    rules::BillItem item;
    item.record.strQdId = CString::number(31001001001LL + number).rightJustified(12, u'0');
    item.record.strName = u"镀锌钢管 DN%1"_s.arg(number % 97);
    item.record.strUnit = u"m"_s;
    rule.bills.push_back(item);
    return rule;
}

} // namespace

bool WorkbenchOpen(const QString& project, int rounds)
{
    OpenWorkbench open(project);
    open.Write(GenerateRuleFile(FileSize));
    open.Session().ChooseSpecialty(Specialty);
    open.Open();
    QTableWidget table;
    table.resize(WindowSize);
    table.show();
    const int lines = open.Lines();
    const Timed timed = Alternate(
        rounds, [&] { open.Open(); },
        [&] {
            const CXmlQdDeConfig store(open.Path(), Specialty);
            table.setRowCount(lines);
            table.setColumnCount(4);
            for (int row = 0; row < lines; ++row)
                for (int column = 0; column < table.columnCount(); ++column)
                    table.setItem(row, column, new QTableWidgetItem(u"材质＝镀锌钢管;公称直径＝50;"_s));
            Paint();
        },
        [&] {
            open.Session().Close();
            table.setRowCount(0);
            Paint();
        });
    return Report({"workbench_open", "store_and_table", 1.5}, timed.oursMs, timed.peerMs, timed.Ratio());
}

bool WorkbenchFilter(const QString& project, int rounds)
{
    OpenWorkbench open(project);
    open.Open();
    std::vector<rules::Rule> rules;
    for (int i = 0; i < RulesToSearch; ++i)
        rules.push_back(RuleOf(i));
    open.Session().ChooseCategory(Pipes);
    open.Session().Do(rules::InsertRules(open.Session().Draft(), Pipes, 0, rules, {}));
    Paint();
    auto* const field = open.Window().findChild<QLineEdit*>(u"find"_s);
    if (field == nullptr) throw std::runtime_error("the workbench has no search field");
    const CString typed = u"钢管 DN1 公称直径 1"_s;
    qsizetype at = 0;
    const double spent = MedianOf(rounds, [&] {
        at = at % typed.size() + 1;
        field->setText(typed.left(at));
        Paint();
    });
    if (open.Lines() == 0) throw std::runtime_error("the search of the measurement finds nothing");
    return Report({"workbench_filter", "frame_of_60_hz", 1.0}, spent, FrameOf60Hz, spent / FrameOf60Hz);
}

bool WorkbenchEdit(const QString& project, int rounds)
{
    OpenWorkbench open(project);
    open.Write(ManyRules());
    open.Open();
    editor::WorkSession& session = open.Session();
    session.ChooseCategory(Pipes);
    editor::FindingsWatch findings(session);
    QObject::connect(&findings, &editor::FindingsWatch::FindingsChanged, &findings,
                     [&](const QStringList& categories) { open.Window().KnowledgeChanged(categories); });
    open.Window().SetKnowledge(
        {.severity = [&](const CString& category,
                         std::size_t place) { return findings.WorstOf(category, place); },
         .findings = [&](const CString& category,
                         std::size_t place) { return findings.TextOf(category, place); }},
        [&](const CString& category) { return findings.WorstOf(category); });
    const auto wait = [&] {
        while (!findings.IsCurrent(Pipes))
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        Paint();
    };
    wait();
    int round = 0;
    const double spent = MedianOf(rounds, [&] {
        rules::Condition condition;
        condition.attribute = u"材质"_s;
        condition.equalOperator = u"＝"_s;
        condition.value = u"管材%1"_s.arg(++round % 7);
        session.Do(rules::SetCondition(session.Draft(), Pipes, {3}, condition));
        wait();
    });
    if (findings.Of(Pipes).empty()) throw std::runtime_error("the findings of the measurement are missing");
    return Report({"workbench_edit", "tenth_of_a_second", 1.0}, spent, TenthOfASecond,
                  spent / TenthOfASecond);
}

} // namespace bench
