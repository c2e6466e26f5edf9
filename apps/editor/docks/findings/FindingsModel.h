#pragma once

#include "editor/docks/findings/FindingsWatch.h"

#include <QtCore/QAbstractTableModel>
#include <QtGui/QIcon>

#include <array>
#include <vector>

class QPalette;

namespace editor {

/// The findings that are to be listed, a line each. Looks at those of the watch and holds none itself.
class FindingsModel : public QAbstractTableModel
{
public:
    enum Column { SeverityColumn, PlaceColumn, TextColumn, ColumnCount };

    /// The watch must outlive this.
    FindingsModel(const FindingsWatch& watch, QObject* parent);

    /// Lists those of one category, or of the file for an empty text, that are at least so severe.
    void List(const CString& category, rules::Severity least);
    /// How many there are of a severity in what is listed, whether it is shown or not.
    std::size_t CountOf(rules::Severity severity) const
    {
        return m_counts[static_cast<std::size_t>(severity)];
    }
    void TakeColours(const QPalette& palette);

    /// The finding of a row that there is.
    const rules::Finding& At(int row) const;
    /// The row of a finding that is listed; -1 for none.
    int RowOf(const rules::Finding& finding) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    struct Line
    {
        CString category;
        std::size_t index; ///< among those of the category
    };

    void Add(const CString& category, rules::Severity least);
    CString PlaceOf(const rules::Finding& finding) const;
    CString TextOf(const rules::Finding& finding, int column) const;

    const FindingsWatch& m_watch;
    bool m_isOfFile = false;
    std::vector<Line> m_lines;
    std::array<std::size_t, 3> m_counts{}; ///< by severity
    std::array<QIcon, 3> m_icons;          ///< by severity
};

} // namespace editor
