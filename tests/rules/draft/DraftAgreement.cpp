// Drafts, their edits, the journal and the file against the plainest lists that are edited alongside, at
// random. KTQDDE_EDITS asks for more edits, KTQDDE_EDIT_SEED repeats a run.
#include "rules/draft/EditLine.h"
#include "rules/draft/RuleEdits.h"
#include "rules/draft/Series.h"

#include "rules/document/RuleWriter.h"
#include "rules/draft/DraftTesting.h"
#include "rules/draft/PlainRules.h"
#include "rules/draft/RuleDrawing.h"
#include "rules/model/Snapshot.h"
#include "store/RuleFile.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <random>

using namespace Qt::StringLiterals;
using rules::Condition;
using rules::Draft;
using rules::Edit;
using rules::Rule;
using test::Attributes;
using test::Dice;
using test::Numbers;
using test::PlainRules;
using test::Values;

namespace {

int EditsAsked()
{
    const int asked = qEnvironmentVariableIntValue("KTQDDE_EDITS");
    return asked > 0 ? asked : 2000;
}

unsigned Seed()
{
    const unsigned seed = qEnvironmentVariableIsSet("KTQDDE_EDIT_SEED")
                              ? qEnvironmentVariable("KTQDDE_EDIT_SEED").toUInt()
                              : std::random_device{}();
    std::printf("seed %u\n", seed);
    return seed;
}

const CString OldCategory = u"给排水\\管道\\旧管"_s;
/// The first two are offered, all but the second are in the file at the start.
const std::vector<CString> Categories{test::PipeCategory, test::DrainCategory, OldCategory};

/// In another order than a set has them.
std::vector<std::size_t> Backwards(const PlainRules::Positions& positions)
{
    return {positions.rbegin(), positions.rend()};
}

rules::RulePlaces Backwards(const PlainRules::Places& places)
{
    rules::RulePlaces backwards;
    for (const auto& [category, positions] : places)
        backwards.emplace(category, Backwards(positions));
    return backwards;
}

const std::vector<Rule> BareDefaultAlone{rules::BareDefault()};

PlainRules::Lists ListsIn(const rules::Configuration& configuration)
{
    PlainRules::Lists lists;
    for (const CString& category : Categories) {
        const rules::SmallCategoryPtr found = configuration.Find(category);
        lists[category] = found ? found->rules : BareDefaultAlone;
    }
    return lists;
}

/// The rules of these categories, those that nobody has touched left out.
rules::Configuration ConfigurationOf(const PlainRules::Lists& lists)
{
    std::vector<rules::SmallCategoryPtr> categories;
    for (const auto& [category, list] : lists)
        if (list != BareDefaultAlone) categories.push_back(test::SmallOf(category.split(u'\\').back(), list));
    return test::ConfigurationOf(categories);
}

rules::ConfigurationPtr Read(const QByteArray& bytes)
{
    CString reason;
    rules::ConfigurationPtr read = rules::ReadRules(bytes, reason);
    EXPECT_NE(read, nullptr) << reason.toStdString();
    return read;
}

/// A draft, its undo list, journal and file, and the plain lists beside.
class Trial
{
public:
    explicit Trial(unsigned seed) : m_drawing(seed)
    {
        Draft empty(test::Shared(test::ConfigurationOf({})), test::Offered());
        PlainRules::Lists lists = ListsIn(*empty.File());
        for (const CString& category : {test::PipeCategory, OldCategory}) {
            PlainRules plain;
            plain.Take(lists);
            for (int i = 0; i < 6; ++i)
                plain.Insert(category, 0, {m_drawing.NewRule()});
            lists = plain.All();
        }
        Write(lists);
        m_draft = Draft(m_file, test::Offered());
        m_plain.Take(lists);
        m_states = {lists};
    }

    void Step()
    {
        Dice& dice = m_drawing.Random();
        if (dice.OneIn(4))
            UndoOrRedo();
        else if (dice.OneIn(30))
            Save();
        else if (dice.OneIn(100))
            SomebodyElseSaves();
        else
            DoAnEdit();
        Look();
        if (dice.OneIn(40)) Replay();
        if (dice.OneIn(20)) Hold();
    }

private:
    /// One edit of the draft and the same of the lists.
    void DoAnEdit()
    {
        Dice& dice = m_drawing.Random();
        const CString& category = dice.Of(Categories);
        const std::size_t size = m_plain.In(category).size();
        // Lists that have grown long are mostly made shorter.
        const std::size_t kind = size > 25 ? 2 : dice.Below(12);
        const Edit edit = kind < 6 ? ListEdit(kind, category, size) : OtherEdit(kind, category, size);
        if (edit.IsEmpty()) return;
        m_draft.Apply(edit);
        m_edits.resize(m_done);
        m_states.resize(m_done + 1);
        m_edits.push_back(edit);
        m_states.push_back(m_plain.All());
        ++m_done;
        m_journal.push_back(rules::LineOf(edit));
        if (m_done <= MostUndone) return;
        m_edits.erase(m_edits.begin());
        m_states.erase(m_states.begin());
        --m_done;
    }

    Edit ListEdit(std::size_t kind, const CString& category, std::size_t size)
    {
        Dice& dice = m_drawing.Random();
        const PlainRules::Positions some = m_drawing.Some(size);
        const std::size_t place = dice.Below(size + 1);
        const bool flag = dice.OneIn(2);
        Edit edit;
        switch (kind) {
        case 0: {
            const std::vector<Rule> rules{m_drawing.NewRule(), m_drawing.NewRule()};
            edit = rules::InsertRules(m_draft, category, place, rules, {});
            m_plain.Insert(category, place, rules);
            break;
        }
        case 1: {
            Rule changed = m_plain.In(category)[place % size];
            m_drawing.Change(changed);
            edit = rules::ChangeRule(m_draft, category, place % size, changed, {});
            m_plain.Change(category, place % size, changed);
            break;
        }
        case 2:
            edit = rules::DeleteRules(m_draft, category, Backwards(some));
            m_plain.Delete(category, some);
            break;
        case 3:
            edit = rules::MoveRules(m_draft, category, Backwards(some), place);
            m_plain.Move(category, some, place);
            break;
        case 4:
            edit = rules::ShiftRules(m_draft, category, Backwards(some), flag);
            m_plain.Shift(category, some, flag);
            break;
        default: {
            const CString& to = dice.Of(Categories);
            const std::size_t target = dice.Below(m_plain.In(to).size() + 1);
            std::vector<rules::Misfit> misfits;
            edit = rules::CopyRules(m_draft, category, Backwards(some), to, target, {}, misfits);
            m_plain.Copy(category, some, to, target);
        }
        }
        return edit;
    }

    Edit OtherEdit(std::size_t kind, const CString& category, std::size_t size)
    {
        Dice& dice = m_drawing.Random();
        const PlainRules::Positions some = m_drawing.Some(size);
        const CString& other = dice.Of(Categories);
        const PlainRules::Places places{{category, some}, {other, m_drawing.Some(m_plain.In(other).size())}};
        const CString& number = dice.Of(Numbers);
        const bool flag = dice.OneIn(2);
        Edit edit;
        switch (kind) {
        case 6: {
            const Condition condition = m_drawing.NewCondition();
            edit = rules::SetCondition(m_draft, category, Backwards(some), condition);
            m_plain.SetCondition(category, some, condition);
            break;
        }
        case 7:
            edit = rules::RemoveConditions(m_draft, category, Backwards(some), Attributes[0]);
            m_plain.RemoveConditions(category, some, Attributes[0]);
            break;
        case 8: {
            const QdStruct record = m_drawing.NewBill().record;
            edit = rules::ReplaceBill(m_draft, Backwards(places), number, record, flag);
            m_plain.ReplaceBill(places, number, record, flag);
            break;
        }
        case 9: {
            const DeStruct record = m_drawing.NewQuota().record;
            edit = rules::ReplaceQuota(m_draft, Backwards(places), number, record, flag);
            m_plain.ReplaceQuota(places, number, record, flag);
            break;
        }
        case 10: {
            const CString& formula = dice.Of(Values);
            edit = rules::SetFormula(m_draft, Backwards(places), number, formula);
            m_plain.SetFormula(places, number, formula);
            break;
        }
        default:
            if (dice.OneIn(3)) return TowardsAnother();
            const rules::SeriesPlan plan = m_drawing.Plan();
            const std::size_t place = dice.Below(size);
            edit = rules::InsertSeries(m_draft, category, place, plan, flag);
            m_plain.Series(category, place, plan, flag);
        }
        return edit;
    }

    /// The lists as somebody has made them elsewhere: in any order, default rules anywhere, ids given twice.
    Edit TowardsAnother()
    {
        Dice& dice = m_drawing.Random();
        PlainRules::Lists lists = m_plain.All();
        std::vector<Rule>& list = lists[dice.Of(Categories)];
        for (int i = 0; i < 4; ++i)
            std::swap(list[dice.Below(list.size())], list[dice.Below(list.size())]);
        if (dice.OneIn(3)) list.insert(list.begin(), list[dice.Below(list.size())]);
        Rule& rule = list[dice.Below(list.size())];
        rule.bills = {test::Bill(u"09"_s)};
        rule.counters.bill = std::max(rule.counters.bill, 1);
        const bool isWhole = dice.OneIn(2);
        const Edit edit = rules::Towards(m_draft, ConfigurationOf(lists), {}, isWhole);
        for (auto& [category, wanted] : lists) // those left out count for nothing, or for all
            if (wanted == BareDefaultAlone && !isWhole) wanted = m_plain.In(category);
        m_plain.Take(lists);
        return edit;
    }

    void UndoOrRedo()
    {
        Dice& dice = m_drawing.Random();
        for (std::size_t i = dice.Below(6); i > 0; --i) {
            if (dice.OneIn(2) ? m_done > 0 : m_done == m_edits.size() && m_done > 0) {
                m_draft.Revert(m_edits[--m_done]);
                m_journal.push_back(rules::LineOf(m_edits[m_done].Inverse()));
            } else if (m_done < m_edits.size()) {
                m_journal.push_back(rules::LineOf(m_edits[m_done]));
                m_draft.Apply(m_edits[m_done++]);
            }
        }
        m_plain.Take(m_states[m_done]);
    }

    void Write(const PlainRules::Lists& lists)
    {
        m_bytes = rules::WriteRules(m_bytes, ConfigurationOf(lists));
        m_file = Read(m_bytes);
        ASSERT_EQ(ListsIn(*m_file), lists) << "the file is to be read as it was written";
    }

    void Save()
    {
        m_bytes = rules::WriteRules(m_bytes, m_draft.Wanted());
        m_file = Read(m_bytes);
        ASSERT_EQ(ListsIn(*m_file), m_plain.All());
        m_draft.Rebase(m_file);
        ASSERT_FALSE(m_draft.IsChanged());
        m_journal.clear();
    }

    /// What is changed here stays, all else is what the file has then.
    void SomebodyElseSaves()
    {
        const PlainRules::Lists former = ListsIn(*m_file);
        PlainRules::Lists theirs = former;
        for (auto& [category, list] : theirs)
            if (m_drawing.Random().OneIn(2)) {
                PlainRules plain;
                plain.Take(former);
                plain.Insert(category, 0, {m_drawing.NewRule()});
                list = plain.In(category);
            }
        Write(theirs);
        m_draft.Rebase(m_file);
        PlainRules::Lists both = m_plain.All();
        for (auto& [category, list] : both)
            if (list == former.at(category)) list = theirs.at(category);
        m_plain.Take(theirs);
        m_plain.Take(both);
        // What was done to the former lists cannot be taken back in others.
        m_edits.clear();
        m_states = {both};
        m_done = 0;
        m_journal.clear();
        const Edit edit = rules::Towards(Draft(m_file, test::Offered()), ConfigurationOf(both), {}, true);
        if (!edit.IsEmpty()) m_journal.push_back(rules::LineOf(edit));
    }

    /// Draft and lists are one.
    void Look() const
    {
        const PlainRules::Lists saved = ListsIn(*m_file);
        bool isAnyChanged = false;
        for (const auto& [category, list] : m_plain.All()) {
            ASSERT_EQ(test::RulesIn(m_draft, category), list) << category.toStdString();
            const bool isChanged = list != saved.at(category);
            ASSERT_EQ(m_draft.IsChanged(category), isChanged) << category.toStdString();
            isAnyChanged = isAnyChanged || isChanged;
        }
        ASSERT_EQ(m_draft.IsChanged(), isAnyChanged);
        ASSERT_EQ(ListsIn(m_draft.Wanted()), m_plain.All());
        for (const auto& [snapshot, lists] : m_held)
            ASSERT_EQ(ListsIn(*snapshot), lists) << "a state that somebody holds never changes";
    }

    /// The journal leads from the file to what the draft has, as after a crash.
    void Replay() const
    {
        Draft draft(m_file, test::Offered());
        for (const QByteArray& line : m_journal) {
            const auto edit = rules::EditOf(line);
            ASSERT_TRUE(edit);
            draft.Apply(*edit);
        }
        ASSERT_EQ(ListsIn(*draft.Snapshot()), m_plain.All());
    }

    void Hold()
    {
        if (m_held.size() == 5) m_held.erase(m_held.begin());
        m_held.emplace_back(m_draft.Snapshot(), m_plain.All());
    }

    static constexpr std::size_t MostUndone = 50;

    test::RuleDrawing m_drawing;
    QByteArray m_bytes = u"<%1/>"_s.arg(store::RootName()).toUtf8();
    rules::ConfigurationPtr m_file;
    Draft m_draft;
    PlainRules m_plain;
    std::vector<Edit> m_edits;
    std::vector<PlainRules::Lists> m_states; ///< before each edit, and behind the last
    std::size_t m_done = 0;                  ///< so many edits are not taken back
    std::vector<QByteArray> m_journal;       ///< since the file was read
    std::vector<std::pair<rules::ConfigurationPtr, PlainRules::Lists>> m_held;
};

} // namespace

TEST(DraftAgreement, DraftFileAndJournalAgreeWithPlainLists)
{
    const unsigned seed = Seed();
    SCOPED_TRACE("seed " + std::to_string(seed));
    Trial trial(seed);
    for (int i = 0; i < EditsAsked() && !testing::Test::HasFailure(); ++i) {
        SCOPED_TRACE("edit " + std::to_string(i));
        trial.Step();
    }
}
