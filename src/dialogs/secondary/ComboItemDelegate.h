#pragma once

#include <QtWidgets/QStyledItemDelegate>

class CTTComboBox;
class QAbstractItemView;

/// Draws the entries of an owner-drawn combo box. A refused entry never shows as selected.
class ComboItemDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    /// `combo` owns the delegate.
    explicit ComboItemDelegate(CTTComboBox& combo);

    /// The part of an entry's rectangle that its text gets, in the coordinates of the view's viewport.
    static QRect TextRect(const QAbstractItemView& view, const QModelIndex& entry);

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;

private:
    const CTTComboBox& m_combo;
};
