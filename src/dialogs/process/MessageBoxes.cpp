#include "dialogs/process/MessageBoxes.h"

#include "widgets/WindowFrame.h"

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

// With captions of our own: those of the toolkit's standard buttons come in the language of whatever
// translation is loaded, and on some desktops with icons that the buttons of the other windows have not.
void AddButtons(QMessageBox& box, bool asks)
{
    if (!asks) {
        box.addButton(u"确定"_s, QMessageBox::AcceptRole);
        return;
    }
    box.addButton(u"是(&Y)"_s, QMessageBox::YesRole);
    QPushButton* no = box.addButton(u"否(&N)"_s, QMessageBox::NoRole);
    box.setDefaultButton(no);
    box.setEscapeButton(no);
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
    widgets::MakeRoomForCaption(*box);
    return box;
}

platform::Answer ShowMessageBox(const platform::Message& message)
{
    const auto box = MakeMessageBox(message, message.owned ? QApplication::activeWindow() : nullptr);
    box->show();
    box->raise();
    box->activateWindow();
    box->exec();
    if (message.kind != platform::MessageKind::Question) return platform::Answer::Ok;
    const bool agreed = box->buttonRole(box->clickedButton()) == QMessageBox::YesRole;
    return agreed ? platform::Answer::Yes : platform::Answer::No;
}

MessageBoxes::MessageBoxes() : m_handler(ShowMessageBox) {}

} // namespace dialogs
