#include "editor/window/Actions.h"

#include <QtGui/QAction>
#include <QtGui/QKeySequence>
#include <QtWidgets/QMainWindow>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMenuBar>

#include <initializer_list>

using namespace Qt::StringLiterals;

namespace editor {

namespace {

/// Adds a command with its shortcut and a sentence for status bar and tip.
QAction* Add(QMenu& menu, const QString& text, const QKeySequence& keys, const QString& tip)
{
    QAction* action = menu.addAction(text);
    action->setShortcut(keys);
    action->setIconText(text.left(text.indexOf(u'('))); // what a button shows
    action->setStatusTip(tip);
    action->setToolTip(keys.isEmpty() ? tip
                                      : u"%1（%2）"_s.arg(tip, keys.toString(QKeySequence::NativeText)));
    return action;
}

} // namespace

Actions::Actions(QMainWindow& window)
{
    MakeProjectMenu(window);
    edit = window.menuBar()->addMenu(u"编辑(&E)"_s);
    view = window.menuBar()->addMenu(u"视图(&V)"_s);
    MakeRuleMenu(window);
    MakeDataMenu(window);
    MakeHelpMenu(window);
    Enable({});
}

void Actions::MakeProjectMenu(QMainWindow& window)
{
    QMenu& menu = *window.menuBar()->addMenu(u"工程(&P)"_s);
    newProject = Add(menu, u"新建(&N)…"_s, QKeySequence::New, u"在一个文件夹中新建工程"_s);
    openProject = Add(menu, u"打开(&O)…"_s, QKeySequence::Open, u"打开一个文件夹中的工程"_s);
    sampleProject = Add(menu, u"示例工程(&S)"_s, {}, u"打开示例工程，第一次时建立它"_s);
    recentProjects = menu.addMenu(u"最近的工程(&R)"_s);
    menu.addSeparator();
    closeProject = Add(menu, u"关闭工程(&C)"_s, QKeySequence::Close, u"关闭当前工程，回到开始页"_s);
    quit = Add(menu, u"退出(&Q)"_s, Qt::CTRL | Qt::Key_Q, u"结束程序"_s);
}

void Actions::MakeRuleMenu(QMainWindow& window)
{
    QMenu& menu = *window.menuBar()->addMenu(u"规则(&R)"_s);
    configure = Add(menu, u"配置(&C)…"_s, Qt::Key_F2, u"编辑当前配置的规则"_s);
    wizard = Add(menu, u"向导(&W)…"_s, Qt::Key_F3, u"以向导的一步编辑一个规则文件"_s);
    menu.addSeparator();
    refresh = Add(menu, u"刷新(&R)"_s, Qt::Key_F5, u"检查选中的规则文件，并把它设为当前配置"_s);
    refreshOther = Add(menu, u"用其他文件刷新(&O)…"_s, {}, u"把规则文件夹以外的规则文件交给模块"_s);
    attributes = Add(menu, u"重建属性(&A)"_s, Qt::Key_F6, u"按构件类别的属性重建属性配置文件"_s);
    writeHead = Add(menu, u"写文件头(&H)…"_s, Qt::Key_F7, u"完成选中的规则文件，以便交付；其后不能再编辑"_s);
    menu.addSeparator();
    history = Add(menu, u"历史(&I)…"_s, Qt::Key_F8, u"查看选中的规则文件以前的样子，并还原"_s);
    examine = Add(menu, u"重新检查规则文件(&E)"_s, Qt::CTRL | Qt::Key_R, u"重新读规则文件夹"_s);
}

void Actions::MakeDataMenu(QMainWindow& window)
{
    QMenu& menu = *window.menuBar()->addMenu(u"数据(&D)"_s);
    importData =
        Add(menu, u"导入(&I)…"_s, Qt::CTRL | Qt::Key_I, u"从 CSV 文件或工作簿导入类别、属性、清单或定额"_s);
    exportData =
        Add(menu, u"导出(&X)…"_s, Qt::CTRL | Qt::Key_E, u"把类别、属性、清单或定额写成 CSV 文件或工作簿"_s);
    menu.addSeparator();
    office = Add(menu, u"办公室(&O)…"_s, Qt::Key_F9, u"取同事发布的配置，发布自己的；看各个版本，还原"_s);
}

void Actions::MakeHelpMenu(QMainWindow& window)
{
    QMenu& menu = *window.menuBar()->addMenu(u"帮助(&H)"_s);
    manual = Add(menu, u"手册(&M)"_s, {}, u"打开手册，翻到正在用的地方；任何窗口里按 F1 都可以"_s);
    tour = Add(menu, u"导览(&T)"_s, {}, u"用四步认识这个窗口"_s);
    menu.addSeparator();
    about = Add(menu, u"关于(&A)"_s, {}, u"程序的名称和版本"_s);
}

void Actions::Enable(const Possible& possible) const
{
    const auto enable = [](std::initializer_list<QAction*> actions, bool on) {
        for (QAction* action : actions)
            action->setEnabled(on);
    };
    enable({tour, closeProject, configure, wizard, refreshOther, attributes, examine, importData, exportData},
           possible.project);
    enable({office}, possible.office);
    enable({history}, possible.file);
    enable({refresh}, possible.existing);
    enable({writeHead}, possible.rules);
}

} // namespace editor
