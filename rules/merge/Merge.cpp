#include "rules/merge/Merge.h"

#include "rules/merge/CategoryMerge.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace rules {

namespace {

/// One thing as each state has it; null where it has none.
template <typename Part>
struct Three
{
    const Part* base = nullptr;
    const Part* mine = nullptr;
    const Part* theirs = nullptr;

    const Part& Any() const { return mine != nullptr ? *mine : theirs != nullptr ? *theirs : *base; }
    /// Whether a side took out what was there.
    bool IsGone() const { return base != nullptr && (mine == nullptr || theirs == nullptr); }
};

const Specialty* Pointer(const Specialty& part)
{
    return &part;
}
const BigCategory* Pointer(const BigCategory& part)
{
    return &part;
}
const SmallCategory* Pointer(const SmallCategoryPtr& part)
{
    return part.get();
}

/// Calls `take` with everything of a name that any state has, in the order of mine, then of theirs, then of
/// base.
template <typename Part, typename Element, typename Take>
void ForEachName(const std::vector<Element>* base, const std::vector<Element>* mine,
                 const std::vector<Element>* theirs, Take take)
{
    std::vector<std::pair<CString, Three<Part>>> all;
    const auto collect = [&](const std::vector<Element>* list, const Part* Three<Part>::*state) {
        if (list == nullptr) return;
        for (const Element& element : *list) {
            const Part* part = Pointer(element);
            auto found = std::find_if(all.begin(), all.end(),
                                      [&](const auto& entry) { return entry.first == part->name; });
            if (found == all.end()) found = all.insert(all.end(), {part->name, {}});
            if (found->second.*state == nullptr) found->second.*state = part;
        }
    };
    collect(mine, &Three<Part>::mine);
    collect(theirs, &Three<Part>::theirs);
    collect(base, &Three<Part>::base);
    for (const auto& [name, three] : all)
        take(three);
}

template <typename Part, typename List>
const List* ListOf(const Part* part, List Part::*list)
{
    return part == nullptr ? nullptr : &(part->*list);
}

} // namespace

/// A small category of the result and where it stands in the shape.
struct Merge::Category
{
    Category(const Three<SmallCategory>& three, std::size_t specialtyIndex, std::size_t bigIndex,
             std::size_t first)
        : specialty(specialtyIndex),
          big(bigIndex), head{three.Any().id, three.Any().name, three.Any().text, {}},
          merge(three.base, three.mine, three.theirs, first)
    {
    }

    std::size_t specialty;
    std::size_t big;
    SmallCategory head; ///< without rules
    CategoryMerge merge;
};

/// Goes through the three states, from the specialties down to the small categories.
class Merge::Builder
{
public:
    explicit Builder(Merge& merge) : m_merge(merge) {}

    void Take(const Three<Specialty>& three)
    {
        m_merge.m_shape.push_back({{three.Any().id, three.Any().name, {}}, three.IsGone(), {}});
        ForEachName<BigCategory>(ListOf(three.base, &Specialty::bigCategories),
                                 ListOf(three.mine, &Specialty::bigCategories),
                                 ListOf(three.theirs, &Specialty::bigCategories),
                                 [this](const Three<BigCategory>& big) { Take(big); });
    }

private:
    void Take(const Three<BigCategory>& three)
    {
        Shape& shape = m_merge.m_shape.back();
        shape.specialty.bigCategories.push_back({three.Any().id, three.Any().name, {}});
        shape.isBigGone.push_back(three.IsGone());
        ForEachName<SmallCategory>(ListOf(three.base, &BigCategory::smallCategories),
                                   ListOf(three.mine, &BigCategory::smallCategories),
                                   ListOf(three.theirs, &BigCategory::smallCategories),
                                   [this](const Three<SmallCategory>& small) { Take(small); });
    }

    void Take(const Three<SmallCategory>& three)
    {
        auto category = std::make_unique<Category>(three, m_merge.m_shape.size() - 1,
                                                   m_merge.m_shape.back().isBigGone.size() - 1,
                                                   m_merge.m_conflicts.size());
        const std::vector<Conflict>& conflicts = category->merge.Conflicts();
        m_merge.m_conflicts.insert(m_merge.m_conflicts.end(), conflicts.begin(), conflicts.end());
        m_merge.m_categories.push_back(std::move(category));
    }

    Merge& m_merge;
};

Merge::Merge(const Configuration& base, const Configuration& mine, const Configuration& theirs)
{
    Builder builder(*this);
    ForEachName<Specialty>(&base.Specialties(), &mine.Specialties(), &theirs.Specialties(),
                           [&](const Three<Specialty>& three) { builder.Take(three); });
}

Merge::~Merge() = default;

Configuration Merge::Result(const std::vector<Side>& answers) const
{
    if (answers.size() != m_conflicts.size())
        throw std::invalid_argument("a merge needs one answer for each conflict");
    std::vector<Shape> shapes = m_shape;
    for (const auto& category : m_categories) {
        std::vector<Rule> rules = category->merge.Result(answers);
        if (rules.empty()) continue; // a side took the category out, and nothing speaks against it
        auto small = std::make_shared<SmallCategory>(category->head);
        small->rules = std::move(rules);
        shapes[category->specialty].specialty.bigCategories[category->big].smallCategories.push_back(small);
    }
    std::vector<Specialty> specialties;
    for (Shape& shape : shapes) {
        std::vector<BigCategory> kept;
        for (std::size_t i = 0; i < shape.isBigGone.size(); ++i) {
            BigCategory& big = shape.specialty.bigCategories[i];
            if (!shape.isBigGone[i] || !big.smallCategories.empty()) kept.push_back(std::move(big));
        }
        shape.specialty.bigCategories = std::move(kept);
        if (!shape.isGone || !shape.specialty.bigCategories.empty())
            specialties.push_back(std::move(shape.specialty));
    }
    return Configuration(std::move(specialties));
}

} // namespace rules
