#include "editor/docks/details/ConditionTable.h"

#include "editor/messages/ErrorBox.h"
#include "editor/session/WorkSession.h"
#include "rules/draft/RuleEdits.h"
#include "rules/sheet/ConditionCell.h"
#include "widgets/ReadableColour.h"
#include "widgets/TextMetrics.h"

#include <QtCore/QScopedValueRollback>
#include <QtGui/QKeyEvent>
#include <QtGui/QUndoStack>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QHeaderView>

#include <algorithm>
#include <set>

using namespace Qt::StringLiterals;

namespace editor {

namespace {

constexpr QRgb Red = qRgb(176, 0, 32);

/// The first condition on an attribute; null for none.
const rules::Condition* FindCondition(const rules::Rule& rule, const CString& attribute)
{
    const auto found = std::find_if(rule.conditions.begin(), rule.conditions.end(),
                                    [&](const auto& condition) { return condition.attribute == attribute; });
    return found == rule.conditions.end() ? nullptr : &*found;
}

/// Attributes of several rules in the order in which they come.
CStringArray AttributesOf(const RulesInView& view)
{
    CStringArray names;
    for (std::size_t i = 0; i < view.Count(); ++i)
        for (const rules::Condition& condition : view.At(i).conditions)
            if (!names.contains(condition.attribute)) names.append(condition.attribute);
    return names;
}

bool HasUpper(const ConditionInput& input)
{
    return input.form >= 0 && ConditionForms().at(static_cast<std::size_t>(input.form)).HasTwoBounds();
}

} // namespace

ConditionTable::ConditionTable(const ChosenRules& chosen, QWidget* parent)
    : QTableWidget(0, ColumnCount, parent), m_chosen(chosen)
{
    setHorizontalHeaderLabels({u"属性"_s, u"运算符"_s, u"值、下限"_s, u"上限"_s});
    horizontalHeaderItem(ValueColumn)->setToolTip(u"值，或者界限；也可以写出整个条件：≠X、>50、50<..<=65"_s);
    setAccessibleName(u"条件"_s);
    setSelectionBehavior(SelectRows);
    setEditTriggers(DoubleClicked | SelectedClicked | EditKeyPressed | AnyKeyPressed);
    setTabKeyNavigation(false);
    setWordWrap(false);
    verticalHeader()->hide();
    verticalHeader()->setDefaultSectionSize(
        std::max(verticalHeader()->defaultSectionSize(), fontMetrics().height() * 3 / 2));
    horizontalHeader()->setHighlightSections(false);
    FitColumns();
}

void ConditionTable::FitColumns()
{
    QHeaderView& header = *horizontalHeader();
    header.setMinimumSectionSize(widgets::ColumnWidth(fontMetrics(), u"上限"_s));
    header.setSectionResizeMode(AttributeColumn, QHeaderView::Stretch);
    header.setSectionResizeMode(FormColumn, QHeaderView::Interactive);
    header.setSectionResizeMode(ValueColumn, QHeaderView::Stretch);
    header.setSectionResizeMode(UpperColumn, QHeaderView::Interactive);
    setColumnWidth(FormColumn, widgets::ColumnWidth(fontMetrics(), u"＜..≤mm"_s));
    setColumnWidth(UpperColumn, widgets::ColumnWidth(fontMetrics(), u"00000"_s));
}

std::vector<ConditionTable::Line> ConditionTable::LinesOfOne(const rules::Rule& rule) const
{
    std::vector<Line> lines;
    std::map<int, int> seen; // a file may have ids twice
    for (const rules::Condition& condition : rule.conditions) {
        Line line;
        line.id = condition.id;
        line.key = u"%1/%2"_s.arg(condition.id).arg(seen[condition.id]++);
        line.former = line.input = InputOf(condition);
        lines.push_back(line);
    }
    return lines;
}

std::vector<ConditionTable::Line> ConditionTable::LinesOfSeveral(const RulesInView& view) const
{
    std::vector<Line> lines;
    for (const CString& attribute : AttributesOf(view)) {
        std::set<CString> texts;
        std::size_t with = 0;
        CString shared; // what they say, where they say the same
        Line line;
        line.key = attribute;
        for (std::size_t i = 0; i < view.Count(); ++i)
            if (const rules::Condition* condition = FindCondition(view.At(i), attribute)) {
                ++with;
                texts.insert(condition->Text());
                shared = rules::CellOf(*condition).value_or(condition->Text());
            }
        const bool inAll = with == view.Count();
        if (texts.size() > 1)
            line.differs = inAll ? u"各不相同"_s : u"%1 条有，各不相同"_s.arg(with);
        else if (!inAll)
            line.differs = u"%1 条有 %2"_s.arg(with).arg(shared);
        // Whatever is entered where they differ is something new, and no field has it yet.
        line.former = line.differs.isEmpty() ? InputOf(*FindCondition(view.At(0), attribute))
                                             : ConditionInput{attribute, 0, {}, {}};
        line.input = line.former;
        lines.push_back(line);
    }
    return lines;
}

void ConditionTable::AddInput(std::vector<Line>& lines)
{
    const auto found = m_inputs.find(m_chosen.Named());
    if (found == m_inputs.end()) return;
    for (auto entry = found->second.begin(); entry != found->second.end();) {
        const CString& key = entry->first;
        auto line = std::find_if(lines.begin(), lines.end(), [&](const Line& one) { return one.key == key; });
        if (line == lines.end() && !key.startsWith(u'+')) {
            entry = found->second.erase(entry); // the condition has gone
            continue;
        }
        if (line == lines.end()) line = lines.insert(lines.end(), {.key = key, .isNew = true});
        line->input = entry->second;
        line->fault = FaultOf(line->input, Attributes());
        ++entry;
    }
}

void ConditionTable::Refresh()
{
    const RulesInView view = m_chosen.Look();
    if (view.IsEmpty())
        m_lines.clear();
    else
        m_lines = view.IsSingle() ? LinesOfOne(view.At(0)) : LinesOfSeveral(view);
    AddInput(m_lines);
    setRowCount(static_cast<int>(m_lines.size()));
    for (int row = 0; row < rowCount(); ++row)
        ShowLine(row);
    if (currentRow() < 0 && rowCount() > 0) setCurrentCell(0, ValueColumn);
}

void ConditionTable::ShowLine(int row)
{
    const Line& line = m_lines[static_cast<std::size_t>(row)];
    const bool differs = !line.differs.isEmpty() && line.input == line.former;
    const CString sign =
        line.input.form < 0 ? u"？"_s : ConditionForms().at(static_cast<std::size_t>(line.input.form)).sign;
    const QStringList texts{line.input.attribute, differs ? CString() : sign,
                            differs ? u"（%1）"_s.arg(line.differs) : line.input.first,
                            HasUpper(line.input) ? line.input.second : CString()};
    for (int column = 0; column < ColumnCount; ++column) {
        QTableWidgetItem* cell = item(row, column);
        if (cell == nullptr) setItem(row, column, cell = new QTableWidgetItem);
        cell->setText(texts[column]);
        cell->setToolTip(line.fault.isEmpty() ? texts[column] : line.fault);
        cell->setData(Qt::AccessibleDescriptionRole, line.fault);
        cell->setForeground(line.fault.isEmpty() ? QBrush()
                                                 : widgets::ReadableOn(palette().color(QPalette::Base), Red));
        const bool isFixed = (column == UpperColumn && !HasUpper(line.input)) ||
                             (column == AttributeColumn && !line.isNew && line.id == 0);
        cell->setFlags(isFixed ? Qt::ItemIsSelectable | Qt::ItemIsEnabled
                               : Qt::ItemIsSelectable | Qt::ItemIsEnabled | Qt::ItemIsEditable);
    }
    item(row, AttributeColumn)
        ->setIcon(line.fault.isEmpty() ? QIcon() : style()->standardIcon(QStyle::SP_MessageBoxWarning));
}

void ConditionTable::Finish(QWidget* editor)
{
    if (editor == nullptr || !editor->isVisible() || state() != EditingState) return; // closed meanwhile
    commitData(editor);
    emit itemDelegate()->closeEditor(editor);
}

void ConditionTable::Commit()
{
    if (!m_isEntering) Finish(m_editor);
}

void ConditionTable::ForgetInput()
{
    m_inputs.clear();
    m_newLines = 0;
}

void ConditionTable::SetCell(int row, int column, const CString& text)
{
    if (row < 0 || row >= static_cast<int>(m_lines.size())) return;
    const Line line = m_lines[static_cast<std::size_t>(row)];
    ConditionInput input = line.input;
    if (column == AttributeColumn) input = WithAttribute(input, text, Attributes());
    if (column == FormColumn) input = WithForm(input, text.toInt());
    if (column == ValueColumn) input = WithText(input, text, Attributes());
    if (column == UpperColumn) input.second = Folded(text);
    const bool isNumber = column == ValueColumn || column == UpperColumn;
    if (isNumber && Folded(text) != text.trimmed()) emit Told(u"全角的数已改成半角"_s);
    if (input == line.input) return;
    RunGuarded([&] { Enter(line, input); });
}

void ConditionTable::Enter(const Line& line, const ConditionInput& input)
{
    const QScopedValueRollback entering(m_isEntering, true);
    Inputs& inputs = m_inputs[m_chosen.Named()];
    inputs.erase(line.key);
    const bool isWhole = FaultOf(input, Attributes()).isEmpty();
    if (!isWhole && input != line.former) inputs[line.key] = input;
    if (isWhole && (input != line.former || line.isNew)) Put(line, ConditionFrom(input));
    if (inputs.empty()) m_inputs.erase(m_chosen.Named());
    Refresh();
    emit itemSelectionChanged(); // what is wrong with the line may be something else now
}

void ConditionTable::Put(const Line& line, const rules::Condition& condition)
{
    const RulesInView view = m_chosen.Look();
    if (view.IsEmpty()) return;
    if (!view.IsSingle()) {
        const std::size_t changed = DoEverywhere(
            u"设条件 %1"_s.arg(condition.Text()), view, [&](const CString& category, const auto& positions) {
                return rules::SetCondition(m_chosen.Session().Draft(), category, positions, condition);
            });
        emit Told(u"已改 %1 条规则：%2"_s.arg(changed).arg(condition.Text()));
        return;
    }
    const CString text = (line.isNew ? u"加条件 %1"_s : u"修改条件 %1"_s).arg(condition.Text());
    m_chosen.Change(text, [&](rules::Rule& rule) {
        const auto lines = LinesOfOne(rule);
        const auto at =
            std::find_if(lines.begin(), lines.end(), [&](const Line& one) { return one.key == line.key; });
        if (at == lines.end()) {
            rule.conditions.push_back(condition);
            rule.conditions.back().id = 0;
            return;
        }
        rules::Condition& former = rule.conditions[static_cast<std::size_t>(at - lines.begin())];
        const int id = former.id;
        former = condition;
        former.id = id;
    });
}

std::size_t ConditionTable::DoEverywhere(
    const CString& text, const RulesInView& view,
    const std::function<rules::Edit(const CString&, const std::vector<std::size_t>&)>& makeEdit)
{
    rules::Edit all{text, {}};
    for (const auto& [category, positions] : view.Places()) {
        const rules::Edit edit = makeEdit(category, positions);
        all.splices.insert(all.splices.end(), edit.splices.begin(), edit.splices.end());
    }
    return m_chosen.Do(all);
}

bool ConditionTable::CanAdd() const
{
    const RulesInView view = m_chosen.Look();
    return !view.IsEmpty() && !view.IsDefaultAlone();
}

void ConditionTable::AddLine()
{
    Commit();
    if (!CanAdd()) return;
    Inputs& inputs = m_inputs[m_chosen.Named()];
    const auto empty = std::find_if(inputs.begin(), inputs.end(),
                                    [](const auto& one) { return one.second == ConditionInput(); });
    if (empty == inputs.end()) inputs[u"+%1"_s.arg(m_newLines++, 6, 10, QChar(u'0'))] = {};
    Refresh();
    const auto line = std::find_if(m_lines.begin(), m_lines.end(), [](const Line& one) {
        return one.isNew && one.input == ConditionInput();
    });
    setCurrentCell(static_cast<int>(line - m_lines.begin()), AttributeColumn);
    edit(currentIndex());
}

void ConditionTable::DeleteLines()
{
    std::vector<Line> lines;
    for (const QModelIndex& index : selectionModel()->selectedRows())
        lines.push_back(m_lines[static_cast<std::size_t>(index.row())]);
    if (lines.empty()) return;
    const auto inputs = m_inputs.find(m_chosen.Named());
    for (const Line& line : lines)
        if (inputs != m_inputs.end()) inputs->second.erase(line.key);
    const auto added = [](const Line& line) { return line.isNew; };
    lines.erase(std::remove_if(lines.begin(), lines.end(), added), lines.end());
    if (!lines.empty()) DeleteOf(lines);
    Refresh();
    emit itemSelectionChanged();
}

void ConditionTable::DeleteOf(const std::vector<Line>& lines)
{
    const RulesInView view = m_chosen.Look();
    const CString text = lines.size() == 1 ? u"删除条件 %1"_s.arg(lines.front().former.attribute)
                                           : u"删除 %1 个条件"_s.arg(lines.size());
    if (view.IsSingle()) {
        m_chosen.Change(text, [&](rules::Rule& rule) {
            const auto present = LinesOfOne(rule);
            for (std::size_t i = present.size(); i-- > 0;)
                if (std::any_of(lines.begin(), lines.end(),
                                [&](const Line& line) { return line.key == present[i].key; }))
                    rule.conditions.erase(rule.conditions.begin() + static_cast<std::ptrdiff_t>(i));
        });
        return;
    }
    QUndoStack& undo = m_chosen.Session().Undo();
    std::size_t changed = 0;
    if (lines.size() > 1) undo.beginMacro(text);
    for (const Line& line : lines)
        changed =
            std::max(changed, DoEverywhere(text, view, [&](const CString& category, const auto& positions) {
                         return rules::RemoveConditions(m_chosen.Session().Draft(), category, positions,
                                                        line.former.attribute);
                     }));
    if (lines.size() > 1) undo.endMacro();
    emit Told(u"已改 %1 条规则：%2"_s.arg(changed).arg(text));
}

bool ConditionTable::HasInput() const
{
    const int row = currentRow();
    return row >= 0 && !m_lines[static_cast<std::size_t>(row)].fault.isEmpty();
}

void ConditionTable::DropInput()
{
    const int row = currentRow();
    const auto inputs = m_inputs.find(m_chosen.Named());
    if (row < 0 || inputs == m_inputs.end()) return;
    inputs->second.erase(m_lines[static_cast<std::size_t>(row)].key);
    Refresh();
    emit itemSelectionChanged();
}

CString ConditionTable::Fault() const
{
    const auto inWords = [this](std::size_t row) {
        const Line& line = m_lines[row];
        return line.fault.isEmpty() ? CString() : u"第 %1 行还不是条件：%2"_s.arg(row + 1).arg(line.fault);
    };
    if (currentRow() >= 0) {
        CString fault = inWords(static_cast<std::size_t>(currentRow()));
        if (!fault.isEmpty()) return fault;
    }
    for (std::size_t row = 0; row < m_lines.size(); ++row)
        if (!m_lines[row].fault.isEmpty()) return inWords(row);
    return {};
}

CString ConditionTable::CurrentAttribute() const
{
    const int row = currentRow();
    return row < 0 ? CString() : InputAt(row).attribute;
}

/// The list of the current cell; false where there is none.
bool ConditionTable::OpenList()
{
    const bool hasList = currentColumn() != UpperColumn;
    if (!hasList || (currentItem()->flags() & Qt::ItemIsEditable) == 0) return false;
    edit(currentIndex());
    auto* combo = qobject_cast<QComboBox*>(m_editor);
    if (combo != nullptr) combo->showPopup();
    return combo != nullptr;
}

// Escape is only taken while there is something to be given up, Enter and the key of a list only where a cell
// can be edited: a window around may have a use for them.
void ConditionTable::keyPressEvent(QKeyEvent* event)
{
    const bool isAtCell = state() != EditingState && currentItem() != nullptr;
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    const bool isForList = event->key() == Qt::Key_Down && event->modifiers().testFlag(Qt::AltModifier);
    if (isEnter && isAtCell) {
        if ((currentItem()->flags() & Qt::ItemIsEditable) != 0) edit(currentIndex());
        return;
    }
    if (isForList && isAtCell && OpenList()) return;
    if (event->key() == Qt::Key_Escape && HasInput()) {
        DropInput();
        return;
    }
    QTableWidget::keyPressEvent(event);
}

void ConditionTable::changeEvent(QEvent* event)
{
    QTableWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange) FitColumns();
    if (event->type() == QEvent::PaletteChange)
        for (int row = 0; row < rowCount(); ++row)
            ShowLine(row);
}

} // namespace editor
