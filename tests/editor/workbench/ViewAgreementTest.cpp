// The page of rules and its file against the plainest lists that are edited alongside, at random.
// KTQDDE_EDITS asks for more edits, KTQDDE_EDIT_SEED repeats a run.
#include "editor/session/SessionFixture.h"
#include "editor/workbench/RuleTable.h"
#include "editor/workbench/Workbench.h"
#include "rules/draft/EditDrawing.h"

#include <QtCore/QCoreApplication>
#include <QtGui/QAction>
#include <QtTest/QSignalSpy>

using namespace Qt::StringLiterals;
using editor::DraftFile;
using editor::RuleTableModel;
using test::PlainRules;

namespace {

constexpr int UsualEdits = 400;
constexpr int MostUndone = 50;

CString ItemText(const CString& number, const CString& name)
{
    return name.isEmpty() ? number : number + u' ' + name;
}

/// What a line of the table is to say of a rule at a position, but for what others know of it.
CStringArray LineOf(const rules::Rule& rule, std::size_t position)
{
    CStringArray conditions;
    CStringArray bills;
    CStringArray quotas;
    for (const rules::Condition& condition : rule.conditions)
        conditions.append(condition.Text() + u';');
    for (const rules::BillItem& bill : rule.bills) {
        bills.append(ItemText(bill.record.strQdId, bill.record.strName));
        for (const rules::QuotaItem& quota : bill.quotas)
            quotas.append(ItemText(quota.record.strDeId, quota.record.strName));
    }
    return {CString::number(position + 1), rule.isDefault ? u"其它"_s : conditions.join(CString()),
            bills.join(u"；"_s), quotas.join(u"；"_s)};
}

/// The page on the sample project, a plain list of every category that is edited, and what these held before
/// each edit that can be taken back.
class ViewAgreement : public test::SessionTest
{
protected:
    ViewAgreement()
        : m_window(*m_session, {.run = [](const auto& step) { step(); },
                                .openFile = {},
                                .readOthers = {},
                                .save = [this] { Save(); },
                                .tell = {}})
    {
        m_session->Undo().setUndoLimit(MostUndone);
        OpenAt(Pipes);
        m_window.resize(1000, 700);
        m_window.show();
    }

    void Begin(unsigned seed)
    {
        m_drawing.emplace(seed);
        m_edit.emplace(*m_drawing, Categories(), false);
        m_plain.Take(test::ListsIn(Categories(), *m_session->Draft().Snapshot()));
        m_states = {m_plain.All()};
    }

    std::vector<CString> Categories() const { return {Pipes, HotPipes, u"给排水\\管道\\排水管"_s}; }

    void Step()
    {
        test::Dice& dice = m_drawing->Random();
        if (dice.OneIn(5)) m_session->ChooseCategory(dice.Of(Categories()));
        if (dice.OneIn(4))
            UndoOrRedo();
        else if (dice.OneIn(4))
            Command();
        else if (dice.OneIn(20))
            m_window.Commands().save->trigger();
        else if (dice.OneIn(60))
            SomebodyElseSaves();
        else
            Edit();
        if (dice.OneIn(10)) QCoreApplication::processEvents();
        Look();
    }

private:
    void Done()
    {
        m_states.resize(m_done + 1);
        m_states.push_back(m_plain.All());
        ++m_done;
        if (m_done <= MostUndone) return;
        m_states.erase(m_states.begin());
        --m_done;
    }

    void Edit()
    {
        const rules::Edit edit = m_edit->Draw(m_session->Draft(), m_plain);
        m_session->Do(edit);
        if (!edit.IsEmpty()) Done();
    }

    /// A command of the page for the rules that it shows as chosen.
    void Command()
    {
        test::Dice& dice = m_drawing->Random();
        const CString category = m_session->CategoryText();
        const auto some = m_drawing->Some(m_plain.In(category).size());
        if (!some.empty()) m_session->ChooseRules({some.begin(), some.end()}, *some.begin());
        const PlainRules::Positions chosen(m_session->ChosenRules().begin(), m_session->ChosenRules().end());
        const QSignalSpy edited(m_session.get(), &editor::WorkSession::Edited);
        const editor::WorkbenchActions& commands = m_window.Commands();
        switch (dice.Below(4)) {
        case 0:
            commands.add->trigger();
            m_plain.Insert(category, *m_session->CurrentRule(), {rules::Rule()});
            break;
        case 1:
            commands.remove->trigger();
            m_plain.Delete(category, chosen);
            break;
        case 2:
            commands.up->trigger();
            m_plain.Shift(category, chosen, false);
            break;
        default:
            commands.down->trigger();
            m_plain.Shift(category, chosen, true);
        }
        // Rules that are alike in all may have changed places.
        if (edited.count() > 0) Done();
    }

    void UndoOrRedo()
    {
        test::Dice& dice = m_drawing->Random();
        for (std::size_t i = dice.Below(6); i > 0; --i) {
            if (dice.OneIn(2)) {
                m_window.UndoAction()->trigger();
                m_done -= m_done > 0 ? 1 : 0;
            } else {
                m_window.RedoAction()->trigger();
                m_done += m_done + 1 < m_states.size() ? 1 : 0;
            }
        }
        m_plain.Take(m_states[m_done]);
    }

    void Save()
    {
        const auto noConflicts = [](const auto&) -> std::optional<std::vector<rules::Side>> {
            ADD_FAILURE() << "asked about conflicts";
            return std::nullopt;
        };
        ASSERT_EQ(m_session->Save(noConflicts), DraftFile::SaveEnd::Saved);
        m_saved = m_plain.All();
        ASSERT_EQ(test::ListsIn(Categories(), *Saved()), *m_saved);
        ASSERT_FALSE(m_session->IsChanged());
    }

    /// Taken over as an edit where nothing is changed here.
    void SomebodyElseSaves()
    {
        if (m_session->IsChanged()) return;
        AddOutside(m_drawing->Random().Of(Categories()), m_drawing->NewRule());
        ASSERT_TRUE(m_session->TakeOver());
        m_saved = test::ListsIn(Categories(), *Saved());
        m_plain.Take(*m_saved);
        Done();
    }

    /// Page, draft and file are what the lists are.
    void Look() const
    {
        for (const auto& [category, list] : m_plain.All())
            ASSERT_EQ(m_session->Draft().Find(category)->rules, list) << category.toStdString();
        const auto& table = static_cast<const editor::RuleTable&>(*m_window.RuleList());
        const QAbstractItemModel& model = *table.model();
        const PlainRules::List& list = m_plain.All().at(m_session->CategoryText());
        ASSERT_EQ(model.rowCount(), static_cast<int>(list.size()));
        for (std::size_t i = 0; i < list.size(); ++i) {
            CStringArray line;
            for (const int column : {RuleTableModel::PositionColumn, RuleTableModel::ConditionColumn,
                                     RuleTableModel::BillColumn, RuleTableModel::QuotaColumn})
                line.append(model.index(static_cast<int>(i), column).data().toString());
            ASSERT_EQ(line, LineOf(list[i], i));
        }
        const std::vector<int> lines = table.ChosenLines();
        ASSERT_EQ(std::vector<std::size_t>(lines.begin(), lines.end()), m_session->ChosenRules());
        ASSERT_EQ(m_window.UndoAction()->isEnabled(), m_done > 0);
        ASSERT_EQ(m_window.RedoAction()->isEnabled(), m_done + 1 < m_states.size());
        if (m_saved) {
            ASSERT_EQ(m_session->IsChanged(), m_plain.All() != *m_saved);
        }
    }

    editor::Workbench m_window;
    std::optional<test::RuleDrawing> m_drawing;
    std::optional<test::EditDrawing> m_edit;
    PlainRules m_plain;
    std::vector<PlainRules::Lists> m_states; ///< before each edit, and behind the last
    std::size_t m_done = 0;                  ///< so many edits are not taken back
    std::optional<PlainRules::Lists> m_saved;
};

} // namespace

TEST_F(ViewAgreement, PageDraftAndFileAgreeWithPlainLists)
{
    const unsigned seed = test::EditSeed();
    SCOPED_TRACE("seed " + std::to_string(seed));
    Begin(seed);
    for (int i = 0; i < test::EditsAsked(UsualEdits) && !testing::Test::HasFailure(); ++i) {
        SCOPED_TRACE("edit " + std::to_string(i));
        Step();
    }
    EXPECT_TRUE(m_messages.Texts().isEmpty());
}
