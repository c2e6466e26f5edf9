#include "editor/docks/trial/TrialForm.h"

#include "rules/match/CellText.h"
#include "widgets/LineColour.h"

#include <QtCore/QSignalBlocker>
#include <QtGui/QWheelEvent>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QCompleter>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QToolButton>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace editor {

namespace {

/// The width that every box can do with, in characters.
constexpr int LeastWidth = 6;

/// Values to choose from, or to be typed. The wheel scrolls the form and changes none.
class ValueBox : public QComboBox
{
public:
    explicit ValueBox(const CStringArray& choices)
    {
        setEditable(true);
        setInsertPolicy(NoInsert);
        setSizeAdjustPolicy(AdjustToMinimumContentsLengthWithIcon);
        setMinimumContentsLength(LeastWidth);
        setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
        setFocusPolicy(Qt::StrongFocus);
        addItem(QString());
        addItems(choices);
        completer()->setCompletionMode(QCompleter::PopupCompletion);
        completer()->setFilterMode(Qt::MatchContains);
        lineEdit()->setPlaceholderText(u"空"_s);
        lineEdit()->setClearButtonEnabled(true);
        widgets::ColourHint(*lineEdit());
    }

protected:
    void wheelEvent(QWheelEvent* event) override { event->ignore(); }
};

CString TipOf(const TrialField& field)
{
    switch (field.kind) {
    case TrialField::Kind::Tested:
        return field.choices.isEmpty()
                   ? u"规则的条件用到它"_s
                   : u"规则的条件用到它；列表里是它的取值，以及规则的界限和界限之间的数"_s;
    case TrialField::Kind::Quantity:
        return u"规则的工程量计算式用到它"_s;
    case TrialField::Kind::Offered:
        break;
    }
    return u"现有的规则没有用到它"_s;
}

} // namespace

TrialForm::TrialForm(QWidget* parent) : QScrollArea(parent)
{
    setWidgetResizable(true);
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFocusPolicy(Qt::NoFocus);
    setAccessibleName(u"要试的构件"_s);
}

void TrialForm::Show(const std::vector<TrialField>& fields, const Values& values)
{
    if (fields != m_fields || widget() == nullptr) {
        m_fields = fields;
        Build();
    }
    Fill(values);
}

void TrialForm::Build()
{
    m_boxes.clear();
    m_others = nullptr;
    auto* content = new QWidget;
    auto* form = new QFormLayout(content);
    form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    form->setRowWrapPolicy(QFormLayout::WrapLongRows);
    std::optional<TrialField::Kind> kind;
    for (const TrialField& field : m_fields) {
        if (field.kind != kind) {
            kind = field.kind;
            if (field.kind == TrialField::Kind::Quantity) AddHeading(*form, u"工程量"_s);
            if (field.kind == TrialField::Kind::Offered) {
                m_others = new QToolButton;
                m_others->setText(u"其他属性"_s);
                m_others->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
                m_others->setAutoRaise(true);
                m_others->setCheckable(true);
                m_others->setFocusPolicy(Qt::StrongFocus);
                m_others->setToolTip(u"显示或收起规则没有用到的属性（空格）"_s);
                connect(m_others, &QToolButton::toggled, this, [this](bool shown) { ShowOthers(shown); });
                form->addRow(m_others);
            }
        }
        AddField(*form, field);
    }
    setWidget(content); // the former content goes
    if (m_others != nullptr) {
        m_others->setChecked(m_othersShown);
        ShowOthers(m_othersShown);
    }
    OrderTabs();
}

QWidget* TrialForm::FirstField() const
{
    return m_boxes.empty() ? nullptr : m_boxes.front();
}

/// What is made stands last in the window's order.
void TrialForm::OrderTabs() const
{
    QWidget* last = m_before;
    const auto add = [&last](QWidget* next) {
        if (last != nullptr) QWidget::setTabOrder(last, next);
        last = next;
    };
    for (std::size_t i = 0; i < m_fields.size(); ++i) {
        const bool isOffered = m_fields[i].kind == TrialField::Kind::Offered;
        if (isOffered && (i == 0 || m_fields[i - 1].kind != TrialField::Kind::Offered)) add(m_others);
        add(m_boxes[i]);
    }
}

void TrialForm::AddHeading(QFormLayout& form, const QString& text) const
{
    auto* heading = new QLabel(text);
    QFont bold = font();
    bold.setBold(true);
    heading->setFont(bold);
    form.addRow(heading);
}

void TrialForm::AddField(QFormLayout& form, const TrialField& field)
{
    auto* box = new ValueBox(field.choices);
    const CString label = field.unit.isEmpty() ? field.name : rules::WithUnit(field.name, field.unit);
    box->setAccessibleName(label);
    box->setObjectName(field.name);
    box->setToolTip(TipOf(field));
    connect(box, &QComboBox::editTextChanged, this, &TrialForm::Changed);
    form.addRow(label, box);
    m_boxes.push_back(box);
}

void TrialForm::ShowOthers(bool shown)
{
    m_othersShown = shown;
    m_others->setArrowType(shown ? Qt::DownArrow : Qt::RightArrow);
    auto* form = static_cast<QFormLayout*>(widget()->layout());
    for (std::size_t i = 0; i < m_fields.size(); ++i)
        if (m_fields[i].kind == TrialField::Kind::Offered)
            form->setRowVisible(m_boxes[i], shown || !m_boxes[i]->currentText().isEmpty());
}

void TrialForm::Fill(const Values& values)
{
    for (std::size_t i = 0; i < m_fields.size(); ++i) {
        const QSignalBlocker quiet(m_boxes[i]);
        const auto value = values.find(m_fields[i].name);
        m_boxes[i]->setEditText(value == values.end() ? CString() : value->second);
    }
    if (m_others != nullptr) ShowOthers(m_othersShown); // those that are filled in are shown in any case
}

TrialForm::Values TrialForm::Filled() const
{
    Values values;
    for (std::size_t i = 0; i < m_fields.size(); ++i) {
        const CString text = m_boxes[i]->currentText();
        if (!rules::WithoutBlanks(text).isEmpty()) values[m_fields[i].name] = text;
    }
    return values;
}

} // namespace editor
