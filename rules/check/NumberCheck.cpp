#include "rules/check/Check.h"
#include "rules/check/FindingList.h"
#include "rules/match/CellText.h"

#include <algorithm>
#include <map>
#include <optional>
#include <unordered_map>
#include <utility>
#include <vector>

using namespace Qt::StringLiterals;

namespace rules {

namespace {

/// Where a rule stands.
struct Place
{
    const SmallCategory* category = nullptr;
    std::size_t rule = 0;

    bool operator==(const Place&) const = default;
    CString Text() const { return u"%1 第 %2 条"_s.arg(category->text, QString::number(rule + 1)); }
};

/// What a rule asks for by ＝, by normalised name of the attribute; of several values the first.
using Values = std::map<CString, CString>;

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
    CString specialty;
    CString name;
    CString unit;
    Place first;
    std::map<CString, Asked> features{};
    bool hasFeatures = false;
};

/// A bill number of a library: what the first rule that gives it says of it, and the rows that bear it.
struct Number
{
    Place first;
    CString name;
    CString unit;
    Place toldAt{};          ///< the last rule that says something else
    CStringArray told{};     ///< the names and units of that one
    std::vector<Row> rows{}; ///< nearly always one
};

Values ValuesOf(const Rule& rule)
{
    Values values;
    for (const Condition& condition : rule.conditions)
        if (condition.isValueForm && condition.equalOperator == u"＝"_s)
            values.try_emplace(Normalised(condition.attribute), condition.value.trimmed());
    return values;
}

/// Compares what the rules say of one bill number.
class NumberCheck
{
public:
    NumberCheck(const CheckFacts& facts, FindingList& findings)
        : m_library(facts.bills.code), m_findings(findings)
    {
    }

    void Look(const SmallCategory& category)
    {
        m_specialty = category.text.section(u'\\', 0, 0);
        for (m_place = {&category, 0}; m_place.rule < category.rules.size(); ++m_place.rule) {
            m_values.reset();
            for (const BillItem& bill : category.rules[m_place.rule].bills)
                Look(bill.record);
        }
    }

private:
    /// An item of the current rule.
    void Look(const QdStruct& record)
    {
        const CString& library = record.strQdCode;
        const bool isOther = !m_library.isEmpty() && library != m_library &&
                             library.compare(m_library, Qt::CaseInsensitive) != 0;
        if (record.strQdId.isEmpty() || isOther) return;
        const CString name = record.strName.trimmed();
        const CString unit = record.strUnit.trimmed();
        const auto [place, isNew] =
            m_numbers.try_emplace({record.strQdId, m_library.isEmpty() ? library.toLower() : CString()},
                                  Number{m_place, name, unit});
        Number& number = place->second;
        if (!isNew) Compare(record.strQdId, name, unit, number);
        const auto row = std::find_if(number.rows.begin(), number.rows.end(), [&](const Row& other) {
            return other.name == name && other.unit == unit && other.specialty == m_specialty;
        });
        if (row == number.rows.end())
            number.rows.push_back({m_specialty, name, unit, m_place});
        else
            CompareFeatures(record.strQdId, *row);
    }

    void Compare(const CString& text, const CString& name, const CString& unit, Number& number)
    {
        if (name != number.name && IsNews(u"name "_s + name, number))
            Add(FindingCode::NumberTwoNames, number.first,
                u"清单编号 %1 有两个名称：这里是“%2”，%3是“%4”"_s.arg(text, name, number.first.Text(),
                                                                      number.name));
        if (Normalised(unit) != Normalised(number.unit) && IsNews(u"unit "_s + unit, number))
            Add(FindingCode::NumberTwoUnits, number.first,
                u"清单编号 %1 有两个单位：这里是“%2”，%3是“%4”"_s.arg(text, unit, number.first.Text(),
                                                                      number.unit));
    }

    /// Whether the current rule has not been told to say so: it may give the number more than once.
    bool IsNews(const CString& what, Number& number) const
    {
        if (number.toldAt != m_place) number.told.clear();
        number.toldAt = m_place;
        if (number.told.contains(what)) return false;
        number.told.append(what);
        return true;
    }

    /// Where any two rules differ in an attribute, one of them differs from the first that asks for it.
    void CompareFeatures(const CString& text, Row& row)
    {
        if (!std::exchange(row.hasFeatures, true))
            for (const auto& [attribute, value] : ValuesOf(row.first.category->rules[row.first.rule]))
                row.features.try_emplace(attribute, Asked{row.first, value});
        if (!m_values) m_values = ValuesOf(m_place.category->rules[m_place.rule]);
        for (const auto& [attribute, value] : *m_values) {
            Asked& asked = row.features.try_emplace(attribute, Asked{m_place, value}).first->second;
            if (asked.isTold || IsSameValue(asked.value, value)) continue;
            asked.isTold = true;
            Add(FindingCode::NumberTwoFeatures, asked.place,
                u"清单编号 %1 用于两种特征：这里 %2＝%3，%4 %2＝%5"_s.arg(text, attribute, value,
                                                                          asked.place.Text(), asked.value));
        }
    }

    /// About the current rule, compared with another one.
    void Add(FindingCode code, const Place& other, const CString& text)
    {
        Finding& finding = m_findings.Add(code, *m_place.category, m_place.rule, text);
        if (other.category == m_place.category && other.rule != m_place.rule)
            finding.others = {static_cast<int>(other.rule) + 1};
    }

    using Key = std::pair<CString, CString>; ///< number and, where that tells it apart, library
    struct KeyHash
    {
        std::size_t operator()(const Key& key) const noexcept { return qHashMulti(0, key.first, key.second); }
    };

    CString m_library; ///< in use; empty for any
    FindingList& m_findings;
    std::unordered_map<Key, Number, KeyHash> m_numbers;
    // of the current rule
    Place m_place{};
    CString m_specialty;
    std::optional<Values> m_values; ///< once they are asked for
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
                check.Look(*small);
    return std::move(findings.All());
}

} // namespace rules
