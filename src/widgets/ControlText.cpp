#include "widgets/ControlText.h"

#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QGroupBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPlainTextEdit>

namespace widgets {

CString ControlText(const QWidget& control)
{
    if (const auto* button = qobject_cast<const QAbstractButton*>(&control)) return button->text();
    if (const auto* label = qobject_cast<const QLabel*>(&control)) return label->text();
    if (const auto* box = qobject_cast<const QGroupBox*>(&control)) return box->title();
    if (const auto* edit = qobject_cast<const QLineEdit*>(&control)) return edit->text();
    if (const auto* edit = qobject_cast<const QPlainTextEdit*>(&control)) return edit->toPlainText();
    if (const auto* combo = qobject_cast<const QComboBox*>(&control)) return combo->currentText();
    return {};
}

void SetControlText(QWidget& control, const CString& text)
{
    if (ControlText(control) == text) return;
    if (auto* button = qobject_cast<QAbstractButton*>(&control)) button->setText(text);
    if (auto* label = qobject_cast<QLabel*>(&control)) label->setText(text);
    if (auto* box = qobject_cast<QGroupBox*>(&control)) box->setTitle(text);
    if (auto* edit = qobject_cast<QLineEdit*>(&control)) edit->setText(text);
    if (auto* edit = qobject_cast<QPlainTextEdit*>(&control)) edit->setPlainText(text);
    if (auto* combo = qobject_cast<QComboBox*>(&control)) combo->setEditText(text);
}

bool HasCaption(const QWidget& control)
{
    return qobject_cast<const QAbstractButton*>(&control) || qobject_cast<const QLabel*>(&control) ||
           qobject_cast<const QGroupBox*>(&control);
}

CString Spoken(CString caption)
{
    const qsizetype mnemonic = caption.indexOf(u"(&");
    if (mnemonic >= 0) caption.remove(mnemonic, 4);
    if (caption.endsWith(u':')) caption.chop(1);
    return caption;
}

CString Breakable(const CString& text)
{
    constexpr QChar BreakHere(0x200B);
    CString result;
    for (const QChar character : text) {
        result += character;
        if (!character.isHighSurrogate()) result += BreakHere;
    }
    return result;
}

} // namespace widgets
