#include "editor/files/FileCommands.h"

#include "editor/files/ComparisonWindow.h"
#include "editor/messages/Boxes.h"
#include "editor/messages/ErrorBox.h"
#include "editor/project/ChosenFile.h"
#include "editor/project/Project.h"
#include "editor/steps/FileWait.h"
#include "embedded/data/engine/Error.h"
#include "embedded/data/project/ProjectFolder.h"
#include "platform/Files.h"
#include "platform/Paths.h"

#include <QtCore/QDir>
#include <QtCore/QUrl>
#include <QtGui/QDesktopServices>

using namespace Qt::StringLiterals;

namespace editor {

namespace {

CString NameOf(const CString& path)
{
    return platform::BeforeLastStop(platform::FileNameOf(path));
}

/// Runs a dialog until the step goes well or the user gives up: what was entered is there again after a
/// refusal. False when the user gave up.
template <typename Step>
bool AskUntilDone(QDialog& dialog, Step step)
{
    while (dialog.exec() == QDialog::Accepted)
        if (RunGuarded(step)) return true;
    return false;
}

} // namespace

FileCommands::FileCommands(QWidget* window, Project& project)
    : m_window(window), m_project(project), m_steps(embedded::ProjectFolder(project.Folder()), &WaitInWindow)
{
}

FileEnd FileCommands::Run(FileCommand command, const CString& path)
{
    switch (command) {
    case FileCommand::MakeCurrent:
        return MakeCurrent(path);
    case FileCommand::New:
        return New();
    case FileCommand::Duplicate:
        return Duplicate(path);
    case FileCommand::Rename:
        return Rename(path);
    case FileCommand::Delete:
        return Delete(path);
    case FileCommand::Unwrap:
        return Unwrap(path);
    case FileCommand::Compare:
        return Compare(path);
    case FileCommand::Reveal:
        return Reveal(path);
    case FileCommand::Open:
    case FileCommand::History:
        break;
    }
    return {};
}

FileChoices FileCommands::Choices(const CString& but) const
{
    FileChoices files;
    for (const CString& path : m_project.RuleFiles())
        if (path != but && platform::Files().Exists(path)) files.append({NameOf(path), path});
    return files;
}

FileEnd FileCommands::MakeCurrent(const CString& path)
{
    m_steps.MakeCurrent(path);
    return {true, u"当前配置现在是“%1”"_s.arg(NameOf(path)), path};
}

FileEnd FileCommands::New()
{
    FileChoices sources = Choices();
    if (platform::Files().Exists(m_steps.Template())) sources.prepend({u"模板"_s, m_steps.Template()});
    if (sources.isEmpty()) throw embedded::Error(u"模板不在，也没有规则文件可以由它新建"_s);
    NameDialog dialog(m_window, {u"新建规则文件"_s,
                                 {},
                                 u"新建"_s,
                                 m_steps.FreeName(u"新配置"_s),
                                 [this](const CString& name) { return m_steps.NameFault(name); },
                                 sources});
    CString made;
    if (!AskUntilDone(dialog, [&] { made = m_steps.Make(dialog.Source(), dialog.Name()); })) return {};
    return {true, u"已新建规则文件“%1”"_s.arg(NameOf(made)), made};
}

FileEnd FileCommands::Duplicate(const CString& path)
{
    NameDialog dialog(m_window, {u"复制一份"_s, u"把“%1”另存为工程中的另一个规则文件。"_s.arg(NameOf(path)),
                                 u"复制"_s, m_steps.FreeName(NameOf(path)),
                                 [this](const CString& name) { return m_steps.NameFault(name); }});
    CString made;
    if (!AskUntilDone(dialog, [&] { made = m_steps.Duplicate(path, dialog.Name()); })) return {};
    return {true, u"已复制为“%1”"_s.arg(NameOf(made)), made};
}

FileEnd FileCommands::Rename(const CString& path)
{
    const bool isCurrent = m_steps.IsCurrent(path);
    NameDialog dialog(m_window,
                      {u"重命名"_s, isCurrent ? u"这是当前配置，重命名以后仍是当前配置。"_s : QString(),
                       u"重命名"_s, NameOf(path),
                       [&](const CString& name) { return m_steps.NameFault(name, path); }});
    CString renamed;
    if (!AskUntilDone(dialog, [&] { renamed = m_steps.Rename(path, dialog.Name()); })) return {};
    return {true, u"“%1”已重命名为“%2”"_s.arg(NameOf(path), NameOf(renamed)), renamed};
}

FileEnd FileCommands::Delete(const CString& path)
{
    const FileEnd done{true, u"已删除“%1”，内容留在历史副本中"_s.arg(NameOf(path)), {}};
    if (!m_steps.IsCurrent(path)) {
        if (!AskYesNo(u"删除规则文件\n%1\n现在的内容会留一份历史副本，可以还原。删除"_s.arg(
                platform::ToNative(path))))
            return {};
        m_steps.Delete(path);
        return done;
    }
    const FileChoices others = Choices(path);
    if (others.isEmpty())
        throw embedded::Error(u"“%1”是唯一的规则文件，也是当前配置，不能删除"_s.arg(NameOf(path)));
    NextDialog dialog(
        m_window,
        u"“%1”是当前配置。删除以后用哪个规则文件？现在的内容会留一份历史副本，可以还原。"_s.arg(NameOf(path)),
        others);
    if (!AskUntilDone(dialog, [&] { m_steps.Delete(path, dialog.Next()); })) return {};
    return done;
}

FileEnd FileCommands::Unwrap(const CString& path)
{
    if (!AskYesNo(u"解除封装\n%1\n文件头和封装去掉以后又可以编辑，封装的文件会留一份历史副本。解除"_s.arg(
            platform::ToNative(path))))
        return {};
    m_steps.Unwrap(path);
    return {true, u"已解除封装：“%1”"_s.arg(NameOf(path)), path};
}

FileEnd FileCommands::Compare(const CString& path)
{
    const FileChoices files = Choices();
    const CString current = m_project.CurrentRuleFile();
    const FileChoices others = Choices(path);
    const CString after = path == current && !others.isEmpty() ? others.first().second : current;
    ComparisonWindow window(m_window, files, path, after);
    window.exec();
    return {};
}

FileEnd FileCommands::Reveal(const CString& path) const
{
    QDesktopServices::openUrl(QUrl::fromLocalFile(platform::ToNative(platform::FolderOf(path))));
    return {};
}

FileEnd FileCommands::TakeIn(const QStringList& files)
{
    FileEnd end;
    for (const QString& file : files) {
        const CString source = PathTextOf(file);
        m_steps.RequireOutside(source);
        NameDialog dialog(m_window, {u"复制到工程"_s,
                                     u"把 %1 复制到工程的规则文件夹。原来的文件不变。"_s.arg(
                                         QDir::toNativeSeparators(file)),
                                     u"复制"_s, m_steps.FreeName(NameOf(source)),
                                     [this](const CString& name) { return m_steps.NameFault(name); }});
        if (!AskUntilDone(dialog, [&] { end.path = m_steps.TakeIn(source, dialog.Name()); })) continue;
        end.done = true;
        end.told = u"已复制到工程：“%1”"_s.arg(NameOf(end.path));
    }
    return end;
}

FileEnd FileCommands::Restore(const CString& formerName, const QByteArray& bytes)
{
    NameDialog dialog(m_window, {u"还原规则文件"_s, u"重新建立“%1”，按开始修改时的样子。"_s.arg(formerName),
                                 u"还原"_s, m_steps.FreeName(formerName),
                                 [this](const CString& name) { return m_steps.NameFault(name); }});
    CString made;
    if (!AskUntilDone(dialog, [&] { made = m_steps.Restore(bytes, dialog.Name()); })) return {};
    return {true, u"已重新建立规则文件“%1”，接上的修改还没有保存"_s.arg(NameOf(made)), made};
}

} // namespace editor
