#include "rules/check/CheckParts.h"

#include "platform/Numbers.h"
#include "rules/match/CategoryMatcher.h"

#include <algorithm>
#include <optional>

using namespace Qt::StringLiterals;

namespace rules {

namespace {

bool IsSameCode(const CString& a, const CString& b)
{
    return a == b || a.compare(b, Qt::CaseInsensitive) == 0;
}

CString DimensionText(Dimension dimension)
{
    switch (dimension) {
    case Dimension::Length:
        return u"长度"_s;
    case Dimension::Count:
        return u"个数"_s;
    case Dimension::Area:
        return u"面积"_s;
    case Dimension::Volume:
        return u"体积"_s;
    case Dimension::Weight:
        return u"重量"_s;
    case Dimension::Unknown:
        break;
    }
    return {};
}

/// The fields that bill and quota items have in common.
struct Item
{
    const CString& number;
    const CString& name;
    const CString& unit;
    const CString& unitCode;
    const CString& library;
    const CString& formula;
    const CString& annex;
    bool isBill;

    CString Told() const { return (isBill ? u"清单 "_s : u"定额 "_s) + (number.isEmpty() ? name : number); }
};

Item ItemOf(const QdStruct& record)
{
    return {record.strQdId,   record.strName,    record.strUnit,  record.strUnitCode,
            record.strQdCode, record.strFormula, record.strAnnex, true};
}

Item ItemOf(const DeStruct& record)
{
    return {record.strDeId,   record.strName,    record.strUnit,  record.strUnitCode,
            record.strDeCode, record.strFormula, record.strAnnex, false};
}

/// Whether both have one number of one library.
bool IsSameNumber(const Item& a, const Item& b)
{
    return a.number == b.number && IsSameCode(a.library, b.library);
}

bool HasSameFormula(const Item& a, const Item& b)
{
    return Normalised(a.formula) == Normalised(b.formula);
}

/// Whether both say the same. The multiple beside the unit is not looked at: the unit tells what it must be.
bool IsSame(const Item& a, const Item& b)
{
    const CString yes = u"是"_s;
    return IsSameNumber(a, b) && HasSameFormula(a, b) && a.name.trimmed() == b.name.trimmed() &&
           Normalised(a.unit) == Normalised(b.unit) && (a.annex == yes) == (b.annex == yes);
}

/// Whether nothing but its second quantity goes with the second item.
bool IsSpare(const QuotaItem& first, const QuotaItem& second)
{
    return IsSame(ItemOf(first.record), ItemOf(second.record));
}

bool IsSpare(const BillItem& first, const BillItem& second)
{
    return IsSame(ItemOf(first.record), ItemOf(second.record)) &&
           first.record.strQdIdUser == second.record.strQdIdUser &&
           first.record.strtypeid == second.record.strtypeid &&
           std::all_of(second.quotas.begin(), second.quotas.end(), [&](const QuotaItem& quota) {
               return std::any_of(first.quotas.begin(), first.quotas.end(),
                                  [&](const QuotaItem& other) { return IsSpare(other, quota); });
           });
}

bool IsOfOtherLibrary(const Item& item, const LibraryFacts& library)
{
    return !library.code.isEmpty() && !IsSameCode(item.library, library.code);
}

bool IsOfForm(const CString& number, const BillNumberForm& form)
{
    const auto isDigit = [](QChar c) { return c >= u'0' && c <= u'9'; };
    const qsizetype letters = form.keepsSuffix ? form.Longest() : form.base;
    return form.HasLength(number) &&
           std::all_of(number.begin(), number.end(),
                       [](QChar c) { return c.unicode() < 0x80 && c.isLetterOrNumber(); }) &&
           std::all_of(number.begin() + std::min(letters, number.size()), number.end(), isDigit);
}

/// "12 位数字或字母，末 3 位是数字".
CString FormText(const BillNumberForm& form)
{
    if (form.keepsSuffix) return u"%1 位或 %2 位数字或字母"_s.arg(form.Shortest()).arg(form.Longest());
    return u"%1 位数字或字母，末 %2 位是数字"_s.arg(form.Shortest()).arg(form.suffix);
}

/// The checks of the items of one category.
class ItemCheck
{
public:
    ItemCheck(const SmallCategory& category, const CheckFacts& facts, ItemTexts& texts, FindingList& findings)
        : m_category(category), m_facts(facts), m_texts(texts), m_findings(findings)
    {
    }

    void Look(std::size_t index)
    {
        m_index = index;
        const Rule& rule = m_category.rules[index];
        const bool isBare = m_facts.isBillMode ? rule.bills.empty() : rule.quotas.empty();
        if (isBare && !rule.isDefault)
            Add(FindingCode::NoItems, m_facts.isBillMode ? u"这条规则没有清单"_s : u"这条规则没有定额"_s);
        if (!m_facts.isBillMode) {
            LookAtQuotas(rule.quotas, nullptr);
            return;
        }
        LookForRepeated(rule.bills, m_facts.bills, nullptr);
        for (const BillItem& bill : rule.bills) {
            LookAtItem(ItemOf(bill.record), m_facts.bills, &bill, nullptr);
            LookAtQuotas(bill.quotas, &bill);
        }
    }

private:
    const Rule& Current() const { return m_category.rules[m_index]; }
    Finding& Add(FindingCode code, const CString& text)
    {
        return m_findings.Add(code, m_category, m_index, text);
    }

    void LookAtQuotas(const std::vector<QuotaItem>& quotas, const BillItem* bill)
    {
        LookForRepeated(quotas, m_facts.quotas, bill);
        for (const QuotaItem& quota : quotas) {
            LookAtItem(ItemOf(quota.record), m_facts.quotas, bill, &quota);
            if (bill != nullptr) LookAtGuide(*bill, quota);
        }
    }

    template <typename Entry>
    void LookForRepeated(const std::vector<Entry>& items, const LibraryFacts& library, const BillItem* bill)
    {
        for (std::size_t i = 1; i < items.size(); ++i) {
            const Item item = ItemOf(items[i].record);
            if (item.number.isEmpty() || IsOfOtherLibrary(item, library)) continue;
            const auto end = items.begin() + static_cast<std::ptrdiff_t>(i);
            const auto isBefore = [&](const auto& fits) { return std::any_of(items.begin(), end, fits); };
            if (!isBefore([&](const Entry& other) { return IsSameNumber(ItemOf(other.record), item); }))
                continue;
            const bool isCountedTwice = isBefore([&](const Entry& other) {
                return IsSameNumber(ItemOf(other.record), item) && HasSameFormula(ItemOf(other.record), item);
            });
            if (!isCountedTwice) {
                Add(FindingCode::AddedQuantities,
                    u"%1在这条规则里有两次，计算式不同，两个工程量都算进去"_s.arg(item.Told()));
                continue;
            }
            Finding& finding =
                Add(FindingCode::RepeatedItem, u"%1在这条规则里有两次，工程量会算两遍"_s.arg(item.Told()));
            const bool isSpare = isBefore([&](const Entry& other) { return IsSpare(other, items[i]); });
            if (isSpare && CountOfId(items, items[i].id) == 1) finding.mend = Without(items[i], bill);
        }
    }

    /// Takes the bill item out.
    std::optional<Mend> Without(const BillItem& item, const BillItem*) const
    {
        if (!IsReached(m_category, m_index)) return std::nullopt;
        return Mend{.op = u"DelQd"_s, .configId = Current().id, .ids = {item.id}};
    }

    /// Takes the quota item out, of the bill item or, where that is null, of the rule.
    std::optional<Mend> Without(const QuotaItem& item, const BillItem* bill) const
    {
        if (!IsReached(m_category, m_index)) return std::nullopt;
        if (bill == nullptr)
            return Mend{.op = u"DelDeInConfigNode"_s, .configId = Current().id, .ids = {item.id}};
        if (CountOfId(Current().bills, bill->id) != 1) return std::nullopt;
        return Mend{.op = u"DelDeInQdNode"_s, .configId = Current().id, .deIdsByQd = {{bill->id, {item.id}}}};
    }

    /// `bill` is the item itself or the one above, `quota` null for a bill item.
    void LookAtItem(const Item& item, const LibraryFacts& library, const BillItem* bill,
                    const QuotaItem* quota)
    {
        if (IsOfOtherLibrary(item, library)) {
            Add(FindingCode::OtherLibrary, u"%1属于库“%2”，工程用的是“%3”，这一项不会套用"_s.arg(
                                               item.Told(), item.library, library.code));
            return;
        }
        LookAtNumber(item, library);
        LookAtMultiple(item, bill, quota);
        LookAtFormula(item);
    }

    void LookAtNumber(const Item& item, const LibraryFacts& library)
    {
        if (item.isBill && library.form.IsKnown() && !IsOfForm(item.number, library.form)) {
            Add(FindingCode::BadNumber,
                u"清单编号“%1”不合规定：应是 %2"_s.arg(item.number, FormText(library.form)));
            return;
        }
        if (library.items.empty() || item.number.isEmpty()) return;
        if (!library.items.contains(item.isBill ? library.form.BaseOf(item.number) : item.number))
            Add(FindingCode::UnknownItem, u"库“%1”里没有%2"_s.arg(library.code, item.Told()));
    }

    void LookAtMultiple(const Item& item, const BillItem* bill, const QuotaItem* quota)
    {
        const Decimal& multiple = m_texts.UnitOf(item.unit).multiple;
        if (item.unitCode.isEmpty() && multiple == Decimal(1)) return;
        if (Decimal(platform::_wtoi(item.unitCode)) == multiple) return;
        Finding& finding =
            Add(FindingCode::UnitMultiple,
                u"%1的单位是“%2”，记下的倍数却是“%3”"_s.arg(item.Told(), item.unit, item.unitCode));
        finding.mend = WithMultiple(multiple.ToText(), bill, quota);
    }

    std::optional<Mend> WithMultiple(const CString& multiple, const BillItem* bill,
                                     const QuotaItem* quota) const
    {
        if (!IsReached(m_category, m_index)) return std::nullopt;
        if (bill != nullptr && CountOfId(Current().bills, bill->id) != 1) return std::nullopt;
        Mend mend{.op = u"ResetQd"_s, .configId = Current().id, .qdId = bill != nullptr ? bill->id : 0};
        if (quota == nullptr) {
            mend.qd = bill->record;
            mend.qd->strUnitCode = multiple;
            return mend;
        }
        if (CountOfId(bill != nullptr ? bill->quotas : Current().quotas, quota->id) != 1) return std::nullopt;
        mend.op = bill != nullptr ? u"ResetDeToQd"_s : u"ResetDeToConfig"_s;
        mend.deId = quota->id;
        mend.de = quota->record;
        mend.de->strUnitCode = multiple;
        return mend;
    }

    void LookAtFormula(const Item& item)
    {
        using State = ItemTexts::FormulaText::State;
        const ItemTexts::FormulaText& formula = m_texts.FormulaOf(item.formula);
        if (formula.state == State::Missing) {
            Add(FindingCode::NoFormula, u"%1没有计算式，算不出工程量"_s.arg(item.Told()));
            return;
        }
        if (formula.state == State::Bad) {
            Add(FindingCode::BadFormula, u"%1的计算式“%2”写得不对"_s.arg(item.Told(), item.formula));
            return;
        }
        for (const CString& name : formula.furtherNames)
            if (!IsAttribute(name))
                Add(FindingCode::UnknownName, u"%1的计算式“%2”里，“%3”既不是计算项目，也不是属性"_s.arg(
                                                  item.Told(), item.formula, name));
        LookAtUnit(item, formula.dimension);
    }

    /// Whether the category has the attribute. Where nothing is known that formulas may use, any name is one.
    bool IsAttribute(const CString& name) const
    {
        if (m_facts.calculationItems.empty() && m_facts.names.empty()) return true;
        const auto isIn = [&](const CatalogueFacts& catalogue) {
            const auto own = catalogue.find(m_category.text);
            return own != catalogue.end() && FactsOf(name, own->second) != nullptr;
        };
        return isIn(m_facts.attributes) || isIn(m_facts.categories);
    }

    /// A formula that is a calculation item, or written out what one comes from, counts what that counts.
    void LookAtUnit(const Item& item, Dimension counted)
    {
        const Dimension wanted = m_texts.UnitOf(item.unit).dimension;
        if (wanted == counted || wanted == Dimension::Unknown || counted == Dimension::Unknown) return;
        Add(FindingCode::UnfitUnit, u"%1的单位是“%2”，计算式“%3”算的却是%4"_s.arg(
                                        item.Told(), item.unit, item.formula, DimensionText(counted)));
    }

    void LookAtGuide(const BillItem& bill, const QuotaItem& quota)
    {
        if (!IsSameCode(bill.record.strQdCode, m_facts.bills.code) ||
            !IsSameCode(quota.record.strDeCode, m_facts.quotas.code))
            return;
        const auto known = m_facts.quotas.items.find(quota.record.strDeId);
        if (known == m_facts.quotas.items.end() || known->second.bills.isEmpty()) return;
        if (known->second.bills.contains(m_facts.bills.form.BaseOf(bill.record.strQdId))) return;
        Add(FindingCode::QuotaNotOnBill,
            u"指引没有把定额 %1 挂在清单 %2 下"_s.arg(quota.record.strDeId, bill.record.strQdId));
    }

    const SmallCategory& m_category;
    const CheckFacts& m_facts;
    ItemTexts& m_texts;
    FindingList& m_findings;
    std::size_t m_index = 0;
};

} // namespace

void CheckItems(const SmallCategory& category, const CheckFacts& facts, ItemTexts& texts,
                FindingList& findings)
{
    ItemCheck check(category, facts, texts, findings);
    for (std::size_t rule = 0; rule < category.rules.size(); ++rule)
        check.Look(rule);
}

} // namespace rules
