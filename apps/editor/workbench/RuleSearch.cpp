#include "editor/workbench/RuleSearch.h"

#include <algorithm>

namespace editor {

namespace {

/// Beyond this many categories made ready, those that are no more in the draft are dropped.
constexpr std::size_t ManyTexts = 2000;

template <typename Take>
void ForEachCategory(const std::vector<rules::Specialty>& specialties, const CString& specialty, Take take)
{
    for (const rules::Specialty& one : specialties)
        if (specialty.isEmpty() || one.name == specialty)
            for (const rules::BigCategory& big : one.bigCategories)
                for (const rules::SmallCategoryPtr& small : big.smallCategories)
                    take(small);
}

} // namespace

const CStringArray& RuleSearch::Names()
{
    if (m_names.isEmpty())
        m_names = rules::AttributeNames(*m_session.Draft().Snapshot(), m_session.Facts()->attributes);
    return m_names;
}

const rules::RuleTexts& RuleSearch::TextsOf(const rules::SmallCategoryPtr& category)
{
    if (m_texts.size() > ManyTexts) m_texts.clear();
    auto& texts = m_texts[category.get()];
    if (!texts)
        texts = std::make_unique<rules::RuleTexts>(category, m_session.Facts()->AttributesOf(category->text));
    return *texts;
}

std::vector<rules::SmallCategoryPtr> RuleSearch::Categories() const
{
    std::vector<rules::SmallCategoryPtr> categories;
    if (m_scope == SearchScope::Category || m_text.trimmed().isEmpty()) {
        if (auto chosen = m_session.Category()) categories.push_back(std::move(chosen));
        return categories;
    }
    const CString specialty = m_scope == SearchScope::Specialty ? m_session.Specialty() : CString();
    ForEachCategory(m_session.Draft().Specialties(), specialty,
                    [&](const rules::SmallCategoryPtr& category) { categories.push_back(category); });
    return categories;
}

void RuleSearch::AddRows(const rules::SmallCategoryPtr& category, const rules::RuleQuery& query,
                         const CString& file, std::vector<RuleRow>& rows)
{
    if (query.IsEmpty()) {
        for (std::size_t i = 0; i < category->rules.size(); ++i)
            rows.push_back({category, i, file});
        return;
    }
    for (const std::size_t position : TextsOf(category).Find(query))
        rows.push_back({category, position, file});
}

std::vector<RuleRow> RuleSearch::Rows()
{
    std::vector<RuleRow> rows;
    const bool isAll = m_text.trimmed().isEmpty();
    const rules::RuleQuery query = isAll ? rules::RuleQuery() : rules::RuleQuery(m_text, Names());
    for (const rules::SmallCategoryPtr& category : Categories())
        AddRows(category, query, {}, rows);
    if (m_scope == SearchScope::Project && !isAll)
        for (const OtherFile& other : m_others)
            ForEachCategory(other.rules->Specialties(), {}, [&](const rules::SmallCategoryPtr& category) {
                AddRows(category, query, other.path, rows);
            });
    return rows;
}

bool RuleSearch::PrepareNext()
{
    if (m_scope == SearchScope::Category) {
        const rules::SmallCategoryPtr chosen = m_session.Category();
        if (!chosen || m_texts.contains(chosen.get())) return false;
        TextsOf(chosen);
        return true;
    }
    const CString specialty = m_scope == SearchScope::Specialty ? m_session.Specialty() : CString();
    if (!m_session.IsWhole()) return false; // when the others have come
    rules::SmallCategoryPtr next;
    ForEachCategory(m_session.Draft().Specialties(), specialty, [&](const rules::SmallCategoryPtr& category) {
        if (!next && !m_texts.contains(category.get())) next = category;
    });
    if (next) TextsOf(next);
    return next != nullptr;
}

void RuleSearch::Forget()
{
    m_texts.clear();
    m_names.clear();
}

} // namespace editor
