#pragma once

#include <QtWidgets/QHeaderView>

#include <functional>

/// Shows the fixed row or column of a grid. A fixed cell that belongs to the selection is tinted like a
/// selected one.
class GridHeader : public QHeaderView
{
    Q_OBJECT

public:
    /// `isSelected` answers for a section of the model.
    GridHeader(Qt::Orientation orientation, std::function<bool(int)> isSelected, QWidget* parent);

    /// The height that the captions need at the present section widths, wrapped where their format says so.
    int NeededHeight() const;

protected:
    void paintSection(QPainter* painter, const QRect& rect, int section) const override;

private:
    std::function<bool(int)> m_isSelected;
};
