#include "editor/workbench/CopyDialog.h"

#include "editor/dialogs/DialogParts.h"
#include "widgets/LineColour.h"

#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTreeWidget>
#include <QtWidgets/QTreeWidgetItemIterator>
#include <QtWidgets/QVBoxLayout>

#include <utility>

using namespace Qt::StringLiterals;

namespace editor {

namespace {

constexpr QSize UsualCopySize(520, 560);
constexpr int CategoryRole = Qt::UserRole; ///< of a small category its full text
constexpr int MostShown = 6;

} // namespace

CopyDialog::CopyDialog(const rules::Draft& draft, const CString& from, std::size_t count, MisfitsOf misfits,
                       QWidget* parent)
    : QDialog(parent), m_misfits(std::move(misfits)), m_filter(new QLineEdit), m_tree(new QTreeWidget),
      m_told(new QLabel), m_accept(new QPushButton(u"复制(&C)"_s))
{
    setWindowTitle(u"复制到其他类别"_s);
    Build(count);
    Fill(draft, from);
    ShowState();
    resize(UsualCopySize);
}

void CopyDialog::Build(std::size_t count)
{
    auto* column = new QVBoxLayout(this);
    column->addWidget(new QLabel(u"把选中的 %1 条规则加到勾选的类别，排在默认规则之前："_s.arg(count)));
    m_filter->setPlaceholderText(u"筛选类别"_s);
    m_filter->setAccessibleName(u"筛选类别"_s);
    m_filter->setToolTip(u"只留下名称里有这些字的类别"_s);
    m_filter->setClearButtonEnabled(true);
    widgets::ColourHint(*m_filter);
    column->addWidget(m_filter);
    m_tree->setHeaderHidden(true);
    m_tree->setAccessibleName(u"类别"_s);
    m_tree->setUniformRowHeights(true);
    column->addWidget(m_tree, 1);
    m_told->setWordWrap(true);
    m_told->setTextFormat(Qt::PlainText);
    m_told->setAccessibleName(u"不合适的地方"_s);
    column->addWidget(m_told);
    column->addWidget(MakeButtons(*this, m_accept, u"把规则加到勾选的类别"_s));
    connect(m_filter, &QLineEdit::textChanged, this, [this](const QString& text) { Filter(text.trimmed()); });
    connect(m_tree, &QTreeWidget::itemChanged, this, [this] { ShowState(); });
    connect(m_tree, &QTreeWidget::currentItemChanged, this, [this] { ShowState(); });
}

void CopyDialog::Fill(const rules::Draft& draft, const CString& from)
{
    QTreeWidgetItem* own = nullptr;
    // NOLINTBEGIN(clang-analyzer-cplusplus.NewDeleteLeaks): an item belongs to the tree or item that it is
    // made with
    for (const rules::Specialty& specialty : draft.Specialties()) {
        auto* top = new QTreeWidgetItem(m_tree, {specialty.name});
        for (const rules::BigCategory& big : specialty.bigCategories) {
            auto* middle = new QTreeWidgetItem(top, {big.name});
            for (const rules::SmallCategoryPtr& small : big.smallCategories) {
                if (small->text == from) own = middle;
                if (small->text == from) continue;
                auto* item = new QTreeWidgetItem(middle, {small->name});
                item->setData(0, CategoryRole, small->text);
                item->setCheckState(0, Qt::Unchecked);
            }
        }
    }
    // NOLINTEND(clang-analyzer-cplusplus.NewDeleteLeaks)
    if (own == nullptr) return;
    own->parent()->setExpanded(true);
    own->setExpanded(true);
    m_tree->setCurrentItem(own->child(0) != nullptr ? own->child(0) : own);
    m_tree->scrollToItem(own);
}

void CopyDialog::Filter(const QString& text)
{
    for (QTreeWidgetItemIterator it(m_tree); *it != nullptr; ++it)
        (*it)->setHidden(!text.isEmpty());
    for (QTreeWidgetItemIterator it(m_tree); *it != nullptr; ++it) {
        QTreeWidgetItem* const item = *it;
        if (text.isEmpty() || !item->data(0, CategoryRole).toString().contains(text, Qt::CaseInsensitive))
            continue;
        for (QTreeWidgetItem* shown = item; shown != nullptr; shown = shown->parent()) {
            shown->setHidden(false);
            if (shown != item) shown->setExpanded(true);
        }
    }
}

CStringArray CopyDialog::Chosen() const
{
    CStringArray chosen;
    for (QTreeWidgetItemIterator it(m_tree); *it != nullptr; ++it)
        if ((*it)->checkState(0) == Qt::Checked && !(*it)->data(0, CategoryRole).isNull())
            chosen.append((*it)->data(0, CategoryRole).toString());
    return chosen;
}

void CopyDialog::ShowState()
{
    const CStringArray chosen = Chosen();
    m_accept->setEnabled(!chosen.isEmpty());
    CStringArray lines;
    for (const CString& category : chosen)
        for (const rules::Misfit& misfit : m_misfits(category))
            lines.append(u"%1：第 %2 条 %3"_s.arg(category).arg(misfit.rule + 1).arg(misfit.text));
    const qsizetype rest = lines.size() - MostShown;
    if (rest > 0) lines = lines.first(MostShown) << u"还有 %1 处"_s.arg(rest);
    m_told->setText(lines.isEmpty() ? QString() : u"不合适、但仍会照样复制的：\n"_s + lines.join(u'\n'));
}

} // namespace editor
