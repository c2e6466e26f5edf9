#include "editor/docks/details/DetailsFixture.h"

#include "embedded/NewProject.h"
#include "rules/draft/RuleEdits.h"
#include "support/Patience.h"
#include "support/WindowWaits.h"

#include <QtGui/QAction>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>

using namespace Qt::StringLiterals;

namespace test {

DetailsFixture::DetailsFixture(SQdDeInfo::EQdDeMode mode)
{
    PutNewProject(m_folder.Native(u"project"_s), {mode, u"给排水"_s});
    m_project = std::make_unique<editor::Project>(m_folder.Native(u"project"_s));
    m_project->BecomeHost(nullptr);
    host::Roles roles = m_project->Roles();
    roles.windows = &m_windows;
    m_installed.emplace(host::Install(roles));
    m_session.SetProject(m_project.get());
    m_session.Open(m_project->CurrentRuleFile());
    m_session.ChooseCategory(Category);
    m_panel = std::make_unique<editor::DetailPanel>(m_session);
}

void DetailsFixture::HaveRules(std::vector<rules::Rule> rules)
{
    m_session.Do(rules::InsertRules(m_session.Draft(), Category, 0, std::move(rules), u"准备"_s));
    m_session.Save([](const auto&) { return std::nullopt; });
    m_session.Undo().clear();
    Choose({0});
}

void DetailsFixture::Choose(std::vector<std::size_t> positions)
{
    const std::size_t first = positions.front();
    m_session.ChooseRules(std::move(positions), first);
}

const rules::Rule& DetailsFixture::Rule(std::size_t position) const
{
    return m_session.Category()->rules.at(position);
}

CString DetailsFixture::Items(std::size_t position) const
{
    CStringArray items;
    for (const rules::BillItem& bill : Rule(position).bills) {
        items.append(bill.record.strQdId);
        for (const rules::QuotaItem& quota : bill.quotas)
            items.append(u'-' + quota.record.strDeId);
    }
    for (const rules::QuotaItem& quota : Rule(position).quotas)
        items.append(u'-' + quota.record.strDeId);
    return items.join(u' ');
}

QAction& DetailsFixture::Command(const CString& text) const
{
    for (QAction* action : m_panel->findChildren<QAction*>())
        if (action->iconText() == text) return *action;
    throw std::out_of_range("no command " + text.toStdString());
}

CString DetailsFixture::Labels() const
{
    CStringArray texts;
    for (const QLabel* label : m_panel->findChildren<QLabel*>())
        if (label->isVisibleTo(m_panel.get())) texts.append(label->text());
    return texts.join(u'\n');
}

void DetailsFixture::Show()
{
    m_panel->resize(500, 600);
    m_panel->show();
    m_panel->activateWindow();
    WaitUntilActive(*m_panel);
}

void DetailsFixture::Press(Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    QTest::keyClick(QApplication::focusWidget(), key, modifiers);
    QCoreApplication::processEvents();
}

void DetailsFixture::Type(const CString& text)
{
    QWidget* const focus = QApplication::focusWidget();
    auto* field = qobject_cast<QLineEdit*>(focus);
    if (auto* combo = qobject_cast<QComboBox*>(focus)) field = combo->lineEdit();
    ASSERT_NE(field, nullptr);
    field->selectAll();
    field->insert(text);
}

void DetailsFixture::GoTo(int row, int column)
{
    Conditions().setFocus();
    Conditions().setCurrentCell(row, column);
}

void DetailsFixture::Enter(int row, int column, const CString& text)
{
    GoTo(row, column);
    Press(Qt::Key_F2);
    Type(text);
    Press(Qt::Key_Return);
}

rules::Rule RuleOf(std::vector<rules::Condition> conditions, std::vector<rules::BillItem> bills,
                   std::vector<rules::QuotaItem> quotas)
{
    rules::Rule rule;
    rule.conditions = std::move(conditions);
    rule.bills = std::move(bills);
    rule.quotas = std::move(quotas);
    return rule;
}

rules::Condition Equals(const CString& attribute, const CString& value)
{
    rules::Condition condition;
    condition.attribute = attribute;
    condition.equalOperator = u"＝"_s;
    condition.value = value;
    return condition;
}

rules::Condition Between(const CString& attribute, const CString& lower, const CString& upper)
{
    rules::Condition condition;
    condition.attribute = attribute;
    condition.isValueForm = false;
    condition.lowerOperator = u"＞"_s;
    condition.lowerBound = lower;
    condition.upperOperator = u"≤"_s;
    condition.upperBound = upper;
    return condition;
}

rules::BillItem Bill(const CString& number, const CString& library)
{
    rules::BillItem bill;
    bill.record.strQdId = number;
    bill.record.strName = u"清单"_s + number;
    bill.record.strUnit = u"m"_s;
    bill.record.strUnitCode = u"1"_s;
    bill.record.strQdCode = library;
    bill.record.strQdIdUser = u"自编"_s;
    bill.record.strFormula = u"管道长度"_s;
    bill.record.strAnnex = u"是"_s;
    return bill;
}

rules::QuotaItem Quota(const CString& number, const CString& library)
{
    rules::QuotaItem quota;
    quota.record.strDeId = number;
    quota.record.strName = u"定额"_s + number;
    quota.record.strUnit = u"10m"_s;
    quota.record.strUnitCode = u"10"_s;
    quota.record.strDeCode = library;
    quota.record.strFormula = u"管道长度"_s;
    quota.record.strAnnex = u"否"_s;
    return quota;
}

} // namespace test
