#include "bench/CheckFigures.h"

#include "bench/Measure.h"
#include "platform/Files.h"
#include "platform/Paths.h"
#include "rules/check/Check.h"
#include "rules/model/Snapshot.h"
#include "shared/GatherCheckFacts.h"
#include "store/CXmlQdDeConfig.h"

#include <QtCore/QByteArray>
#include <QtCore/QFile>

#include <algorithm>
#include <array>
#include <stdexcept>
#include <utility>
#include <vector>

using namespace Qt::StringLiterals;

namespace bench {

namespace {

const CString Pipes = u"给排水\\管道\\给水管"_s;

/// The attributes of the generated category; ranges meet without gap.
constexpr int Materials = 10;
constexpr int Connections = 5;
constexpr int Systems = 4;
constexpr std::array Diameters{0, 15, 20, 25, 32, 40, 50, 65, 80, 100, 125, 150, 200};
constexpr int Ranges = static_cast<int>(Diameters.size()) - 1;
constexpr int Insulations = 2;
constexpr int Shared = Materials * Connections * Systems * Ranges * Insulations;
constexpr int Hidden = 200;

QByteArray Is(int id, const QByteArray& attribute, const QByteArray& sign, const QByteArray& value)
{
    return "<condition id=\"" + QByteArray::number(id) + "\" strCFType=\"" + attribute +
           "\" bEqual=\"true\" strEqualoperator=\"" + sign +
           "\" strRangeoperator1=\"\" strRangeoperator2=\"\" strValue=\"" + value +
           "\" strRange1=\"\" strRange2=\"\"/>\n";
}

QByteArray Between(int id, const QByteArray& attribute, const QByteArray& lower, const QByteArray& upper)
{
    return "<condition id=\"" + QByteArray::number(id) + "\" strCFType=\"" + attribute +
           "\" bEqual=\"false\" strEqualoperator=\"\" strRangeoperator1=\"＞\" strRangeoperator2=\"≤\" "
           "strValue=\"\" "
           "strRange1=\"" +
           lower + "\" strRange2=\"" + upper + "\"/>\n";
}

/// A rule for one of everything, or across three sizes and both insulations.
QByteArray RuleText(int index)
{
    const bool isHidden = index >= Shared;
    const int i = isHidden ? (index - Shared) * 7 % Shared : index;
    const int range = i / (Materials * Connections * Systems) % Ranges;
    const int first = isHidden ? std::min(range, Ranges - 3) : range;
    const int last = isHidden ? first + 3 : first + 1;
    const int insulation = i / (Materials * Connections * Systems * Ranges);
    const QByteArray id = QByteArray::number(index + 2);
    const QByteArray base = "03100100" + QByteArray::number(1 + index / 990);
    QByteArray text = "<Config id=\"" + id +
                      "\" LastQdId=\"1\" LastConditionId=\"6\" bDefault=\"0\" LastDeId=\"0\">\n<Condition>\n";
    text += Is(1, "材质", "＝", "管材" + QByteArray::number(i % Materials));
    text += Is(2, "连接方式", "＝", "连接" + QByteArray::number(i / Materials % Connections));
    text += Is(3, "系统类型", "＝", "系统" + QByteArray::number(i / (Materials * Connections) % Systems));
    text += Between(4, "公称直径", QByteArray::number(Diameters[static_cast<std::size_t>(first)]),
                    QByteArray::number(Diameters[static_cast<std::size_t>(last)]));
    text += Between(5, "保温厚度",
                    isHidden          ? "10"
                    : insulation == 0 ? "0"
                                      : "20",
                    isHidden          ? "30"
                    : insulation == 0 ? "20"
                                      : "60");
    text += Is(6, "安装部位", "≠", "屋面");
    text += "</Condition>\n<Qd>\n<qd id=\"1\" strQdId=\"" + base +
            QByteArray::number(1 + index % 990).rightJustified(3, '0') +
            "\" strQdIdUser=\"\" strName=\"管道\" strUnit=\"m\" strUnitCode=\"1\" strtypeid=\"\" "
            "strQdCode=\"GB50856-2013\" strFormula=\"管道长度\" "
            "strAnnex=\"是\">\n<De/>\n</qd>\n</Qd>\n<De/>\n</Config>\n";
    return text;
}

} // namespace

QByteArray ManyRules()
{
    QByteArray text =
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<自动套清单定额配置信息 Version=\"0.1.0\">\n"
        "<给排水 id=\"1\" name=\"给排水\">\n<LMember id=\"101\" name=\"管道\">\n"
        "<SMember id=\"10101\" name=\"给水管\" LastConfigId=\"5001\">\n<Config>\n";
    for (int rule = 0; rule < Shared + Hidden; ++rule)
        text += RuleText(rule);
    return text + "<Config id=\"1\" LastQdId=\"0\" LastConditionId=\"0\" bDefault=\"1\" "
                  "LastDeId=\"0\"/>\n</Config>\n"
                  "</SMember>\n</LMember>\n</给排水>\n</自动套清单定额配置信息>\n";
}

namespace {

struct Input
{
    CString path;
    CString spec;
};

std::size_t CheckAll(const std::vector<Input>& inputs, const rules::CheckFacts& facts)
{
    std::size_t findings = 0;
    for (const Input& input : inputs) {
        CString reason;
        rules::FileStructure structure;
        const auto configuration = rules::ReadRuleFile(input.path, reason, &structure);
        if (!configuration) throw std::runtime_error(reason.toStdString());
        findings += rules::Check(*configuration, structure, facts).size();
    }
    return findings;
}

void OpenAll(const std::vector<Input>& inputs)
{
    for (const Input& input : inputs) {
        const CXmlQdDeConfig store(input.path, input.spec);
        Keep(&store);
    }
}

bool Measure(const Figure& figure, const std::vector<Input>& inputs, const rules::CheckFacts& facts,
             int rounds)
{
    const Timed timed = Alternate(
        rounds,
        [&] {
            const std::size_t findings = CheckAll(inputs, facts);
            Keep(&findings);
        },
        [&] { OpenAll(inputs); });
    return Report(figure, timed.oursMs, timed.peerMs, timed.Ratio());
}

/// What an editor does after each change: one category, as it stands in memory.
bool MeasureCategory(const Figure& figure, const Input& input, const rules::CheckFacts& facts, int rounds)
{
    CString reason;
    const auto configuration = rules::ReadRuleFile(input.path, reason);
    if (!configuration) throw std::runtime_error(reason.toStdString());
    const rules::SmallCategory& category =
        *configuration->Specialties().front().bigCategories.front().smallCategories.front();
    const Timed timed = Alternate(
        rounds,
        [&] {
            const std::size_t findings = rules::CheckCategory(category, facts).size();
            Keep(&findings);
        },
        [&] { OpenAll({input}); });
    return Report(figure, timed.oursMs, timed.peerMs, timed.Ratio());
}

rules::CheckFacts FactsOf(const QString& project)
{
    embedded::EmbeddedHost host(project);
    return shared::CheckFactsOf(host, true);
}

} // namespace

bool Check(const QString& folder, const QString& project, int rounds)
{
    rules::CheckFacts facts = FactsOf(project);
    // Attributes without lists, so that every number counts.
    facts.attributes.erase(Pipes);
    facts.categories[Pipes].clear();
    for (const CString& name :
         {u"材质"_s, u"连接方式"_s, u"系统类型"_s, u"公称直径"_s, u"保温厚度"_s, u"安装部位"_s})
        facts.categories[Pipes].emplace_back().name = name;
    const std::vector<Input> inputs{{platform::FromNative(folder + u"/many.xml"_s), u"给排水"_s}};
    platform::Files().WriteInPlace(inputs[0].path, ManyRules());
    if (CheckAll(inputs, facts) != Hidden) throw std::runtime_error("the hidden rules are not what is found");
    const bool met = Measure({"check", "open", 20}, inputs, facts, rounds);
    return MeasureCategory({"check_category", "open", 1}, inputs[0], facts, rounds) && met;
}

bool CheckSample(const QString& folder, const QString& project, int rounds)
{
    const rules::CheckFacts facts = FactsOf(project);
    std::vector<Input> inputs;
    for (const auto& [name, spec] :
         {std::pair(u"Plumbing"_s, u"给排水"_s), std::pair(u"Electrical"_s, u"电气"_s),
          std::pair(u"Hvac"_s, u"暖通"_s)}) {
        QFile file(QStringLiteral(KTQDDE_SAMPLES) + u'/' + name + u"Rules.xml"_s);
        if (!file.open(QIODevice::ReadOnly)) throw std::runtime_error("no sample");
        inputs.push_back({platform::FromNative(folder + u'/' + name + u".xml"_s), spec});
        platform::Files().WriteInPlace(inputs.back().path, file.readAll());
    }
    return Measure({"check_sample", "open", 3}, inputs, facts, rounds);
}

} // namespace bench
