#include "e2e/EditorUser.h"

#include "dialogs/template/DialogTemplates.h"
#include "e2e/ExpectedRule.h"
#include "embedded/data/history/History.h"
#include "embedded/data/host/CreateProject.h"
#include "embedded/data/host/EmbeddedHost.h"
#include "embedded/data/project/ProjectFolder.h"
#include "host/Installation.h"
#include "presenter/CQdDeConfigPresenter.h"
#include "support/Patience.h"

#include <QtCore/QDeadlineTimer>

#include <algorithm>
#include <iostream>
#include <stdexcept>
#include <string>

using namespace Qt::StringLiterals;
using namespace dialogs::autoconfig;

namespace test {

namespace {

/// How long a user waits for something to come of a key, in milliseconds.
constexpr int UntilNextPress = 3'000;

/// The list of `DlgSaveAs`, in whose dialog rule files are called.
constexpr int FileList = 1000;

const dialogs::DialogRect& RectOf(const dialogs::DialogTemplate& layout, int id)
{
    for (const dialogs::ControlRow& row : layout.rows)
        if (row.id == id) return row.rect;
    throw std::out_of_range("no control " + std::to_string(id));
}

/// A place in a control, in dialog units from its corner, as parts of the dialog's width and height.
QPointF PlaceIn(const dialogs::DialogTemplate& layout, int id, QPointF inside)
{
    const dialogs::DialogRect& rect = RectOf(layout, id);
    return {(rect.x + inside.x()) / layout.width, (rect.y + inside.y()) / layout.height};
}

QPointF PlaceIn(ControlId id, QPointF inside)
{
    return PlaceIn(dialogs::templates::AutoConfig(), id, inside);
}

QPointF MiddleOf(const dialogs::DialogTemplate& layout, int id)
{
    const dialogs::DialogRect& rect = RectOf(layout, id);
    return PlaceIn(layout, id, {rect.width / 2.0, rect.height / 2.0});
}

} // namespace

EditorTest::~EditorTest()
{
    if (m_editor.state() == QProcess::NotRunning) return;
    m_editor.kill();
    m_editor.waitForFinished(static_cast<int>(Patience().count()));
}

void EditorTest::TearDown()
{
    if (HasFailure()) std::cerr << "on the screen:\n" << m_desktop.Describe().toStdString();
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
    m_desktop.Focus(ProjectTitle);
}

void EditorTest::PressUntil(const QString& title, const QString& key, const QString& what,
                            const std::function<bool()>& holds)
{
    DoUntil(
        title, [&] { m_desktop.Press({key}); }, what, holds);
}

void EditorTest::CloseBy(const QString& key, const QString& title)
{
    PressUntil(title, key, u"end of "_s + title, [&] { return !m_desktop.Shows(title); });
}

// A window hears nothing while it is busy with the command before, and a user would press once more.
void EditorTest::DoUntil(const QString& title, const std::function<void()>& act, const QString& what,
                         const std::function<bool()>& holds)
{
    m_desktop.Focus(title);
    QDeadlineTimer untilNext(0);
    WaitFor(what, [&] {
        if (holds()) return true;
        if (untilNext.hasExpired() && m_desktop.HasFocus(title)) {
            act();
            untilNext.setRemainingTime(UntilNextPress);
        }
        return false;
    });
}

void EditorTest::Command(const QString& key, const QString& title)
{
    PressUntil(ProjectTitle, key, title, [&] { return m_desktop.Shows(title); });
    m_desktop.Focus(title);
}

void EditorTest::OpenConfig()
{
    Command(u"F2"_s, ConfigTitle);
    // The window manager puts its frame around the dialog only when that is shown, and the dialog takes its
    // place when it is told.
    Desktop::WaitFor(u"the dialog in the middle of the main window"_s, [this] {
        const QRect outer = m_desktop.FrameGeometry(ProjectTitle);
        const QRect own = m_desktop.FrameGeometry(ConfigTitle);
        return own.x() == outer.width() / 2 - own.width() / 2 + outer.x() &&
               own.y() == outer.height() / 2 - own.height() / 2 + outer.y();
    });
}

void EditorTest::CloseConfig()
{
    m_desktop.Press({u"Escape"_s});
    m_desktop.WaitUntilGone(ConfigTitle);
}

void EditorTest::Quit()
{
    PressUntil(ProjectTitle, u"ctrl+q"_s, u"end of the editor"_s, [&] {
        m_editor.waitForFinished(0);
        return m_editor.state() == QProcess::NotRunning;
    });
    EXPECT_EQ(WaitForEnd(), 0);
}

int EditorTest::WaitForEnd()
{
    test::WaitForEnd(m_editor);
    // The server takes the windows of a program away some time after the program has ended.
    for (const QString& title : {MainTitle, ConfigTitle, WizardTitle})
        m_desktop.WaitUntilGone(title);
    return m_editor.exitStatus() == QProcess::NormalExit ? m_editor.exitCode() : -1;
}

void EditorTest::Click(const QString& title, ControlId control)
{
    m_desktop.Click(title, MiddleOf(dialogs::templates::AutoConfig(), control));
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
    m_desktop.Press({u"alt+d"_s});
    CloseBy(u"alt+c"_s, BillPickerTitle);
    m_desktop.Focus(title);
}

void EditorTest::PickQuota(const QString& title, const QString& number)
{
    Click(title, PickerButton);
    m_desktop.Focus(QuotaPickerTitle);
    m_desktop.Press({u"alt+f"_s});
    m_desktop.Type(number);
    m_desktop.Press({u"Return"_s});
    CloseBy(u"alt+c"_s, QuotaPickerTitle);
    m_desktop.Focus(title);
}

void EditorTest::CallFile(const QString& configuration)
{
    Click(ConfigTitle, LoadFileButton);
    m_desktop.Focus(u"调用"_s);
    ChooseFile(configuration);
}

void EditorTest::ChooseFile(const QString& configuration)
{
    m_desktop.Click(u"调用"_s, MiddleOf(dialogs::templates::SaveAs(), FileList));
    // A list goes to the line that begins with what is typed. Its first letter is enough, and more of them
    // would have to follow each other without a pause.
    m_desktop.Type(configuration.first(1));
    m_desktop.Press({u"Return"_s});
    m_desktop.WaitUntilGone(u"调用"_s);
    m_desktop.Focus(TitleOn(configuration));
}

void EditorTest::NewFile(const QString& configuration)
{
    Click(ConfigTitle, NewFileButton);
    m_desktop.Focus(u"新建"_s);
    m_desktop.Press({u"alt+n"_s});
    m_desktop.Type(configuration);
    m_desktop.Press({u"Return"_s});
    m_desktop.WaitUntilGone(u"新建"_s);
    m_desktop.Focus(TitleOn(configuration));
}

void EditorTest::SaveAs(const QString& configuration)
{
    Click(ConfigTitle, SaveAsButton);
    m_desktop.Focus(u"另存"_s);
    m_desktop.Press({u"alt+n"_s});
    m_desktop.Type(configuration);
    m_desktop.Press({u"Return"_s});
    m_desktop.Focus(BoxTitle);
}

void EditorTest::ConfirmBox()
{
    m_desktop.Focus(BoxTitle);
    m_desktop.Press({u"Return"_s});
    m_desktop.WaitUntilGone(BoxTitle);
}

CString EditorTest::RuleFileName(const CString& configuration)
{
    return u"project\\app\\自动套配置\\%1.xml"_s.arg(configuration);
}

QByteArray EditorTest::RuleFile(const CString& configuration) const
{
    return m_desktop.Home().ReadFile(RuleFileName(configuration));
}

QByteArray EditorTest::MakeOtherFile()
{
    m_desktop.Home().WriteFile(RuleFileName(u"Other"_s), WithNote(m_firstRuleFile, "of another client"));
    return RuleFile(u"Other"_s);
}

void EditorTest::ExpectRuleInFile(const QByteArray& rule) const
{
    ExpectSameXml(RuleFile(), WithRule(m_firstRuleFile, rule));
}

void EditorTest::ExpectGivenBack(const CString& configuration, const QByteArray& bytes) const
{
    embedded::History history{embedded::ProjectFolder(ProjectFolder())};
    const auto copies = history.List(m_desktop.Home().Path(RuleFileName(configuration)));
    const auto holds = [&](const embedded::HistoryEntry& copy) { return history.Read(copy) == bytes; };
    const auto copy = std::find_if(copies.begin(), copies.end(), holds);
    if (copy == copies.end()) throw std::runtime_error("no such copy of " + configuration.toStdString());
    history.Restore(*copy);
    EXPECT_TRUE(RuleFile(configuration) == bytes);
}

} // namespace test
