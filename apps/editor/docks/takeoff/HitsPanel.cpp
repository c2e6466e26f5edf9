#include "editor/docks/takeoff/HitsPanel.h"

#include "editor/docks/takeoff/ComponentsModel.h"
#include "editor/messages/ErrorBox.h"
#include "platform/Paths.h"
#include "shared/Outcomes.h"
#include "widgets/FaultColour.h"
#include "widgets/NotifyingStatic.h"
#include "widgets/TipDelegate.h"

#include <QtCore/QDir>
#include <QtGui/QShortcut>
#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTableView>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace editor {

namespace {

enum Scope { OfRules, OfCategory, OfDefault, Refused };

/// Columns are as wide as their texts in the lines that are seen, up to this many characters.
constexpr int WidestHitColumn = 24;

CString PercentText(std::uint64_t part, std::uint64_t whole)
{
    constexpr double Percent = 100;
    return whole == 0 ? CString()
                      : u"%1%"_s.arg(Percent * static_cast<double>(part) / static_cast<double>(whole), 0, 'f',
                                     part == 0 || part == whole ? 0 : 1);
}

QLabel* TextLabel()
{
    auto* label = new QLabel;
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    return label;
}

} // namespace

HitsPanel::HitsPanel(WorkSession& session, TakeoffHits& hits, QWidget* parent)
    : QWidget(parent), m_session(session), m_hits(hits), m_model(new ComponentsModel(this)),
      m_open(new QPushButton(u"打开…"_s)), m_reload(new QPushButton(u"重新读取"_s)),
      m_close(new QPushButton(u"关闭"_s)), m_try(new QPushButton(u"试套"_s)), m_scope(new QComboBox),
      m_state(TextLabel()), m_counts(TextLabel()), m_default(new widgets::NotifyingStatic(nullptr)),
      m_table(new QTableView)
{
    BuildTable();
    m_state->setAccessibleName(u"构件表"_s);
    m_state->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_default->setTextFormat(Qt::PlainText);
    m_default->setToolTip(u"转到默认规则，列出它的构件（空格）"_s);
    m_scope->addItems({u"选中规则的构件"_s, u"本小类的构件"_s, u"默认规则的构件"_s, u"未套价的构件"_s});
    m_scope->setAccessibleName(u"列出哪些构件"_s);
    m_scope->setToolTip(u"列出选中规则、本小类或其默认规则的构件，或整个表里没有套价的"_s);
    m_scope->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    auto* share = new QHBoxLayout;
    share->addWidget(m_counts, 1);
    share->addWidget(m_default);
    auto* listing = new QHBoxLayout;
    listing->addWidget(m_scope, 1);
    listing->addWidget(m_try);
    auto* column = new QVBoxLayout(this);
    column->addWidget(BuildButtons());
    column->addWidget(m_state);
    column->addLayout(share);
    column->addLayout(listing);
    column->addWidget(m_table, 1);
    Connect();
    ShowState();
    Relist();
}

QWidget* HitsPanel::BuildButtons()
{
    m_open->setToolTip(u"打开构件表：CSV、XLSX 或 ODS 文件，一行一个构件（Ctrl+Shift+O）"_s);
    m_reload->setToolTip(u"构件表在别处改过以后，重新读取（Ctrl+Shift+R）"_s);
    m_close->setToolTip(u"关闭构件表，不再计算"_s);
    m_try->setToolTip(u"把选中的构件填到试套里（Ctrl+T）"_s);
    auto* buttons = new QWidget;
    auto* row = new QHBoxLayout(buttons);
    row->setContentsMargins(0, 0, 0, 0);
    for (QPushButton* const button : {m_open, m_reload, m_close})
        row->addWidget(button);
    for (QPushButton* const button : {m_open, m_reload, m_close, m_try})
        button->setAutoDefault(false);
    row->addStretch(1);
    return buttons;
}

void HitsPanel::BuildTable()
{
    m_table->setModel(m_model);
    m_table->setItemDelegate(new widgets::TipDelegate(m_table));
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->setSelectionMode(QAbstractItemView::SingleSelection);
    m_table->setTabKeyNavigation(false);
    m_table->setWordWrap(false);
    m_table->setAlternatingRowColors(true);
    m_table->horizontalHeader()->setResizeContentsPrecision(0); // by what is seen
    m_table->verticalHeader()->hide();
    // A line's height is the same whatever it holds, so that nobody has to look at all of them.
    m_table->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    m_table->setAccessibleName(u"构件"_s);
    m_table->setWhatsThis(u"双击或按 Enter 转到构件适用的规则"_s);
}

void HitsPanel::Connect()
{
    const auto onKeys = [this](const QKeySequence& keys, QPushButton* button) {
        auto* shortcut = new QShortcut(keys, this);
        shortcut->setContext(Qt::WidgetWithChildrenShortcut);
        connect(shortcut, &QShortcut::activated, button, [button] { button->click(); });
    };
    onKeys(Qt::CTRL | Qt::SHIFT | Qt::Key_O, m_open);
    onKeys(Qt::CTRL | Qt::SHIFT | Qt::Key_R, m_reload);
    onKeys(Qt::CTRL | Qt::Key_T, m_try);
    connect(m_open, &QPushButton::clicked, this, [this] { RunGuarded([&] { AskForTable(); }); });
    connect(m_reload, &QPushButton::clicked, this, [this] { m_hits.Reload(); });
    connect(m_close, &QPushButton::clicked, this, [this] { m_hits.Close(); });
    connect(m_try, &QPushButton::clicked, this, [this] {
        if (const auto component = ChosenComponent()) RunGuarded([&] { emit TryWanted(*component); });
    });
    m_default->OnClicked([this] { GoToDefault(); });
    connect(m_scope, &QComboBox::currentIndexChanged, this, [this] { Relist(); });
    connect(m_table, &QTableView::activated, this,
            [this](const QModelIndex& index) { GoToRule(index.row()); });
    connect(m_table->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this] { m_try->setEnabled(m_table->currentIndex().isValid()); });
    connect(&m_hits, &TakeoffHits::StateChanged, this, [this] { ShowState(); });
    connect(&m_hits, &TakeoffHits::HitsChanged, this, [this] { Relist(); });
    connect(&m_session, &WorkSession::CategoryChosen, this, [this] {
        if (m_scope->currentIndex() != OfRules) Relist(); // rules are told of by themselves
    });
    connect(&m_session, &WorkSession::RulesChosen, this, [this] {
        if (m_scope->currentIndex() == OfRules) Relist();
    });
}

void HitsPanel::AskForTable()
{
    const QString known = platform::ToNative(platform::FolderOf(m_hits.Path()));
    const QString file =
        QFileDialog::getOpenFileName(this, u"打开构件表"_s, known.isEmpty() ? QDir::homePath() : known,
                                     u"构件表 (*.csv *.xlsx *.ods);;所有文件 (*)"_s);
    if (!file.isEmpty()) m_hits.Open(platform::FromNative(file));
}

std::optional<Component> HitsPanel::ChosenComponent() const
{
    const QModelIndex chosen = m_table->currentIndex();
    return chosen.isValid() ? std::optional(m_model->ComponentAt(chosen.row())) : std::nullopt;
}

std::vector<std::uint32_t> HitsPanel::WantedRows() const
{
    const TakeoffFiguresPtr& figures = m_hits.Figures();
    const int scope = m_scope->currentIndex();
    if (scope == Refused) return figures->refused;
    const CString& category = m_session.CategoryText();
    const CategoryHits* const hits = figures->HitsOf(category);
    if (hits == nullptr) return {};
    if (scope == OfCategory) return hits->rows;
    std::vector<std::uint32_t> rows;
    if (scope == OfDefault) {
        for (std::size_t rule = 0; rule < hits->category->rules.size(); ++rule)
            if (hits->category->rules[rule].isDefault)
                rows.insert(rows.end(), hits->RowsOf(rule).begin(), hits->RowsOf(rule).end());
        return rows;
    }
    for (const std::size_t rule : m_session.ChosenRules())
        for (const std::uint32_t row : m_hits.RowsOf(category, rule))
            rows.push_back(row);
    return rows;
}

void HitsPanel::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    if (m_isStale) Relist();
}

/// The component that was chosen stays so where it is still listed. What nobody sees is listed when it is
/// shown; but nothing is kept of a table that has been closed.
void HitsPanel::Relist()
{
    const TakeoffFiguresPtr& figures = m_hits.Figures();
    m_isStale = figures && !isVisible();
    if (m_isStale) return;
    const QModelIndex former = m_table->currentIndex();
    const std::optional<std::uint32_t> chosen =
        former.isValid() ? std::optional(m_model->RowAt(former.row())) : std::nullopt;
    if (figures) {
        const bool isOfCategory = m_scope->currentIndex() != Refused;
        std::vector<std::uint32_t> rows = WantedRows();
        const auto place = chosen ? std::find(rows.begin(), rows.end(), *chosen) : rows.end();
        const int line = place == rows.end() ? -1 : static_cast<int>(place - rows.begin());
        m_model->List(figures, std::move(rows), isOfCategory ? m_session.Category() : nullptr);
        m_table->resizeColumnsToContents();
        const int widest = WidestHitColumn * fontMetrics().averageCharWidth();
        for (int column = 0; column < m_model->columnCount(); ++column)
            if (m_table->columnWidth(column) > widest) m_table->setColumnWidth(column, widest);
        if (line >= 0) m_table->setCurrentIndex(m_model->index(line, 0));
    } else
        m_model->Clear();
    m_try->setEnabled(m_table->currentIndex().isValid());
    ShowShare();
}

CString HitsPanel::StateText() const
{
    constexpr double Percent = 100;
    const CString name = platform::FileNameOf(m_hits.Path());
    const auto percent = static_cast<int>(m_hits.Progress() * Percent);
    switch (m_hits.Now()) {
    case TakeoffHits::State::Closed:
        return u"没有打开构件表"_s;
    case TakeoffHits::State::Reading:
        return u"正在读 %1…%2%"_s.arg(name).arg(percent);
    case TakeoffHits::State::Pricing:
        return u"%1：正在套价…%2%"_s.arg(name).arg(percent);
    case TakeoffHits::State::Failed:
        return m_hits.Error();
    case TakeoffHits::State::Current:
        break;
    }
    if (!m_hits.Figures()) return u"%1：没有打开规则文件"_s.arg(name);
    return u"%1：%2"_s.arg(name, shared::TotalsText(m_hits.Figures()->bill.totals));
}

void HitsPanel::ShowState()
{
    const CString text = StateText();
    if (m_state->text() != text) m_state->setText(text);
    widgets::MarkAsFault(*m_state, m_hits.Now() == TakeoffHits::State::Failed);
    m_reload->setEnabled(!m_hits.Path().isEmpty());
    m_close->setEnabled(!m_hits.Path().isEmpty());
}

void HitsPanel::ShowShare()
{
    const CString& category = m_session.CategoryText();
    const std::uint64_t all = m_hits.ComponentsOf(category).value_or(0);
    const std::uint64_t onDefault = m_hits.OnDefaultOf(category).value_or(0);
    const int listed = m_model->rowCount();
    const bool isKnown = m_hits.Figures() != nullptr;
    m_counts->setText(u"%1 构件 %2 个，列出 %3 个"_s.arg(category.section(u'\\', -1)).arg(all).arg(listed));
    m_counts->setVisible(isKnown);
    m_default->setText(u"默认规则 %1 个（%2）"_s.arg(onDefault).arg(PercentText(onDefault, all)));
    m_default->setVisible(isKnown && all > 0);
    QFont font = this->font();
    font.setBold(onDefault > 0);
    m_default->setFont(font);
    widgets::MarkAsFault(*m_default, onDefault > 0);
}

void HitsPanel::GoToRule(int line)
{
    const TakeoffFigures::Priced priced = m_model->PricedAt(line);
    const Component component = m_model->ComponentAt(line);
    const CategoryHits* const hits = m_hits.Figures()->HitsOf(component.category);
    if (hits == nullptr || priced.rule == rules::NoRule) return;
    // Where the rule stands now, which may be elsewhere than when it was priced.
    const rules::SmallCategoryPtr now = m_session.Draft().Find(component.category);
    const int id = hits->category->rules[static_cast<std::size_t>(priced.rule)].id;
    for (std::size_t rule = 0; now && rule < now->rules.size(); ++rule)
        if (now->rules[rule].id == id && (now != hits->category || static_cast<int>(rule) == priced.rule))
            return static_cast<void>(RunGuarded([&] { m_session.GoTo(component.category, rule); }));
}

void HitsPanel::GoToDefault()
{
    const rules::SmallCategoryPtr category = m_session.Category();
    if (!category) return;
    m_scope->setCurrentIndex(OfDefault);
    for (std::size_t rule = 0; rule < category->rules.size(); ++rule)
        if (category->rules[rule].isDefault)
            return static_cast<void>(RunGuarded([&] { m_session.GoTo(category->text, rule); }));
}

} // namespace editor
