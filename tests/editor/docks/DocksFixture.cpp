#include "editor/docks/DocksFixture.h"

#include "platform/Paths.h"
#include "rules/draft/RuleEdits.h"
#include "sample/SampleProject.h"
#include "support/MadeOnce.h"
#include "support/SourceTree.h"

#include <stdexcept>
#include <utility>

using namespace Qt::StringLiterals;

namespace test {

DocksFixture::DocksFixture()
{
    const QString folder = m_folder.Native(u"project"_s);
    PutMadeOnce(folder, u"sample"_s, sample::CreateSampleProject);
    m_project.emplace(folder);
    m_project->BecomeHost(nullptr);
    m_session.SetProject(&*m_project);
    Open(sample::TakeoffConfiguration());
}

DocksFixture::~DocksFixture()
{
    m_session.SetProject(nullptr);
}

void DocksFixture::Open(const CString& configuration)
{
    m_session.Open(m_project->RuleFolder() + u'\\' + configuration + u".xml"_s);
}

CString DocksFixture::Sample(const QString& table)
{
    return platform::FromNative(InSourceTree(u"samples/"_s + table));
}

void DocksFixture::Insert(const CString& category, const rules::Rule& rule, std::size_t position)
{
    m_session.Do(rules::InsertRules(m_session.Draft(), category, position, {rule}, u"增加规则"_s));
}

rules::Condition DocksFixture::Equal(const CString& attribute, const CString& value)
{
    rules::Condition condition;
    condition.attribute = attribute;
    condition.equalOperator = u"＝"_s;
    condition.value = value;
    return condition;
}

rules::Condition DocksFixture::Between(const CString& attribute, const CString& low, const CString& high)
{
    rules::Condition condition;
    condition.attribute = attribute;
    condition.isValueForm = false;
    condition.lowerOperator = u"＞"_s;
    condition.lowerBound = low;
    condition.upperOperator = u"≤"_s;
    condition.upperBound = high;
    return condition;
}

rules::Rule DocksFixture::RuleLike(const CString& category, std::vector<rules::Condition> conditions) const
{
    rules::Rule rule = m_session.Draft().Find(category)->rules.front();
    rule.conditions = std::move(conditions);
    return rule;
}

widgets::NotifyingStatic& DocksFixture::LinkOf(const QWidget& panel)
{
    for (QLabel* const label : panel.findChildren<QLabel*>())
        if (auto* const link = dynamic_cast<widgets::NotifyingStatic*>(label)) return *link;
    throw std::out_of_range("the panel has no link");
}

} // namespace test
