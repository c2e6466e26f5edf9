#include "editor/workbench/WorkbenchActions.h"

#include <QtGui/QAction>
#include <QtGui/QKeySequence>
#include <QtWidgets/QWidget>

using namespace Qt::StringLiterals;

namespace editor {

namespace {

/// Keys that mean something else in other places count in the list of rules alone.
enum class Reach { Window, Rules };

QAction* Make(QWidget& owner, const QString& text, const QKeySequence& keys, const QString& tip, Reach reach)
{
    auto* action = new QAction(text, &owner);
    action->setIconText(text.left(text.indexOf(u'(')));
    action->setShortcut(keys);
    action->setShortcutContext(reach == Reach::Window ? Qt::WindowShortcut : Qt::WidgetWithChildrenShortcut);
    action->setStatusTip(tip);
    action->setToolTip(keys.isEmpty() ? tip
                                      : u"%1（%2）"_s.arg(tip, keys.toString(QKeySequence::NativeText)));
    return action;
}

} // namespace

WorkbenchActions::WorkbenchActions(QWidget& owner)
    : save(Make(owner, u"保存(&S)"_s, QKeySequence::Save, u"把修改写进规则文件，先留一份历史副本"_s,
                Reach::Window)),
      discard(Make(owner, u"放弃修改(&G)"_s, {}, u"回到规则文件里的样子；可以撤销"_s, Reach::Window)),
      add(Make(owner, u"增加规则(&A)"_s, Qt::Key_Insert, u"在选中的规则之后增加一条"_s, Reach::Rules)),
      remove(Make(owner, u"删除规则(&D)"_s, QKeySequence::Delete, u"删除选中的规则"_s, Reach::Rules)),
      up(Make(owner, u"上移(&U)"_s, Qt::CTRL | Qt::Key_Up, u"选中的规则上移一位"_s, Reach::Rules)),
      down(Make(owner, u"下移(&W)"_s, Qt::CTRL | Qt::Key_Down, u"选中的规则下移一位"_s, Reach::Rules)),
      copy(Make(owner, u"复制(&C)"_s, QKeySequence::Copy,
                u"复制选中的规则，可以粘贴到别的类别，也可以粘贴到工作簿"_s, Reach::Rules)),
      paste(Make(owner, u"粘贴(&V)"_s, QKeySequence::Paste,
                 u"把复制的规则，或者工作簿里的行，加在选中的规则之后"_s, Reach::Rules)),
      copyTo(Make(owner, u"复制到其他类别(&T)…"_s, Qt::CTRL | Qt::SHIFT | Qt::Key_C,
                  u"把选中的规则复制到几个类别"_s, Reach::Window)),
      series(Make(owner, u"系列(&R)…"_s, Qt::CTRL | Qt::Key_L,
                  u"由一条规则和一个属性的一组取值得到一组规则"_s, Reach::Window)),
      find(Make(owner, u"查找规则(&F)"_s, QKeySequence::Find, u"按条件、属性和取值、清单或定额查找规则"_s,
                Reach::Window)),
      edit(Make(owner, u"编辑这条规则(&E)"_s, Qt::Key_F4, u"到这条规则的条件、清单和定额"_s, Reach::Window))
{
    Enable({});
}

void WorkbenchActions::Enable(const WorkPossible& possible) const
{
    for (QAction* action : {save, discard})
        action->setEnabled(possible.changed);
    add->setEnabled(possible.category);
    find->setEnabled(possible.file);
    for (QAction* action : {remove, up, down})
        action->setEnabled(possible.several);
    for (QAction* action : {copy, copyTo, series, edit})
        action->setEnabled(possible.rules);
    paste->setEnabled(possible.category && possible.paste);
}

} // namespace editor
