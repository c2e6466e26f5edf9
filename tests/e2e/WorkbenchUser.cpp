#include "e2e/WorkbenchUser.h"

#include "rules/model/Snapshot.h"

#include <QtCore/QDirIterator>
#include <QtCore/QFile>

#include <stdexcept>

using namespace Qt::StringLiterals;

namespace test {

void WorkbenchTest::StartOnWorkbench()
{
    StartOnProject();
    WaitUntilReady(ProjectTitle);
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

void WorkbenchTest::KeepFirstValues(int count)
{
    QStringList keys{u"alt+v"_s, u"Home"_s};
    for (int i = 0; i < count; ++i)
        keys.append(u"Down"_s);
    m_desktop.Press(keys + QStringList{u"shift+End"_s, u"Delete"_s});
}

std::vector<CString> WorkbenchTest::RulesInFile() const
{
    CString reason;
    const rules::ConfigurationPtr read = rules::ReadRules(RuleFile(), reason);
    if (!read) throw std::runtime_error(reason.toStdString());
    std::vector<CString> texts;
    for (const rules::Rule& rule : read->Find(u"给排水\\管道\\给水管"_s)->rules)
        texts.push_back(rule.Text());
    return texts;
}

} // namespace test
