#include "editor/session/LargeFile.h"

#include "rules/model/Snapshot.h"
#include "support/Patience.h"

#include <QtTest/QSignalSpy>

using namespace Qt::StringLiterals;
using editor::DraftFile;
using editor::WorkSession;
using test::LargeFile;
using test::NoConflicts;

namespace {

void WaitForAll(QSignalSpy& completed)
{
    test::WaitInLoopFor(u"the rules of the other categories"_s, [&] { return completed.count() > 0; });
}

} // namespace

TEST_F(LargeFile, HasTheRulesOfTheChosenCategoryAtOnceAndTheOthersForWhoeverAsks)
{
    m_session->Open(Path());
    ASSERT_FALSE(m_session->IsWhole());
    const rules::SmallCategoryPtr chosen = m_session->Category();
    ASSERT_EQ(chosen->text, Pipes);
    EXPECT_EQ(chosen->rules, Saved()->Find(Pipes)->rules);
    EXPECT_EQ(m_session->DraftSoFar().Find(m_lamps)->rules.size(), 1U) << "the default rule alone";

    EXPECT_EQ(m_session->Draft().Find(m_lamps)->rules, Saved()->Find(m_lamps)->rules);
    EXPECT_TRUE(m_session->IsWhole());
    EXPECT_EQ(m_session->Category(), chosen) << "what others have made of it goes on being right";
    EXPECT_FALSE(m_session->IsChanged());
}

TEST_F(LargeFile, OtherRulesComeByThemselvesAndAreToldOnce)
{
    QSignalSpy completed(m_session.get(), &WorkSession::Completed);
    m_session->Open(Path());
    m_session->Open(Path());
    EXPECT_FALSE(m_session->IsWhole());
    WaitForAll(completed);
    EXPECT_TRUE(m_session->IsWhole());
    EXPECT_EQ(m_session->DraftSoFar().Find(m_lamps)->rules, Saved()->Find(m_lamps)->rules);
    QCoreApplication::processEvents();
    EXPECT_EQ(completed.count(), 1);
}

TEST_F(LargeFile, ComesInTheOrderOfOneThatIsReadAtOnce)
{
    m_session->Open(Path());
    static_cast<void>(m_session->Draft());
    const rules::Draft whole(Saved(), m_session->Facts()->offered);
    const auto textsOf = [](const rules::Draft& draft) {
        CStringArray texts;
        for (const rules::Specialty& specialty : draft.Specialties())
            for (const rules::BigCategory& big : specialty.bigCategories)
                for (const rules::SmallCategoryPtr& small : big.smallCategories)
                    texts.append(small->text);
        return texts;
    };
    EXPECT_EQ(textsOf(m_session->Draft()), textsOf(whole));
}

TEST_F(LargeFile, SaveAtOnceKeepsTheRulesThatHaveNotComeYet)
{
    m_session->Open(Path());
    const std::vector<rules::Rule> lamps = Saved()->Find(m_lamps)->rules;
    EXPECT_EQ(m_session->Save(NoConflicts), DraftFile::SaveEnd::Saved);
    EXPECT_EQ(Saved()->Find(m_lamps)->rules, lamps);

    m_session->Open(Path());
    Insert(Pipes, 0, RuleFor(u"材质"_s, u"铜管"_s));
    EXPECT_EQ(m_session->Save(NoConflicts), DraftFile::SaveEnd::Saved);
    EXPECT_EQ(Saved()->Find(m_lamps)->rules, lamps);
    EXPECT_EQ(Saved()->Find(Pipes)->rules.front().Text(), u"材质＝铜管;"_s);
}

TEST_F(LargeFile, EditOfAnotherSpecialtyAtOnceIsOneOfItsRules)
{
    m_session->Open(Path());
    const std::vector<rules::Rule> lamps = Saved()->Find(m_lamps)->rules;
    Insert(m_lamps, 1, RuleFor(u"材质"_s, u"铜管"_s));
    const std::vector<rules::Rule>& edited = m_session->Draft().Find(m_lamps)->rules;
    ASSERT_EQ(edited.size(), lamps.size() + 1);
    EXPECT_EQ(edited[0], lamps[0]);
    EXPECT_EQ(edited[2], lamps[1]);
    for (const rules::Rule& rule : lamps)
        ASSERT_NE(edited[1].id, rule.id);
}

TEST_F(LargeFile, AnotherSpecialtyIsChosenAtOnceWithItsRules)
{
    m_session->Open(Path());
    m_session->ChooseSpecialty(m_lamps.section(u'\\', 0, 0));
    m_session->ChooseCategory(m_lamps);
    EXPECT_EQ(m_session->Category()->rules, Saved()->Find(m_lamps)->rules);

    m_session->Open(Path());
    EXPECT_EQ(m_session->Category()->rules, Saved()->Find(m_lamps)->rules) << "chosen, so it is read first";
    EXPECT_FALSE(m_session->IsWhole());
    m_session->GoTo(Pipes, 2);
    EXPECT_EQ(m_session->Category()->rules, Saved()->Find(Pipes)->rules);
    EXPECT_EQ(m_session->CurrentRule(), 2U);
}

TEST_F(LargeFile, AnotherCategoryOfTheSpecialtyIsChosenAtOnceWithItsRules)
{
    AddOutside(HotPipes, RuleFor(u"材质"_s, u"铝管"_s));
    m_session->Open(Path());
    m_session->ChoosePlaces({{HotPipes, {0, 1}}}, HotPipes, 1);
    EXPECT_EQ(m_session->Category()->rules, Saved()->Find(HotPipes)->rules);
    EXPECT_EQ(m_session->CurrentRule(), 1U);
}

TEST_F(LargeFile, CategoryThatOnlyTheFileHasStaysChosen)
{
    const CString own = u"给排水\\别的\\自己的"_s;
    const QByteArray part = "<LMember id=\"99\" name=\"别的\"><SMember id=\"1\" name=\"自己的\"/></LMember>";
    platform::RealFileSystem().WriteInPlace(Path(), Bytes().replace("</给排水>", part + "</给排水>"));
    m_session->Open(Path());
    m_session->ChooseCategory(own);
    m_session->Open(Path());
    EXPECT_EQ(m_session->CategoryText(), own);
}

TEST_F(LargeFile, OtherCatalogueFindsTheWholeDraft)
{
    m_session->Open(Path());
    m_session->RefreshFacts();
    EXPECT_EQ(m_session->Draft().Find(m_lamps)->rules, Saved()->Find(m_lamps)->rules);
    EXPECT_FALSE(m_session->IsChanged());
}

TEST_F(LargeFile, WhatIsOddAboutItsBuildIsKnown)
{
    const QByteArray odd =
        "<LMember id=\"99\" name=\"别的\"><SMember id=\"1\" name=\"没有默认规则\"/></LMember>";
    QByteArray bytes = Bytes();
    ASSERT_TRUE(bytes.contains("</给排水>"));
    platform::RealFileSystem().WriteInPlace(Path(), bytes.replace("</给排水>", odd + "</给排水>"));
    m_session->Open(Path());
    ASSERT_FALSE(m_session->IsWhole());
    bool isNoted = false;
    for (const rules::StructureNote& note : m_session->Structure())
        isNoted = isNoted || (note.kind == rules::StructureNote::Kind::NoDefault &&
                              note.category == u"给排水\\别的\\没有默认规则"_s);
    EXPECT_TRUE(isNoted);
}
