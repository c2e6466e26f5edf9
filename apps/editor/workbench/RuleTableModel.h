#pragma once

#include "editor/workbench/RuleSearch.h"
#include "rules/check/Finding.h"

#include <QtCore/QAbstractTableModel>

#include <functional>
#include <optional>

namespace editor {

/// How many components a rule got.
struct RuleHits
{
    quint64 count = 0;
    double share = 0; ///< of the components of its category, 0 to 1
};

/// What a trial says of a rule.
struct TrialMark
{
    bool applies = false;
    CString reason; ///< why it does not; empty for what comes behind the one that applies
};

/// What other parts of the workbench know of rules; any may be empty.
struct RuleKnowledge
{
    std::function<std::optional<rules::Severity>(const CString& category, std::size_t position)> severity{};
    std::function<CString(const CString& category, std::size_t position)> findings{}; ///< in words
    std::function<std::optional<RuleHits>(const CString& category, std::size_t position)> hits{};
    /// Of rules of the chosen category.
    std::function<std::optional<TrialMark>(std::size_t position)> trial{};
};

/// The rules that a search has found as lines of a table. Texts are made when a line is painted, nothing is
/// made for each line beforehand.
class RuleTableModel : public QAbstractTableModel
{
public:
    enum Column {
        PlaceColumn,
        PositionColumn,
        ConditionColumn,
        BillColumn,
        QuotaColumn,
        HitColumn,
        NoteColumn
    };
    static constexpr int ColumnCount = NoteColumn + 1;

    enum Role {
        ShareRole = Qt::UserRole, ///< of `HitColumn`: double, invalid for none
        AppliesRole,              ///< bool: the trial's rule
    };

    /// `session` must outlive this.
    explicit RuleTableModel(const WorkSession& session, QObject* parent = nullptr);

    void SetKnowledge(RuleKnowledge knowledge) { m_knowledge = std::move(knowledge); }
    /// Asked when rules are dropped: they are to stand before the rule at `target`, or behind the last.
    void OnMoved(std::function<void(std::size_t target)> moved) { m_moved = std::move(moved); }

    void Show(std::vector<RuleRow> rows);
    const std::vector<RuleRow>& Rows() const noexcept { return m_rows; }
    /// What is known of the rules may be other now.
    void KnowledgeChanged();

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    Qt::DropActions supportedDropActions() const override { return Qt::MoveAction; }
    QStringList mimeTypes() const override;
    QMimeData* mimeData(const QModelIndexList& indexes) const override;
    bool canDropMimeData(const QMimeData* data, Qt::DropAction action, int row, int column,
                         const QModelIndex& parent) const override;
    bool dropMimeData(const QMimeData* data, Qt::DropAction action, int row, int column,
                      const QModelIndex& parent) override;

private:
    CString Text(const RuleRow& row, int column) const;
    CString ToolTip(const RuleRow& row, int column) const;
    CString Note(const RuleRow& row) const;
    std::optional<RuleHits> HitsOf(const RuleRow& row) const;
    std::optional<TrialMark> TrialOf(const RuleRow& row) const;

    const WorkSession& m_session;
    RuleKnowledge m_knowledge;
    std::function<void(std::size_t)> m_moved = [](std::size_t) {};
    std::vector<RuleRow> m_rows;
};

} // namespace editor
