#pragma once

#include "editor/docks/takeoff/TakeoffFigures.h"
#include "editor/session/WorkSession.h"
#include "editor/steps/BackgroundWork.h"

#include <QtCore/QTimer>

#include <optional>

namespace editor {

/// The open take-off table and what the draft makes of it: its components are priced behind the windows, and
/// again after every edit. Figures of a former state stay, with their rules, until those of the present one
/// are there. To be used on the thread of the windows; the session must outlive it.
class TakeoffHits : public QObject
{
    Q_OBJECT

public:
    enum class State {
        Closed,
        Reading, ///< the table
        Pricing,
        Current, ///< the figures are those of the present draft, or none is open
        Failed,  ///< the table cannot be read; see `Error`
    };

    explicit TakeoffHits(WorkSession& session, QObject* parent = nullptr);
    ~TakeoffHits() override;

    /// Opens a table (CSV, XLSX or ODS) by its path text. What was open is closed.
    void Open(const CString& path);
    /// Reads the open table anew.
    void Reload();
    void Close();

    State Now() const noexcept { return m_state; }
    /// How far reading or pricing is, from 0 to 1.
    double Progress() const { return m_work.Progress(); }
    /// Why the table cannot be read, for a person; empty unless it has failed.
    const CString& Error() const noexcept { return m_error; }
    /// The path text of the table; empty when none is open.
    const CString& Path() const noexcept { return m_path; }
    /// What was made of the table last; null when there is nothing yet.
    const TakeoffFiguresPtr& Figures() const noexcept { return m_figures; }
    bool IsCurrent() const noexcept { return m_state == State::Current; }

    /// How many components a rule takes, by its index in the draft. Nothing without figures, for a rule that
    /// they do not know yet, and for a category that the table has no component of.
    std::optional<std::uint64_t> HitsOf(const CString& category, std::size_t position) const;
    /// How many components the category has, and how many of them are left to its default rule.
    std::optional<std::uint64_t> ComponentsOf(const CString& category) const;
    std::optional<std::uint64_t> OnDefaultOf(const CString& category) const;
    /// The rows of the table that a rule of the draft takes; see `HitsOf`. They are those of `Figures`.
    std::vector<std::uint32_t> RowsOf(const CString& category, std::size_t position) const;

signals:
    /// `Now`, `Error` or `Path` is another one, or the work has come further.
    void StateChanged();
    /// `Figures` are others.
    void HitsChanged();

private:
    /// The index that a rule of the draft had when it was priced.
    std::optional<std::size_t> PricedIndex(const CategoryHits& hits, const CString& category,
                                           std::size_t position) const;
    void Price();
    void Enter(State state);
    void TakeFigures(TakeoffFiguresPtr figures);

    WorkSession& m_session;
    State m_state = State::Closed;
    CString m_path;
    CString m_error;
    TakeoffTablePtr m_table; ///< null until it is read
    TakeoffFiguresPtr m_figures;
    mutable std::map<CString, std::map<int, std::size_t>> m_indexes; ///< by category and id, when asked for
    QTimer m_telling;                                                ///< of progress
    BackgroundWork m_work;
};

} // namespace editor
