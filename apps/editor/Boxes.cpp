#include "editor/Boxes.h"

#include "platform/Messages.h"

#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPushButton>

using namespace Qt::StringLiterals;

namespace editor {

namespace {

void SetUp(QMessageBox& box, const QString& text, const QString& details)
{
    box.setIcon(QMessageBox::Warning);
    box.setWindowTitle(ProgramName());
    box.setTextFormat(Qt::PlainText);
    box.setText(text);
    box.setInformativeText(details);
}

void MakeDefault(QMessageBox& box, QPushButton* button)
{
    box.setDefaultButton(button);
    box.setEscapeButton(button);
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

bool AskOpenAnyway(QWidget* parent, const CString& nativePath, const CString& state)
{
    QMessageBox box(parent);
    SetUp(box, u"%1\n%2"_s.arg(nativePath, state),
          u"打开后第一次保存就会替换这个文件原有的内容。打开之前会在历史中留一份。"_s);
    const QPushButton* anyway = box.addButton(u"仍然打开(&O)"_s, QMessageBox::AcceptRole);
    MakeDefault(box, box.addButton(u"取消"_s, QMessageBox::RejectRole));
    box.exec();
    return box.clickedButton() == anyway;
}

HeadTarget AskHeadTarget(QWidget* parent, const CString& nativePath)
{
    QMessageBox box(parent);
    SetUp(box, u"给规则文件写文件头？\n%1"_s.arg(nativePath),
          u"写了文件头的文件不再是 XML，不能再编辑，也不能还原成规则文件。建议在副本上写。"_s);
    QPushButton* copy = box.addButton(u"写在副本上(&C)…"_s, QMessageBox::AcceptRole);
    const QPushButton* original = box.addButton(u"写在这个文件上(&O)"_s, QMessageBox::DestructiveRole);
    box.setEscapeButton(box.addButton(u"取消"_s, QMessageBox::RejectRole));
    box.setDefaultButton(copy);
    box.exec();
    if (box.clickedButton() == copy) return HeadTarget::Copy;
    return box.clickedButton() == original ? HeadTarget::Original : HeadTarget::None;
}

} // namespace editor
