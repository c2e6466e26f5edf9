#include "rules/model/Snapshot.h"

#include "platform/Paths.h"
#include "store/CXmlQdDeConfig.h"
#include "support/HostGuard.h"
#include "support/SourceTree.h"
#include "tree/Spec.h"
#include "xml/Dom.h"

#include <QtCore/QFile>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using rules::ConfigurationPtr;

namespace {

const QByteArray FileHead =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<自动套清单定额配置信息 Version=\"1\">\n";
const QByteArray FileTail = "</自动套清单定额配置信息>\n";

const QByteArray OneRule =
    R"(<给排水 id="1" name="给排水"><LMember id="11" name="管道"><SMember id="111" name="给水管">
<Config><Config id="4" bDefault="0"><Condition>
<condition id="7" strCFType="材质" bEqual="true" strEqualoperator="＝" strRangeoperator1="r" strRangeoperator2="s" strValue=" 铜管 " strRange1="x" strRange2="y"/>
<condition id="8" strCFType="公称直径" strRangeoperator1="＞" strRange1="15"/>
</Condition><Qd><qd id="2" strQdId="01" strName="n" strUnit="m" strUnitCode="1" strQdCode="L" strFormula="f" strAnnex="是"><De>
<De id="3" strName="q" strUnit="10m" strDeId="d" strDeCode="M" strFormula="g"/></De></qd></Qd><De><De id="5" strDeId="e"/></De></Config>
<!-- a remark --></Config></SMember></LMember></给排水>
)";

/// All that a snapshot holds, as text.
CString Told(const rules::Configuration& configuration)
{
    CString text;
    const auto quota = [&](const rules::QuotaItem& item) {
        text += u"[D%1 %2 %3 %4]"_s.arg(QString::number(item.id), item.record.strDeId, item.record.strUnit,
                                        item.record.strFormula);
    };
    for (const rules::Specialty& specialty : configuration.Specialties()) {
        text += u"%1 %2\n"_s.arg(specialty.id).arg(specialty.name);
        for (const rules::BigCategory& big : specialty.bigCategories) {
            text += u" %1 %2\n"_s.arg(big.id).arg(big.name);
            for (const rules::SmallCategoryPtr& small : big.smallCategories) {
                text += u"  %1 %2\n"_s.arg(small->id).arg(small->text);
                for (const rules::Rule& rule : small->rules) {
                    text += u"   %1 %2"_s.arg(rule.id).arg(rule.Text());
                    for (const rules::BillItem& bill : rule.bills) {
                        text += u"[B%1 %2 %3]"_s.arg(QString::number(bill.id), bill.record.strQdId,
                                                     bill.record.strFormula);
                        std::for_each(bill.quotas.begin(), bill.quotas.end(), quota);
                    }
                    std::for_each(rule.quotas.begin(), rule.quotas.end(), quota);
                    text += u'\n';
                }
            }
        }
    }
    return text;
}

/// The snapshot of a file of that content; null with the reason.
ConfigurationPtr ReadBytes(const QByteArray& bytes, CString& reason)
{
    const test::TempFolder folder;
    return rules::ReadRuleFile(folder.WriteFile(u"r.xml"_s, bytes), reason);
}

} // namespace

TEST(Snapshot, HoldsEveryFieldOfARuleAsTheFileHasIt)
{
    CString reason;
    const ConfigurationPtr configuration = ReadBytes(FileHead + OneRule + FileTail, reason);
    ASSERT_NE(configuration, nullptr) << reason.toStdString();
    const rules::SmallCategoryPtr pipes = configuration->Find(u"给排水\\管道\\给水管"_s);
    ASSERT_NE(pipes, nullptr);
    ASSERT_EQ(pipes->rules.size(), 3U) << "the remark is a rule without anything, a default rule comes last";
    const rules::Rule& rule = pipes->rules[0];
    ASSERT_EQ(rule.conditions.size(), 2U);
    EXPECT_EQ(rule.conditions[0],
              (rules::Condition{7, u"材质"_s, true, u"＝"_s, u" 铜管 "_s, u"r"_s, u"x"_s, u"s"_s, u"y"_s}));
    EXPECT_EQ(rule.conditions[1],
              (rules::Condition{8, u"公称直径"_s, false, {}, {}, u"＞"_s, u"15"_s, {}, {}}));
    EXPECT_EQ(rule.Text(), u"材质＝ 铜管 ;公称直径＞15;"_s);
    EXPECT_EQ(rule.bills.at(0).record.strAnnex, u"是"_s);
    EXPECT_FALSE(pipes->rules[1].isDefault);
    EXPECT_TRUE(pipes->rules[2].isDefault);
    EXPECT_EQ(
        Told(*configuration),
        u"1 给排水\n 11 管道\n  111 给排水\\管道\\给水管\n   4 材质＝ 铜管 ;公称直径＞15;[B2 01 f][D3 d 10m g][D5 e  ]\n"_s
        u"   0 \n   1 其它\n"_s);
}

TEST(Snapshot, CategoriesOutliveTheConfiguration)
{
    CString reason;
    rules::SmallCategoryPtr pipes =
        ReadBytes(FileHead + OneRule + FileTail, reason)->Find(u"给排水\\管道\\给水管"_s);
    EXPECT_EQ(pipes->rules.size(), 3U);
}

TEST(Snapshot, FindsNoCategoryOfAnotherName)
{
    CString reason;
    const ConfigurationPtr configuration = ReadBytes(FileHead + OneRule + FileTail, reason);
    EXPECT_EQ(configuration->Find(u"给排水\\管道\\给水"_s), nullptr);
    EXPECT_EQ(configuration->Find({}), nullptr);
}

TEST(Snapshot, ReadsAllSpecialtiesAndOfEqualNamesTheFirst)
{
    CString reason;
    const ConfigurationPtr configuration = ReadBytes(
        FileHead +
            "<a id=\"1\" name=\"甲\"/><!-- x --><b id=\"2\" name=\"乙\"><LMember name=\"大\" id=\"9\"/>"
            "<LMember name=\"大\" id=\"8\"/><LMember/></b><c id=\"3\" name=\"甲\"/><d/>" +
            FileTail,
        reason);
    ASSERT_NE(configuration, nullptr);
    EXPECT_EQ(Told(*configuration), u"1 甲\n2 乙\n 9 大\n"_s);
}

TEST(Snapshot, FileThatIsNoRuleFileIsRefusedWithTheReason)
{
    const test::TempFolder folder;
    CString reason;
    EXPECT_EQ(rules::ReadRuleFile(folder.Path(u"none.xml"_s), reason), nullptr);
    EXPECT_FALSE(reason.isEmpty());
    EXPECT_FALSE(folder.Exists(u"none.xml"_s)) << "nothing is made";
    EXPECT_EQ(ReadBytes("<a><b></a>", reason), nullptr);
    EXPECT_TRUE(reason.contains(u"第 1 行"_s)) << reason.toStdString();
    EXPECT_EQ(ReadBytes("<other/>", reason), nullptr);
    EXPECT_TRUE(reason.contains(u"不是规则文件"_s)) << reason.toStdString();
}

TEST(Snapshot, ReadsEveryRuleOfTheSamples)
{
    for (const QString& name : {u"PlumbingRules"_s, u"ElectricalRules"_s, u"HvacRules"_s, u"SampleRules"_s}) {
        const QString native = test::InSourceTree(u"samples/%1.xml"_s.arg(name));
        QFile file(native);
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        const QByteArray bytes = file.readAll();
        CString reason;
        const ConfigurationPtr configuration = rules::ReadRuleFile(platform::FromNative(native), reason);
        ASSERT_NE(configuration, nullptr) << reason.toStdString();
        qsizetype rules = 0;
        qsizetype conditions = 0;
        for (const auto& specialty : configuration->Specialties())
            for (const auto& big : specialty.bigCategories)
                for (const auto& small : big.smallCategories)
                    for (const auto& rule : small->rules) {
                        ++rules;
                        conditions += static_cast<qsizetype>(rule.conditions.size());
                    }
        EXPECT_EQ(rules, bytes.count("bDefault="));
        EXPECT_EQ(conditions, bytes.count("strCFType="));
        EXPECT_GT(conditions, 0);
    }
}

TEST(Snapshot, OfATreeIsThatOfItsFileAndOutlivesIt)
{
    const test::HostGuard guard;
    CString reason;
    const CString path = guard.Folder().Path(u"rules.xml"_s);
    const CString specialty = u"给排水"_s;
    ConfigurationPtr ofTree;
    {
        CXmlQdDeConfig store(path, specialty); // makes the file with the host's categories
        IQdDeConfigData& data = store;
        ASSERT_TRUE(data.Save());
        const IXMLDOMDocument document = xml::Document::Create();
        ASSERT_TRUE(document.Load(path));
        Spec spec;
        spec.SetSpecName(specialty);
        ASSERT_TRUE(spec.ReadData(document.FirstChild().FirstChild()));
        ofTree = rules::TakeSnapshot(spec);
    }
    const ConfigurationPtr ofFile = rules::ReadRuleFile(path, reason);
    ASSERT_NE(ofFile, nullptr);
    EXPECT_EQ(Told(*ofTree), Told(*ofFile));
    EXPECT_TRUE(Told(*ofTree).contains(u"其它"_s));
}

TEST(Snapshot, OfOneCategoryNamesWhatStandsBesideItAndIsThatOfTheWholeFile)
{
    const QByteArray bytes = FileHead +
                             "<电气 id=\"2\" name=\"电气\"><LMember id=\"21\" name=\"灯\"/></电气>\n"
                             "<给排水 id=\"1\" name=\"给排水\"><LMember id=\"12\" name=\"设备\"/>"
                             "<LMember id=\"11\" name=\"管道\"><SMember id=\"110\" name=\"排水管\"/>"
                             "<SMember id=\"111\" name=\"给水管\"/></LMember></给排水>\n" +
                             FileTail;
    const CString pipes = u"给排水\\管道\\给水管"_s;
    const xml::Document document = xml::Document::Create();
    ASSERT_TRUE(document.LoadBytes(bytes));
    CString reason;
    const ConfigurationPtr one = rules::ReadCategory(document, pipes, reason);
    ASSERT_NE(one, nullptr) << reason.toStdString();
    ASSERT_EQ(one->Specialties().size(), 2U);
    EXPECT_EQ(one->Specialties()[0].name, u"电气"_s);
    EXPECT_TRUE(one->Specialties()[0].bigCategories.empty());
    ASSERT_EQ(one->Specialties()[1].bigCategories.size(), 2U);
    EXPECT_EQ(one->Specialties()[1].bigCategories[0].name, u"设备"_s);
    ASSERT_EQ(one->Specialties()[1].bigCategories[1].smallCategories.size(), 1U);
    const ConfigurationPtr all = rules::ReadRules(bytes, reason);
    ASSERT_NE(all, nullptr);
    EXPECT_EQ(one->Find(pipes)->rules, all->Find(pipes)->rules);
    EXPECT_EQ(one->Find(pipes)->isCompleted, all->Find(pipes)->isCompleted);

    const xml::Document other = xml::Document::Create();
    ASSERT_TRUE(other.LoadBytes("<other/>"));
    EXPECT_EQ(rules::ReadCategory(other, pipes, reason), nullptr);
    EXPECT_TRUE(reason.contains(u"不是规则文件"_s)) << reason.toStdString();
}
