#pragma once

#include <QtWidgets/QGroupBox>

namespace widgets {

/// A group box whose frame runs through the middle of its title, also where that is empty, as tables of
/// controls count on: they put buttons right below the title, and another control in the place of a title,
/// either of which a frame that begins elsewhere would run behind.
class GroupBox : public QGroupBox
{
public:
    using QGroupBox::QGroupBox;

    /// Where the frame stands.
    QRect FrameRect() const;

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace widgets
