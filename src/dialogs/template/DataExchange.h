#pragma once

#include "dialogs/template/DialogItems.h"
#include "platform/Text.h"

namespace dialogs {

/// The traffic between the members of a dialog and its controls, in one of both directions. A dialog names
/// each pair once in its data-binding step.
class DataExchange
{
public:
    enum class Direction {
        ToMembers,  ///< read the controls
        ToControls, ///< show the members
    };

    /// `items` are the dialog's controls and outlive this.
    DataExchange(const DialogItems& items, Direction direction) : m_items(items), m_direction(direction) {}

    /// The control itself, as what it is, in both directions alike. Raises `std::out_of_range` when the
    /// dialog has none of that type.
    template <typename Widget>
    void Control(int id, Widget*& control)
    {
        control = &m_items.Item<Widget>(id);
    }

    /// The text of an edit field.
    void Text(int id, CString& value);

    /// The index of the pressed button in the radio group that starts with `firstId`; -1 when none is
    /// pressed.
    void Radio(int firstId, int& value);

private:
    const DialogItems& m_items;
    Direction m_direction;
};

} // namespace dialogs
