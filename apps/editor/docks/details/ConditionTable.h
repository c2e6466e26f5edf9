#pragma once

#include "editor/docks/details/ChosenRules.h"
#include "editor/docks/details/ConditionInput.h"

#include <QtCore/QPointer>
#include <QtWidgets/QTableWidget>

#include <functional>
#include <map>
#include <vector>

namespace editor {

/// The conditions of the chosen rules, a line each, edited in place. Of several rules it shows one line for
/// each attribute; what is entered there becomes the condition of all of them. A line that makes no condition
/// yet says why and stays as it was typed, for each rule on its own, until it does or is given up.
class ConditionTable : public QTableWidget
{
    Q_OBJECT

public:
    enum Column : int { AttributeColumn, FormColumn, ValueColumn, UpperColumn, ColumnCount };

    /// `chosen` must outlive this.
    explicit ConditionTable(const ChosenRules& chosen, QWidget* parent = nullptr);

    /// Shows the conditions in their present state.
    void Refresh();
    /// Takes over what is being typed; it belongs to the rules that were shown when it was begun.
    void Commit();
    /// Forgets all that makes no condition yet.
    void ForgetInput();

    /// Begins a new line.
    void AddLine();
    /// Deletes the conditions of the selected lines, or what was typed in new ones.
    void DeleteLines();
    /// Gives up what was typed into the current line.
    void DropInput();

    bool HasInput() const; ///< whether the current line has something to be given up
    bool CanAdd() const;
    /// Why the current line, or else the first one of which it can be said, makes no condition; empty for
    /// none.
    CString Fault() const;
    /// The attribute of the current line; empty for none.
    CString CurrentAttribute() const;

    // For the editors of cells

    const ConditionInput& InputAt(int row) const { return m_lines[static_cast<std::size_t>(row)].input; }
    const rules::CategoryFacts& Attributes() const { return m_chosen.Attributes(); }
    /// Takes over the text of a cell: of the operators' column the index of the form.
    void SetCell(int row, int column, const CString& text);
    /// Closes the editor with its text taken over, as when an entry has been chosen from its list. One that
    /// is closed already stays so.
    void Finish(QWidget* editor);
    void Opened(QWidget* editor) { m_editor = editor; }

signals:
    /// Something that the user should know, as a sentence.
    void Told(const CString& sentence);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    struct Line
    {
        CString key; ///< names the line among those of the rules
        int id = 0;  ///< of the condition of the only rule
        bool isNew = false;
        CString differs{}; ///< of several rules: in what way they differ
        ConditionInput former{};
        ConditionInput input{};
        CString fault{};
    };
    /// What was typed and makes no condition, by line.
    using Inputs = std::map<CString, ConditionInput>;

    std::vector<Line> LinesOfOne(const rules::Rule& rule) const;
    std::vector<Line> LinesOfSeveral(const RulesInView& view) const;
    void AddInput(std::vector<Line>& lines);
    void ShowLine(int row);
    void FitColumns();
    bool OpenList();
    void Enter(const Line& line, const ConditionInput& input);
    void Put(const Line& line, const rules::Condition& condition);
    void DeleteOf(const std::vector<Line>& lines);
    /// Does the edits that `makeEdit` gives for the rules of each category, as one. Gives how many rules have
    /// changed.
    std::size_t
    DoEverywhere(const CString& text, const RulesInView& view,
                 const std::function<rules::Edit(const CString&, const std::vector<std::size_t>&)>& makeEdit);

    const ChosenRules& m_chosen;
    std::vector<Line> m_lines;
    std::map<ChosenRules::Name, Inputs> m_inputs;
    int m_newLines = 0; ///< counted, for their keys
    QPointer<QWidget> m_editor;
    bool m_isEntering = false;
};

} // namespace editor
