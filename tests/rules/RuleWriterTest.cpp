#include "rules/document/RuleWriter.h"

#include "rules/CompareTesting.h"
#include "rules/model/Snapshot.h"
#include "xml/Error.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using rules::Rule;
using test::DefaultRule;
using test::PipeRule;

namespace {

const QByteArray Head =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<自动套清单定额配置信息 Version=\"9\" CalMode=\"清单版\">\n";
const QByteArray Electric =
    "\t<电气   id='2' name='电气'><!-- kept --><LMember name='灯具' x='y'/>\n\n</电气>\n";
const QByteArray Tail = "</自动套清单定额配置信息>\n";

QByteArray Plumbing(const QByteArray& rules)
{
    return "\t<给排水 id=\"1\" name=\"给排水\">\n\t\t<LMember id=\"11\" name=\"管道\">\n"
           "\t\t\t<SMember id=\"111\" name=\"给水管\" LastConfigId=\"40\" other=\"1\">\n\t\t\t\t<Config>\n" +
           rules + "\t\t\t\t</Config>\n\t\t\t</SMember>\n\t\t</LMember>\n\t</给排水>\n";
}

const QByteArray Kept = "\t\t\t\t\t<Config id=\"2\" mark=\"mine\" bDefault=\"0\"/>\n";
const QByteArray Default = "\t\t\t\t\t<Config id=\"1\" bDefault=\"1\"/>\n";
const QByteArray File = Head + Electric + Plumbing(Kept + Default) + Tail;

rules::ConfigurationPtr Read(const QByteArray& bytes)
{
    CString reason;
    rules::ConfigurationPtr read = rules::ReadRules(bytes, reason);
    EXPECT_NE(read, nullptr) << reason.toStdString();
    return read;
}

/// What was read, with other rules in 给水管.
rules::Configuration WithRules(const rules::Configuration& configuration, const std::vector<Rule>& list)
{
    std::vector<rules::Specialty> specialties = configuration.Specialties();
    for (rules::Specialty& specialty : specialties)
        for (rules::BigCategory& big : specialty.bigCategories)
            for (rules::SmallCategoryPtr& small : big.smallCategories) {
                if (small->text != test::PipeCategory) continue;
                auto copy = std::make_shared<rules::SmallCategory>(*small);
                copy->rules = list;
                small = copy;
            }
    return rules::Configuration(std::move(specialties));
}

} // namespace

TEST(RuleWriter, WritesNothingWhereNothingDiffers)
{
    EXPECT_EQ(rules::WriteRules(File, *Read(File)), File);
    const QByteArray incomplete = Head + Electric + Plumbing(Kept) + Tail;
    EXPECT_EQ(rules::WriteRules(incomplete, *Read(incomplete)), incomplete)
        << "the default rule is not in the file";
}

TEST(RuleWriter, ChangesOneSpecialtyAndKeepsTheBytesOfTheOthersAndTheHead)
{
    const auto read = Read(File);
    std::vector<Rule> list = test::RulesIn(*read);
    Rule added = PipeRule(41, u"铜管"_s, u"01"_s);
    added.conditions[0].id = 3;
    added.counters = {2, 5, 0};
    list.insert(list.begin(), added);
    const QByteArray written = rules::WriteRules(File, WithRules(*read, list));
    EXPECT_TRUE(written.startsWith(Head + Electric)) << written.toStdString();
    EXPECT_TRUE(written.contains(
        "\t\t\t<SMember id=\"111\" name=\"给水管\" LastConfigId=\"41\" other=\"1\">\n\t\t\t\t<Config>\n"
        "\t\t\t\t\t<Config id=\"41\" LastQdId=\"5\" LastConditionId=\"3\" bDefault=\"0\" LastDeId=\"0\">\n"))
        << written.toStdString();
    EXPECT_TRUE(written.contains(Kept + Default)) << "rules that are the same keep their elements";
    EXPECT_EQ(test::Told(test::RulesIn(*Read(written))[0]), test::Told(added));
}

TEST(RuleWriter, MovesRemovesAndRepeatsRules)
{
    const auto read = Read(File);
    const std::vector<Rule> list = test::RulesIn(*read);
    const QByteArray moved = rules::WriteRules(File, WithRules(*read, {list[1], list[0]}));
    EXPECT_TRUE(moved.contains(Default + Kept)) << moved.toStdString();
    const QByteArray removed = rules::WriteRules(File, WithRules(*read, {list[1]}));
    EXPECT_FALSE(removed.contains("mark")) << removed.toStdString();
    EXPECT_TRUE(removed.contains("LastConfigId=\"40\"")) << "an id is not given twice";
    EXPECT_EQ(
        test::RulesIn(*Read(rules::WriteRules(File, WithRules(*read, {list[0], list[0], list[1]})))).size(),
        3U);
}

TEST(RuleWriter, MakesWhatTheFileHasNotAndTakesOutWhatIsNotWanted)
{
    const rules::Configuration wanted = test::Pipes({PipeRule(2, u"铜管"_s, u"01"_s), DefaultRule()});
    const QByteArray made = rules::WriteRules("<自动套清单定额配置信息/>", wanted);
    EXPECT_TRUE(made.contains("<给排水 id=\"1\" name=\"给排水\">")) << made.toStdString();
    EXPECT_EQ(test::RulesIn(*Read(made)).size(), 2U);
    EXPECT_EQ(rules::WriteRules(made, *Read(made)), made);
    const QByteArray emptied = rules::WriteRules(File, rules::Configuration({}));
    EXPECT_TRUE(Read(emptied)->Specialties().empty()) << emptied.toStdString();
}

TEST(RuleWriter, CategoryThatStandsTwiceDoesNotComeBackWhenItIsTakenOut)
{
    QByteArray twice = File;
    const QByteArray small = "</SMember>\n";
    twice.insert(twice.indexOf(small) + small.size(),
                 "<SMember id=\"111\" name=\"给水管\"><Config/></SMember><SMember id=\"112\" "
                 "name=\"排水管\"><Config/></SMember>");
    std::vector<rules::Specialty> specialties = Read(twice)->Specialties();
    for (rules::Specialty& specialty : specialties)
        for (rules::BigCategory& big : specialty.bigCategories)
            std::erase_if(big.smallCategories,
                          [](const rules::SmallCategoryPtr& kept) { return kept->name == u"给水管"; });
    const auto written = Read(rules::WriteRules(twice, rules::Configuration(std::move(specialties))));
    EXPECT_EQ(written->Find(test::PipeCategory), nullptr);
    EXPECT_NE(written->Find(u"给排水\\管道\\排水管"_s), nullptr);
}

TEST(RuleWriter, RefusesWhatIsNoRuleFileAndTextsThatXmlForbids)
{
    EXPECT_THROW(rules::WriteRules("<a/>", rules::Configuration({})), xml::Error);
    EXPECT_THROW(rules::WriteRules("no xml", rules::Configuration({})), xml::Error);
    EXPECT_THROW(rules::WriteRules(File, test::Pipes({PipeRule(2, CString(QChar(1)), u"01"_s)})), xml::Error);
}
