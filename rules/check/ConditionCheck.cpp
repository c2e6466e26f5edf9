#include "rules/check/CheckParts.h"

#include <algorithm>
#include <array>
#include <map>
#include <optional>
#include <span>
#include <unordered_map>
#include <utility>

using namespace Qt::StringLiterals;

namespace rules {

namespace {

constexpr char16_t FullWidthZero = u'０';
constexpr char16_t FullWidthNine = u'９';

/// What people write in the place of an operator.
CString OperatorMeantBy(const CString& text)
{
    static const std::map<CString, CString> meant{
        {u"="_s, u"＝"_s}, {u"=="_s, u"＝"_s}, {u"!="_s, u"≠"_s},  {u"<>"_s, u"≠"_s},   {u"＜＞"_s, u"≠"_s},
        {u">"_s, u"＞"_s}, {u">="_s, u"≥"_s},  {u"＞="_s, u"≥"_s}, {u"＞＝"_s, u"≥"_s}, {u"≧"_s, u"≥"_s},
        {u"<"_s, u"＜"_s}, {u"<="_s, u"≤"_s},  {u"＜="_s, u"≤"_s}, {u"＜＝"_s, u"≤"_s}, {u"≦"_s, u"≤"_s},
    };
    const auto found = meant.find(text.trimmed());
    return found == meant.end() ? text : found->second;
}

bool IsFullWidth(QChar c)
{
    return c >= FullWidthZero && c <= FullWidthNine;
}

CString WithPlainDigits(CString text)
{
    for (QChar& c : text)
        if (IsFullWidth(c)) c = QChar(static_cast<char16_t>(c.unicode() - FullWidthZero + u'0'));
    return text;
}

CStringArray ArrayOf(const Condition& condition)
{
    return {condition.attribute,     condition.isValueForm ? u"1"_s : u"0"_s,
            condition.equalOperator, condition.lowerOperator,
            condition.upperOperator, condition.value,
            condition.lowerBound,    condition.upperBound};
}

/// Whether one of the values is what ＝ takes for this text.
bool IsListed(const CString& text, const CStringArray& values)
{
    return values.contains(text) || // as nearly all are
           std::any_of(values.begin(), values.end(),
                       [&](const CString& value) { return IsSameValue(value, text); });
}

/// Something wrong with a condition, whatever rule it stands in.
struct Fault
{
    FindingCode code;
    CString text;
};

/// All that is wrong with one condition, and the condition as it is meant, where that can be told.
struct Judgement
{
    std::vector<Fault> faults;
    Condition mended;
    bool isMended = false;
    std::vector<bool> mends; ///< beside the faults: whether mending takes it away

    void Add(FindingCode code, const CString& text, bool mendTakesIt = false)
    {
        faults.push_back({code, text});
        mends.push_back(mendTakesIt);
        isMended = isMended || mendTakesIt;
    }
};

/// What is known of an attribute.
struct KnownAttribute
{
    const NumberReader* numbers = nullptr;   ///< how conditions on it are read
    const AttributeFacts* offered = nullptr; ///< what the editor offers; null when it does not offer it
};

/// Judges the conditions of one category, equal ones once.
class ConditionJudge
{
public:
    /// All must stay.
    ConditionJudge(const SmallCategory& category, const CellSpace& space, const CheckFacts& facts)
        : m_space(space), m_judgements(space.Conditions())
    {
        const auto own = facts.categories.find(category.text);
        if (own != facts.categories.end()) m_offered = &own->second;
    }

    /// By the number of the condition in the space.
    const Judgement& Of(std::uint32_t number)
    {
        std::optional<Judgement>& judgement = m_judgements[number];
        if (!judgement) judgement = Judge(m_space.ConditionAt(number));
        return *judgement;
    }

private:
    Judgement Judge(const Condition& condition)
    {
        Judgement judgement;
        judgement.mended = condition;
        if (WithoutBlanks(condition.attribute).isEmpty()) {
            judgement.Add(FindingCode::NoAttribute, u"有一个条件没有写属性，这条规则因此永远不会适用"_s);
            return judgement;
        }
        const KnownAttribute& attribute = Known(condition.attribute);
        JudgeDigits(condition, judgement);
        if (condition.isValueForm)
            JudgeValue(condition, judgement);
        else
            JudgeRange(condition, *attribute.numbers, judgement);
        if (m_offered != nullptr) JudgeAttribute(condition, attribute.offered, judgement);
        return judgement;
    }

    const KnownAttribute& Known(const CString& name)
    {
        const auto [place, isNew] = m_attributes.try_emplace(name);
        if (isNew) {
            // An attribute that a condition tests is one of the space, unless it has no name.
            place->second.numbers = &m_space.Numbers(*m_space.AttributeOf(name));
            if (m_offered != nullptr) place->second.offered = FactsOf(name, *m_offered);
        }
        return place->second;
    }

    static void JudgeDigits(const Condition& condition, Judgement& judgement)
    {
        bool isFound = false;
        for (CString Condition::*const text :
             {&Condition::value, &Condition::lowerBound, &Condition::upperBound}) {
            const CString& told = condition.*text;
            if (std::none_of(told.begin(), told.end(), IsFullWidth)) continue;
            judgement.mended.*text = WithPlainDigits(told);
            isFound = true;
        }
        if (!isFound) return;
        judgement.Add(FindingCode::FullWidthDigits,
                      u"条件“%1”里的数字是全角的，写成半角才不会看错"_s.arg(condition.Text()), true);
    }

    /// One of the condition's operators, of which there are two at its place.
    static void JudgeOperator(const Condition& condition, CString Condition::*place,
                              const std::array<QStringView, 2>& known, Judgement& judgement)
    {
        const auto isKnown = [&](QStringView sign) { return sign == known[0] || sign == known[1]; };
        const CString& sign = condition.*place;
        if (isKnown(sign)) return;
        const CString meant = OperatorMeantBy(sign);
        const bool isClear = isKnown(meant);
        const CString told = condition.Text();
        if (isClear) judgement.mended.*place = meant;
        judgement.Add(FindingCode::UnknownOperator,
                      sign.isEmpty() ? u"条件“%1”没有运算符，永远不成立"_s.arg(told)
                                     : u"条件“%1”的运算符“%2”不能识别，永远不成立"_s.arg(told, sign),
                      isClear);
    }

    static void JudgeValue(const Condition& condition, Judgement& judgement)
    {
        JudgeOperator(condition, &Condition::equalOperator, {u"＝", u"≠"}, judgement);
        if (!WithoutBlanks(condition.value).isEmpty()) return;
        judgement.Add(FindingCode::EmptyValue,
                      condition.equalOperator == u"≠"_s
                          ? u"条件“%1”没有写值，凡是填写了的构件都满足"_s.arg(condition.Text())
                          : u"条件“%1”没有写值，永远不成立"_s.arg(condition.Text()));
    }

    static void JudgeRange(const Condition& condition, const NumberReader& numbers, Judgement& judgement)
    {
        const bool hasLower = !condition.lowerBound.isEmpty();
        const bool hasUpper = !condition.upperBound.isEmpty();
        if (!hasLower && !hasUpper)
            judgement.Add(FindingCode::NoBounds,
                          u"“%1”的范围没有写数，凡是数字都满足"_s.arg(condition.attribute));
        if (hasLower) JudgeOperator(condition, &Condition::lowerOperator, {u"＞", u"≥"}, judgement);
        if (hasUpper) JudgeOperator(condition, &Condition::upperOperator, {u"＜", u"≤"}, judgement);
        const auto read = [&](const CString& bound) {
            std::optional<Decimal> number = numbers.Read(bound);
            if (!number && !bound.isEmpty())
                judgement.Add(FindingCode::BoundNotANumber,
                              u"条件“%1”的“%2”不是数字，永远不成立"_s.arg(condition.Text(), bound));
            return number;
        };
        const std::optional<Decimal> lower = read(condition.lowerBound);
        const std::optional<Decimal> upper = read(condition.upperBound);
        if (lower && upper) JudgeOrder(condition, *lower, *upper, judgement);
    }

    static void JudgeOrder(const Condition& condition, const Decimal& lower, const Decimal& upper,
                           Judgement& judgement)
    {
        const bool isOpen = condition.lowerOperator != u"≥"_s || condition.upperOperator != u"≤"_s;
        if (lower < upper || (lower == upper && !isOpen)) return;
        if (lower == upper) {
            judgement.Add(FindingCode::BoundsReversed,
                          u"条件“%1”的范围里没有数，永远不成立"_s.arg(condition.Text()));
            return;
        }
        std::swap(judgement.mended.lowerBound, judgement.mended.upperBound);
        judgement.Add(FindingCode::BoundsReversed,
                      u"条件“%1”的下限比上限大，永远不成立"_s.arg(condition.Text()), true);
    }

    /// `offered` is null for an attribute that the category has not.
    static void JudgeAttribute(const Condition& condition, const AttributeFacts* offered,
                               Judgement& judgement)
    {
        if (offered == nullptr) {
            judgement.Add(FindingCode::UnknownAttribute, u"这个小类没有属性“%1”"_s.arg(condition.attribute));
            return;
        }
        if (!condition.isValueForm) {
            if (!offered->allowsRange)
                judgement.Add(FindingCode::RangeNotAllowed,
                              u"“%1”只能取值，不能写范围：%2"_s.arg(condition.attribute, condition.Text()));
            return;
        }
        if (offered->valueList.isEmpty() || WithoutBlanks(condition.value).isEmpty()) return;
        if (!IsListed(condition.value, offered->valueList))
            judgement.Add(FindingCode::ValueNotInList,
                          u"“%1”的值列表里没有“%2”"_s.arg(condition.attribute, condition.value));
    }

    const CellSpace& m_space;
    const CategoryFacts* m_offered = nullptr;                 ///< null for a category that nobody knows
    std::unordered_map<CString, KnownAttribute> m_attributes; ///< by name as conditions write it
    std::vector<std::optional<Judgement>> m_judgements;       ///< by the number of the condition
};

bool IsDefective(FindingCode code)
{
    using enum FindingCode;
    const std::array defects{NoAttribute, UnknownOperator, EmptyValue, BoundNotANumber, BoundsReversed};
    return std::find(defects.begin(), defects.end(), code) != defects.end();
}

} // namespace

void CheckConditions(const SmallCategory& category, const CellSpace& space, const CheckFacts& facts,
                     FindingList& findings)
{
    ConditionJudge judge(category, space, facts);
    for (std::size_t index = 0; index < category.rules.size(); ++index) {
        const Rule& rule = category.rules[index];
        if (rule.isDefault) continue; // its conditions are of no account
        if (rule.conditions.empty())
            findings.Add(FindingCode::NoConditions, category, index,
                         u"这条规则没有条件，前面的规则剩下的构件全归它"_s);
        bool hasDefect = false;
        const std::span<const std::uint32_t> numbers = space.ConditionsOf(index);
        for (std::size_t place = 0; place < numbers.size(); ++place) {
            const Judgement& judgement = judge.Of(numbers[place]);
            for (std::size_t i = 0; i < judgement.faults.size(); ++i) {
                hasDefect = hasDefect || IsDefective(judgement.faults[i].code);
                Finding& finding =
                    findings.Add(judgement.faults[i].code, category, index, judgement.faults[i].text);
                const int id = rule.conditions[place].id;
                if (judgement.mends[i] && IsReached(category, index) && CountOfId(rule.conditions, id) == 1)
                    finding.mend = Mend{.op = u"ResetCondition"_s,
                                        .configId = rule.id,
                                        .conditionId = id,
                                        .array = ArrayOf(judgement.mended)};
            }
        }
        if (!hasDefect && !space.IsPossible(index))
            findings.Add(FindingCode::Contradiction, category, index,
                         u"条件互相矛盾，没有构件能全部满足：%1"_s.arg(rule.Text()));
    }
}

} // namespace rules
