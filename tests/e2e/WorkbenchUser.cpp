#include "e2e/WorkbenchUser.h"

#include "e2e/ExpectedRule.h"
#include "rules/model/Snapshot.h"
#include "support/Patience.h"

#include <QtCore/QDirIterator>
#include <QtCore/QFile>

#include <stdexcept>

using namespace Qt::StringLiterals;

namespace test {

namespace {

QString BillXml(const QString& number)
{
    if (number.isEmpty()) return {};
    return u"<qd id=\"1\" strQdId=\"%1\" strQdIdUser=\"\" strName=\"镀锌钢管\" strUnit=\"m\" "
           u"strUnitCode=\"1\" "
           "strtypeid=\"\" strQdCode=\"GB50856-2013\" strFormula=\"管道长度\" strAnnex=\"是\"/>"_s.arg(
               number);
}

} // namespace

WorkbenchTest::~WorkbenchTest()
{
    Kill(m_second);
}

void WorkbenchTest::StartOnWorkbench()
{
    StartOnProject();
    WaitUntilReady(ProjectTitle);
}

void WorkbenchTest::StartSecond()
{
    const QString twin = m_desktop.Home().Native(u"twin"_s);
    if (!QFile::link(ProjectFolder(), twin)) throw std::runtime_error("no link");
    QProcessEnvironment environment = m_desktop.Environment();
    environment.insert(u"KTQDDE_EDITOR_SETTINGS"_s, m_desktop.Home().Native(u"second.ini"_s));
    m_second.setProcessEnvironment(environment);
    m_second.start(QStringLiteral(KTQDDE_EDITOR), {twin});
    WaitUntilReady(SecondTitle);
}

void WorkbenchTest::QuitSecond()
{
    // Addressed to its window: one that is pressed again while that closes must not reach the first editor.
    const auto act = [this] { m_desktop.PressIn(SecondTitle, u"ctrl+q"_s); };
    DoUntil(SecondTitle, act, u"end of the second editor"_s, [this] {
        m_second.waitForFinished(0);
        return m_second.state() == QProcess::NotRunning;
    });
    EXPECT_EQ(m_second.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(m_second.exitCode(), 0);
}

// No window tells that a project has been opened, but a command is heard from then on.
void WorkbenchTest::WaitUntilReady(const QString& title)
{
    PressUntil(title, u"ctrl+l"_s, SeriesTitle, [this] { return m_desktop.Shows(SeriesTitle); });
    m_desktop.Focus(SeriesTitle);
    m_desktop.Press({u"Escape"_s});
    m_desktop.WaitUntilGone(SeriesTitle);
    m_desktop.Focus(title);
}

int WorkbenchTest::CountDraftEdits() const
{
    qsizetype edits = 0;
    QDirIterator drafts(ProjectFolder() + u"/history/drafts"_s, {u"edits.jsonl"_s}, QDir::Files,
                        QDirIterator::Subdirectories);
    while (drafts.hasNext()) {
        QFile file(drafts.next());
        if (file.open(QFile::ReadOnly)) edits += file.readAll().count('\n');
    }
    return static_cast<int>(edits);
}

void WorkbenchTest::WaitForDraft(int edits) const
{
    Desktop::WaitFor(u"%1 edits that are kept"_s.arg(edits), [&] { return CountDraftEdits() == edits; });
}

void WorkbenchTest::SaveRules(const QString& title)
{
    const QByteArray former = RuleFile();
    PressUntil(title, u"ctrl+s"_s, u"saved rules"_s, [&] { return RuleFile() != former; });
}

void WorkbenchTest::ChooseDiameters(int count)
{
    m_desktop.Focus(SeriesTitle);
    QStringList keys{u"alt+a"_s, u"Home"_s, u"Down"_s, u"Down"_s, u"alt+v"_s, u"Home"_s};
    for (int i = 0; i < count; ++i)
        keys.append(u"Down"_s);
    m_desktop.Press(keys + QStringList{u"shift+End"_s, u"Delete"_s, u"Return"_s});
    m_desktop.WaitUntilGone(SeriesTitle);
}

void WorkbenchTest::PickBill(const QString& number)
{
    m_desktop.Focus(BillPickerTitle);
    m_desktop.Press({u"alt+f"_s});
    m_desktop.Type(number);
    m_desktop.Press({u"alt+b"_s});
    m_desktop.Focus(NumberTitle);
    m_desktop.Press({u"Return"_s});
    m_desktop.WaitUntilGone(NumberTitle);
}

void WorkbenchTest::CommandIn(int panel, const QString& key, const QString& title)
{
    const auto act = [&] { m_desktop.Press({u"ctrl+%1"_s.arg(panel), key}); };
    DoUntil(ProjectTitle, act, title, [&] { return m_desktop.Shows(title); });
    m_desktop.Focus(title);
}

void WorkbenchTest::NameFile(const QString& title, const QString& file)
{
    m_desktop.Focus(title);
    m_desktop.Press({u"alt+n"_s, u"ctrl+a"_s});
    m_desktop.Type(file);
    m_desktop.Press({u"Return"_s});
    m_desktop.WaitUntilGone(title);
}

// A button's key is heard some time after it was pressed, so that the button is seen going down; the one that
// saves is not to be had before.
void WorkbenchTest::DecideForOwn()
{
    m_desktop.Focus(MergeTitle);
    Desktop::WaitFor(u"end of the merge"_s, [this] {
        if (!m_desktop.Shows(MergeTitle)) return true;
        if (m_desktop.HasFocus(MergeTitle)) m_desktop.Press({u"alt+m"_s, u"alt+s"_s});
        return false;
    });
}

void WorkbenchTest::HaveDiameters(const QStringList& diameters, const QString& bill)
{
    QString text;
    int id = 1;
    for (const QString& diameter : diameters)
        text +=
            u"<Config id=\"%1\" LastQdId=\"1\" LastConditionId=\"1\" bDefault=\"0\" LastDeId=\"0\">"
            "<Condition><condition id=\"1\" strCFType=\"公称直径\" bEqual=\"true\" strEqualoperator=\"＝\" "
            "strRangeoperator1=\"\" strRangeoperator2=\"\" strValue=\"%2\" strRange1=\"\" "
            "strRange2=\"\"/></Condition><Qd>%3</Qd><De/></Config>"_s.arg(++id)
                .arg(diameter, BillXml(bill));
    m_desktop.Home().WriteFile(RuleFileName(), WithRules(m_firstRuleFile, text.toUtf8(), id));
}

std::vector<rules::Rule> WorkbenchTest::ReadRules() const
{
    CString reason;
    const rules::ConfigurationPtr read = rules::ReadRules(RuleFile(), reason);
    if (!read) throw std::runtime_error(reason.toStdString());
    return read->Find(u"给排水\\管道\\给水管"_s)->rules;
}

std::vector<CString> WorkbenchTest::RulesInFile() const
{
    std::vector<CString> texts;
    for (const rules::Rule& rule : ReadRules())
        texts.push_back(rule.Text());
    return texts;
}

std::vector<CString> WorkbenchTest::BillsInFile() const
{
    std::vector<CString> numbers;
    for (const rules::Rule& rule : ReadRules())
        for (const rules::BillItem& bill : rule.bills)
            numbers.push_back(bill.record.strQdId);
    return numbers;
}

} // namespace test
