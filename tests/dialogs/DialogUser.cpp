#include "dialogs/DialogUser.h"

#include <QtTest/QTest>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QListWidget>

namespace test {

void Open(dialogs::TemplateDialog& dialog)
{
    dialog.Create();
    dialog.show();
    dialog.activateWindow();
    QCoreApplication::processEvents();
}

void Click(const dialogs::TemplateDialog& dialog, int id)
{
    auto& control = dialog.Item<QWidget>(id);
    // The toolkit delivers to a hidden control what a test sends it.
    if (!control.isVisible() || !control.isEnabled()) return;
    QTest::mouseClick(&control, Qt::LeftButton, {}, {8, control.height() / 2});
}

void ClickLine(const dialogs::TemplateDialog& dialog, int id, int line)
{
    auto& list = dialog.Item<QListWidget>(id);
    const QRect place = list.visualItemRect(list.item(line));
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, place.center());
}

void Type(const dialogs::TemplateDialog& dialog, int id, const CString& text)
{
    auto& edit = dialog.Item<QLineEdit>(id);
    edit.selectAll();
    QTest::keyClick(&edit, Qt::Key_Delete);
    // Not keyClicks(), which knows the keys of ASCII only.
    for (const QChar character : text)
        QTest::sendKeyEvent(QTest::Click, &edit, Qt::Key_unknown, QString(character), Qt::NoModifier);
}

void Press(dialogs::TemplateDialog& dialog, Qt::Key key)
{
    QWidget* focused = dialog.focusWidget();
    QTest::keyClick(focused == nullptr ? &dialog : focused, key);
}

CStringArray Lines(const dialogs::TemplateDialog& dialog, int id)
{
    const auto& list = dialog.Item<QListWidget>(id);
    CStringArray lines;
    for (int line = 0; line < list.count(); ++line)
        lines.append(list.item(line)->text());
    return lines;
}

CStringArray Entries(const dialogs::TemplateDialog& dialog, int id)
{
    const auto& combo = dialog.Item<QComboBox>(id);
    CStringArray entries;
    for (int entry = 0; entry < combo.count(); ++entry)
        entries.append(combo.itemText(entry));
    return entries;
}

} // namespace test
