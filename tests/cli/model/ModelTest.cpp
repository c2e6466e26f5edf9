#include "cli/CliTesting.h"
#include "cli/model/RequestGenerator.h"
#include "support/StrictXml.h"

#include <QtCore/QDir>
#include <QtCore/QJsonDocument>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

using test::Cli;
using test::ParseXml;
using test::XmlTree;
using namespace test::model;

/// What a run of the comparison starts from.
struct Start
{
    const char* name;
    const char* mode;
    unsigned seed;
    QByteArray (*file)(); ///< content of the current configuration; none for null
};

std::ostream& operator<<(std::ostream& out, const Start& start)
{
    return out << start.name;
}

/// A rule file in which much is not as the program writes it: another order, repeated and missing names and
/// ids, low counters, comments in containers, a missing default rule, children of other names.
QByteArray OddFile()
{
    return R"(<?xml version="1.0" encoding="UTF-8"?>
<自动套清单定额配置信息 CalMode="清单版" Version="0.0.1">
  <!-- first -->
  <电气 id="2" name="电气"><LMember name="电缆"><!-- kept --></LMember></电气>
  <任何 id="1" name="给排水" extra="x">
    <LMember name="阀门附件" id="7">
      <SMember name="水表"><Config><Config id="5" bDefault="0" LastQdId="9"/><Config id="5"/></Config></SMember>
      <SMember name="没有的小类"><Config/></SMember>
    </LMember>
    <LMember name="管道">
      <!-- between -->
      <SMember name="热水管" LastConfigId="50"/>
      <SMember name="给水管" LastConfigId="50">
        <Config>
          <Config id="4" LastQdId="0" LastConditionId="1" bDefault="0">
            <Condition><!-- nothing --><c id="3" strCFType="A" bEqual="TRUE"/><condition id="3" bEqual="true"/></Condition>
            <condition id="77"/>
            <Qd><qd id="2" strQdId="1"><De><De id="6"/><!-- quota --><De id="2"/></De><De><De id="40"/></De></qd></Qd>
            <De><De id="1"/><De id="1" strName="second"/></De>
          </Config>
          <!-- a rule of its own -->
          <Config id="7" bDefault="no"/>
        </Config>
      </SMember>
      <SMember name="给水管"><Config><Config id="99" bDefault="1"/></Config></SMember>
    </LMember>
  </任何>
  <弱电 id="5" name="弱电"/>
</自动套清单定额配置信息>
)";
}

/// The categories of 给排水 as the program lists them.
Tree HostCategories(const Cli& cli)
{
    const QJsonObject catalogue =
        cli.RunInProject({u"catalog"_s, u"--json"_s, u"--spec"_s, u"给排水"_s}).Json();
    const QJsonObject specialty = catalogue.value(u"specialties"_s).toArray().at(0).toObject();
    Tree tree{specialty.value(u"id"_s).toInt(), specialty.value(u"name"_s).toString(), {}};
    for (const auto& big : specialty.value(u"bigCategories"_s).toArray()) {
        const QJsonObject bigObject = big.toObject();
        tree.bigs.push_back({bigObject.value(u"id"_s).toInt(), bigObject.value(u"name"_s).toString(), {}});
        for (const auto& small : bigObject.value(u"smallCategories"_s).toArray())
            tree.bigs.back().smalls.push_back({small.toObject().value(u"id"_s).toInt(),
                                               small.toObject().value(u"name"_s).toString(),
                                               0,
                                               {}});
    }
    return tree;
}

/// The version that the program stamps on files.
QString StampedVersion(const Cli& cli)
{
    cli.Batch("{\"op\":\"Save\"}\n", {u"--config"_s, u"./version.xml"_s});
    return ParseXml(cli.Folder().ReadFile(u"version.xml"_s)).Attribute(u"Version"_s);
}

/// The request as the program takes it: a category text stands in place of three ids, where the model reads
/// the ids.
QJsonObject AsWritten(QJsonObject request)
{
    QJsonObject path = request.value(u"path"_s).toObject();
    if (!path.contains(u"category"_s)) return request;
    for (const QString& key : {u"specId"_s, u"lMemberId"_s, u"sMemberId"_s})
        path.remove(key);
    request.insert(u"path"_s, path);
    return request;
}

/// The answer as the model can predict it: the words of an error are the program's own.
QJsonObject Comparable(QJsonObject answer)
{
    if (answer.contains(u"error"_s)) answer.insert(u"error"_s, u""_s);
    answer.remove(u"line"_s);
    return answer;
}

QByteArray ToText(const QJsonObject& object)
{
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

/// A model that starts where the program does, and the requests that were made of it.
class Comparison
{
public:
    explicit Comparison(const Start& start)
        : m_cli(QString::fromUtf8(start.mode)), m_current(m_cli.Folder().Native(Cli::RuleFile()))
    {
        const Tree host = HostCategories(m_cli);
        const QString version = StampedVersion(m_cli);
        QDir().mkpath(m_cli.Folder().Native(u"project\\app\\自动套配置"_s));
        std::map<QString, XmlTree> files;
        if (start.file != nullptr) {
            m_cli.Folder().WriteFile(Cli::RuleFile(), start.file());
            files[m_current] = ParseXml(start.file());
        }
        m_cli.Folder().WriteFile(u"b.xml"_s, Cli::Sample());
        files[m_cli.Folder().Native(u"b.xml"_s)] = ParseXml(Cli::Sample());
        const XmlTree fileTemplate = ParseXml(m_cli.Folder().ReadFile(u"project\\app\\QdDeConfig.def"_s));
        m_model = std::make_unique<StoreModel>(Surroundings{host, version, fileTemplate, m_current}, files);
    }

    void Generate(unsigned seed, int count)
    {
        RequestGenerator generator(seed, {m_current, m_cli.Folder().Native(u"b.xml"_s),
                                          m_cli.Folder().Native(u"c.d.xml"_s),
                                          m_cli.Folder().Native(u"missing.xml"_s)});
        for (int i = 0; i < count; ++i) {
            const QJsonObject request = generator.Next(m_model->Rules());
            m_script += ToText(AsWritten(request)) + '\n';
            m_expected.append(m_model->Run(request));
        }
    }

    /// That the requests try enough: every operation done many times, every one that can be refused refused,
    /// and errors.
    void ExpectVariety() const
    {
        const QStringList neverRefused{u"Save"_s, u"SaveAs"_s, u"NewFile"_s, u"DelDeInQdNode"_s};
        QMap<QString, int> done;
        QMap<QString, int> refused;
        int errors = 0;
        for (const QJsonObject& answer : m_expected) {
            (answer.value(u"ok"_s).toBool() ? done : refused)[answer.value(u"op"_s).toString()]++;
            errors += answer.contains(u"error"_s) ? 1 : 0;
        }
        EXPECT_EQ(done.size(), 23);
        for (auto op = done.begin(); op != done.end(); ++op)
            EXPECT_GT(op.value(), 10) << op.key().toStdString();
        EXPECT_EQ(refused.size(), done.size() - neverRefused.size());
        EXPECT_GT(errors, 10);
    }

    void CompareAnswers() const
    {
        const test::Outcome outcome = m_cli.Batch(m_script, {u"--keep-going"_s});
        const QList<QJsonObject> answers = outcome.Lines();
        const QList<QByteArray> requests = m_script.split('\n');
        ASSERT_EQ(answers.size(), m_expected.size()) << outcome.err.right(2000).toStdString();
        for (qsizetype i = 0; i < answers.size(); ++i)
            ASSERT_EQ(ToText(Comparable(answers[i])), ToText(m_expected[i]))
                << "line " << i + 1 << ": " << requests[i].toStdString();
        EXPECT_EQ(outcome.status, 1) << "some of the requests miss on purpose";
    }

    void CompareFiles() const
    {
        for (const auto& [path, expected] : m_model->Files()) {
            QFile file(path);
            ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
            const QByteArray bytes = file.readAll();
            EXPECT_TRUE(test::IsStrictXml(bytes)) << path.toStdString();
            EXPECT_EQ(ParseXml(bytes).ToText(), expected.ToText()) << path.toStdString();
        }
        EXPECT_FALSE(QFile::exists(m_cli.Folder().Native(u"missing.xml"_s)));
    }

    void CompareCurrentName() const
    {
        ASSERT_TRUE(m_model->CurrentName().has_value()) << "a run without a change of file proves less";
        const QByteArray ini = m_cli.Folder().ReadFile(u"project\\SysRegedit.ini"_s);
        EXPECT_TRUE(ini.contains("ConfigName=" + m_model->CurrentName()->toUtf8())) << ini.toStdString();
    }

private:
    Cli m_cli;
    QString m_current;
    std::unique_ptr<StoreModel> m_model;
    QByteArray m_script;
    QList<QJsonObject> m_expected;
};

class BatchModel : public testing::TestWithParam<Start>
{
};

} // namespace

TEST_P(BatchModel, ThousandsOfRandomOperationsGiveThePredictedAnswersAndFiles)
{
    Comparison comparison(GetParam());
    comparison.Generate(GetParam().seed, 4000);
    comparison.ExpectVariety();
    comparison.CompareAnswers();
    if (HasFatalFailure()) return;
    comparison.CompareFiles();
    comparison.CompareCurrentName();
}

INSTANTIATE_TEST_SUITE_P(Starts, BatchModel,
                         testing::Values(Start{"MissingFileInBillMode", "bill", 1, nullptr},
                                         Start{"MissingFileInQuotaMode", "quota", 2, nullptr},
                                         Start{"SampleFileInBillMode", "bill", 3, &Cli::Sample},
                                         Start{"SampleFileInQuotaMode", "quota", 4, &Cli::Sample},
                                         Start{"OddFileInBillMode", "bill", 5, &OddFile},
                                         Start{"OddFileInQuotaMode", "quota", 6, &OddFile}),
                         [](const auto& start) { return std::string(start.param.name); });
