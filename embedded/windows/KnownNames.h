#pragma once

#include "host/Roles.h"

#include <QtCore/QSet>

#include <vector>

namespace embedded {

/// The calculation items of a small category, and every name that a formula there may use.
class KnownNames
{
public:
    /// Asks `rules`, which must outlive this. A category that is not known has no items.
    KnownNames(host::ICalculationRules& rules, const CString& categoryText);

    /// The items that the category is measured by, then those that go with it. An item without a description
    /// has its name alone.
    const std::vector<RuleCodeStruct>& Items() const noexcept { return m_items; }

    /// Whether a name means something: an item of the category by its name or code, a quantity that one of
    /// its rules is made of, or the name of an item of any category.
    bool Contains(const CString& name) const;

private:
    void AddItems(const CStringArray& names);

    host::ICalculationRules& m_rules;
    std::vector<RuleCodeStruct> m_items;
    QSet<CString> m_names;
};

} // namespace embedded
