#include "editor/docks/details/SeriesDialog.h"

#include "editor/docks/details/ConditionInput.h"
#include "editor/messages/ErrorBox.h"
#include "editor/session/WorkSession.h"
#include "rules/match/CellText.h"
#include "widgets/FaultColour.h"
#include "widgets/LineDelegate.h"

#include <QtCore/QRegularExpression>
#include <QtCore/QSignalBlocker>
#include <QtGui/QClipboard>
#include <QtGui/QGuiApplication>
#include <QtGui/QKeyEvent>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QGridLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QVBoxLayout>

#include <algorithm>
#include <array>
#include <stdexcept>
#include <utility>

using namespace Qt::StringLiterals;

namespace editor {

namespace {

constexpr QSize SizeInLines(44, 30);

/// The attribute to begin with: `wanted`, else the first one with values that the pattern has a condition on,
/// else the first one with values.
CString FirstAttribute(const CString& wanted, const rules::Rule& pattern,
                       const rules::CategoryFacts& attributes)
{
    const auto hasValues = [&](const CString& name) {
        const rules::AttributeFacts* const facts = FindFacts(attributes, name);
        return facts != nullptr && !facts->valueList.isEmpty();
    };
    if (FindFacts(attributes, wanted) != nullptr) return wanted;
    for (const rules::Condition& condition : pattern.conditions)
        if (hasValues(condition.attribute)) return condition.attribute;
    for (const rules::AttributeFacts& facts : attributes)
        if (hasValues(facts.name)) return facts.name;
    return attributes.empty() ? CString() : attributes.front().name;
}

/// The numbers in rising order, with what is no number behind them.
void SortByNumber(CStringArray& values, const CStringArray& valueList)
{
    const rules::NumberReader numbers(valueList);
    std::stable_sort(values.begin(), values.end(), [&](const CString& a, const CString& b) {
        const auto left = numbers.Read(a);
        const auto right = numbers.Read(b);
        return left && right ? *left < *right : left.has_value() && !right;
    });
}

QPushButton* MakeButton(const CString& text, const CString& tip)
{
    auto* button = new QPushButton(text);
    button->setToolTip(tip);
    button->setAutoDefault(false);
    return button;
}

} // namespace

CStringArray SplitValues(const CString& text)
{
    static const QRegularExpression Separators(u"[\\s,;，、；]+"_s,
                                               QRegularExpression::UseUnicodePropertiesOption);
    CStringArray values;
    for (const CString& part : text.split(Separators, Qt::SkipEmptyParts)) {
        const CString value = Folded(part);
        if (!values.contains(value)) values.append(value);
    }
    return values;
}

SeriesDialog::SeriesDialog(WorkSession& session, CString category, std::size_t position,
                           const CString& attribute, QWidget* parent)
    : QDialog(parent), m_session(session), m_category(std::move(category)), m_position(position),
      m_ruleId(Pattern().id), m_attribute(new QComboBox), m_form(new QComboBox), m_openEnds(new QCheckBox),
      m_rest(new QCheckBox), m_replaces(new QCheckBox(u"代替原来的规则(&R)"_s)), m_values(new QListWidget),
      m_preview(new QListWidget), m_hint(new QLabel), m_fault(new QLabel), m_make(new QPushButton)
{
    setWindowTitle(u"规则系列"_s);
    auto* column = new QVBoxLayout(this);
    column->addWidget(MakeForm());
    auto* row = new QHBoxLayout;
    row->addWidget(MakeValues(), 2);
    row->addWidget(MakePreview(), 3);
    column->addLayout(row, 1);
    column->addWidget(m_hint);
    column->addWidget(m_fault);
    for (QLabel* label : {m_hint, m_fault}) {
        label->setTextFormat(Qt::PlainText);
        label->setWordWrap(true);
        label->hide();
    }
    auto* buttons = new QDialogButtonBox;
    buttons->addButton(m_make, QDialogButtonBox::AcceptRole);
    buttons->addButton(u"取消"_s, QDialogButtonBox::RejectRole)
        ->setToolTip(u"什么也不做，关闭这个窗口（Esc）"_s);
    m_make->setDefault(true);
    m_make->setToolTip(u"加上右边的规则（Enter）"_s);
    connect(buttons, &QDialogButtonBox::accepted, this, &SeriesDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &SeriesDialog::reject);
    column->addWidget(buttons);
    const rules::CategoryFacts& attributes = session.Facts()->AttributesOf(m_category);
    for (const rules::AttributeFacts& facts : attributes)
        m_attribute->addItem(facts.name);
    m_attribute->setCurrentText(FirstAttribute(attribute, Pattern(), attributes));
    connect(m_attribute, &QComboBox::currentTextChanged, this, &SeriesDialog::ShowAttribute);
    connect(m_form, &QComboBox::currentIndexChanged, this, &SeriesDialog::ShowPreview);
    for (QCheckBox* ends : {m_openEnds, m_rest})
        connect(ends, &QCheckBox::toggled, this, &SeriesDialog::ShowPreview);
    connect(m_values, &QListWidget::itemChanged, this, &SeriesDialog::ShowPreview);
    const int line = fontMetrics().height();
    resize(SizeInLines * line);
    ShowAttribute();
}

QWidget* SeriesDialog::MakeForm()
{
    auto* place = new QWidget;
    auto* form = new QFormLayout(place);
    form->setContentsMargins({});
    form->setRowWrapPolicy(QFormLayout::WrapLongRows);
    m_form->addItem(u"每个值一条规则（＝）"_s, static_cast<int>(rules::SeriesForm::Values));
    m_form->addItem(u"相邻两个值之间一条，含上限（＜..≤）"_s,
                    static_cast<int>(rules::SeriesForm::UpperClosed));
    m_form->addItem(u"相邻两个值之间一条，含下限（≤..＜）"_s,
                    static_cast<int>(rules::SeriesForm::LowerClosed));
    m_openEnds->setChecked(true);
    m_replaces->setChecked(true);
    m_replaces->setEnabled(!Pattern().isDefault); // a default rule stays behind its series
    m_replaces->setToolTip(u"不代替时，新的规则排在原来的规则之后"_s);
    form->addRow(u"属性(&A)："_s, m_attribute);
    form->addRow(u"形式(&F)："_s, m_form);
    form->addRow({}, m_openEnds);
    form->addRow({}, m_rest);
    form->addRow({}, m_replaces);
    return place;
}

QWidget* SeriesDialog::MakeValues()
{
    auto* place = new QWidget;
    auto* column = new QVBoxLayout(place);
    column->setContentsMargins({});
    auto* label = new QLabel(u"值(&V)："_s);
    label->setBuddy(m_values);
    column->addWidget(label);
    m_values->setAccessibleName(u"值"_s);
    m_values->setItemDelegate(new widgets::LineDelegate(m_values));
    m_values->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_values->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed);
    m_values->installEventFilter(this);
    column->addWidget(m_values, 1);
    auto* buttons = new QGridLayout;
    const std::array<QPushButton*, 5> all{
        MakeButton(u"加值(&N)"_s, u"加一个值并填写（Insert）"_s),
        MakeButton(u"删值(&D)"_s, u"从表里去掉选中的值（Delete）"_s),
        MakeButton(u"粘贴(&P)"_s, u"用剪贴板里的值：一行一个，或用空格、逗号隔开（Ctrl+V）"_s),
        MakeButton(u"全选(&L)"_s, u"每个值都用"_s),
        MakeButton(u"全不选(&U)"_s, u"一个值也不用，再逐个勾选"_s)};
    for (std::size_t i = 0; i < all.size(); ++i)
        buttons->addWidget(all[i], static_cast<int>(i / 3), static_cast<int>(i % 3));
    column->addLayout(buttons);
    connect(all[0], &QPushButton::clicked, this, &SeriesDialog::NewValue);
    connect(all[1], &QPushButton::clicked, this, &SeriesDialog::DeleteValues);
    connect(all[2], &QPushButton::clicked, this, &SeriesDialog::PasteValues);
    connect(all[3], &QPushButton::clicked, this, [this] { ChooseAll(true); });
    connect(all[4], &QPushButton::clicked, this, [this] { ChooseAll(false); });
    return place;
}

QWidget* SeriesDialog::MakePreview()
{
    auto* place = new QWidget;
    auto* column = new QVBoxLayout(place);
    column->setContentsMargins({});
    auto* label = new QLabel(u"生成的规则(&W)："_s);
    label->setBuddy(m_preview);
    column->addWidget(label);
    m_preview->setAccessibleName(u"生成的规则"_s);
    m_preview->setUniformItemSizes(true);
    m_preview->setAlternatingRowColors(true);
    column->addWidget(m_preview, 1);
    return place;
}

const rules::Rule& SeriesDialog::Pattern() const
{
    return m_session.Draft().Find(m_category)->rules.at(m_position);
}

const rules::AttributeFacts* SeriesDialog::Facts() const
{
    return FindFacts(m_session.Facts()->AttributesOf(m_category), m_attribute->currentText());
}

void SeriesDialog::ShowAttribute()
{
    const rules::AttributeFacts* const facts = Facts();
    {
        const QSignalBlocker quiet(m_values);
        m_values->clear();
        if (facts != nullptr)
            for (const CString& value : facts->valueList)
                AddValue(value, true);
    }
    const bool allowsRange = facts == nullptr || facts->allowsRange;
    {
        const QSignalBlocker quiet(m_form);
        if (!allowsRange) m_form->setCurrentIndex(0);
        m_form->setEnabled(allowsRange);
    }
    m_hint->setText(m_values->count() > 0 ? CString()
                                          : u"目录里没有这个属性的值：粘贴，或用「加值」填写。"_s);
    m_hint->setVisible(m_values->count() == 0);
    ShowPreview();
}

/// The ranges at the ends, as they would come.
void SeriesDialog::ShowEnds()
{
    const rules::SeriesPlan plan = Plan();
    const bool isRange = plan.form != rules::SeriesForm::Values;
    const bool isLower = plan.form == rules::SeriesForm::LowerClosed;
    const CString first = plan.values.isEmpty() ? CString() : plan.values.first();
    const CString last = plan.values.isEmpty() ? CString() : plan.values.last();
    m_openEnds->setEnabled(isRange);
    m_rest->setEnabled(isRange);
    m_openEnds->setText(isLower ? u"最大的值以上也有一条（≥%1）(&E)"_s.arg(last)
                                : u"最小的值以下也有一条（≤%1）(&E)"_s.arg(first));
    m_rest->setText(isLower ? u"最小的值以下也有一条（＜%1）(&T)"_s.arg(first)
                            : u"最大的值以上也有一条（＞%1）(&T)"_s.arg(last));
}

rules::SeriesPlan SeriesDialog::Plan() const
{
    rules::SeriesPlan plan;
    plan.attribute = m_attribute->currentText();
    plan.form = static_cast<rules::SeriesForm>(m_form->currentData().toInt());
    plan.withOpenEnds = m_openEnds->isChecked();
    for (int i = 0; i < m_values->count(); ++i) {
        const QListWidgetItem& value = *m_values->item(i);
        if (value.checkState() == Qt::Checked && !value.text().trimmed().isEmpty())
            plan.values.append(Folded(value.text()));
    }
    plan.withRest = m_rest->isChecked();
    const rules::AttributeFacts* const facts = Facts();
    if (facts != nullptr) plan.valueList = facts->valueList;
    if (plan.form != rules::SeriesForm::Values) SortByNumber(plan.values, plan.valueList);
    return plan;
}

void SeriesDialog::ShowPreview()
{
    m_preview->clear();
    CString fault;
    try {
        for (const rules::Rule& rule : rules::MakeSeries(Pattern(), Plan()))
            m_preview->addItem(rule.Text());
    } catch (const std::invalid_argument& error) {
        fault = QString::fromUtf8(error.what());
        m_preview->clear();
    }
    ShowEnds();
    m_count = static_cast<std::size_t>(m_preview->count());
    m_fault->setText(fault);
    m_fault->setVisible(!fault.isEmpty());
    widgets::MarkAsFault(*m_fault, true);
    m_make->setText(m_count == 0 ? u"生成规则(&G)"_s : u"生成 %1 条规则(&G)"_s.arg(m_count));
    m_make->setEnabled(m_count > 0);
}

QListWidgetItem* SeriesDialog::AddValue(const CString& value, bool isChosen)
{
    auto* item = new QListWidgetItem(value, m_values);
    item->setFlags(item->flags() | Qt::ItemIsEditable | Qt::ItemIsUserCheckable);
    item->setCheckState(isChosen ? Qt::Checked : Qt::Unchecked);
    return item;
}

void SeriesDialog::NewValue()
{
    QListWidgetItem* const item = AddValue({}, true);
    m_values->setCurrentItem(item);
    m_values->setFocus();
    m_values->editItem(item);
}

void SeriesDialog::DeleteValues()
{
    {
        const QSignalBlocker quiet(m_values);
        qDeleteAll(m_values->selectedItems());
    }
    ShowPreview();
}

// Whoever pastes values wants these and no others.
void SeriesDialog::PasteValues()
{
    const CStringArray values = SplitValues(QGuiApplication::clipboard()->text());
    if (values.isEmpty()) return;
    {
        const QSignalBlocker quiet(m_values);
        ChooseAll(false);
        for (const CString& value : values) {
            const auto found = m_values->findItems(value, Qt::MatchExactly);
            found.isEmpty() ? void(AddValue(value, true)) : found.first()->setCheckState(Qt::Checked);
        }
    }
    m_hint->hide();
    ShowPreview();
}

void SeriesDialog::ChooseAll(bool chosen)
{
    const bool wasQuiet = m_values->blockSignals(true);
    for (int i = 0; i < m_values->count(); ++i)
        m_values->item(i)->setCheckState(chosen ? Qt::Checked : Qt::Unchecked);
    m_values->blockSignals(wasQuiet);
    if (!wasQuiet) {
        m_values->viewport()->update();
        ShowPreview();
    }
}

bool SeriesDialog::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != m_values || event->type() != QEvent::KeyPress || !m_values->hasFocus())
        return QDialog::eventFilter(watched, event);
    const auto& key = static_cast<const QKeyEvent&>(*event);
    if (key.matches(QKeySequence::Paste))
        PasteValues();
    else if (key.key() == Qt::Key_Insert)
        NewValue();
    else if (key.key() == Qt::Key_Delete)
        DeleteValues();
    else
        return false;
    return true;
}

void SeriesDialog::accept()
{
    if (m_count == 0) return;
    const bool isDone = RunGuarded([this] {
        if (Pattern().id != m_ruleId) throw std::runtime_error(u"原来的规则已经不在那里"_s.toStdString());
        m_session.Do(
            rules::InsertSeries(m_session.Draft(), m_category, m_position, Plan(), m_replaces->isChecked()));
    });
    if (isDone) QDialog::accept();
}

} // namespace editor
