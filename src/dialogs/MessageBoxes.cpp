#include "dialogs/MessageBoxes.h"

#include <QtWidgets/QApplication>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPushButton>

using namespace Qt::StringLiterals;

namespace dialogs {

namespace {

QMessageBox::Icon IconOf(platform::MessageKind kind)
{
    switch (kind) {
    case platform::MessageKind::Warning:
    case platform::MessageKind::Question:
        return QMessageBox::Warning;
    case platform::MessageKind::Information:
        return QMessageBox::Information;
    case platform::MessageKind::Plain:
        break;
    }
    return QMessageBox::NoIcon;
}

// The captions are set here because the toolkit's own come in the language of whatever translation is loaded.
void AddButtons(QMessageBox& box, bool asks)
{
    if (!asks) {
        box.addButton(QMessageBox::Ok)->setText(u"确定"_s);
        return;
    }
    box.addButton(QMessageBox::Yes)->setText(u"是(&Y)"_s);
    box.addButton(QMessageBox::No)->setText(u"否(&N)"_s);
    box.setDefaultButton(QMessageBox::No);
    box.setEscapeButton(QMessageBox::No);
}

} // namespace

std::unique_ptr<QMessageBox> MakeMessageBox(const platform::Message& message, CWnd* owner)
{
    auto box = std::make_unique<QMessageBox>(owner);
    box->setWindowTitle(message.caption);
    box->setIcon(IconOf(message.kind));
    // Texts hold "<" and ">" of their own and are no markup.
    box->setTextFormat(Qt::PlainText);
    box->setText(message.text);
    AddButtons(*box, message.kind == platform::MessageKind::Question);
    box->setWindowModality(Qt::ApplicationModal);
    return box;
}

platform::Answer ShowMessageBox(const platform::Message& message)
{
    const auto box = MakeMessageBox(message, message.owned ? QApplication::activeWindow() : nullptr);
    box->show();
    box->raise();
    box->activateWindow();
    const int pressed = box->exec();
    if (message.kind != platform::MessageKind::Question) return platform::Answer::Ok;
    return pressed == QMessageBox::Yes ? platform::Answer::Yes : platform::Answer::No;
}

MessageBoxes::MessageBoxes() : m_handler(ShowMessageBox) {}

} // namespace dialogs
