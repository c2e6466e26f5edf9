// A host's whole acquaintance with the module, against what is installed alone: without a host in force, the
// node classes, every entry point, the dialogs in a program of the toolkit and in one that is none.
#include "DialogUser.h"
#include "TestedHost.h"

#include <dialogs/process/MessageBoxes.h>
#include <platform/Paths.h>
#include <presenter/CAutoQdDeConfigFacade.h>
#include <presenter/RefreshAutoConfig.h>
#include <tree/ConfigNode.h>

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtWidgets/QApplication>
#include <QtWidgets/QWidget>

#include <cstdio>
#include <cstdlib>

namespace {

const CPath Pipes{1, 11, 111, 1, 0, 0, 0, 0};

void Require(bool holds, const char* what)
{
    if (holds) return;
    std::fprintf(stderr, "failed: %s\n", what);
    std::exit(1);
}

QByteArray BytesOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void CallWithoutAHost()
{
    try {
        CString message;
        RefreshAutoConfig(message, QStringLiteral("x.xml"));
        Require(false, "a module without a host refuses to work");
    } catch (const host::NoHostError&) {
    }
}

void UseTheNodes()
{
    ConfigNode rule;
    const CString one = QStringLiteral("1");
    rule.AddCondition(ConditionNode(QStringLiteral("A"), true, QStringLiteral("="), {}, {}, one, {}, {}));
    Require(rule.GetConditionString() == QStringLiteral("A=1;"), "a rule describes itself");
}

void EditWithoutDialogs(const QString& folder, const CString& ruleFile)
{
    CAutoQdDeConfigFacade::AttrConfig();
    Require(BytesOf(folder + QStringLiteral("/AttrConfig.xml")).contains("Diameter"),
            "AttrConfig writes the attributes");
    const auto presenter = CAutoQdDeConfigFacade::GetQdDeConfigPresenter(ruleFile);
    int id = -1;
    Require(presenter->AddConfig(Pipes, id) && presenter->Save(), "a presenter adds a rule and saves it");
    CString message;
    Require(RefreshAutoConfig(message, ruleFile) && message.isEmpty(), "RefreshAutoConfig takes the file");
}

/// The press of a button by its caption.
auto Press(const QString& caption)
{
    return [caption](CWnd& dialog) { Require(user::Press(dialog, caption), "the dialog has the button"); };
}

/// Adds a rule with a bill item of the host's picker, and closes the dialog.
void AddARule(CWnd& dialog)
{
    Require(user::SelectCategory(dialog, QStringLiteral("排水管")), "the tree shows the host's categories");
    Press(QStringLiteral("增加"))(dialog);
    Press(QStringLiteral("套清单>>"))(dialog);
    Require(user::PickTheFirstItem(dialog), "the host's picker is open");
    dialog.close();
}

void EditInDialogsOfAForeignProgram(TestedHost& host)
{
    bool shown = false;
    host.AtTheDialog([&shown](CWnd& dialog) {
        shown = true;
        dialog.close();
    });
    CAutoQdDeConfigFacade::StartQdDeConfig(nullptr, CRect());
    Require(shown && QCoreApplication::instance() == nullptr,
            "StartQdDeConfig brings its own application object");
}

void EditInDialogsOfAToolkitProgram(TestedHost& host, const CString& ruleFile)
{
    int argumentCount = 1;
    char name[] = "consumer";
    char* arguments[] = {name, nullptr};
    const QApplication application(argumentCount, arguments);
    const dialogs::MessageBoxes boxes;
    QWidget window;
    const auto step = [&](const QString& button) {
        host.AtTheDialog(Press(button));
        return CAutoQdDeConfigFacade::StartOnlineConfig(ruleFile, QStringLiteral("清单.mdb"),
                                                        QStringLiteral("定额.mdb"), {}, true, &window);
    };
    Require(step(QStringLiteral("下一步")) == 1, "StartOnlineConfig gives 1 for the next step");
    Require(step(QStringLiteral("上一步")) == -1, "StartOnlineConfig gives -1 for the former step");
    Require(step(QStringLiteral("取消")) == 0, "StartOnlineConfig gives 0 for a cancelled step");
    host.AtTheDialog(AddARule);
    CAutoQdDeConfigFacade::StartQdDeConfig(&window, CRect(1, 2, 3, 4));
}

} // namespace

int main()
{
    CallWithoutAHost();
    UseTheNodes();
    const QTemporaryDir folder;
    const CString path = platform::FromNative(folder.path());
    TestedHost host(path);
    const host::Installation installed = host::Install(host.Roles());
    const CString ruleFile = path + QStringLiteral("\\规则.xml");
    EditWithoutDialogs(folder.path(), ruleFile);
    EditInDialogsOfAForeignProgram(host);
    EditInDialogsOfAToolkitProgram(host, ruleFile);
    // RefreshAutoConfig has made a configuration of that name the current one.
    const QByteArray rules = BytesOf(folder.filePath(QStringLiteral("自动套配置/规则.xml")));
    Require(rules.contains("strQdId=\"031001001001\""), "the picked bill item is in the rule file");
    const QString written = folder.filePath(QStringLiteral("规则.xml"));
    Require(BytesOf(written).contains("<"), "the rule file is XML");
    CAutoQdDeConfigFacade::WriteHead(ruleFile);
    Require(!BytesOf(written).startsWith('<') && !BytesOf(written).isEmpty(), "WriteHead wraps the file");
    return 0;
}
