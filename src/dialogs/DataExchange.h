#pragma once

#include "platform/Text.h"

namespace dialogs {

class TemplateDialog;

/// The traffic between the members of a dialog and its controls, in one of both directions. A dialog names
/// each pair once in its data-binding step.
class DataExchange
{
public:
    enum class Direction {
        ToMembers,  ///< read the controls
        ToControls, ///< show the members
    };

    DataExchange(TemplateDialog& dialog, Direction direction) : m_dialog(dialog), m_direction(direction) {}

    /// The control itself, as what it is, in both directions alike. Raises `std::out_of_range` when the
    /// dialog has none of that type. Defined with `TemplateDialog`.
    template <typename Widget>
    void Control(int id, Widget*& control);

    /// The text of an edit field.
    void Text(int id, CString& value);

    /// The index of the pressed button in the radio group that starts with `firstId`; -1 when none is
    /// pressed.
    void Radio(int firstId, int& value);

private:
    TemplateDialog& m_dialog;
    Direction m_direction;
};

} // namespace dialogs
