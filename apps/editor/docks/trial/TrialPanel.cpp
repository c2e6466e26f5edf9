#include "editor/docks/trial/TrialPanel.h"

#include "editor/docks/trial/MissesModel.h"
#include "editor/messages/Boxes.h"
#include "editor/messages/ErrorBox.h"
#include "rules/match/CellText.h"
#include "shared/PricingText.h"
#include "widgets/LineColour.h"
#include "widgets/NotifyingStatic.h"
#include "widgets/TipDelegate.h"

#include <QtGui/QShortcut>
#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QSplitter>
#include <QtWidgets/QTreeView>
#include <QtWidgets/QTreeWidget>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace editor {

namespace {

/// From this width on, in characters, form and result stand side by side.
constexpr int WideFrom = 90;
/// How wide a quantity is at the most, in characters: one that is missing says why.
constexpr int WidestQuantity = 10;
enum ItemColumn { NumberColumn, NameColumn, UnitColumn, QuantityColumn };

CString QuantityText(const rules::Quantity& quantity, const CString& unit)
{
    return quantity.IsKnown() ? shared::QuantityIn(quantity, unit) : u"缺："_s + shared::FaultText(quantity);
}

QTreeWidgetItem* ItemOf(const rules::BillRow& row, const rules::Quantity& quantity)
{
    auto* item = new QTreeWidgetItem({row.number, row.name, row.unit, QuantityText(quantity, row.unit)});
    item->setTextAlignment(QuantityColumn, Qt::AlignRight | Qt::AlignVCenter);
    return item;
}

QLabel* TextLabel()
{
    auto* label = new QLabel;
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    return label;
}

} // namespace

TrialPanel::TrialPanel(WorkSession& session, QWidget* parent)
    : QWidget(parent), m_session(session), m_form(new TrialForm), m_clear(new QPushButton(u"清空"_s)),
      m_take(new QPushButton(u"取自构件"_s)), m_splitter(new QSplitter(Qt::Vertical)),
      m_applies(new widgets::NotifyingStatic(nullptr)), m_remarks(TextLabel()), m_items(new QTreeWidget),
      m_missesTitle(TextLabel()), m_missesView(new QTreeView), m_misses(new MissesModel(this))
{
    m_splitter->addWidget(BuildForm());
    m_splitter->addWidget(BuildResult());
    m_splitter->setChildrenCollapsible(false);
    auto* column = new QVBoxLayout(this);
    column->addWidget(m_splitter);
    Connect();
    ShowFields();
    ShowNothing();
}

TrialPanel::~TrialPanel() = default;

QWidget* TrialPanel::BuildForm()
{
    m_clear->setToolTip(u"把这个小类填的都清空（Ctrl+Shift+L）"_s);
    m_take->setToolTip(u"填入构件表里选中的构件（Ctrl+T）"_s);
    auto* part = new QWidget;
    auto* buttons = new QHBoxLayout;
    for (QPushButton* const button : {m_take, m_clear}) {
        button->setAutoDefault(false);
        buttons->addWidget(button);
    }
    buttons->addStretch(1);
    m_form->ComeAfter(*m_clear);
    auto* column = new QVBoxLayout(part);
    column->setContentsMargins(0, 0, 0, 0);
    column->addLayout(buttons);
    column->addWidget(m_form, 1);
    return part;
}

QWidget* TrialPanel::BuildResult()
{
    m_applies->setTextFormat(Qt::PlainText);
    m_applies->setWordWrap(true);
    m_applies->setToolTip(u"转到适用的规则（空格）"_s);
    QFont bold = font();
    bold.setBold(true);
    m_applies->setFont(bold);
    QPalette colours = m_applies->palette();
    colours.setColor(QPalette::Disabled, QPalette::WindowText, widgets::HintColour(colours));
    m_applies->setPalette(colours);
    m_items->setHeaderLabels({u"编号"_s, u"名称"_s, u"单位"_s, u"数量"_s});
    m_items->setAccessibleName(u"套的项"_s);
    m_items->setItemDelegate(new widgets::TipDelegate(m_items));
    m_items->header()->setStretchLastSection(false);
    m_items->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    m_items->header()->setSectionResizeMode(NameColumn, QHeaderView::Stretch);
    m_items->header()->setSectionResizeMode(QuantityColumn, QHeaderView::Interactive);
    m_missesView->setModel(m_misses);
    m_missesView->setRootIsDecorated(false);
    m_missesView->setUniformRowHeights(true);
    m_missesView->setAllColumnsShowFocus(true);
    m_missesView->setAccessibleName(u"不适用的规则"_s);
    m_missesView->setWhatsThis(u"单击或按 Enter 转到规则"_s);
    auto* part = new QWidget;
    auto* column = new QVBoxLayout(part);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(m_applies);
    column->addWidget(m_remarks);
    column->addWidget(m_items, 1);
    column->addWidget(m_missesTitle);
    column->addWidget(m_missesView, 1);
    return part;
}

void TrialPanel::Connect()
{
    const auto onKeys = [this](const QKeySequence& keys, QPushButton* button) {
        auto* shortcut = new QShortcut(keys, this);
        shortcut->setContext(Qt::WidgetWithChildrenShortcut);
        connect(shortcut, &QShortcut::activated, button, [button] { button->click(); });
    };
    onKeys(Qt::CTRL | Qt::SHIFT | Qt::Key_L, m_clear);
    onKeys(Qt::CTRL | Qt::Key_T, m_take);
    connect(m_clear, &QPushButton::clicked, this, [this] { Clear(); });
    connect(m_take, &QPushButton::clicked, this, [this] { RunGuarded([&] { TakeFromSource(); }); });
    connect(m_form, &TrialForm::Changed, this, [this] {
        m_trials[m_session.CategoryText()].values = m_form->Filled();
        Try();
    });
    m_applies->OnClicked([this] {
        if (m_outcome && m_outcome->Applies()) GoTo(*m_outcome->Applies());
    });
    const auto goToMiss = [this](const QModelIndex& index) { GoTo(m_misses->RuleAt(index.row())); };
    connect(m_missesView, &QTreeView::clicked, this, goToMiss);
    connect(m_missesView, &QTreeView::activated, this, goToMiss);
    const auto lookAgain = [this] {
        m_pricing.reset();
        ShowFields();
        Try();
    };
    connect(&m_session, &WorkSession::Reopened, this, lookAgain);
    connect(&m_session, &WorkSession::CategoryChosen, this, lookAgain);
    connect(&m_session, &WorkSession::Edited, this, [this, lookAgain](const QStringList& categories) {
        if (categories.contains(m_session.CategoryText())) lookAgain();
    });
}

void TrialPanel::GoTo(std::size_t rule)
{
    RunGuarded([&] { m_session.GoTo(m_session.CategoryText(), rule); });
}

void TrialPanel::Clear()
{
    m_trials.erase(m_session.CategoryText());
    ShowFields();
    Try();
}

void TrialPanel::TakeFromSource()
{
    const std::optional<Component> component = m_source ? m_source() : std::nullopt;
    if (component)
        Take(*component);
    else
        ShowWarning(u"请先打开构件表，并在构件里选一个"_s);
}

void TrialPanel::Take(const Component& component)
{
    m_session.ChooseCategory(component.category);
    const rules::SmallCategoryPtr category = m_session.Category();
    if (!category || category->text != component.category)
        return ShowWarning(u"没有类别“%1”"_s.arg(component.category));
    const ProjectFactsPtr facts = m_session.Facts();
    const auto known = facts->pricing.attributes.find(category->text);
    const std::vector<CString> headers = NormalisedHeaders(component.headers);
    std::vector<bool> isTaken(headers.size(), false);
    Trial trial;
    for (const TrialField& field :
         TrialFieldsOf(*category, facts->AttributesOf(category->text), facts->pricing)) {
        const bool isOwnName = field.name == rules::OwnName;
        const auto column = ColumnFor(
            field.name, known == facts->pricing.attributes.end() ? rules::CategoryFacts() : known->second,
            headers);
        const CString text = isOwnName ? component.name : column ? component.cells[*column] : CString();
        if (column) isTaken[*column] = true;
        if (!text.isEmpty()) trial.values[field.name] = text;
    }
    for (std::size_t i = 0; i < headers.size(); ++i)
        if (!isTaken[i] && !headers[i].isEmpty() && !component.cells[i].isEmpty()) {
            trial.otherHeaders.append(component.headers[static_cast<qsizetype>(i)]);
            trial.otherCells.push_back(component.cells[i]);
        }
    m_trials[category->text] = std::move(trial);
    m_pricing.reset(); // the headers are others
    ShowFields();
    Try();
}

void TrialPanel::ShowFields()
{
    const rules::SmallCategoryPtr category = m_session.Category();
    m_form->setEnabled(category != nullptr);
    m_clear->setEnabled(category != nullptr);
    if (!category) return m_form->Show({}, {});
    const ProjectFacts& facts = *m_session.Facts();
    m_form->Show(TrialFieldsOf(*category, facts.AttributesOf(category->text), facts.pricing),
                 m_trials[category->text].values);
    setFocusProxy(m_form->FirstField());
}

void TrialPanel::Try()
{
    const rules::SmallCategoryPtr category = m_session.Category();
    const bool isAsked = category && isVisible() && !m_form->Filled().empty();
    const bool wasTried = m_outcome != nullptr;
    if (isAsked)
        RunGuarded([&] { Price(); });
    else
        ShowNothing();
    if (wasTried || m_outcome) emit OutcomeChanged();
}

void TrialPanel::Price()
{
    const rules::SmallCategoryPtr category = m_session.Category();
    const Trial& trial = m_trials[category->text];
    CStringArray headers;
    std::vector<CString> cells;
    const TrialForm::Values values = m_form->Filled();
    for (const TrialField& field : m_form->Fields()) {
        const auto value = values.find(field.name);
        headers.append(field.name);
        cells.push_back(value == values.end() ? CString() : value->second);
    }
    cells.insert(cells.end(), trial.otherCells.begin(), trial.otherCells.end());
    headers += trial.otherHeaders;
    if (!m_pricing || m_pricing->Category() != category || m_pricing->Headers() != headers)
        m_pricing = std::make_unique<TrialPricing>(category, m_session.Facts()->pricing, headers);
    const auto name = values.find(rules::OwnName);
    const CString ownName = name == values.end() ? CString() : name->second;
    m_outcome =
        std::make_shared<const TrialOutcome>(m_pricing->Matcher(), m_pricing->CellsOf(cells, ownName));
    ShowResult(m_pricing->Price(cells, ownName));
}

void TrialPanel::ShowNothing()
{
    m_outcome.reset();
    m_applies->setText(u"选属性的值，看哪条规则适用"_s);
    m_applies->setEnabled(false);
    m_remarks->hide();
    m_items->clear();
    m_items->hide();
    m_misses->List(nullptr, {});
    m_missesTitle->hide();
    m_missesView->hide();
}

void TrialPanel::ShowResult(const TrialPricing::Result& result)
{
    const rules::ComponentResult& component = result.component;
    CString applies = u"没有规则适用"_s;
    if (component.rule != rules::NoRule) {
        const rules::Rule& rule = component.category->rules[static_cast<std::size_t>(component.rule)];
        applies = u"适用的规则：第 %1 条　%2%3"_s.arg(component.rule + 1)
                      .arg(rule.Text(), rule.isDefault ? u"（默认规则）"_s : CString());
    }
    m_applies->setText(applies);
    m_applies->setEnabled(component.rule != rules::NoRule);
    CStringArray remarks;
    if (component.refusal != rules::Refusal::None)
        remarks.append(shared::RefusalText(component.refusal));
    else if (component.outcome == rules::Outcome::OnDefault && component.lines.empty())
        remarks.append(u"默认规则没有清单或定额项"_s);
    for (const rules::Remark& remark : component.remarks)
        remarks.append(u"注意："_s + rules::Describe(remark));
    m_remarks->setText(remarks.join(u'\n'));
    m_remarks->setVisible(!remarks.isEmpty());
    ShowItems(component);
    m_misses->List(component.category, result.trace);
    const int misses = m_misses->rowCount();
    m_missesTitle->setText(u"不适用的规则 %1 条，最接近的在前："_s.arg(misses));
    m_missesTitle->setVisible(misses > 0);
    m_missesView->setVisible(misses > 0);
    for (const int column : {MissesModel::RuleColumn, MissesModel::HoldingColumn})
        m_missesView->resizeColumnToContents(column);
}

void TrialPanel::ShowItems(const rules::ComponentResult& result)
{
    m_items->clear();
    for (const rules::ItemLine& line : result.lines) {
        const rules::BillRow& row = m_pricing->RowOf(line);
        QTreeWidgetItem* const item = ItemOf(row, line.quantity);
        for (const rules::ItemLine& quota : line.quotas)
            item->addChild(ItemOf(row.quotas[quota.row], quota.quantity));
        m_items->addTopLevelItem(item);
    }
    m_items->expandAll();
    m_items->resizeColumnToContents(QuantityColumn);
    m_items->setColumnWidth(QuantityColumn, std::min(m_items->columnWidth(QuantityColumn),
                                                     WidestQuantity * fontMetrics().averageCharWidth()));
    m_items->setVisible(!result.lines.empty());
}

void TrialPanel::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    Try();
}

void TrialPanel::hideEvent(QHideEvent* event)
{
    QWidget::hideEvent(event);
    if (!m_outcome) return;
    ShowNothing(); // without the session, which may be gone: a window that ends hides what is in it last
    emit OutcomeChanged();
}

void TrialPanel::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    const bool isWide = width() > WideFrom * fontMetrics().averageCharWidth();
    const Qt::Orientation orientation = isWide ? Qt::Horizontal : Qt::Vertical;
    if (m_isLaidOut && m_splitter->orientation() == orientation) return;
    m_isLaidOut = true;
    m_splitter->setOrientation(orientation);
    const int half = (isWide ? width() : height()) / 2;
    m_splitter->setSizes({half, half});
}

} // namespace editor
