#pragma once

#include "rules/merge/Conflict.h"

#include <QtCore/QString>
#include <QtWidgets/QDialog>

#include <optional>
#include <vector>

class QLabel;
class QPushButton;
class QTreeWidget;

namespace editor {

/// What the dialog says of the other side of a merge.
struct ConflictWords
{
    QString lead;   ///< what has happened, a paragraph
    QString theirs; ///< the answer for the other side, as "用文件里的"
    QString allTheirs;
};

/// Asks for each conflict of a merge which side counts: the rules as they were edited here, or as somebody
/// else has made them meanwhile. Both sides are told in full. The dialog can only be accepted when each
/// has an answer.
class ConflictDialog : public QDialog
{
public:
    /// `conflicts` must outlive this.
    ConflictDialog(const std::vector<rules::Conflict>& conflicts, ConflictWords words, QWidget* parent);

    /// Where another program has changed the file that is being saved.
    static ConflictWords WordsForFile(const QString& fileName);
    /// Where somebody has published another version of a configuration.
    static ConflictWords WordsForOffice(const QString& configuration);

    /// Runs it; nothing when the user does not want it after all.
    static std::optional<std::vector<rules::Side>> Ask(const std::vector<rules::Conflict>& conflicts,
                                                       ConflictWords words, QWidget* parent);

    std::vector<rules::Side> Answers() const;

private:
    void Build();
    QString AnswerText(const std::optional<rules::Side>& answer) const;
    void Answer(rules::Side side, bool all);
    void ShowState();

    const std::vector<rules::Conflict>& m_conflicts;
    ConflictWords m_words;
    std::vector<std::optional<rules::Side>> m_answers;
    QTreeWidget* m_list;
    QLabel* m_text;
    QPushButton* m_accept;
};

} // namespace editor
