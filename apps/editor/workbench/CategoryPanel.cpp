#include "editor/workbench/CategoryPanel.h"

#include "editor/docks/findings/SeverityMark.h"
#include "rules/compare/Content.h"
#include "widgets/LineColour.h"
#include "widgets/SelectedRow.h"
#include "widgets/TextMetrics.h"
#include "widgets/TipDelegate.h"
#include "widgets/WheelGuard.h"

#include <QtCore/QScopedValueRollback>
#include <QtCore/QSignalBlocker>
#include <QtCore/QSortFilterProxyModel>
#include <QtGui/QKeyEvent>
#include <QtGui/QStandardItemModel>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QTreeView>
#include <QtWidgets/QVBoxLayout>

using namespace Qt::StringLiterals;

namespace editor {

namespace {

enum Column { NameColumn, CountColumn, ColumnCount };
constexpr int TextRole = Qt::UserRole; ///< of a small category its full text

} // namespace

CategoryPanel::CategoryPanel(WorkSession& session, QWidget* parent)
    : QWidget(parent), m_session(session), m_specialties(new QComboBox), m_filter(new QLineEdit),
      m_tree(new QTreeView), m_model(new QStandardItemModel(this)), m_shown(new QSortFilterProxyModel(this))
{
    Build();
    connect(&session, &WorkSession::Reopened, this, [this] {
        FillSpecialties();
        FillCategories();
    });
    connect(&session, &WorkSession::Edited, this, [this](const QStringList& categories) {
        FillSpecialties();
        for (const QString& category : categories)
            ShowCategory(category);
    });
    connect(&session, &WorkSession::Completed, this, [this] {
        FillSpecialties();
        FillCategories();
    });
    connect(&session, &WorkSession::FileChanged, this, [this] { FillCategories(); });
    connect(&session, &WorkSession::SpecialtyChosen, this, [this] {
        FillSpecialties();
        FillCategories();
    });
    connect(&session, &WorkSession::CategoryChosen, this, [this] { ShowChoice(); });
    FillSpecialties();
    FillCategories();
}

void CategoryPanel::Build()
{
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins({});
    m_specialties->setAccessibleName(u"专业"_s);
    m_specialties->setToolTip(u"专业，括号里是这个文件中它的规则条数"_s);
    m_specialties->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    widgets::KeepWheelFrom(*m_specialties);
    m_filter->setPlaceholderText(u"筛选类别"_s);
    m_filter->setAccessibleName(u"筛选类别"_s);
    m_filter->setToolTip(u"只留下名称里有这些字的类别；↓ 到列表"_s);
    m_filter->setClearButtonEnabled(true);
    m_filter->installEventFilter(this);
    widgets::ColourHint(*m_filter);
    m_shown->setSourceModel(m_model);
    m_shown->setRecursiveFilteringEnabled(true);
    m_shown->setAutoAcceptChildRows(true);
    m_shown->setFilterCaseSensitivity(Qt::CaseInsensitive);
    m_tree->setModel(m_shown);
    m_tree->setItemDelegate(new widgets::TipDelegate(m_tree));
    m_tree->setAccessibleName(u"类别"_s);
    m_tree->setUniformRowHeights(true);
    m_tree->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_tree->setAllColumnsShowFocus(true);
    m_tree->header()->setStretchLastSection(false);
    setFocusProxy(m_tree);
    column->addWidget(m_specialties);
    column->addWidget(m_filter);
    column->addWidget(m_tree, 1);
    connect(m_specialties, &QComboBox::currentIndexChanged, this, [this] {
        if (!m_isFilling) m_session.ChooseSpecialty(m_specialties->currentData().toString());
    });
    connect(m_filter, &QLineEdit::textChanged, this, [this](const QString& text) {
        {
            const QScopedValueRollback<bool> filling(m_isFilling, true);
            m_shown->setFilterFixedString(text.trimmed());
            m_tree->expandAll();
        }
        ShowChoice();
    });
    connect(m_tree, &QTreeView::activated, this, [this](const QModelIndex& index) {
        if (!m_shown->hasChildren(index.siblingAtColumn(NameColumn))) m_entered();
    });
    widgets::MakeSelectedRowCurrent(*m_tree);
    connect(m_tree->selectionModel(), &QItemSelectionModel::currentChanged, this, [this] { TakeChoice(); });
}

/// Keys that move through a list go from the field to it.
bool CategoryPanel::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != m_filter || event->type() != QEvent::KeyPress) return false;
    const auto& key = static_cast<const QKeyEvent&>(*event);
    if (key.key() == Qt::Key_Down || key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter) {
        FocusList();
        return true;
    }
    if (key.key() == Qt::Key_Escape && !m_filter->text().isEmpty()) {
        m_filter->clear();
        return true;
    }
    return false;
}

void CategoryPanel::FocusList()
{
    m_tree->setFocus();
    if (!m_tree->currentIndex().isValid()) m_tree->setCurrentIndex(m_shown->index(0, 0));
}

void CategoryPanel::FillSpecialties()
{
    const QScopedValueRollback<bool> filling(m_isFilling, true);
    const auto& all = m_session.DraftSoFar().Specialties();
    while (m_specialties->count() > static_cast<int>(all.size()))
        m_specialties->removeItem(m_specialties->count() - 1);
    for (std::size_t i = 0; i < all.size(); ++i) {
        const int line = static_cast<int>(i);
        if (line == m_specialties->count()) m_specialties->addItem({});
        // The rules may still be on their way.
        m_specialties->setItemText(line, m_session.IsWhole()
                                             ? u"%1（%2 条）"_s.arg(all[i].name).arg(rules::CountOf(all[i]))
                                             : u"%1（…）"_s.arg(all[i].name));
        m_specialties->setItemData(line, all[i].name);
    }
    m_specialties->setCurrentIndex(m_specialties->findData(m_session.Specialty()));
    m_specialties->setEnabled(!all.empty());
}

void CategoryPanel::FillCategories()
{
    {
        const QScopedValueRollback<bool> filling(m_isFilling, true);
        m_items.clear();
        m_model->clear();
        m_model->setColumnCount(ColumnCount);
        m_model->setHorizontalHeaderLabels({u"类别"_s, u"规则"_s});
        for (const rules::Specialty& specialty : m_session.DraftSoFar().Specialties()) {
            if (specialty.name != m_session.Specialty()) continue;
            for (const rules::BigCategory& big : specialty.bigCategories)
                m_model->appendRow({MakeBigCategory(big).release(), new QStandardItem});
        }
        m_tree->expandAll();
        m_tree->header()->setSectionResizeMode(NameColumn, QHeaderView::Stretch);
        m_tree->header()->setSectionResizeMode(CountColumn, QHeaderView::ResizeToContents);
    }
    ShowChoice();
}

/// With its small categories as they are shown. Nobody sees it yet, so nobody measures each part anew.
std::unique_ptr<QStandardItem> CategoryPanel::MakeBigCategory(const rules::BigCategory& big)
{
    auto parent = std::make_unique<QStandardItem>(big.name);
    parent->setSelectable(false);
    for (const rules::SmallCategoryPtr& small : big.smallCategories) {
        auto* item = new QStandardItem(small->name);
        item->setEditable(true); // nobody edits it, but an input method types in no other list
        item->setData(small->text, TextRole);
        auto* count = new QStandardItem;
        count->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
        parent->appendRow({item, count});
        m_items.emplace(small->text, item);
        ShowCategory(small->text);
    }
    return parent;
}

void CategoryPanel::ShowCategory(const CString& category)
{
    const auto found = m_items.find(category);
    const rules::SmallCategoryPtr present = m_session.DraftSoFar().Find(category);
    if (found == m_items.end() || !present) return;
    QStandardItem& item = *found->second;
    const bool isChanged = m_session.DraftSoFar().IsChanged(category);
    const bool isOffered = m_session.DraftSoFar().IsOffered(category);
    const auto severity = m_severities(category);
    const std::size_t count = rules::CountOf(*present);
    item.setText(present->name + (isChanged ? u" *"_s : QString()));
    QFont font = item.font();
    font.setItalic(!isOffered);
    font.setBold(count > 0);
    item.setFont(font);
    item.setToolTip(u"%1：%2 条规则%3%4%5"_s.arg(category).arg(count).arg(
        severity ? u"，有问题："_s + SeverityText(*severity) : QString(),
        isChanged ? u"，有没有保存的修改"_s : QString(),
        isOffered ? QString() : u"；工程的类别里没有它，配置对话框会丢掉它的规则"_s));
    item.setData(item.toolTip(), Qt::AccessibleTextRole);
    QStandardItem& counter = *item.parent()->child(item.row(), CountColumn);
    counter.setText(count > 0 ? CString::number(count) : CString());
    counter.setIcon(severity ? SeverityIcon(*severity, palette()) : QIcon());
    counter.setToolTip(item.toolTip());
}

void CategoryPanel::ShowMarks(const QStringList& categories)
{
    for (const QString& category : categories)
        ShowCategory(category);
}

void CategoryPanel::ShowChoice()
{
    const QScopedValueRollback<bool> filling(m_isFilling, true);
    const auto found = m_items.find(m_session.CategoryText());
    const QModelIndex index =
        found == m_items.end() ? QModelIndex() : m_shown->mapFromSource(found->second->index());
    m_tree->setCurrentIndex(index);
    if (index.isValid()) m_tree->scrollTo(index);
}

void CategoryPanel::TakeChoice()
{
    if (m_isFilling) return;
    const QModelIndex index = m_tree->currentIndex().siblingAtColumn(NameColumn);
    const QString text = index.data(TextRole).toString();
    if (!text.isEmpty()) m_session.ChooseCategory(text);
}

} // namespace editor
