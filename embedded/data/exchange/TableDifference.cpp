#include "embedded/data/exchange/TableDifference.h"

#include <QtCore/QHash>
#include <QtCore/QSet>

namespace embedded {

using namespace Qt::StringLiterals;

namespace {

CStringArray KeyOf(const CArray<ImportColumn>& columns, const CStringArray& row)
{
    CStringArray key;
    for (qsizetype column = 0; column < columns.size(); ++column) {
        if (columns[column].isKey) key.append(row[column]);
    }
    return key;
}

/// The key as a person reads it, with the name where the row has one.
CString TextOf(const CArray<ImportColumn>& columns, const CStringArray& row)
{
    CStringArray words = KeyOf(columns, row);
    words.removeAll(CString());
    for (qsizetype column = 0; column < columns.size(); ++column) {
        if (columns[column].name == u"name") words.append(row[column]);
    }
    return words.join(u' ');
}

CString ChangesOf(const CArray<ImportColumn>& columns, const CStringArray& before, const CStringArray& after)
{
    CStringArray changes;
    for (qsizetype column = 0; column < columns.size(); ++column) {
        if (before[column] == after[column]) continue;
        changes.append(u"%1“%2”改为“%3”"_s.arg(columns[column].label, before[column], after[column]));
    }
    return changes.join(u'，');
}

} // namespace

void TellDifference(const CArray<ImportColumn>& columns, const QList<CStringArray>& before,
                    const QList<CStringArray>& after, ImportReport& report)
{
    QHash<CStringArray, CStringArray> former;
    for (const CStringArray& row : before)
        former.insert(KeyOf(columns, row), row);
    QSet<CStringArray> staying;
    for (const CStringArray& row : after) {
        const CStringArray key = KeyOf(columns, row);
        staying.insert(key);
        const auto found = former.constFind(key);
        if (found == former.constEnd() || *found == row) continue;
        report.changedRows.append(TextOf(columns, *found) + u"："_s + ChangesOf(columns, *found, row));
    }
    for (const CStringArray& row : before) {
        if (!staying.contains(KeyOf(columns, row))) report.removedRows.append(TextOf(columns, row));
    }
}

} // namespace embedded
