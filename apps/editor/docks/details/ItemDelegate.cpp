#include "editor/docks/details/ItemDelegate.h"

#include "editor/docks/details/ItemTree.h"

#include <QtCore/QPointer>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QLineEdit>

using namespace Qt::StringLiterals;

namespace editor {

namespace {

/// Those that the module's grid offers.
const CStringArray Units{u"m"_s,  u"m2"_s, u"m3"_s, u"吨"_s, u"千克"_s, u"个"_s, u"根"_s,
                         u"座"_s, u"榀"_s, u"块"_s, u"套"_s, u"只"_s,   u"樘"_s, u"副"_s};

} // namespace

ItemDelegate::ItemDelegate(ItemTree& tree) : RoomyDelegate(tree), m_tree(tree) {}

QWidget* ItemDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem&,
                                    const QModelIndex& index) const
{
    QWidget* editor = nullptr;
    if (index.column() == ItemTree::NameColumn) {
        editor = new QLineEdit(parent);
    } else if (index.column() == ItemTree::UnitColumn || index.column() == ItemTree::AnnexColumn) {
        const bool isUnit = index.column() == ItemTree::UnitColumn;
        auto* combo = new QComboBox(parent);
        combo->setEditable(isUnit);
        combo->setInsertPolicy(QComboBox::NoInsert);
        combo->addItems(isUnit ? Units : CStringArray{u"是"_s, u"否"_s});
        // An entry may be chosen by the key that closes the editor anyway, so this comes after it.
        connect(
            combo, &QComboBox::activated, &m_tree,
            [this, chosen = QPointer<QWidget>(combo)] { m_tree.Finish(chosen); }, Qt::QueuedConnection);
        editor = combo;
    }
    if (editor == nullptr) return nullptr;
    editor->setAccessibleName(m_tree.headerItem()->text(index.column()));
    m_tree.Opened(editor);
    return editor;
}

void ItemDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const
{
    const ItemLine& line = m_tree.LineAt(index);
    if (auto* field = qobject_cast<QLineEdit*>(editor)) field->setText(line.name);
    auto* combo = qobject_cast<QComboBox*>(editor);
    if (combo == nullptr) return;
    const CString& text = index.column() == ItemTree::UnitColumn ? line.unit : line.annex;
    combo->setCurrentIndex(combo->findText(text));
    if (!combo->isEditable()) return;
    combo->setEditText(text);
    combo->lineEdit()->selectAll();
}

void ItemDelegate::setModelData(QWidget* editor, QAbstractItemModel*, const QModelIndex& index) const
{
    const ItemLine line = m_tree.LineAt(index);
    if (const auto* field = qobject_cast<QLineEdit*>(editor))
        m_tree.SetCell(line, index.column(), field->text());
    const auto* combo = qobject_cast<QComboBox*>(editor);
    if (combo != nullptr && (combo->isEditable() || combo->currentIndex() >= 0))
        m_tree.SetCell(line, index.column(), combo->currentText().trimmed());
}

} // namespace editor
