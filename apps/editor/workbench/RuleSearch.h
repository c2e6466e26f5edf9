#pragma once

#include "editor/session/WorkSession.h"
#include "rules/find/RuleFilter.h"

#include <map>
#include <memory>
#include <vector>

namespace editor {

/// Where rules are looked for.
enum class SearchScope { Category, Specialty, File, Project };

/// A rule file beside the open one.
struct OtherFile
{
    CString path;
    rules::ConfigurationPtr rules;
};

/// One rule that is shown.
struct RuleRow
{
    rules::SmallCategoryPtr category;
    std::size_t position = 0;
    CString file{}; ///< path text of another file than the open one; else empty

    const rules::Rule& Get() const { return category->rules[position]; }
};

/// Finds the rules to show: those of the chosen category, or what is looked for in a wider scope. What has
/// been made ready for searching is kept until its category changes, so that every key typed costs one
/// reading of the prepared texts.
class RuleSearch
{
public:
    /// `session` must outlive this.
    explicit RuleSearch(const WorkSession& session) : m_session(session) {}

    void SetText(const CString& text) { m_text = text; }
    const CString& Text() const noexcept { return m_text; }
    void SetScope(SearchScope scope) { m_scope = scope; }
    SearchScope Scope() const noexcept { return m_scope; }
    /// What the scope `Project` looks at besides the open file.
    void SetOtherFiles(std::vector<OtherFile> files) { m_others = std::move(files); }

    /// The rules found, in the order of file and list. Without a text those of the chosen category, in any
    /// scope.
    std::vector<RuleRow> Rows();
    /// Makes ready what the next search will look at, one category; false when all is.
    bool PrepareNext();
    /// Facts or file are others.
    void Forget();

private:
    const rules::RuleTexts& TextsOf(const rules::SmallCategoryPtr& category);
    void AddRows(const rules::SmallCategoryPtr& category, const rules::RuleQuery& query, const CString& file,
                 std::vector<RuleRow>& rows);
    std::vector<rules::SmallCategoryPtr> Categories() const;
    const CStringArray& Names();

    const WorkSession& m_session;
    CString m_text;
    SearchScope m_scope = SearchScope::Category;
    std::vector<OtherFile> m_others;
    std::map<const rules::SmallCategory*, std::unique_ptr<rules::RuleTexts>> m_texts;
    CStringArray m_names; ///< of attributes; empty until they are needed
};

} // namespace editor
