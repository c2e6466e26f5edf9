#pragma once

#include "rules/merge/Conflict.h"

#include <QtWidgets/QDialog>

#include <optional>
#include <vector>

class QLabel;
class QPushButton;
class QTreeWidget;

namespace editor {

/// Asks for each conflict of a merge which side counts: the rules as they were edited here, or as another
/// program has saved them meanwhile. Both sides are told in full. The dialog can only be accepted when each
/// has an answer.
class ConflictDialog : public QDialog
{
public:
    /// `conflicts` must outlive this.
    ConflictDialog(const std::vector<rules::Conflict>& conflicts, const QString& fileName, QWidget* parent);

    /// Runs it; nothing when the user does not save after all.
    static std::optional<std::vector<rules::Side>> Ask(const std::vector<rules::Conflict>& conflicts,
                                                       const QString& fileName, QWidget* parent);

    std::vector<rules::Side> Answers() const;

private:
    void Build(const QString& fileName);
    void Answer(rules::Side side, bool all);
    void ShowState();

    const std::vector<rules::Conflict>& m_conflicts;
    std::vector<std::optional<rules::Side>> m_answers;
    QTreeWidget* m_list;
    QLabel* m_text;
    QPushButton* m_accept;
};

} // namespace editor
