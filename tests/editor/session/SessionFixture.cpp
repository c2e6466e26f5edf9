#include "editor/session/SessionFixture.h"

#include "platform/Files.h"
#include "rules/document/RuleWriter.h"
#include "rules/model/Snapshot.h"
#include "sample/SampleProject.h"
#include "support/MadeOnce.h"

#include <QtCore/QFile>

using namespace Qt::StringLiterals;

namespace test {

SessionTest::SessionTest()
{
    PutMadeOnce(m_folder.Native(u"project"_s), u"sample"_s, sample::CreateSampleProject);
    Restart();
}

SessionTest::~SessionTest()
{
    m_session.reset();
    m_project.reset();
}

void SessionTest::Restart()
{
    m_session.reset();
    m_project.reset();
    m_project = std::make_unique<editor::Project>(m_folder.Native(u"project"_s));
    m_project->BecomeHost(nullptr);
    m_session = std::make_unique<editor::WorkSession>();
    m_session->SetProject(m_project.get());
}

CString SessionTest::Path(const CString& configuration) const
{
    return m_project->RuleFolder() + u'\\' + configuration + u".xml"_s;
}

QByteArray SessionTest::Bytes(const CString& configuration) const
{
    return platform::RealFileSystem().Read(Path(configuration)).value_or(QByteArray());
}

rules::ConfigurationPtr SessionTest::Saved(const CString& configuration) const
{
    CString reason;
    auto read = rules::ReadRules(Bytes(configuration), reason);
    EXPECT_TRUE(read) << reason.toStdString();
    return read;
}

void SessionTest::OpenAt(const CString& category)
{
    m_session->Open(Path());
    m_session->ChooseCategory(category);
}

rules::Rule SessionTest::RuleFor(const CString& attribute, const CString& value)
{
    rules::Rule rule;
    rules::Condition condition;
    condition.attribute = attribute;
    condition.equalOperator = u"＝"_s;
    condition.value = value;
    rule.conditions.push_back(condition);
    return rule;
}

void SessionTest::Insert(const CString& category, std::size_t position, const rules::Rule& rule)
{
    m_session->Do(rules::InsertRules(m_session->Draft(), category, position, {rule}, u"增加规则"_s));
}

void SessionTest::AddOutside(const CString& category, const rules::Rule& rule)
{
    rules::Draft other(Saved(), m_session->Facts()->offered);
    other.Apply(rules::InsertRules(other, category, 0, {rule}, {}));
    WriteOutside(other);
}

void SessionTest::WriteOutside(const rules::Draft& other)
{
    platform::RealFileSystem().WriteInPlace(Path(), rules::WriteRules(Bytes(), other.Wanted()));
}

} // namespace test
