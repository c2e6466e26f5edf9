#pragma once

#include "dialogs/process/MessageBoxes.h"

#include <memory>
#include <optional>

namespace dialogs {

class OwnApplication;

/// What the module's dialogs need that belongs to the process, while a host runs one of them. Keeps what the
/// host has, puts the module's own in force, and gives the host's back: on an error as well.
///
/// - An application object with windows. A host's own is used as it is, its style and its language included.
///   A process without one gets one until this object ends, with the toolkit's own texts in Chinese where
///   their translation is installed or stands beside the module. Meanwhile the C locale is the environment's,
///   but numbers are the host's; on Windows all of it is the host's.
/// - The message boxes: a message that a dialog causes stands in front of it and does not go to wherever the
///   host shows messages otherwise.
/// - The end of a dialog does not end a host whose windows are all hidden.
///
/// Made before the dialog, so that it ends after it: a window must not outlive the application object.
class ResourceContext
{
public:
    /// Raises `std::logic_error` in a process whose application object has no windows (`QCoreApplication`,
    /// `QGuiApplication`): there can be no second one beside it.
    ResourceContext();
    ~ResourceContext();
    ResourceContext(const ResourceContext&) = delete;
    ResourceContext& operator=(const ResourceContext&) = delete;

    /// From now on messages are the host's again. For the time between the dialog's run and its destruction.
    void GiveMessagesBack() { m_boxes.reset(); }

private:
    std::unique_ptr<OwnApplication> m_own;
    std::optional<MessageBoxes> m_boxes;
    bool m_quitsWithLastWindow;
};

} // namespace dialogs
