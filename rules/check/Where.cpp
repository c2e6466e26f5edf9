#include "rules/check/Where.h"

#include <algorithm>

namespace rules {

namespace {

/// A bill number has as many letters and digits at least without its suffix, whatever the library: the
/// appendices, the section and the item.
constexpr qsizetype ShortestBase = 9;

bool IsWanted(const CString& number, const CString& wanted, bool isBill)
{
    if (number == wanted) return true;
    const bool isBase = wanted.size() >= ShortestBase &&
                        std::all_of(wanted.begin(), wanted.end(),
                                    [](QChar c) { return c.unicode() < 0x80 && c.isLetterOrNumber(); });
    return isBill && isBase && number.startsWith(wanted);
}

/// The uses in one rule.
class Finder
{
public:
    Finder(const CString& wanted, std::vector<ItemUse>& uses) : m_wanted(wanted), m_uses(uses) {}

    void Look(const SmallCategory& category, std::size_t index)
    {
        const Rule& rule = category.rules[index];
        m_use = {.category = category.text,
                 .position = static_cast<int>(index) + 1,
                 .ruleId = rule.id,
                 .rule = rule.Text()};
        for (const BillItem& bill : rule.bills) {
            const QdStruct& record = bill.record;
            Take(true, record.strQdId, record.strName, record.strUnit, record.strQdCode, {});
            for (const QuotaItem& quota : bill.quotas)
                Take(quota, record.strQdId);
        }
        for (const QuotaItem& quota : rule.quotas)
            Take(quota, {});
    }

private:
    void Take(const QuotaItem& quota, const CString& above)
    {
        Take(false, quota.record.strDeId, quota.record.strName, quota.record.strUnit, quota.record.strDeCode,
             above);
    }

    void Take(bool isBill, const CString& number, const CString& name, const CString& unit,
              const CString& library, const CString& above)
    {
        if (!IsWanted(number, m_wanted, isBill)) return;
        ItemUse& use = m_uses.emplace_back(m_use);
        use.isBill = isBill;
        use.number = number;
        use.name = name;
        use.unit = unit;
        use.library = library;
        use.billNumber = above;
    }

    const CString& m_wanted;
    std::vector<ItemUse>& m_uses;
    ItemUse m_use; ///< of the rule that is being looked at, without an item
};

} // namespace

std::vector<ItemUse> UsesOf(const Configuration& configuration, const CString& number)
{
    std::vector<ItemUse> uses;
    Finder finder(number, uses);
    for (const Specialty& specialty : configuration.Specialties())
        for (const BigCategory& big : specialty.bigCategories)
            for (const SmallCategoryPtr& small : big.smallCategories)
                for (std::size_t rule = 0; rule < small->rules.size(); ++rule)
                    finder.Look(*small, rule);
    return uses;
}

} // namespace rules
