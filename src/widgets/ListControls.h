#pragma once

#include "platform/Text.h"

class QComboBox;
class QListWidget;
class QTabWidget;
class QWidget;

/// Entries and selections of list boxes, combos and tabs, as code changes them. A dialog hears of selections
/// that the user makes, never of these.
namespace widgets {

/// Entries that `AddString` adds to `control` find their place by collation from now on.
void SetSorted(QWidget& control, bool sorted);
bool IsSorted(const QWidget& control);

/// Adds an entry at the end, or at its place in a sorted list behind its equals, and gives its index. Nothing
/// becomes selected by it.
int AddString(QListWidget& list, const CString& text);
int AddString(QComboBox& combo, const CString& text);

/// Inserts an entry at `index`, in a sorted list too.
void InsertString(QListWidget& list, int index, const CString& text);

/// Removes all entries, and in an editable combo the typed text.
void ResetContent(QListWidget& list);
void ResetContent(QComboBox& combo);

/// The index of the first entry that equals `text`, case counting; -1 when there is none.
int FindStringExact(const QListWidget& list, const CString& text);

/// The selected index, or -1. A list box may have a current entry, the one with the focus mark, that is not
/// selected.
int GetCurSel(const QListWidget& list);

/// The integer kept with an entry, which must be there; 0 at first.
int GetItemData(const QListWidget& list, int index);
void SetItemData(QListWidget& list, int index, int value);

/// Selects an entry; -1 takes the selection away.
void SetCurSel(QListWidget& list, int index);
void SetCurSel(QComboBox& combo, int index);
void SetCurSel(QTabWidget& tab, int index);

} // namespace widgets
