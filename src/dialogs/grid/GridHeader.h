#pragma once

#include <QtCore/QString>
#include <QtWidgets/QHeaderView>

#include <functional>
#include <vector>

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
    void changeEvent(QEvent* event) override;
    void paintSection(QPainter* painter, const QRect& rect, int section) const override;

private:
    /// A caption and what it needs at a width.
    struct Measured
    {
        QString caption;
        int width = -1;
        int flags = 0;
        int height = 0;
    };

    std::function<bool(int)> m_isSelected;
    /// By section. Grids set up their columns one by one, and each step asks for the height of all captions.
    mutable std::vector<Measured> m_measured;
};
