#include "e2e/EditorUser.h"

#include "dialogs/DialogTemplates.h"
#include "e2e/ExpectedRule.h"
#include "embedded/data/EmbeddedHost.h"
#include "host/Installation.h"
#include "presenter/CQdDeConfigPresenter.h"
#include "support/StrictXml.h"

#include <stdexcept>

using namespace Qt::StringLiterals;
using namespace dialogs::autoconfig;

namespace test {

namespace {

const dialogs::DialogTemplate& Layout()
{
    return dialogs::templates::AutoConfig();
}

const dialogs::DialogRect& RectOf(ControlId id)
{
    for (const dialogs::ControlRow& row : Layout().rows)
        if (row.id == id) return row.rect;
    throw std::out_of_range("no control " + std::to_string(id));
}

/// A place in a control, in dialog units from its corner, as parts of the dialog's width and height.
QPointF PlaceIn(ControlId id, QPointF inside)
{
    const dialogs::DialogRect& rect = RectOf(id);
    return {(rect.x + inside.x()) / Layout().width, (rect.y + inside.y()) / Layout().height};
}

QPointF MiddleOf(ControlId id)
{
    const dialogs::DialogRect& rect = RectOf(id);
    return PlaceIn(id, {rect.width / 2.0, rect.height / 2.0});
}

/// Leaves what differs, so that a failure shows that and not the whole file.
void DropWhatIsEqual(CStringArray& one, CStringArray& other)
{
    while (!one.isEmpty() && !other.isEmpty() && one.first() == other.first()) {
        one.removeFirst();
        other.removeFirst();
    }
    while (!one.isEmpty() && !other.isEmpty() && one.last() == other.last()) {
        one.removeLast();
        other.removeLast();
    }
}

} // namespace

EditorTest::~EditorTest()
{
    if (m_editor.state() == QProcess::NotRunning) return;
    m_editor.kill();
    m_editor.waitForFinished();
}

void EditorTest::MakeProject(SQdDeInfo::EQdDeMode mode)
{
    embedded::CreateProject(ProjectFolder(), {mode, u"给排水"_s});
    embedded::EmbeddedHost host(ProjectFolder());
    const host::Installation installed = host::Install(host.Roles());
    if (!CQdDeConfigPresenter({}).Save()) throw std::runtime_error("no rule file");
    m_firstRuleFile = RuleFile();
}

void EditorTest::Start(const QStringList& words)
{
    m_editor.setProcessEnvironment(m_desktop.Environment());
    m_editor.start(QStringLiteral(KTQDDE_EDITOR), words);
}

void EditorTest::StartOnProject()
{
    Start({ProjectFolder()});
    m_desktop.Focus(u"project - KtQdDeConfig"_s);
}

void EditorTest::OpenConfig()
{
    m_desktop.Press({u"F2"_s});
    m_desktop.Focus(ConfigTitle);
}

void EditorTest::Quit()
{
    m_desktop.Focus(MainTitle);
    m_desktop.Press({u"ctrl+q"_s});
    EXPECT_EQ(WaitForEnd(), 0);
}

int EditorTest::WaitForEnd()
{
    if (m_editor.state() != QProcess::NotRunning && !m_editor.waitForFinished(30'000))
        throw std::runtime_error("the editor does not end");
    return m_editor.exitStatus() == QProcess::NormalExit ? m_editor.exitCode() : -1;
}

void EditorTest::Click(const QString& title, ControlId control)
{
    m_desktop.Click(title, MiddleOf(control));
}

void EditorTest::SelectWaterPipes(const QString& title)
{
    m_desktop.Focus(title);
    m_desktop.Click(title, PlaceIn(CategoryTree, {60, 26})); // its third line
}

void EditorTest::AddRangeRule(const QString& title)
{
    const auto typeInto = [&](ControlId combo, const QString& text) {
        m_desktop.Click(title, PlaceIn(combo, {12, 6})); // its field, not its arrow
        m_desktop.Press({u"ctrl+a"_s});
        m_desktop.Type(text);
    };
    m_desktop.Press({u"Insert"_s});
    Click(title, Attributes);
    m_desktop.Press({u"Home"_s, u"Down"_s, u"Down"_s});
    m_desktop.Click(title, PlaceIn(PageTab, {38, 7})); // 范围
    typeInto(LowerBound, u"15"_s);
    typeInto(UpperBound, u"50"_s);
    Click(title, AddConditionButton);
}

void EditorTest::PickBillWithQuota(const QString& title, const QString& number)
{
    Click(title, PickerButton);
    m_desktop.Focus(BillPickerTitle);
    m_desktop.Press({u"alt+f"_s});
    m_desktop.Type(number);
    m_desktop.Press({u"alt+b"_s});
    m_desktop.Focus(NumberTitle);
    m_desktop.Press({u"Return"_s});
    m_desktop.WaitUntilGone(NumberTitle);
    m_desktop.Focus(BillPickerTitle);
    m_desktop.Press({u"alt+d"_s, u"alt+c"_s});
    m_desktop.WaitUntilGone(BillPickerTitle);
    m_desktop.Focus(title);
}

void EditorTest::PickQuota(const QString& title, const QString& number)
{
    Click(title, PickerButton);
    m_desktop.Focus(QuotaPickerTitle);
    m_desktop.Press({u"alt+f"_s});
    m_desktop.Type(number);
    m_desktop.Press({u"Return"_s, u"alt+c"_s});
    m_desktop.WaitUntilGone(QuotaPickerTitle);
    m_desktop.Focus(title);
}

void EditorTest::ExpectRuleInFile(const QByteArray& rule) const
{
    CStringArray found = CanonicalXml(RuleFile()).split(u'\n');
    CStringArray expected = CanonicalXml(WithRule(m_firstRuleFile, rule)).split(u'\n');
    DropWhatIsEqual(found, expected);
    EXPECT_EQ(found, expected);
}

} // namespace test
