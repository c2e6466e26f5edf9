#include "embedded/windows/CalculatorDialog.h"

#include "embedded/data/catalogue/FormulaChecker.h"
#include "widgets/FaultColour.h"
#include "widgets/TextMetrics.h"
#include "widgets/TipDelegate.h"

#include <QtGui/QFocusEvent>
#include <QtGui/QKeyEvent>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTableWidget>
#include <QtWidgets/QVBoxLayout>

#include <functional>
#include <limits>
#include <utility>

using namespace Qt::StringLiterals;

namespace embedded {

namespace {

CString KindText(int kind)
{
    static const CStringArray kinds = {{}, u"长度"_s, u"个数"_s, u"面积"_s, u"体积"_s, u"重量"_s};
    return kinds.value(kind);
}

/// A field that keeps cursor and selection when it gets the focus. The toolkit's selects everything, and the
/// item inserted next would take the place of the whole formula.
class FormulaField : public QLineEdit
{
public:
    using QLineEdit::QLineEdit;

protected:
    void focusInEvent(QFocusEvent* /*event*/) override
    {
        QFocusEvent plain(QEvent::FocusIn, Qt::OtherFocusReason);
        QLineEdit::focusInEvent(&plain);
    }
};

/// Enter in the table inserts the item instead of closing the dialog.
class CalculationTable : public QTableWidget
{
public:
    explicit CalculationTable(std::function<void()> insert, QWidget* parent)
        : QTableWidget(parent), m_insert(std::move(insert))
    {
    }

protected:
    void keyPressEvent(QKeyEvent* event) override
    {
        if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
            m_insert();
        else
            QTableWidget::keyPressEvent(event);
    }

private:
    std::function<void()> m_insert;
};

} // namespace

CalculatorDialog::CalculatorDialog(host::ICalculationRules& rules, const CString& categoryText,
                                   const CString& formula, QWidget* parent)
    : QDialog(parent), m_names(rules, categoryText), m_formula(new FormulaField(this)),
      m_message(new QLabel(this)), m_items(new CalculationTable([this] { InsertItem(); }, this)),
      m_insert(new QPushButton(u"插入计算项目(&I)"_s, this)), m_ok(nullptr)
{
    setWindowTitle(u"计算结果编辑"_s);
    m_formula->setAccessibleName(u"计算公式"_s);
    // The default limit would cut a longer text without a word.
    m_formula->setMaxLength(std::numeric_limits<int>::max());
    m_message->setAccessibleDescription(u"检查结果"_s);
    m_message->setTextFormat(Qt::PlainText);
    m_message->setWordWrap(true);
    m_message->setMinimumHeight(2 * fontMetrics().lineSpacing());
    m_message->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    m_insert->setAutoDefault(false);
    connect(m_insert, &QPushButton::clicked, this, [this] { InsertItem(); });
    MakeItemTable();
    LayOut(categoryText);
    connect(m_formula, &QLineEdit::textChanged, this, [this] { Check(); });
    m_formula->setText(formula);
    m_formula->setFocus();
    Check();
}

CalculatorDialog::~CalculatorDialog() = default;

CString CalculatorDialog::Formula() const
{
    return m_formula->text();
}

QWidget* CalculatorDialog::MakeOperators()
{
    auto* bar = new QWidget(this);
    auto* line = new QHBoxLayout(bar);
    line->setContentsMargins({});
    using Operator = std::pair<CString, CString>;
    for (const auto& [sign, name] : {Operator{u"+"_s, u"加"_s},
                                     {u"-"_s, u"减"_s},
                                     {u"×"_s, u"乘"_s},
                                     {u"/"_s, u"除"_s},
                                     {u"("_s, u"左括号"_s},
                                     {u")"_s, u"右括号"_s}}) {
        auto* button = new QPushButton(sign, bar);
        button->setAccessibleName(name);
        button->setToolTip(name);
        button->setAutoDefault(false);
        button->setMaximumWidth(widgets::ChineseWidth(fontMetrics(), 4));
        connect(button, &QPushButton::clicked, this, [this, text = sign] { Insert(text); });
        line->addWidget(button);
    }
    line->addStretch();
    line->addWidget(m_insert);
    return bar;
}

void CalculatorDialog::MakeItemTable()
{
    m_items->setAccessibleName(u"计算项目"_s);
    m_items->setColumnCount(4);
    m_items->setHorizontalHeaderLabels({u"计算项目"_s, u"代码"_s, u"类别"_s, u"计算规则"_s});
    m_items->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_items->setSelectionMode(QAbstractItemView::SingleSelection);
    m_items->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_items->setTabKeyNavigation(false);
    m_items->setWordWrap(false);
    m_items->setShowGrid(false);
    m_items->setAlternatingRowColors(true);
    m_items->setItemDelegate(new widgets::TipDelegate(m_items));
    m_items->verticalHeader()->setMinimumSectionSize(1);
    m_items->verticalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    m_items->verticalHeader()->hide();
    m_items->horizontalHeader()->setHighlightSections(false);
    m_items->horizontalHeader()->setStretchLastSection(true);
    FillItemTable();
    connect(m_items, &QTableWidget::cellDoubleClicked, this, [this] { InsertItem(); });
}

void CalculatorDialog::FillItemTable()
{
    for (const RuleCodeStruct& item : m_names.Items()) {
        const int row = m_items->rowCount();
        m_items->insertRow(row);
        int column = 0;
        for (const CString& text : {item.strName, item.strCode, KindText(item.nKind), item.strRule})
            m_items->setItem(row, column++, new QTableWidgetItem(text));
    }
    m_items->resizeColumnsToContents();
    // The last column takes the room that is left.
    for (int column = 0; column + 1 < m_items->columnCount(); ++column)
        m_items->setColumnWidth(column, m_items->columnWidth(column) + fontMetrics().height());
    m_items->setCurrentCell(0, 0);
    m_insert->setEnabled(!m_names.Items().empty());
}

void CalculatorDialog::LayOut(const CString& categoryText)
{
    auto* label = new QLabel(u"计算公式(&F):"_s, this);
    label->setBuddy(m_formula);
    auto* category = new QLabel(this);
    category->setTextFormat(Qt::PlainText);
    category->setWordWrap(true);
    category->setText(m_names.Items().empty() ? categoryText + u"：此小类没有计算项目"_s
                                              : categoryText + u" 的计算项目:"_s);
    auto* buttons = new QDialogButtonBox(this);
    m_ok = buttons->addButton(u"确定"_s, QDialogButtonBox::AcceptRole);
    buttons->addButton(u"取消"_s, QDialogButtonBox::RejectRole);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(label);
    layout->addWidget(m_formula);
    layout->addWidget(m_message);
    layout->addWidget(MakeOperators());
    layout->addWidget(category);
    layout->addWidget(m_items, 1);
    layout->addWidget(buttons);
    constexpr int WidthInLines = 34;
    constexpr int HeightInLines = 24;
    resize(QSize(WidthInLines, HeightInLines) * fontMetrics().height());
}

void CalculatorDialog::Check()
{
    const auto fault =
        CheckFormula(m_formula->text(), [this](const CString& name) { return m_names.Contains(name); });
    m_ok->setEnabled(!fault.has_value());
    widgets::MarkAsFault(*m_message, fault.has_value());
    if (fault)
        m_message->setText(u"第 %1 个字符：%2"_s.arg(fault->position + 1).arg(fault->text));
    else
        m_message->setText(m_formula->text().trimmed().isEmpty() ? u"没有公式"_s : u"公式正确"_s);
}

void CalculatorDialog::Insert(const CString& text)
{
    m_formula->insert(text);
    m_formula->setFocus();
}

void CalculatorDialog::InsertItem()
{
    const int row = m_items->currentRow();
    if (row >= 0) Insert(m_names.Items()[static_cast<std::size_t>(row)].strName);
}

} // namespace embedded
