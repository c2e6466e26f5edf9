#pragma once

#include "editor/session/WorkSession.h"
#include "editor/steps/BackgroundWork.h"
#include "rules/check/Finding.h"

#include <map>
#include <span>
#include <utility>

namespace editor {

/// Knows what is wrong with the rules of the open draft, and follows every edit behind the windows: what was
/// edited and the chosen category are checked at once, the other categories after them, and in the end what
/// takes all of the file. What was found of a former state goes with its rules to their new places until the
/// present one is checked. To be used on the thread of the windows; the session must outlive it.
class FindingsWatch : public QObject
{
    Q_OBJECT

public:
    explicit FindingsWatch(WorkSession& session, QObject* parent = nullptr);
    ~FindingsWatch() override;

    /// What is wrong in a small category, by the position of the rule. That of a specialty or big category is
    /// what is about it as such, and that of an empty text what is about the file. Stands until
    /// `FindingsChanged` tells of that category.
    const std::vector<rules::Finding>& Of(const CString& category) const;
    /// What is about one rule, by its index in the list.
    std::span<const rules::Finding> Of(const CString& category, std::size_t position) const;
    /// The categories that have findings: the file first, then in the order of the draft.
    CStringArray Categories() const;

    /// The worst of them; nothing when there is none.
    std::optional<rules::Severity> WorstOf(const CString& category) const;
    std::optional<rules::Severity> WorstOf(const CString& category, std::size_t position) const;

    /// What is about a rule, in words: a line for each, with its severity in front. Empty for nothing.
    CString TextOf(const CString& category, std::size_t position) const;

    /// Whether all that is told is about the present state of the draft; true when nothing is open.
    bool IsCurrent() const noexcept { return m_isCurrent; }
    /// The same of one small category, but for what takes all of the file.
    bool IsCurrent(const CString& category) const;

signals:
    /// There may be other findings in these categories, or at other places. Comes without categories, too,
    /// when nothing else has changed than `IsCurrent`.
    void FindingsChanged(const QStringList& categories);

private:
    /// What was found in one category as it stood then.
    struct Checked
    {
        rules::SmallCategoryPtr category;
        std::vector<rules::Finding> findings;
    };
    /// Of the categories by themselves.
    using CheckedList = std::vector<Checked>;
    using ByCategory = std::map<CString, std::vector<rules::Finding>>;

    void BeginAnew();
    void NoteEdited(const CStringArray& categories);
    void CheckNearby();
    void CheckFurther();
    void CheckFile();
    void Take(CheckedList checked);
    void TakeFile(ByCategory findings);
    void Show(const CString& category);
    std::vector<rules::SmallCategoryPtr> Unchecked() const;

    WorkSession& m_session;
    std::map<CString, Checked> m_checked; ///< by text
    ByCategory m_ofFile;                  ///< what takes all of the file
    ByCategory m_shown;                   ///< both, at their present places; none is empty
    bool m_isCurrent = true;
    BackgroundWork m_nearby;  ///< of what was edited and what is chosen
    BackgroundWork m_further; ///< of all else
};

} // namespace editor
