#include "editor/dialogs/LibraryCombo.h"

#include <QtCore/QSignalBlocker>
#include <QtWidgets/QComboBox>

using namespace Qt::StringLiterals;

namespace editor {

namespace {

/// What a field has room for at least, in characters.
constexpr int LeastLength = 24;

void ShowToolTip(QComboBox& combo)
{
    combo.setToolTip(combo.currentData(Qt::ToolTipRole).toString());
}

} // namespace

QComboBox* MakeLibraryCombo()
{
    auto* combo = new QComboBox;
    combo->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    combo->setMinimumContentsLength(LeastLength);
    combo->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    QObject::connect(combo, &QComboBox::currentIndexChanged, combo, [combo] { ShowToolTip(*combo); });
    return combo;
}

void FillLibraries(QComboBox& combo, const CArray<embedded::LibraryName>& libraries, const CString& code)
{
    const QSignalBlocker quiet(combo);
    combo.clear();
    for (const embedded::LibraryName& library : libraries) {
        combo.addItem(LibraryText(library), library.code);
        const CString tip = LibraryText(library) + u'\n' + u"代码：%1"_s.arg(library.code);
        combo.setItemData(combo.count() - 1, tip, Qt::ToolTipRole);
    }
    combo.setCurrentIndex(combo.findData(code));
    ShowToolTip(combo);
}

CString ChosenLibrary(const QComboBox& combo)
{
    return combo.currentData().toString();
}

CString LibraryText(const embedded::LibraryName& library)
{
    const CString edition = CString(library.local + u' ' + library.year).trimmed();
    return edition.isEmpty() ? library.name : u"%1 · %2"_s.arg(library.name, edition);
}

} // namespace editor
