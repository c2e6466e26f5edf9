#include "dialogs/grid/GridUser.h"

#include "dialogs/grid/GridEditors.h"
#include "support/WindowWaits.h"

#include <QtGui/QClipboard>
#include <QtTest/QTest>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLineEdit>

#include <algorithm>
#include <iterator>

using namespace Qt::StringLiterals;

namespace test {

GridUser::GridUser(int attType, int rows)
{
    m_window.resize(640, 320);
    m_grid.Create({10, 10, 600, 280}, &m_window, Id,
                  GridStyle::Visible | GridStyle::Border | GridStyle::TabStop);
    m_grid.SetupColumns(attType);
    for (int row = 1; row <= rows; ++row) {
        CStringArray texts;
        for (int col = 1; col <= 5; ++col)
            texts += u"r%1c%2"_s.arg(row).arg(col);
        m_grid.InsertOneprop(m_grid.GetRowCount(), texts, nullptr);
    }
    QObject::connect(&m_grid, &CGridCtrl::Notify, &m_window,
                     [this](const GridNotification& told) { m_told.push_back(told); });
    m_window.show();
    m_window.activateWindow();
    test::WaitUntilActive(m_window);
    m_grid.setFocus();
}

std::vector<GridNotification> GridUser::Told(int code) const
{
    std::vector<GridNotification> found;
    std::copy_if(m_told.begin(), m_told.end(), std::back_inserter(found),
                 [code](const GridNotification& told) { return told.code == code; });
    return found;
}

QRect GridUser::RectOf(int row, int col)
{
    return m_grid.visualRect(m_grid.model()->index(row - 1, col - 1));
}

void GridUser::Click(int row, int col, Qt::KeyboardModifiers modifiers)
{
    // Two clicks at one place shortly after each other would make a double click.
    const int pause = QApplication::doubleClickInterval() + 1;
    QTest::mouseClick(m_grid.viewport(), Qt::LeftButton, modifiers,
                      RectOf(row, col).topLeft() + QPoint(5, 5));
    QTest::lastMouseTimestamp += pause;
}

void GridUser::DoubleClick(int row, int col)
{
    Click(row, col);
    const QPoint point = RectOf(row, col).topLeft() + QPoint(5, 5);
    QTest::mouseDClick(m_grid.viewport(), Qt::LeftButton, {}, point);
    QTest::mouseRelease(m_grid.viewport(), Qt::LeftButton, {}, point);
}

void GridUser::Drag(GridCellId from, GridCellId to)
{
    QWidget* cells = m_grid.viewport();
    const QPoint start = RectOf(from.row, from.col).center();
    const QPoint end = RectOf(to.row, to.col).center();
    QTest::mousePress(cells, Qt::LeftButton, {}, start);
    QMouseEvent move(QEvent::MouseMove, end, cells->mapToGlobal(end), Qt::NoButton, Qt::LeftButton, {});
    QApplication::sendEvent(cells, &move);
    QTest::mouseRelease(cells, Qt::LeftButton, {}, end);
}

void GridUser::ClickArrow(int row, int col)
{
    QTest::mouseClick(m_grid.viewport(), Qt::LeftButton, {},
                      GridDelegate::ArrowRect(RectOf(row, col)).center());
    Settle();
}

void GridUser::Press(Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    QWidget* popup = QApplication::activePopupWidget();
    QWidget* focus = popup != nullptr ? popup->focusWidget() : QApplication::focusWidget();
    QTest::keyClick(focus != nullptr ? focus : &m_grid, key, modifiers);
    Settle();
}

void GridUser::Type(const CString& text)
{
    for (const QChar c : text) {
        QKeyEvent press(QEvent::KeyPress, 0, Qt::NoModifier, CString(c));
        QApplication::sendEvent(QApplication::focusWidget(), &press);
    }
    Settle();
}

QLineEdit* GridUser::Line()
{
    const auto lines = m_grid.viewport()->findChildren<QLineEdit*>();
    const auto open =
        std::find_if(lines.begin(), lines.end(), [](QLineEdit* line) { return line->isVisible(); });
    return open == lines.end() ? nullptr : *open;
}

CStringArray GridUser::OpenChoices()
{
    CStringArray entries;
    const auto* editor = m_grid.viewport()->findChild<GridChoiceEditor*>();
    if (editor == nullptr || !editor->view()->isVisible()) return entries;
    for (int entry = 0; entry < editor->count(); ++entry)
        entries += editor->itemText(entry);
    return entries;
}

void GridUser::Choose(int entry)
{
    auto* editor = m_grid.viewport()->findChild<GridChoiceEditor*>();
    QAbstractItemView* list = editor->view();
    const QPoint point = list->visualRect(list->model()->index(entry, 0)).topLeft() + QPoint(5, 5);
    // The list ignores a release soon after its opening, which belongs to the click that opened it, unless
    // the mouse has moved since.
    QTest::mouseMove(list->viewport(), point);
    list->setCurrentIndex(list->model()->index(entry, 0));
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, point);
    Settle();
}

void GridUser::Settle()
{
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
}

CString Clipboard()
{
    return QApplication::clipboard()->text();
}
void SetClipboard(const CString& text)
{
    QApplication::clipboard()->setText(text);
}

} // namespace test
