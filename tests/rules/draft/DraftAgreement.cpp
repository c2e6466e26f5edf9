// Drafts, their edits, the journal and the file against the plainest lists that are edited alongside, at
// random. KTQDDE_EDITS asks for more edits, KTQDDE_EDIT_SEED repeats a run.
#include "rules/draft/EditLine.h"

#include "rules/document/RuleWriter.h"
#include "rules/draft/DraftTesting.h"
#include "rules/draft/EditDrawing.h"
#include "rules/draft/PlainRules.h"
#include "rules/model/Snapshot.h"
#include "store/RuleFile.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using rules::Draft;
using rules::Edit;
using rules::Rule;
using test::Dice;
using test::PlainRules;

namespace {

const CString OldCategory = u"给排水\\管道\\旧管"_s;
/// The first two are offered, all but the second are in the file at the start.
const std::vector<CString> Categories{test::PipeCategory, test::DrainCategory, OldCategory};

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
    explicit Trial(unsigned seed) : m_drawing(seed), m_edit(m_drawing, Categories, true)
    {
        Draft empty(test::Shared(test::ConfigurationOf({})), test::Offered());
        PlainRules::Lists lists = test::ListsIn(Categories, *empty.File());
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
        const Edit edit = m_edit.Draw(m_draft, m_plain);
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
        m_bytes = rules::WriteRules(m_bytes, test::ConfigurationOfLists(lists));
        m_file = Read(m_bytes);
        ASSERT_EQ(test::ListsIn(Categories, *m_file), lists) << "the file is to be read as it was written";
    }

    void Save()
    {
        m_bytes = rules::WriteRules(m_bytes, m_draft.Wanted());
        m_file = Read(m_bytes);
        ASSERT_EQ(test::ListsIn(Categories, *m_file), m_plain.All());
        m_draft.Rebase(m_file);
        ASSERT_FALSE(m_draft.IsChanged());
        m_journal.clear();
    }

    /// What is changed here stays, all else is what the file has then.
    void SomebodyElseSaves()
    {
        const PlainRules::Lists former = test::ListsIn(Categories, *m_file);
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
        const Edit edit =
            rules::Towards(Draft(m_file, test::Offered()), test::ConfigurationOfLists(both), {}, true);
        if (!edit.IsEmpty()) m_journal.push_back(rules::LineOf(edit));
    }

    /// Draft and lists are one.
    void Look() const
    {
        const PlainRules::Lists saved = test::ListsIn(Categories, *m_file);
        bool isAnyChanged = false;
        for (const auto& [category, list] : m_plain.All()) {
            ASSERT_EQ(test::RulesIn(m_draft, category), list) << category.toStdString();
            const bool isChanged = list != saved.at(category);
            ASSERT_EQ(m_draft.IsChanged(category), isChanged) << category.toStdString();
            isAnyChanged = isAnyChanged || isChanged;
        }
        ASSERT_EQ(m_draft.IsChanged(), isAnyChanged);
        ASSERT_EQ(test::ListsIn(Categories, m_draft.Wanted()), m_plain.All());
        for (const auto& [snapshot, lists] : m_held)
            ASSERT_EQ(test::ListsIn(Categories, *snapshot), lists)
                << "a state that somebody holds never changes";
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
        ASSERT_EQ(test::ListsIn(Categories, *draft.Snapshot()), m_plain.All());
    }

    void Hold()
    {
        if (m_held.size() == 5) m_held.erase(m_held.begin());
        m_held.emplace_back(m_draft.Snapshot(), m_plain.All());
    }

    static constexpr std::size_t MostUndone = 50;

    test::RuleDrawing m_drawing;
    test::EditDrawing m_edit;
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
    const unsigned seed = test::EditSeed();
    SCOPED_TRACE("seed " + std::to_string(seed));
    Trial trial(seed);
    for (int i = 0; i < test::EditsAsked(2000) && !testing::Test::HasFailure(); ++i) {
        SCOPED_TRACE("edit " + std::to_string(i));
        trial.Step();
    }
}
