#pragma once

#include <QtWidgets/QLabel>

namespace embedded {
class ProjectOffice;
}

namespace editor {

class BackgroundWork;

/// Tells in the status bar which office the project belongs to, whether it could be reached when it was last
/// tried, and whether its catalogue is another one by now than that with which the project works. Follows
/// whatever asks the office, and looks for itself when the user comes back to the program, behind the
/// windows.
class OfficeMark : public QLabel
{
public:
    OfficeMark();
    ~OfficeMark() override;

    /// Tells of that office from now on, which lives until this is told of another one or is at its own end;
    /// null hides this.
    void Follow(embedded::ProjectOffice* office);

private:
    void ShowState();
    /// Asks the office by a connection of its own.
    void Look();

    embedded::ProjectOffice* m_followed = nullptr;
    BackgroundWork* m_look;
};

} // namespace editor
