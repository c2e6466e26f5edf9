#include "editor/session/SessionFixture.h"

#include "platform/Files.h"

#include <QtCore/QFile>
#include <QtTest/QSignalSpy>

#include <gmock/gmock.h>

using namespace Qt::StringLiterals;
using editor::DraftFile;
using editor::WorkSession;
using test::NoConflicts;
using ::testing::ElementsAre;

namespace {

using WorkSessionOnSample = test::SessionTest;

std::vector<CString> TextsOf(const rules::SmallCategoryPtr& category)
{
    std::vector<CString> texts;
    for (const rules::Rule& rule : category->rules)
        texts.push_back(rule.Text());
    return texts;
}

std::vector<int> IdsOf(const rules::SmallCategoryPtr& category)
{
    std::vector<int> ids;
    for (const rules::Rule& rule : category->rules)
        ids.push_back(rule.id);
    return ids;
}

} // namespace

TEST_F(WorkSessionOnSample, OpensOnTheSpecialtyOfTheProjectWithAllCategoriesOfTheCatalogue)
{
    m_session->Open(Path());
    EXPECT_EQ(m_session->Specialty(), u"给排水"_s);
    EXPECT_EQ(m_session->CategoryText(), Pipes);
    EXPECT_EQ(m_session->CurrentRule(), 0U);
    EXPECT_EQ(m_session->Draft().Specialties().size(), 6U);
    EXPECT_FALSE(m_session->IsChanged());
}

TEST_F(WorkSessionOnSample, RuleReadFormerlyIsFoundByItsIdWhereItStandsNow)
{
    OpenAt(Pipes);
    const rules::Rule third = m_session->Category()->rules[2];
    const rules::Rule last = m_session->Category()->rules.back();
    Insert(Pipes, 0, RuleFor(u"材质"_s, u"铜管"_s));
    EXPECT_TRUE(m_session->GoToRule(Pipes, third, 2));
    EXPECT_EQ(m_session->CurrentRule(), 3U);
    EXPECT_TRUE(m_session->GoToRule(Pipes, last, 9));
    EXPECT_TRUE(m_session->Category()->rules[*m_session->CurrentRule()].isDefault);
}

TEST_F(WorkSessionOnSample, OfRulesWithOneIdTheOneAtItsPositionIsGoneTo)
{
    OpenAt(Pipes);
    const auto idOf = [&](std::size_t position) {
        return "<Config id=\"" + QByteArray::number(m_session->Category()->rules[position].id) + '"';
    };
    QByteArray bytes = Bytes();
    const qsizetype second = bytes.indexOf(idOf(1), bytes.indexOf("name=\"给水管\""));
    ASSERT_GT(second, 0);
    bytes.replace(second, idOf(1).size(), idOf(0));
    platform::RealFileSystem().WriteInPlace(Path(), bytes);
    m_session->Open(Path());
    const std::vector<rules::Rule> rules = m_session->Category()->rules;
    ASSERT_EQ(rules[0].id, rules[1].id);
    EXPECT_TRUE(m_session->GoToRule(Pipes, rules[1], 1));
    EXPECT_EQ(m_session->CurrentRule(), 1U);
    EXPECT_TRUE(m_session->GoToRule(Pipes, rules[1], 5));
    EXPECT_EQ(m_session->CurrentRule(), 0U);
}

TEST_F(WorkSessionOnSample, RuleThatIsGoneIsNotTakenForTheOneInItsPlace)
{
    OpenAt(HotPipes);
    m_session->ChooseCategory(Pipes);
    m_session->ChooseRules({4}, 4);
    rules::Rule gone = m_session->Category()->rules[2];
    gone.id = 4711;
    EXPECT_FALSE(m_session->GoToRule(Pipes, gone, 2));
    EXPECT_EQ(m_session->CurrentRule(), 4U);
    EXPECT_FALSE(m_session->GoToRule(u"给排水\\管道\\没有"_s, gone, 2));
    EXPECT_EQ(m_session->CategoryText(), Pipes);
}

TEST_F(WorkSessionOnSample, EditIsChosenToldAndUndone)
{
    OpenAt(Pipes);
    const auto before = m_session->Category();
    QSignalSpy edited(m_session.get(), &WorkSession::Edited);
    Insert(Pipes, 1, RuleFor(u"材质"_s, u"铜管"_s));
    EXPECT_EQ(m_session->Category()->rules.size(), before->rules.size() + 1);
    EXPECT_THAT(m_session->ChosenRules(), ElementsAre(1U));
    EXPECT_TRUE(m_session->IsChanged());
    ASSERT_EQ(edited.count(), 1);
    EXPECT_EQ(edited.first().first().toStringList(), QStringList{Pipes});

    m_session->Undo().undo();
    EXPECT_EQ(TextsOf(m_session->Category()), TextsOf(before));
    EXPECT_FALSE(m_session->IsChanged());
    m_session->Undo().redo();
    EXPECT_EQ(m_session->Category()->rules[1].Text(), u"材质＝铜管;"_s);
}

TEST_F(WorkSessionOnSample, NothingReachesTheFileBeforeItIsSaved)
{
    OpenAt(Pipes);
    const QByteArray before = Bytes();
    Insert(Pipes, 0, RuleFor(u"材质"_s, u"铜管"_s));
    EXPECT_EQ(Bytes(), before);
    EXPECT_EQ(m_session->Save(NoConflicts), DraftFile::SaveEnd::Saved);
    EXPECT_FALSE(m_session->IsChanged());
    EXPECT_EQ(Saved()->Find(Pipes)->rules.front().Text(), u"材质＝铜管;"_s);
}

TEST_F(WorkSessionOnSample, SaveKeepsACopyOfWhatTheFileHeld)
{
    OpenAt(Pipes);
    const QByteArray before = Bytes();
    Insert(Pipes, 0, RuleFor(u"材质"_s, u"铜管"_s));
    m_session->Save(NoConflicts);
    const auto copies = m_project->Host().History().List(Path());
    ASSERT_FALSE(copies.isEmpty());
    EXPECT_EQ(m_project->Host().History().Read(copies.first()), before);
}

TEST_F(WorkSessionOnSample, SavedRulesKeepTheirIds)
{
    OpenAt(Pipes);
    const std::vector<int> ids = IdsOf(Saved()->Find(Pipes));
    Insert(Pipes, 0, RuleFor(u"材质"_s, u"铜管"_s));
    m_session->Save(NoConflicts);
    const std::vector<int> saved = IdsOf(Saved()->Find(Pipes));
    ASSERT_EQ(saved.size(), ids.size() + 1);
    EXPECT_GT(saved.front(), *std::max_element(ids.begin(), ids.end()));
    EXPECT_EQ(std::vector<int>(saved.begin() + 1, saved.end()), ids);
}

TEST_F(WorkSessionOnSample, UndoGoesOnBehindASave)
{
    OpenAt(Pipes);
    Insert(Pipes, 0, RuleFor(u"材质"_s, u"铜管"_s));
    m_session->Save(NoConflicts);
    m_session->Undo().undo();
    EXPECT_TRUE(m_session->IsChanged());
    m_session->Save(NoConflicts);
    EXPECT_NE(Saved()->Find(Pipes)->rules.front().Text(), u"材质＝铜管;"_s);
}

TEST_F(WorkSessionOnSample, SaveMergesWhatAnotherProgramHasSaved)
{
    OpenAt(Pipes);
    Insert(Pipes, 0, RuleFor(u"材质"_s, u"铜管"_s));
    AddOutside(HotPipes, RuleFor(u"材质"_s, u"铝管"_s));
    EXPECT_TRUE(m_session->File().HasChangedOnDisk());
    EXPECT_EQ(m_session->Save(NoConflicts), DraftFile::SaveEnd::Merged);
    EXPECT_EQ(Saved()->Find(Pipes)->rules.front().Text(), u"材质＝铜管;"_s);
    EXPECT_EQ(Saved()->Find(HotPipes)->rules.front().Text(), u"材质＝铝管;"_s);
    EXPECT_EQ(m_session->Draft().Find(HotPipes)->rules.front().Text(), u"材质＝铝管;"_s);
    EXPECT_FALSE(m_session->IsChanged());
    EXPECT_TRUE(m_messages.Messages().empty());
}

TEST_F(WorkSessionOnSample, ConflictIsAskedAndTheAnswerCounts)
{
    OpenAt(Pipes);
    rules::Rule mine = m_session->Category()->rules.front();
    mine.conditions.front().value = u"我的"_s;
    m_session->Do(rules::ChangeRule(m_session->Draft(), Pipes, 0, mine, u"改"_s));
    rules::Draft other(Saved(), m_session->Facts()->offered);
    rules::Rule theirs = other.Find(Pipes)->rules.front();
    theirs.conditions.front().value = u"别人的"_s;
    other.Apply(rules::ChangeRule(other, Pipes, 0, theirs, {}));
    WriteOutside(other);

    EXPECT_EQ(m_session->Save([](const auto&) { return std::nullopt; }), DraftFile::SaveEnd::Cancelled);
    EXPECT_EQ(Saved()->Find(Pipes)->rules.front().conditions.front().value, u"别人的"_s);
    EXPECT_TRUE(m_session->IsChanged());
    const auto takeMine = [](const std::vector<rules::Conflict>& conflicts) {
        return std::optional(std::vector<rules::Side>(conflicts.size(), rules::Side::Mine));
    };
    EXPECT_EQ(m_session->Save(takeMine), DraftFile::SaveEnd::Merged);
    EXPECT_EQ(Saved()->Find(Pipes)->rules.front().conditions.front().value, u"我的"_s);
}

TEST_F(WorkSessionOnSample, TakesOverWhatTheFileHoldsUnlessItHasChangesOfItsOwn)
{
    OpenAt(Pipes);
    AddOutside(HotPipes, RuleFor(u"材质"_s, u"铝管"_s));
    EXPECT_TRUE(m_session->TakeOver());
    EXPECT_EQ(m_session->Draft().Find(HotPipes)->rules.front().Text(), u"材质＝铝管;"_s);
    EXPECT_FALSE(m_session->IsChanged());
    Insert(Pipes, 0, RuleFor(u"材质"_s, u"铜管"_s));
    AddOutside(HotPipes, RuleFor(u"材质"_s, u"钢管"_s));
    EXPECT_FALSE(m_session->TakeOver());
    EXPECT_EQ(m_session->Draft().Find(HotPipes)->rules.front().Text(), u"材质＝铝管;"_s);
}

TEST_F(WorkSessionOnSample, DiscardGoesBackToTheFileAndCanBeUndone)
{
    OpenAt(Pipes);
    Insert(Pipes, 0, RuleFor(u"材质"_s, u"铜管"_s));
    Insert(HotPipes, 0, RuleFor(u"材质"_s, u"铝管"_s));
    m_session->Discard();
    EXPECT_FALSE(m_session->IsChanged());
    m_session->Undo().undo();
    EXPECT_EQ(m_session->Draft().Find(HotPipes)->rules.front().Text(), u"材质＝铝管;"_s);
    EXPECT_EQ(m_session->Draft().Find(Pipes)->rules.front().Text(), u"材质＝铜管;"_s);
}

TEST_F(WorkSessionOnSample, FileThatCannotBeReadIsRefusedAndTheOpenOneStays)
{
    OpenAt(Pipes);
    m_folder.WriteFile(u"project\\app\\自动套配置\\Broken.xml"_s, "<no");
    EXPECT_THROW(m_session->Open(Path(u"Broken"_s)), std::runtime_error);
    EXPECT_TRUE(m_session->IsOpen());
    EXPECT_EQ(m_session->File().Path(), Path());
}

TEST_F(WorkSessionOnSample, MissingFileIsWhatTheModuleWouldMakeAndStandsThereWhenItIsSaved)
{
    m_session->Open(Path(u"New"_s));
    m_session->ChooseCategory(Pipes);
    EXPECT_FALSE(QFile::exists(m_folder.Native(u"project/app/自动套配置/New.xml"_s)));
    Insert(Pipes, 0, RuleFor(u"材质"_s, u"铜管"_s));
    EXPECT_EQ(m_session->Save(NoConflicts), DraftFile::SaveEnd::Saved);
    EXPECT_EQ(Saved(u"New"_s)->Find(Pipes)->rules.front().Text(), u"材质＝铜管;"_s);
}

TEST_F(WorkSessionOnSample, ChoiceOfASpecialtyComesBackToTheCategoryThatWasChosenThere)
{
    OpenAt(HotPipes);
    m_session->ChooseSpecialty(u"电气"_s);
    EXPECT_EQ(m_session->CategoryText().section(u'\\', 0, 0), u"电气"_s);
    m_session->ChooseSpecialty(u"给排水"_s);
    EXPECT_EQ(m_session->CategoryText(), HotPipes);
    m_session->ChooseSpecialty(u"没有"_s);
    EXPECT_EQ(m_session->Specialty(), u"给排水"_s);
}

TEST_F(WorkSessionOnSample, PlacesOfSeveralCategoriesAreChosenUntilAnotherChoice)
{
    OpenAt(Pipes);
    Insert(HotPipes, 0, RuleFor(u"材质"_s, u"铝管"_s));
    m_session->ChoosePlaces({{Pipes, {0, 1}}, {HotPipes, {0, 99}}}, HotPipes, 0);
    EXPECT_EQ(m_session->CategoryText(), HotPipes);
    EXPECT_EQ(m_session->ChosenPlaces(), (rules::RulePlaces{{Pipes, {0, 1}}, {HotPipes, {0}}}));
    m_session->ChooseRules({1}, 1);
    EXPECT_EQ(m_session->ChosenPlaces(), (rules::RulePlaces{{HotPipes, {1}}}));
}

TEST_F(WorkSessionOnSample, PlacesOfAnotherCategoryAreChosenNoMoreWhenItsRulesHaveMoved)
{
    OpenAt(Pipes);
    Insert(HotPipes, 0, RuleFor(u"材质"_s, u"铝管"_s));
    m_session->ChoosePlaces({{Pipes, {0, 1}}, {HotPipes, {0}}}, HotPipes, 0);
    Insert(Pipes, 0, RuleFor(u"材质"_s, u"铜管"_s));
    EXPECT_EQ(m_session->ChosenPlaces(), (rules::RulePlaces{{HotPipes, {0}}}));
}

TEST_F(WorkSessionOnSample, ProgramThatEndsInTheMiddleLeavesItsEditsToTheNextOne)
{
    OpenAt(Pipes);
    Insert(Pipes, 0, RuleFor(u"材质"_s, u"铜管"_s));
    Insert(Pipes, 0, RuleFor(u"材质"_s, u"金管"_s));
    m_session->Undo().undo();
    EXPECT_TRUE(editor::DraftJournal::FindLost(m_project->Folder(), Path()).empty()) << "it still runs";
    Restart();
    const auto lost = editor::DraftJournal::FindLost(m_project->Folder(), Path());
    ASSERT_EQ(lost.size(), 1U);
    m_session->Open(Path());
    m_session->Recover(lost.front());
    EXPECT_EQ(m_session->Draft().Find(Pipes)->rules.front().Text(), u"材质＝铜管;"_s);
    EXPECT_TRUE(m_session->IsChanged());
    EXPECT_EQ(m_session->Save(NoConflicts), DraftFile::SaveEnd::Saved);
    EXPECT_TRUE(editor::DraftJournal::FindLost(m_project->Folder(), Path()).empty());
}

TEST_F(WorkSessionOnSample, RecoveredEditsMergeWithWhatTheFileHoldsNow)
{
    OpenAt(Pipes);
    Insert(Pipes, 0, RuleFor(u"材质"_s, u"铜管"_s));
    AddOutside(HotPipes, RuleFor(u"材质"_s, u"铝管"_s));
    Restart();
    const auto lost = editor::DraftJournal::FindLost(m_project->Folder(), Path());
    ASSERT_EQ(lost.size(), 1U);
    m_session->Recover(lost.front());
    EXPECT_EQ(m_session->Save(NoConflicts), DraftFile::SaveEnd::Merged);
    EXPECT_EQ(Saved()->Find(Pipes)->rules.front().Text(), u"材质＝铜管;"_s);
    EXPECT_EQ(Saved()->Find(HotPipes)->rules.front().Text(), u"材质＝铝管;"_s);
}

TEST_F(WorkSessionOnSample, LostDraftIsReadUpToWhereItsWritingBrokeOff)
{
    OpenAt(Pipes);
    Insert(Pipes, 0, RuleFor(u"材质"_s, u"铜管"_s));
    Insert(Pipes, 0, RuleFor(u"材质"_s, u"金管"_s));
    Restart();
    auto lost = editor::DraftJournal::FindLost(m_project->Folder(), Path());
    ASSERT_EQ(lost.size(), 1U);
    QFile edits(lost.front().folder + u"/edits.jsonl"_s);
    ASSERT_TRUE(edits.resize(edits.size() - 5));
    lost = editor::DraftJournal::FindLost(m_project->Folder(), Path());
    ASSERT_EQ(lost.size(), 1U);
    EXPECT_EQ(lost.front().edits.size(), 1U);
}

TEST_F(WorkSessionOnSample, ClosedDraftsLeaveNothingBehind)
{
    OpenAt(Pipes);
    Insert(Pipes, 0, RuleFor(u"材质"_s, u"铜管"_s));
    m_session->Close();
    Restart();
    EXPECT_TRUE(editor::DraftJournal::FindLost(m_project->Folder(), Path()).empty());
}

TEST_F(WorkSessionOnSample, OtherFactsKeepTheEditsAndHowToTakeThemBack)
{
    OpenAt(Pipes);
    const auto before = m_session->Category()->rules;
    Insert(Pipes, 0, RuleFor(u"材质"_s, u"金管"_s));
    ASSERT_EQ(m_session->Save(NoConflicts), DraftFile::SaveEnd::Saved);
    m_session->Undo().undo();
    m_session->Undo().redo();
    Insert(Pipes, 0, RuleFor(u"材质"_s, u"铜管"_s));
    m_project->SetMode(SQdDeInfo::QuotaMode);
    EXPECT_TRUE(m_session->RefreshFacts());
    EXPECT_FALSE(m_session->Facts()->isBillMode);
    EXPECT_EQ(m_session->Category()->rules.front().Text(), u"材质＝铜管;"_s);
    EXPECT_TRUE(m_session->IsChanged());
    m_session->Undo().undo();
    EXPECT_FALSE(m_session->IsChanged());
    m_session->Undo().undo();
    EXPECT_EQ(m_session->Category()->rules, before);
    m_session->Undo().redo();
    m_session->Undo().redo();
    EXPECT_EQ(m_session->Category()->rules.front().Text(), u"材质＝铜管;"_s);
}

TEST_F(WorkSessionOnSample, EditsOfACategoryThatIsGoneCanNotBeTakenBackWhichIsSaid)
{
    OpenAt(Pipes);
    const CString gone = u"给排水\\别的\\只在目录里"_s; // and not in the file
    const auto with = std::make_shared<editor::ProjectFacts>(*m_session->Facts());
    auto small = std::make_shared<rules::SmallCategory>();
    small->name = u"只在目录里"_s;
    small->text = gone;
    with->offered = std::make_shared<const rules::Configuration>(
        std::vector<rules::Specialty>{{1, u"给排水"_s, {{1, u"别的"_s, {small}}}}});
    const auto without = m_session->Facts();
    ASSERT_TRUE(m_session->TakeFacts(with));
    Insert(gone, 0, RuleFor(u"材质"_s, u"铜管"_s));
    ASSERT_TRUE(m_session->Undo().canUndo());
    EXPECT_FALSE(m_session->TakeFacts(without));
    EXPECT_FALSE(m_session->Undo().canUndo());
}
