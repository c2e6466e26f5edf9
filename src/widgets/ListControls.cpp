#include "widgets/ListControls.h"

#include "widgets/Collation.h"

#include <QtCore/QSignalBlocker>
#include <QtCore/QVariant>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QTabWidget>

namespace widgets {

namespace {

constexpr char SortedProperty[] = "sorted";

// The place behind the last of `count` entries, `textAt(i)` each, that do not stand behind `text`.
template <typename TextAt>
int PlaceFor(const CString& text, int count, TextAt textAt)
{
    int low = 0;
    int high = count;
    while (low < high) {
        const int middle = low + (high - low) / 2;
        if (Collate(text, textAt(middle)) < 0)
            high = middle;
        else
            low = middle + 1;
    }
    return low;
}

} // namespace

void SetSorted(QWidget& control, bool sorted)
{
    control.setProperty(SortedProperty, sorted);
}

bool IsSorted(const QWidget& control)
{
    return control.property(SortedProperty).toBool();
}

int AddString(QListWidget& list, const CString& text)
{
    int place = list.count();
    if (IsSorted(list))
        place = PlaceFor(text, place, [&list](int index) { return list.item(index)->text(); });
    InsertString(list, place, text);
    return place;
}

int AddString(QComboBox& combo, const CString& text)
{
    int place = combo.count();
    if (IsSorted(combo)) place = PlaceFor(text, place, [&combo](int index) { return combo.itemText(index); });
    const QSignalBlocker quiet(combo);
    const bool hadNone = combo.currentIndex() < 0;
    const CString typed = combo.currentText();
    combo.insertItem(place, text);
    if (hadNone) {
        // The toolkit selects the first entry that comes into an empty combo.
        combo.setCurrentIndex(-1);
        if (combo.isEditable()) combo.setEditText(typed);
    }
    return place;
}

void InsertString(QListWidget& list, int index, const CString& text)
{
    const QSignalBlocker quiet(list);
    list.insertItem(index, text);
}

void ResetContent(QListWidget& list)
{
    const QSignalBlocker quiet(list);
    list.clear();
}

void ResetContent(QComboBox& combo)
{
    const QSignalBlocker quiet(combo);
    combo.clear();
    if (combo.isEditable()) combo.clearEditText();
}

int FindStringExact(const QListWidget& list, const CString& text)
{
    for (int index = 0; index < list.count(); ++index)
        if (list.item(index)->text() == text) return index;
    return -1;
}

int GetCurSel(const QListWidget& list)
{
    const QList<QListWidgetItem*> selected = list.selectedItems();
    return selected.isEmpty() ? -1 : list.row(selected.first());
}

int GetItemData(const QListWidget& list, int index)
{
    return list.item(index)->data(Qt::UserRole).toInt();
}

void SetItemData(QListWidget& list, int index, int value)
{
    list.item(index)->setData(Qt::UserRole, value);
}

void SetCurSel(QListWidget& list, int index)
{
    const QSignalBlocker quiet(list);
    list.setCurrentRow(index, QItemSelectionModel::ClearAndSelect);
}

void SetCurSel(QComboBox& combo, int index)
{
    const QSignalBlocker quiet(combo);
    combo.setCurrentIndex(index);
}

void SetCurSel(QTabWidget& tab, int index)
{
    const QSignalBlocker quiet(tab);
    tab.setCurrentIndex(index);
}

} // namespace widgets
