#pragma once

#include "rules/Export.h"
#include "tree/QdDeRecords.h"

#include <functional>
#include <memory>
#include <vector>

/// A snapshot of a configuration: all rules of a rule file, or of one of its specialties, as plain values. It
/// owns all it holds, nothing changes it, and any number of threads may read it. Whoever shares it keeps it
/// alive.
namespace rules {

/// One attribute test of a rule, its texts exactly as the rule file has them. docs/matching.md tells when it
/// holds.
struct Condition
{
    int id = 0;
    CString attribute;       ///< the name of the attribute
    bool isValueForm = true; ///< true: operator and value. false: a range with its bounds
    CString equalOperator;   ///< value form: "＝" or "≠"
    CString value;           ///< value form
    CString lowerOperator;   ///< range form, of the first bound: "＞" or "≥"
    CString lowerBound;      ///< empty for none
    CString upperOperator;   ///< range form, of the second bound: "＜" or "≤"
    CString upperBound;      ///< empty for none

    /// As the rule list shows it: 材质＝镀锌钢管, 50＜公称直径≤65.
    KTQDDE_RULES_EXPORT CString Text() const;

    bool operator==(const Condition&) const = default;
};

struct QuotaItem
{
    int id = 0;
    DeStruct record;

    bool operator==(const QuotaItem&) const = default;
};

struct BillItem
{
    int id = 0;
    QdStruct record;
    std::vector<QuotaItem> quotas; ///< those of bill mode

    bool operator==(const BillItem&) const = default;
};

/// The highest ids that a rule has given to its children so far. They only grow, so that an id is never given
/// twice.
struct RuleCounters
{
    int condition = 0;
    int bill = 0;
    int quota = 0;

    bool operator==(const RuleCounters&) const = default;
};

struct Rule
{
    int id = 0;
    bool isDefault = false;
    std::vector<Condition> conditions;
    std::vector<BillItem> bills;
    std::vector<QuotaItem> quotas; ///< those of quota mode
    RuleCounters counters{};

    /// As the rule list shows it: "其它" for a default rule, else each condition followed by ";".
    KTQDDE_RULES_EXPORT CString Text() const;

    /// Whether two rules are the same in all that a rule file has of them, ids and counters included.
    bool operator==(const Rule&) const = default;
};

struct SmallCategory
{
    int id = 0;
    CString name;
    CString text; ///< specialty, big category and name, joined by backslashes
    std::vector<Rule> rules;
    /// Whether the last rule is a default rule that the file has not: reading made it.
    bool isCompleted = false;
};
using SmallCategoryPtr = std::shared_ptr<const SmallCategory>;

struct BigCategory
{
    int id = 0;
    CString name;
    std::vector<SmallCategoryPtr> smallCategories; ///< none is null
};

struct Specialty
{
    int id = 0;
    CString name;
    std::vector<BigCategory> bigCategories;
};

class Configuration;
using ConfigurationPtr = std::shared_ptr<const Configuration>;

/// The snapshot. Categories may be kept and used beyond its life.
class KTQDDE_RULES_EXPORT Configuration
{
public:
    explicit Configuration(std::vector<Specialty> specialties);

    const std::vector<Specialty>& Specialties() const noexcept { return m_specialties; }
    /// The small category of that text (see `SmallCategory::text`), exactly; null when there is none.
    SmallCategoryPtr Find(const CString& categoryText) const;
    /// This one with those small categories of `others` for which `isTaken` says so: each takes the place of
    /// the one of its name, or comes behind those that are there, with the parts above it where these are
    /// missing. All else stays as it is.
    Configuration With(const std::vector<Specialty>& others,
                       const std::function<bool(const SmallCategoryPtr&)>& isTaken) const;

private:
    std::vector<Specialty> m_specialties;
};

} // namespace rules
