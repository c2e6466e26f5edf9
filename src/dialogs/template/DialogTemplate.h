#pragma once

#include <QtCore/QStringView>

#include <span>

/// A dialog as data: what stands where, in dialog units. `TemplateDialog` turns it into widgets.
namespace dialogs {

enum class ControlKind {
    PushButton,
    GroupBox,
    Static,
    Edit,
    MultiLineEdit,
    ListBox,
    DropList,      ///< a combo box whose text cannot be typed
    EditableCombo, ///< a combo box with an edit field
    RadioButton,
    CheckBox,
    Tree,
    ReportList, ///< rows of several columns under a header
    Tab,
    Frame, ///< only marks a place
};

/// Notes of a row; several are joined with |.
enum ControlFlag : unsigned {
    Hidden = 1U << 0U,
    Disabled = 1U << 1U,
    Sorted = 1U << 2U, ///< entries that are added find their place by collation
    ReadOnly = 1U << 3U,
    DefaultButton = 1U << 4U, ///< pressed by Enter
    GroupStart = 1U << 5U,    ///< first radio button of a group
    Notifies = 1U << 6U,      ///< a static that can be clicked
    NoScroll = 1U << 7U,      ///< an editable combo that takes no more text than its field shows
};

/// Id of a row that nobody needs to find.
inline constexpr int NoId = -1;

/// A rectangle in dialog units.
struct DialogRect
{
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0; ///< of a combo: with its list dropped
};

struct ControlRow
{
    int id = NoId;
    ControlKind kind = ControlKind::Static;
    QStringView caption = {}; ///< "(&S)" marks a mnemonic
    DialogRect rect = {};
    unsigned flags = 0;
    /// What assistive technology reads out. Empty means the caption, or where there is none the nearest
    /// caption before the row.
    QStringView name = {};
    /// Of an edit or combo: a text that it must show in full.
    QStringView fits = {};
    /// Of a static: the control that it names and to which its mnemonic leads.
    int buddy = NoId;
};

struct DialogTemplate
{
    QStringView caption;
    int width = 0; ///< of the area inside the frame, in dialog units
    int height = 0;
    std::span<const ControlRow> rows; ///< in tab order
};

} // namespace dialogs
