#include "rules/check/Check.h"
#include "rules/check/FindingList.h"
#include "rules/match/CellText.h"

#include <map>
#include <optional>
#include <set>
#include <tuple>
#include <utility>

using namespace Qt::StringLiterals;

namespace rules {

namespace {

/// Where a rule stands.
struct Place
{
    const SmallCategory* category = nullptr;
    std::size_t rule = 0;

    CString Text() const { return u"%1 第 %2 条"_s.arg(category->text, QString::number(rule + 1)); }
};

/// What the first rule that gave a bill number said of it.
struct First
{
    Place place;
    CString name;
    CString unit;
    std::set<CString> told; ///< names and units that were told already
};

/// The value that the first rule to do so asks an attribute for.
struct Asked
{
    Place place;
    CString value;
    bool isTold = false; ///< that another rule asks for another one
};

/// A row of the bill: the first rule that gives it, and once there is another one what they ask for by ＝, by
/// normalised name of the attribute. Most rows come of one rule alone.
struct Row
{
    Place first;
    std::map<CString, Asked> features{};
    bool hasFeatures = false;
};

std::map<CString, CString> ValuesOf(const Rule& rule)
{
    std::map<CString, CString> values;
    for (const Condition& condition : rule.conditions)
        if (condition.isValueForm && condition.equalOperator == u"＝"_s)
            values.try_emplace(Normalised(condition.attribute), WithoutBlanks(condition.value).toString());
    return values;
}

/// Whether ＝ takes one for the other.
bool IsSameValue(const CString& a, const CString& b)
{
    if (Normalised(a) == Normalised(b)) return true;
    const std::optional<Decimal> number = PlainNumber(a);
    return number && number == PlainNumber(b);
}

/// Compares what the rules say of one bill number.
class NumberCheck
{
public:
    NumberCheck(const CheckFacts& facts, FindingList& findings)
        : m_library(facts.bills.code.toLower()), m_findings(findings)
    {
    }

    void Look(const Place& place)
    {
        const Rule& rule = place.category->rules[place.rule];
        if (rule.bills.empty()) return;
        const CString specialty = place.category->text.section(u'\\', 0, 0);
        for (const BillItem& bill : rule.bills) {
            const QdStruct& record = bill.record;
            const CString library = record.strQdCode.toLower();
            const bool isOther = !m_library.isEmpty() && library != m_library;
            if (record.strQdId.isEmpty() || isOther) continue;
            const CString name = record.strName.trimmed();
            const CString unit = record.strUnit.trimmed();
            const auto [first, isNew] =
                m_first.try_emplace({record.strQdId, library}, First{place, name, unit, {}});
            if (!isNew) Compare(place, record.strQdId, name, unit, first->second);
            const auto [row, isNewRow] =
                m_rows.try_emplace({record.strQdId, specialty, library, name, unit}, Row{place});
            if (!isNewRow) CompareFeatures(place, record.strQdId, row->second);
        }
    }

private:
    void Compare(const Place& place, const CString& number, const CString& name, const CString& unit,
                 First& first)
    {
        if (name != first.name && first.told.insert(u"name "_s + name).second)
            Add(FindingCode::NumberTwoNames, place, first.place,
                u"清单编号 %1 有两个名称：这里是“%2”，%3是“%4”"_s.arg(number, name, first.place.Text(),
                                                                      first.name));
        if (Normalised(unit) != Normalised(first.unit) && first.told.insert(u"unit "_s + unit).second)
            Add(FindingCode::NumberTwoUnits, place, first.place,
                u"清单编号 %1 有两个单位：这里是“%2”，%3是“%4”"_s.arg(number, unit, first.place.Text(),
                                                                      first.unit));
    }

    /// Where any two rules differ in an attribute, one of them differs from the first that asks for it.
    void CompareFeatures(const Place& place, const CString& number, Row& row)
    {
        if (!std::exchange(row.hasFeatures, true))
            for (const auto& [attribute, value] : ValuesOf(RuleAt(row.first)))
                row.features.try_emplace(attribute, Asked{row.first, value});
        for (const auto& [attribute, value] : ValuesOf(RuleAt(place))) {
            Asked& asked = row.features.try_emplace(attribute, Asked{place, value}).first->second;
            if (asked.isTold || IsSameValue(asked.value, value)) continue;
            asked.isTold = true;
            Add(FindingCode::NumberTwoFeatures, place, asked.place,
                u"清单编号 %1 用于两种特征：这里 %2＝%3，%4 %2＝%5"_s.arg(number, attribute, value,
                                                                          asked.place.Text(), asked.value));
        }
    }

    static const Rule& RuleAt(const Place& place) { return place.category->rules[place.rule]; }

    void Add(FindingCode code, const Place& place, const Place& other, const CString& text)
    {
        Finding& finding = m_findings.Add(code, *place.category, place.rule, text);
        if (other.category == place.category && other.rule != place.rule)
            finding.others = {static_cast<int>(other.rule) + 1};
    }

    CString m_library; ///< in use; empty for any
    FindingList& m_findings;
    std::map<std::pair<CString, CString>, First> m_first; ///< by number and library
    /// By what tells rows of the bill apart: number, specialty, library, name and unit.
    std::map<std::tuple<CString, CString, CString, CString, CString>, Row> m_rows;
};

} // namespace

std::vector<Finding> CheckBillNumbers(const Configuration& configuration, const CheckFacts& facts)
{
    if (!facts.isBillMode) return {};
    FindingList findings;
    NumberCheck check(facts, findings);
    for (const Specialty& specialty : configuration.Specialties())
        for (const BigCategory& big : specialty.bigCategories)
            for (const SmallCategoryPtr& small : big.smallCategories)
                for (std::size_t rule = 0; rule < small->rules.size(); ++rule)
                    check.Look({small.get(), rule});
    return std::move(findings.All());
}

} // namespace rules
