#pragma once

#include "embedded/data/catalogue/LibraryName.h"

class QComboBox;

namespace editor {

/// A combo box in which a library is chosen. It never makes its window wider than the other fields do: a name
/// may be long. Its tool tip tells the chosen library in full.
QComboBox* MakeLibraryCombo();

/// Replaces what can be chosen and chooses the library of that code. Signals nothing.
void FillLibraries(QComboBox& combo, const CArray<embedded::LibraryName>& libraries, const CString& code);

/// The code of the chosen library; empty when there is none.
CString ChosenLibrary(const QComboBox& combo);

/// A library in one line: its name, and region and year, which tell two editions apart.
CString LibraryText(const embedded::LibraryName& library);

} // namespace editor
