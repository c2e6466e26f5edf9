#include "editor/messages/Boxes.h"

#include "platform/Messages.h"
#include "widgets/WindowFrame.h"

#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPushButton>

using namespace Qt::StringLiterals;

namespace editor {

namespace {

std::unique_ptr<QMessageBox> MakeBox(QWidget* parent, const QString& text, const QString& details)
{
    auto box = std::make_unique<QMessageBox>(parent);
    box->setIcon(QMessageBox::Warning);
    box->setWindowTitle(ProgramName());
    box->setTextFormat(Qt::PlainText);
    box->setText(text);
    box->setInformativeText(details);
    return box;
}

/// Shows a box; the role of the button that was pressed.
QMessageBox::ButtonRole Ask(QMessageBox& box)
{
    widgets::MakeRoomForCaption(box);
    box.exec();
    return box.buttonRole(box.clickedButton());
}

RecoverAnswer AnswerOf(QMessageBox& box)
{
    switch (Ask(box)) {
    case QMessageBox::AcceptRole:
        return RecoverAnswer::Recover;
    case QMessageBox::DestructiveRole:
        return RecoverAnswer::Discard;
    default:
        return RecoverAnswer::Later;
    }
}

} // namespace

QString ProgramName()
{
    return u"KtQdDeConfig 规则编辑器"_s;
}

void ShowWarning(const CString& text)
{
    platform::Show(
        {platform::MessageKind::Warning, text + CString::fromUtf16(platform::WarningMark), ProgramName()});
}

bool AskYesNo(const CString& text)
{
    return platform::Show({platform::MessageKind::Question, text + CString::fromUtf16(platform::QuestionMark),
                           ProgramName()}) == platform::Answer::Yes;
}

std::unique_ptr<QMessageBox> MakeOpenAnywayBox(QWidget* parent, const CString& nativePath,
                                               const CString& state)
{
    auto box = MakeBox(parent, u"%1\n%2"_s.arg(nativePath, state),
                       u"打开后第一次保存就会替换这个文件原有的内容。打开之前会留一份历史副本。"_s);
    box->addButton(u"仍然打开(&O)"_s, QMessageBox::AcceptRole);
    QPushButton* cancel = box->addButton(u"取消"_s, QMessageBox::RejectRole);
    box->setDefaultButton(cancel);
    box->setEscapeButton(cancel);
    return box;
}

bool AskOpenAnyway(QWidget* parent, const CString& nativePath, const CString& state)
{
    return Ask(*MakeOpenAnywayBox(parent, nativePath, state)) == QMessageBox::AcceptRole;
}

std::unique_ptr<QMessageBox> MakeLeaveBox(QWidget* parent, const CString& configuration)
{
    auto box = MakeBox(parent, u"“%1”的规则有没有保存的修改，要保存吗？"_s.arg(configuration), {});
    box->setDefaultButton(box->addButton(u"保存(&S)"_s, QMessageBox::AcceptRole));
    box->addButton(u"放弃修改(&D)"_s, QMessageBox::DestructiveRole);
    box->setEscapeButton(box->addButton(u"取消"_s, QMessageBox::RejectRole));
    return box;
}

LeaveAnswer AskLeave(QWidget* parent, const CString& configuration)
{
    switch (Ask(*MakeLeaveBox(parent, configuration))) {
    case QMessageBox::AcceptRole:
        return LeaveAnswer::Save;
    case QMessageBox::DestructiveRole:
        return LeaveAnswer::Discard;
    default:
        return LeaveAnswer::Stay;
    }
}

std::unique_ptr<QMessageBox> MakeRecoverBox(QWidget* parent, const CString& text)
{
    auto box = MakeBox(parent, text, u"接着改以后仍可以撤销；不丢弃的话，下次打开这个文件时会再问。"_s);
    box->setDefaultButton(box->addButton(u"接着改(&R)"_s, QMessageBox::AcceptRole));
    box->addButton(u"丢弃(&D)"_s, QMessageBox::DestructiveRole);
    box->setEscapeButton(box->addButton(u"以后再说"_s, QMessageBox::RejectRole));
    return box;
}

std::unique_ptr<QMessageBox> MakeRestoreBox(QWidget* parent, const CString& text)
{
    auto box = MakeBox(parent, text,
                       u"还原时按开始修改时的样子重新建立规则文件，再接着改。不丢弃的话，"
                       "下次打开这个工程时会再问。"_s);
    box->setDefaultButton(box->addButton(u"还原(&R)…"_s, QMessageBox::AcceptRole));
    box->addButton(u"丢弃(&D)"_s, QMessageBox::DestructiveRole);
    box->setEscapeButton(box->addButton(u"以后再说"_s, QMessageBox::RejectRole));
    return box;
}

RecoverAnswer AskRecover(QWidget* parent, const CString& text)
{
    return AnswerOf(*MakeRecoverBox(parent, text));
}

RecoverAnswer AskRestore(QWidget* parent, const CString& text)
{
    return AnswerOf(*MakeRestoreBox(parent, text));
}

std::unique_ptr<QMessageBox> MakeHeadTargetBox(QWidget* parent, const CString& nativePath)
{
    auto box = MakeBox(
        parent, u"给规则文件写文件头？\n%1"_s.arg(nativePath),
        u"写了文件头的文件不再是 XML，不能再编辑；其中的规则以后可以用命令行 ktqdde unwrap 取回。建议在副本上写。"_s);
    box->setDefaultButton(box->addButton(u"写在副本上(&C)…"_s, QMessageBox::AcceptRole));
    box->addButton(u"写在这个文件上(&O)"_s, QMessageBox::DestructiveRole);
    box->setEscapeButton(box->addButton(u"取消"_s, QMessageBox::RejectRole));
    return box;
}

HeadTarget AskHeadTarget(QWidget* parent, const CString& nativePath)
{
    switch (Ask(*MakeHeadTargetBox(parent, nativePath))) {
    case QMessageBox::AcceptRole:
        return HeadTarget::Copy;
    case QMessageBox::DestructiveRole:
        return HeadTarget::Original;
    default:
        return HeadTarget::None;
    }
}

} // namespace editor
