#pragma once

#include <QtWidgets/QGroupBox>

namespace widgets {

/// A group box whose frame runs through the middle of its title, as tables of controls count on: they put
/// buttons right below the title, which a frame that begins there would run behind.
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
