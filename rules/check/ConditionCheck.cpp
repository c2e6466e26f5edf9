#include "rules/check/Checks.h"

#include <algorithm>
#include <array>
#include <map>
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

CString WithPlainDigits(CString text)
{
    for (QChar& c : text)
        if (c >= FullWidthZero && c <= FullWidthNine)
            c = QChar(static_cast<char16_t>(c.unicode() - FullWidthZero + u'0'));
    return text;
}

CStringArray ArrayOf(const Condition& condition)
{
    return {condition.attribute,     condition.isValueForm ? u"1"_s : u"0"_s,
            condition.equalOperator, condition.lowerOperator,
            condition.upperOperator, condition.value,
            condition.lowerBound,    condition.upperBound};
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

/// Judges the conditions of one category. Equal conditions are judged once.
class ConditionJudge
{
public:
    ConditionJudge(const SmallCategory& category, const CheckFacts& facts)
    {
        const auto matching = facts.attributes.find(category.text);
        if (matching != facts.attributes.end())
            for (const AttributeFacts& fact : matching->second)
                m_readers.try_emplace(Normalised(fact.name), fact.valueList);
        const auto own = facts.categories.find(category.text);
        m_isKnown = own != facts.categories.end();
        if (m_isKnown)
            for (const AttributeFacts& fact : own->second)
                m_own.try_emplace(Normalised(fact.name), &fact);
    }

    const Judgement& Of(const Condition& condition)
    {
        const auto [place, isNew] = m_known.try_emplace(ArrayOf(condition));
        if (isNew) place->second = Judge(condition);
        return place->second;
    }

private:
    Judgement Judge(const Condition& condition) const
    {
        Judgement judgement;
        judgement.mended = condition;
        if (WithoutBlanks(condition.attribute).isEmpty()) {
            judgement.Add(FindingCode::NoAttribute, u"有一个条件没有写属性，这条规则因此永远不会适用"_s);
            return judgement;
        }
        JudgeDigits(condition, judgement);
        if (condition.isValueForm)
            JudgeValue(condition, judgement);
        else
            JudgeRange(condition, judgement);
        JudgeAttribute(condition, judgement);
        return judgement;
    }

    static void JudgeDigits(const Condition& condition, Judgement& judgement)
    {
        Condition& mended = judgement.mended;
        for (CString Condition::*const text :
             {&Condition::value, &Condition::lowerBound, &Condition::upperBound})
            mended.*text = WithPlainDigits(condition.*text);
        if (mended == condition) return;
        judgement.Add(FindingCode::FullWidthDigits,
                      u"条件“%1”里的数字是全角的，写成半角才不会看错"_s.arg(condition.Text()), true);
    }

    static void JudgeOperator(const CString& sign, CString& mended, const CStringArray& known,
                              const CString& told, Judgement& judgement)
    {
        if (known.contains(sign)) return;
        const CString meant = OperatorMeantBy(sign);
        const bool isClear = known.contains(meant);
        if (isClear) mended = meant;
        judgement.Add(FindingCode::UnknownOperator,
                      sign.isEmpty() ? u"条件“%1”没有运算符，永远不成立"_s.arg(told)
                                     : u"条件“%1”的运算符“%2”不能识别，永远不成立"_s.arg(told, sign),
                      isClear);
    }

    static void JudgeValue(const Condition& condition, Judgement& judgement)
    {
        JudgeOperator(condition.equalOperator, judgement.mended.equalOperator, {u"＝"_s, u"≠"_s},
                      condition.Text(), judgement);
        if (!WithoutBlanks(condition.value).isEmpty()) return;
        judgement.Add(FindingCode::EmptyValue,
                      condition.equalOperator == u"≠"_s
                          ? u"条件“%1”没有写值，凡是填写了的构件都满足"_s.arg(condition.Text())
                          : u"条件“%1”没有写值，永远不成立"_s.arg(condition.Text()));
    }

    std::optional<Decimal> Read(const Condition& condition, const CString& bound) const
    {
        const auto reader = m_readers.find(Normalised(condition.attribute));
        return reader == m_readers.end() ? PlainNumber(bound) : reader->second.Read(bound);
    }

    void JudgeRange(const Condition& condition, Judgement& judgement) const
    {
        const bool hasLower = !condition.lowerBound.isEmpty();
        const bool hasUpper = !condition.upperBound.isEmpty();
        const CString told = condition.Text();
        if (!hasLower && !hasUpper)
            judgement.Add(FindingCode::NoBounds,
                          u"“%1”的范围没有写数，凡是数字都满足"_s.arg(condition.attribute));
        if (hasLower)
            JudgeOperator(condition.lowerOperator, judgement.mended.lowerOperator, {u"＞"_s, u"≥"_s}, told,
                          judgement);
        if (hasUpper)
            JudgeOperator(condition.upperOperator, judgement.mended.upperOperator, {u"＜"_s, u"≤"_s}, told,
                          judgement);
        bool areNumbers = hasLower && hasUpper;
        for (const CString& bound : {condition.lowerBound, condition.upperBound}) {
            if (bound.isEmpty() || Read(condition, bound)) continue;
            areNumbers = false;
            judgement.Add(FindingCode::BoundNotANumber,
                          u"条件“%1”的“%2”不是数字，永远不成立"_s.arg(told, bound));
        }
        if (areNumbers) JudgeOrder(condition, judgement);
    }

    void JudgeOrder(const Condition& condition, Judgement& judgement) const
    {
        const Decimal lower = *Read(condition, condition.lowerBound);
        const Decimal upper = *Read(condition, condition.upperBound);
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

    void JudgeAttribute(const Condition& condition, Judgement& judgement) const
    {
        if (!m_isKnown) return;
        const auto place = m_own.find(Normalised(condition.attribute));
        if (place == m_own.end()) {
            judgement.Add(FindingCode::UnknownAttribute, u"这个小类没有属性“%1”"_s.arg(condition.attribute));
            return;
        }
        const AttributeFacts& fact = *place->second;
        if (!condition.isValueForm) {
            if (!fact.allowsRange)
                judgement.Add(FindingCode::RangeNotAllowed,
                              u"“%1”只能取值，不能写范围：%2"_s.arg(condition.attribute, condition.Text()));
            return;
        }
        if (fact.valueList.isEmpty() || WithoutBlanks(condition.value).isEmpty()) return;
        const bool isListed =
            std::any_of(fact.valueList.begin(), fact.valueList.end(),
                        [&](const CString& value) { return IsSameValue(value, condition.value); });
        if (!isListed)
            judgement.Add(FindingCode::ValueNotInList,
                          u"“%1”的值列表里没有“%2”"_s.arg(condition.attribute, condition.value));
    }

    struct ArrayHash
    {
        std::size_t operator()(const CStringArray& texts) const noexcept
        {
            return qHashRange(texts.begin(), texts.end());
        }
    };

    std::map<CString, NumberReader> m_readers;
    std::map<CString, const AttributeFacts*> m_own;
    bool m_isKnown = false;
    std::unordered_map<CStringArray, Judgement, ArrayHash> m_known;
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
    ConditionJudge judge(category, facts);
    for (std::size_t index = 0; index < category.rules.size(); ++index) {
        const Rule& rule = category.rules[index];
        if (rule.isDefault) continue; // its conditions are of no account
        if (rule.conditions.empty())
            findings.Add(FindingCode::NoConditions, category, index,
                         u"这条规则没有条件，前面的规则剩下的构件全归它"_s);
        bool hasDefect = false;
        for (const Condition& condition : rule.conditions) {
            const Judgement& judgement = judge.Of(condition);
            for (std::size_t i = 0; i < judgement.faults.size(); ++i) {
                hasDefect = hasDefect || IsDefective(judgement.faults[i].code);
                Finding& finding =
                    findings.Add(judgement.faults[i].code, category, index, judgement.faults[i].text);
                if (judgement.mends[i] && IsReached(category, index) &&
                    CountOfId(rule.conditions, condition.id) == 1)
                    finding.mend = Mend{.op = u"ResetCondition"_s,
                                        .configId = rule.id,
                                        .conditionId = condition.id,
                                        .array = ArrayOf(judgement.mended)};
            }
        }
        if (!hasDefect && !space.IsPossible(index))
            findings.Add(FindingCode::Contradiction, category, index,
                         u"条件互相矛盾，没有构件能全部满足：%1"_s.arg(rule.Text()));
    }
}

} // namespace rules
