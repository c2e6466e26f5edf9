#include "dialogs/secondary/TipUser.h"

#include "support/WindowWaits.h"

#include <QtGui/QHelpEvent>
#include <QtGui/QWheelEvent>
#include <QtTest/QTest>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QApplication>

using namespace Qt::StringLiterals;

namespace test {

const CString ComboUser::Wide = u"镀锌钢管 DN25 砖、混凝土结构暗配"_s;

ComboUser::ComboUser(bool editable) : m_combo(&m_window), m_button(&m_window)
{
    m_window.resize(400, 300);
    m_combo.setGeometry(150, 20, 90, 26);
    m_button.setGeometry(10, 200, 60, 26);
    m_combo.setEditable(editable);
    m_combo.addItems({u"短"_s, Wide, u"m"_s, Wide + u"2"_s});
    QObject::connect(&m_combo, &QComboBox::textActivated, &m_window,
                     [this](const QString& text) { m_chosen += text; });
    m_window.show();
    m_window.activateWindow();
    test::WaitUntilActive(m_window);
    MoveOut();
}

void ComboUser::Open()
{
    m_combo.showPopup();
    QCoreApplication::processEvents();
}

void ComboUser::MoveTo(int entry, int offset)
{
    const QRect line = m_combo.view()->visualRect(m_combo.model()->index(entry, 0));
    QTest::mouseMove(List(), line.topLeft() + QPoint(6 + offset, 6));
}

void ComboUser::ClickEntry(int entry)
{
    const QRect line = m_combo.view()->visualRect(m_combo.model()->index(entry, 0));
    MoveTo(entry);
    QTest::mouseClick(List(), Qt::LeftButton, {}, line.topLeft() + QPoint(6, 6));
}

void ComboUser::MoveOut()
{
    QTest::mouseMove(&m_button, QPoint(5, 5));
}

void ComboUser::Rest(QWidget* part)
{
    const QPoint point(10, part->height() / 2);
    QTest::mouseMove(part, point);
    QHelpEvent rest(QEvent::ToolTip, point, part->mapToGlobal(point));
    QApplication::sendEvent(part, &rest);
}

void ComboUser::Wheel(int delta)
{
    const QPoint point = m_combo.rect().center();
    QWheelEvent wheel(point, m_combo.mapToGlobal(point), {}, {0, delta}, Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(&m_combo, &wheel);
}

TipWindow* Tip()
{
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        if (auto* tip = qobject_cast<TipWindow*>(widget)) return tip;
    }
    return nullptr;
}

CString TipText()
{
    return Tip() != nullptr && Tip()->isVisible() ? Tip()->Text() : CString();
}

} // namespace test
