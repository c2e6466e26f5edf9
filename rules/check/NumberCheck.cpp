#include "rules/check/Checks.h"

#include "rules/match/CellText.h"

#include <map>
#include <set>
#include <utility>

using namespace Qt::StringLiterals;

namespace rules {

namespace {

/// The first rule that gave a bill number, and what it said of it.
struct First
{
    const SmallCategory* category = nullptr;
    std::size_t rule = 0;
    CString name;
    CString unit;
    std::map<CString, CString> values; ///< what the rule asks of attributes by ＝, by normalised name
    std::set<CString> told;            ///< names, units and features that were told already

    CString Place() const { return u"%1 第 %2 条"_s.arg(category->text, QString::number(rule + 1)); }
};

std::map<CString, CString> ValuesOf(const Rule& rule)
{
    std::map<CString, CString> values;
    for (const Condition& condition : rule.conditions)
        if (condition.isValueForm && condition.equalOperator == u"＝"_s)
            values.try_emplace(Normalised(condition.attribute), WithoutBlanks(condition.value).toString());
    return values;
}

/// Compares what two rules say of one bill number.
class NumberCheck
{
public:
    NumberCheck(const CheckFacts& facts, FindingList& findings) : m_facts(facts), m_findings(findings) {}

    void Look(const SmallCategory& category, std::size_t index)
    {
        const Rule& rule = category.rules[index];
        for (const BillItem& bill : rule.bills) {
            const QdStruct& record = bill.record;
            const bool isOther = !m_facts.bills.code.isEmpty() &&
                                 record.strQdCode.compare(m_facts.bills.code, Qt::CaseInsensitive) != 0;
            if (record.strQdId.isEmpty() || isOther) continue;
            const auto [place, isNew] = m_first.try_emplace({record.strQdId, record.strQdCode.toLower()});
            First& first = place->second;
            if (isNew)
                first = {&category,      index, record.strName.trimmed(), record.strUnit.trimmed(),
                         ValuesOf(rule), {}};
            else
                Compare(category, index, record, first);
        }
    }

private:
    void Compare(const SmallCategory& category, std::size_t index, const QdStruct& record, First& first)
    {
        const CString name = record.strName.trimmed();
        const CString unit = record.strUnit.trimmed();
        if (name != first.name && first.told.insert(u"name "_s + name).second)
            Add(FindingCode::NumberTwoNames, category, index, first,
                u"清单编号 %1 有两个名称：这里是“%2”，%3是“%4”"_s.arg(record.strQdId, name, first.Place(),
                                                                      first.name));
        if (Normalised(unit) != Normalised(first.unit) && first.told.insert(u"unit "_s + unit).second)
            Add(FindingCode::NumberTwoUnits, category, index, first,
                u"清单编号 %1 有两个单位：这里是“%2”，%3是“%4”"_s.arg(record.strQdId, unit, first.Place(),
                                                                      first.unit));
        if (name == first.name) CompareFeatures(category, index, record, first);
    }

    void CompareFeatures(const SmallCategory& category, std::size_t index, const QdStruct& record,
                         First& first)
    {
        const Rule& rule = category.rules[index];
        for (const auto& [attribute, value] : ValuesOf(rule)) {
            const auto other = first.values.find(attribute);
            if (other == first.values.end() || Normalised(other->second) == Normalised(value)) continue;
            if (!first.told.insert(u"feature "_s + attribute).second) continue;
            Add(FindingCode::NumberTwoFeatures, category, index, first,
                u"清单编号 %1 用于两种特征：这里 %2＝%3，%4 %2＝%5"_s.arg(record.strQdId, attribute, value,
                                                                          first.Place(), other->second));
        }
    }

    void Add(FindingCode code, const SmallCategory& category, std::size_t index, const First& first,
             const CString& text)
    {
        Finding& finding = m_findings.Add(code, category, index, text);
        if (first.category == &category && first.rule != index)
            finding.others = {static_cast<int>(first.rule) + 1};
    }

    const CheckFacts& m_facts;
    FindingList& m_findings;
    std::map<std::pair<CString, CString>, First> m_first; ///< by number and library
};

} // namespace

void CheckNumbers(const Configuration& configuration, const CheckFacts& facts, FindingList& findings)
{
    if (!facts.isBillMode) return;
    NumberCheck check(facts, findings);
    for (const Specialty& specialty : configuration.Specialties())
        for (const BigCategory& big : specialty.bigCategories)
            for (const SmallCategoryPtr& small : big.smallCategories)
                for (std::size_t rule = 0; rule < small->rules.size(); ++rule)
                    check.Look(*small, rule);
}

} // namespace rules
