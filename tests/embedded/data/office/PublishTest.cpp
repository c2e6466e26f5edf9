#include "embedded/OfficeDatabase.h"
#include "embedded/TestProject.h"
#include "embedded/data/office/PublishedConfigurations.h"

#include <gtest/gtest.h>

#include <thread>

using namespace Qt::StringLiterals;
using embedded::NumberUse;
using embedded::Office;
using embedded::Publication;
using embedded::PublishedConfigurations;
using embedded::PublishedVersion;
using embedded::PublishOutcome;
using embedded::VersionMark;
using test::ErrorOf;
using test::TestOffice;

namespace {

const CString Name = u"标准 配置"_s;

/// One person at an office.
struct Person
{
    explicit Person(const CString& service) : office(service), published(office) {}

    /// The version of a number as the office has it, or one that it does not have.
    VersionMark Mark(int number, const CString& name = Name)
    {
        for (const PublishedVersion& version : published.Log(name))
            if (version.number == number) return version.Mark();
        return {number, embedded::DigestOf("lost")};
    }
    PublishOutcome Publish(int base, const QByteArray& content, const CString& name = Name)
    {
        return published.Publish({name, Mark(base, name), content});
    }

    Office office;
    PublishedConfigurations published;
};

QStringList Names(const CArray<PublishedVersion>& versions)
{
    QStringList names;
    for (const PublishedVersion& version : versions)
        names.append(version.configuration + u' ' + CString::number(version.number));
    return names;
}

class Publish : public ::testing::Test
{
protected:
    Publish() { keeper.Publish(0, "<a/>"); }

    TestOffice office;
    Person keeper{TestOffice::Keeper()};
    Person editor{TestOffice::Editor()};
};

} // namespace

TEST_F(Publish, VersionsCountFromOneAndEachCanBeHadBack)
{
    EXPECT_EQ(editor.Publish(1, "<b/>").version, 2);
    EXPECT_EQ(editor.Publish(2, "<c/>").version, 3);
    EXPECT_EQ(editor.published.Content(Name, 1), "<a/>");
    EXPECT_EQ(editor.published.Content(Name, 2), "<b/>");
    EXPECT_EQ(editor.published.Content(Name, 3), "<c/>");
    EXPECT_EQ(editor.published.Content(Name, 4), std::nullopt);
    EXPECT_EQ(editor.published.Content(u"另一个"_s, 1), std::nullopt);
}

TEST_F(Publish, BytesComeBackWhateverTheyAre)
{
    QByteArray bytes;
    for (int i = 0; i < 70'000; ++i)
        bytes.append(static_cast<char>(i * 7 + i / 256));
    ASSERT_EQ(editor.Publish(1, bytes).end, PublishOutcome::Published);
    EXPECT_EQ(editor.published.Content(Name, 2), bytes);
    EXPECT_EQ(editor.published.Last(Name)->size, bytes.size());
}

TEST_F(Publish, VersionTellsAuthorTimeNoteAndProject)
{
    const QDateTime before = QDateTime::currentDateTimeUtc();
    ASSERT_EQ(editor.published
                  .Publish({Name, editor.Mark(1), "<b/>", u"改了 '一条' 规则？\n第二行"_s, u"工程 一"_s})
                  .end,
              PublishOutcome::Published);
    const QDateTime after = QDateTime::currentDateTimeUtc();
    const auto last = editor.published.Last(Name);
    ASSERT_TRUE(last);
    EXPECT_EQ(last->configuration, Name);
    EXPECT_EQ(last->number, 2);
    EXPECT_EQ(last->base, 1);
    EXPECT_EQ(last->author, office.User(TestOffice::Editor()));
    EXPECT_EQ(last->note, u"改了 '一条' 规则？\n第二行"_s);
    EXPECT_EQ(last->project, u"工程 一"_s);
    EXPECT_EQ(last->size, 4);
    EXPECT_FALSE(last->isRemoved);
    // The server's clock is this machine's.
    EXPECT_LE(before.addMSecs(-1), last->at);
    EXPECT_LE(last->at, after.addMSecs(1));
}

TEST_F(Publish, PublicationFromAnOlderVersionChangesNothingAndTellsTheLastOne)
{
    editor.Publish(1, "<b/>");
    const PublishOutcome outcome = keeper.Publish(1, "<c/>");
    EXPECT_EQ(outcome.end, PublishOutcome::Newer);
    EXPECT_EQ(outcome.version, 2);
    EXPECT_EQ(keeper.published.Log(Name).size(), 2);
    EXPECT_EQ(keeper.published.Content(Name, 2), "<b/>");
}

TEST_F(Publish, NewConfigurationOfANameThatIsTakenIsNewer)
{
    const PublishOutcome outcome = keeper.Publish(0, "<other/>");
    EXPECT_EQ(outcome.end, PublishOutcome::Newer);
    EXPECT_EQ(outcome.version, 1);
}

TEST_F(Publish, SameContentAgainIsUnchanged)
{
    const PublishOutcome outcome = editor.Publish(1, "<a/>");
    EXPECT_EQ(outcome.end, PublishOutcome::Unchanged);
    EXPECT_EQ(outcome.version, 1);
    EXPECT_EQ(editor.published.Log(Name).size(), 1);
}

TEST_F(Publish, PublicationSentAgainTellsTheVersionThatItBecame)
{
    editor.Publish(1, "<b/>");
    keeper.Publish(2, "<c/>");
    const PublishOutcome outcome = editor.Publish(1, "<b/>");
    EXPECT_EQ(outcome.end, PublishOutcome::Unchanged);
    EXPECT_EQ(outcome.version, 2) << "the base of what the editor does next";
    EXPECT_EQ(editor.Publish(outcome.version, "<d/>").end, PublishOutcome::Newer);
}

TEST_F(Publish, FormerContentIsPublishedAsANewVersion)
{
    editor.Publish(1, "<b/>");
    const PublishOutcome outcome = editor.Publish(2, "<a/>");
    EXPECT_EQ(outcome.end, PublishOutcome::Published);
    EXPECT_EQ(outcome.version, 3);
    EXPECT_EQ(editor.published.Content(Name, 3), "<a/>");
}

// An office that was put back from a copy counts from there: what is published next gets numbers that others
// have seen with another content.
TEST_F(Publish, BaseOfTheSameNumberAndAnotherContentIsNewer)
{
    editor.Publish(1, "<b/>");
    const PublishOutcome outcome =
        editor.published.Publish({Name, {2, embedded::DigestOf("<lost/>")}, "<c/>"});
    EXPECT_EQ(outcome.end, PublishOutcome::Newer);
    EXPECT_EQ(outcome.version, 2);
    EXPECT_EQ(editor.published.Publish({Name, {2, {}}, "<c/>"}).end, PublishOutcome::Newer);
    EXPECT_EQ(editor.published.Log(Name).size(), 2);
    EXPECT_EQ(editor.published.Publish({Name, {2, embedded::DigestOf("<b/>")}, "<c/>"}).end,
              PublishOutcome::Published);
}

TEST_F(Publish, BaseAboveTheLastVersionIsNewer)
{
    const PublishOutcome outcome = editor.Publish(7, "<b/>");
    EXPECT_EQ(outcome.end, PublishOutcome::Newer);
    EXPECT_EQ(outcome.version, 1);
    EXPECT_EQ(editor.published.Log(Name).size(), 1);
}

TEST_F(Publish, ContentOfAnyVersionIsUnchangedWhereTheBaseIsNotKnown)
{
    editor.Publish(1, "<b/>");
    const PublishOutcome outcome = editor.Publish(7, "<a/>");
    EXPECT_EQ(outcome.end, PublishOutcome::Unchanged);
    EXPECT_EQ(outcome.version, 1);
}

TEST_F(Publish, ConfigurationThatTheOfficeHasLostIsAKeepersToPublishAgain)
{
    EXPECT_EQ(editor.Publish(3, "<b/>", u"旧配置"_s).end, PublishOutcome::Missing);
    const PublishOutcome outcome = keeper.Publish(3, "<b/>", u"旧配置"_s);
    EXPECT_EQ(outcome.end, PublishOutcome::Published);
    EXPECT_EQ(outcome.version, 1);
    EXPECT_EQ(editor.Publish(1, "<c/>", u"旧配置"_s).end, PublishOutcome::Published);
}

TEST_F(Publish, ProjectsOfOneNameAreToldApartByTheirIds)
{
    const NumberUse theirs{u"Q"_s, u"030101001001"_s, u"水泵"_s, u"台"_s};
    const NumberUse mine{u"Q"_s, u"030101001001"_s, u"风机"_s, u"台"_s};
    ASSERT_EQ(
        editor.published.Publish({Name, editor.Mark(1), "<b/>", {}, u"工程@机器"_s, u"1"_s, {theirs}}).end,
        PublishOutcome::Published);
    EXPECT_EQ(
        keeper.published.Publish({Name, keeper.Mark(2), "<c/>", {}, u"工程@机器"_s, u"2"_s, {mine, theirs}})
            .end,
        PublishOutcome::Collides);
    EXPECT_EQ(
        keeper.published.Publish({Name, keeper.Mark(2), "<c/>", {}, u"搬走了@别处"_s, u"1"_s, {mine, theirs}})
            .end,
        PublishOutcome::Published);
}

TEST_F(Publish, NumberThatAnOlderProgramRecordedIsTheProjectsOfThatName)
{
    office.Ask(u"INSERT INTO ktqdde.numbers (configuration, library, number, name, unit, project) "
               "VALUES ('%1', 'Q', '030101001001', '水泵', '台', '一')"_s.arg(Name));
    const NumberUse mine{u"Q"_s, u"030101001001"_s, u"风机"_s, u"台"_s};
    EXPECT_EQ(keeper.published.Publish({Name, keeper.Mark(1), "<b/>", {}, u"二"_s, u"2"_s, {mine}}).end,
              PublishOutcome::Collides);
    EXPECT_EQ(keeper.published.Publish({Name, keeper.Mark(1), "<b/>", {}, u"一"_s, u"1"_s, {mine}}).end,
              PublishOutcome::Published);
    EXPECT_EQ(office.Ask(u"SELECT project_id FROM ktqdde.numbers"_s), u"1"_s) << "known from now on";
}

TEST_F(Publish, EditorCreatesNoConfiguration)
{
    EXPECT_EQ(editor.Publish(0, "<b/>", u"新配置"_s).end, PublishOutcome::Missing);
    EXPECT_EQ(editor.Publish(3, "<b/>", u"新配置"_s).end, PublishOutcome::Missing);
    EXPECT_EQ(editor.published.Last(u"新配置"_s), std::nullopt);
    EXPECT_EQ(keeper.Publish(0, "<b/>", u"新配置"_s).end, PublishOutcome::Published);
    EXPECT_EQ(editor.Publish(1, "<c/>", u"新配置"_s).end, PublishOutcome::Published);
}

TEST_F(Publish, ReaderIsRefusedByHisRight)
{
    Person reader(TestOffice::Reader());
    EXPECT_THROW(reader.Publish(1, "<b/>"), embedded::RightsError);
    EXPECT_EQ(reader.published.Content(Name, 1), "<a/>");
}

TEST_F(Publish, NamesDifferByEveryCharacter)
{
    // Alike for the order of texts that the database has.
    const QStringList names{u"A1"_s, u"A01"_s, u"a1"_s, u"Ａ1"_s, u"é"_s, u"e\u0301"_s};
    for (const CString& name : names)
        EXPECT_EQ(keeper.Publish(0, name.toUtf8(), name).end, PublishOutcome::Published)
            << name.toStdString();
    for (const CString& name : names)
        EXPECT_EQ(keeper.published.Content(name, 1), name.toUtf8()) << name.toStdString();
    EXPECT_EQ(Names(keeper.published.Latest()), (QStringList{u"A01 1"_s, u"A1 1"_s, u"a1 1"_s, u"e\u0301 1"_s,
                                                             u"é 1"_s, Name + u" 1"_s, u"Ａ1 1"_s}));
}

TEST_F(Publish, ImpossibleNamesAreRefusedByProgramAndServer)
{
    const QStringList names{u""_s,        u" a"_s,      u"a "_s,       u"a/b"_s,          u"a\\b"_s,
                            u"a:b"_s,     u"a*"_s,      u"a?"_s,       u"a\"b"_s,         u"<a"_s,
                            u"a>"_s,      u"a|b"_s,     u"a\nb"_s,     u"a\tb"_s,         u"\u3000a"_s,
                            u"a\u00a0"_s, u"a\u2028"_s, u"a\u0085b"_s, CString(100, u'a')};
    for (const CString& name : names) {
        EXPECT_TRUE(ErrorOf([&] { keeper.Publish(0, "<a/>", name); }).contains(u"不能用作配置名"_s))
            << name.toStdString();
        const test::PsqlAnswer answer = office.Psql(
            TestOffice::Keeper(),
            u"SELECT ktqdde.publish('%1', 0, '', 'x', sha256('x'), '', '', '', '[]')"_s.arg(name));
        EXPECT_TRUE(answer.fault.contains(u"name_is_possible"_s))
            << name.toStdString() << answer.fault.toStdString();
    }
    EXPECT_EQ(keeper.Publish(0, "<a/>", CString(99, u'规')).end, PublishOutcome::Published);
}

TEST_F(Publish, EmptyContentIsRefused)
{
    EXPECT_TRUE(ErrorOf([this] { editor.Publish(1, {}); }).contains(u"是空的"_s));
}

TEST_F(Publish, ContentBeyondTheLimitIsRefusedInWords)
{
    const QByteArray large(PublishedConfigurations::LargestContent + 1, 'x');
    EXPECT_TRUE(ErrorOf([&] { editor.Publish(1, large); }).contains(u"最多 256 MB"_s));
}

TEST_F(Publish, LatestIsTheLastVersionOfEachInTheOrderOfTheNames)
{
    keeper.Publish(0, "<b/>", u"乙"_s);
    keeper.Publish(1, "<b2/>", u"乙"_s);
    keeper.Publish(0, "<c/>", u"B"_s);
    EXPECT_EQ(Names(keeper.published.Latest()), (QStringList{u"B 1"_s, u"乙 2"_s, Name + u" 1"_s}));
    EXPECT_EQ(Names(keeper.published.Log(u"乙"_s)), (QStringList{u"乙 2"_s, u"乙 1"_s}));
    EXPECT_TRUE(keeper.published.Log(u"丙"_s).isEmpty());
}

TEST_F(Publish, RemovedConfigurationKeepsItsVersionsAndComesBack)
{
    keeper.published.Remove(Name);
    EXPECT_TRUE(keeper.published.Latest().isEmpty());
    ASSERT_EQ(keeper.published.Latest(true).size(), 1);
    EXPECT_TRUE(keeper.published.Latest(true).first().isRemoved);
    EXPECT_TRUE(keeper.published.Last(Name)->isRemoved);
    EXPECT_EQ(keeper.published.Content(Name, 1), "<a/>");
    EXPECT_EQ(editor.Publish(1, "<b/>").end, PublishOutcome::Missing);
    EXPECT_EQ(keeper.Publish(0, "<b/>").end, PublishOutcome::Missing);
    keeper.published.Remove(Name);
    keeper.published.BringBack(Name);
    EXPECT_EQ(keeper.published.Latest().size(), 1);
    EXPECT_EQ(editor.Publish(1, "<b/>").end, PublishOutcome::Published);
}

TEST_F(Publish, OnlyKeepersRemoveAndBringBack)
{
    EXPECT_THROW(editor.published.Remove(Name), embedded::RightsError);
    EXPECT_THROW(editor.published.BringBack(Name), embedded::RightsError);
    EXPECT_TRUE(
        ErrorOf([this] { keeper.published.Remove(u"没有的"_s); }).contains(u"没有名为“没有的”的配置"_s));
    EXPECT_TRUE(
        ErrorOf([this] { keeper.published.BringBack(u"没有的"_s); }).contains(u"没有名为“没有的”的配置"_s));
}

TEST_F(Publish, NumberThatStandsForAnotherProjectsItemAsWellCollidesAndChangesNothing)
{
    const NumberUse theirs{u"Q"_s, u"030101001001"_s, u"水泵"_s, u"台"_s};
    const NumberUse mine{u"Q"_s, u"030101001001"_s, u"风机"_s, u"台"_s};
    ASSERT_EQ(editor.published.Publish({Name, editor.Mark(1), "<b/>", {}, u"一"_s, {}, {theirs}}).end,
              PublishOutcome::Published);
    // Both, as a merge of what the two have done brings them together.
    const PublishOutcome outcome =
        keeper.published.Publish({Name, keeper.Mark(2), "<c/>", {}, u"二"_s, {}, {mine, theirs}});
    EXPECT_EQ(outcome.end, PublishOutcome::Collides);
    EXPECT_EQ(outcome.version, 2);
    ASSERT_EQ(outcome.collisions.size(), 1);
    EXPECT_EQ(outcome.collisions[0].mine.name, u"风机"_s);
    EXPECT_EQ(outcome.collisions[0].mine.number, u"030101001001"_s);
    EXPECT_EQ(outcome.collisions[0].theirs.name, u"水泵"_s);
    EXPECT_EQ(outcome.collisions[0].project, u"一"_s);
    EXPECT_EQ(editor.published.Log(Name).size(), 2);
}

TEST_F(Publish, ItemOfTheLastVersionGetsAnotherNameFromAnyProject)
{
    const NumberUse former{u"Q"_s, u"030101001001"_s, u"水泵"_s, u"台"_s};
    const NumberUse renamed{u"Q"_s, u"030101001001"_s, u"离心水泵"_s, u"台"_s};
    ASSERT_EQ(editor.published.Publish({Name, editor.Mark(1), "<b/>", {}, u"一"_s, {}, {former}}).end,
              PublishOutcome::Published);
    EXPECT_EQ(keeper.published.Publish({Name, keeper.Mark(2), "<c/>", {}, u"二"_s, {}, {renamed}}).end,
              PublishOutcome::Published);
    EXPECT_EQ(editor.published.Publish({Name, editor.Mark(3), "<d/>", {}, u"一"_s, {}, {renamed}}).end,
              PublishOutcome::Published);
}

TEST_F(Publish, NumberThatStoodForSeveralItemsAlreadyIsNobodysCollision)
{
    const NumberUse one{u"Q"_s, u"030101001001"_s, u"水泵"_s, u"台"_s};
    const NumberUse other{u"Q"_s, u"030101001001"_s, u"风机"_s, u"台"_s};
    ASSERT_EQ(editor.published.Publish({Name, editor.Mark(1), "<b/>", {}, u"一"_s, {}, {one, other}}).end,
              PublishOutcome::Published);
    EXPECT_EQ(keeper.published.Publish({Name, keeper.Mark(2), "<c/>", {}, u"二"_s, {}, {one, other}}).end,
              PublishOutcome::Published);
}

TEST_F(Publish, NumberThatIsUsedNoMoreStaysWithItsItem)
{
    const NumberUse former{u"Q"_s, u"030101001001"_s, u"水泵"_s, u"台"_s};
    const NumberUse other{u"Q"_s, u"030101001001"_s, u"风机"_s, u"台"_s};
    ASSERT_EQ(editor.published.Publish({Name, editor.Mark(1), "<b/>", {}, u"一"_s, {}, {former}}).end,
              PublishOutcome::Published);
    ASSERT_EQ(editor.published.Publish({Name, editor.Mark(2), "<c/>", {}, u"一"_s, {}, {}}).end,
              PublishOutcome::Published);
    EXPECT_EQ(keeper.published.Publish({Name, keeper.Mark(3), "<d/>", {}, u"二"_s, {}, {other}}).end,
              PublishOutcome::Collides);
    EXPECT_EQ(keeper.published.Publish({Name, keeper.Mark(3), "<d/>", {}, u"二"_s, {}, {former}}).end,
              PublishOutcome::Published);
}

TEST_F(Publish, NewConfigurationWhoseNumbersCollideLeavesNoTrace)
{
    office.Ask(u"INSERT INTO ktqdde.numbers (configuration, library, number, name, unit, project) "
               "VALUES ('新配置', 'Q', '030101001001', '水泵', '台', '一')"_s);
    const QString changes = office.Ask(u"SELECT count(*) FROM ktqdde.changes"_s);
    const NumberUse mine{u"Q"_s, u"030101001001"_s, u"风机"_s, u"台"_s};
    const PublishOutcome outcome =
        keeper.published.Publish({u"新配置"_s, {}, "<c/>", {}, u"二"_s, {}, {mine}});
    EXPECT_EQ(outcome.end, PublishOutcome::Collides);
    EXPECT_EQ(outcome.version, 0);
    EXPECT_EQ(office.Ask(u"SELECT count(*) FROM ktqdde.configurations"_s), u"1"_s);
    EXPECT_EQ(office.Ask(u"SELECT count(*) FROM ktqdde.changes"_s), changes);
}

TEST_F(Publish, DamagedContentIsNotGivenOut)
{
    editor.Publish(1, "<b/>");
    office.Ask(u"ALTER TABLE ktqdde.versions DISABLE TRIGGER ALL; "
               "ALTER TABLE ktqdde.versions DROP CONSTRAINT content_is_whole; "
               "UPDATE ktqdde.versions SET content = '<x/>' WHERE number = 2"_s);
    EXPECT_TRUE(ErrorOf([this] { editor.published.Content(Name, 2); }).contains(u"已损坏"_s));
    EXPECT_EQ(editor.published.Content(Name, 1), "<a/>");
}

TEST_F(Publish, OfManyWhoPublishFromOneVersionAtOnceExactlyOneDoes)
{
    constexpr std::size_t People = 8;
    std::vector<PublishOutcome> outcomes(People);
    std::vector<CString> errors(People);
    std::vector<std::thread> threads;
    for (std::size_t i = 0; i < People; ++i) {
        threads.emplace_back([&, i] {
            errors[i] = ErrorOf([&] {
                Person person(TestOffice::Editor());
                outcomes[i] = person.Publish(1, "<b" + QByteArray::number(static_cast<int>(i)) + "/>");
            });
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    int count = 0;
    for (const PublishOutcome& outcome : outcomes) {
        EXPECT_EQ(outcome.version, 2);
        count += outcome.end == PublishOutcome::Published ? 1 : 0;
        EXPECT_TRUE(outcome.end == PublishOutcome::Published || outcome.end == PublishOutcome::Newer);
    }
    EXPECT_EQ(count, 1);
    EXPECT_EQ(errors, std::vector<CString>(People, u"no error"_s));
    EXPECT_EQ(editor.published.Log(Name).size(), 2);
}
