#include "widgets/WheelGuard.h"

#include <QtCore/QEvent>
#include <QtWidgets/QComboBox>

namespace widgets {

namespace {

class WheelGuard : public QObject
{
public:
    using QObject::QObject;

    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() != QEvent::Wheel) return false;
        event->ignore();
        return true;
    }
};

} // namespace

void KeepWheelFrom(QComboBox& combo)
{
    combo.setFocusPolicy(Qt::StrongFocus); // the wheel gives no focus either
    combo.installEventFilter(new WheelGuard(&combo));
}

} // namespace widgets
