#pragma once

#include "platform/Window.h"

#include <QtCore/QHash>
#include <QtWidgets/QWidget>

namespace dialogs {

/// The controls of a dialog by their ids. Owns none of them: they are children of its window or members of
/// it.
class DialogItems
{
public:
    /// Makes a control known; one that had the id before is not found by it any more.
    void Add(int id, CWnd* control) { m_controls.insert(id, control); }

    /// The control of that id; null when there is none.
    CWnd* Find(int id) const { return m_controls.value(id, nullptr); }

    /// The control of that id as what it is. Raises `std::out_of_range` when there is none of that type.
    template <typename Widget>
    Widget& Item(int id) const
    {
        auto* widget = dynamic_cast<Widget*>(Find(id));
        if (widget == nullptr) ThrowNoItem(id);
        return *widget;
    }

private:
    [[noreturn]] static void ThrowNoItem(int id);

    QHash<int, CWnd*> m_controls;
};

} // namespace dialogs
