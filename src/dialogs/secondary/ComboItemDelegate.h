#pragma once

#include <QtWidgets/QStyledItemDelegate>

#include <functional>

class QAbstractItemView;
class QComboBox;

/// Draws the entries of an owner-drawn combo box. A refused entry never shows as selected.
class ComboItemDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    /// `combo` owns the delegate; `isRefused` answers for the index of an entry.
    ComboItemDelegate(QComboBox& combo, std::function<bool(int)> isRefused);

    /// The part of an entry's rectangle that its text gets, in the coordinates of the view's viewport.
    static QRect TextRect(const QAbstractItemView& view, const QModelIndex& entry);

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;

private:
    const QComboBox& m_combo;
    std::function<bool(int)> m_isRefused;
};
