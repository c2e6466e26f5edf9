#include "editor/help/HelpTopics.h"

#include "widgets/Guard.h"

#include <QtCore/QVariant>
#include <QtGui/QKeyEvent>
#include <QtWidgets/QApplication>
#include <QtWidgets/QWidget>

#include <utility>

using namespace Qt::StringLiterals;

namespace editor {

namespace {

constexpr const char* TopicProperty = "ktqddeHelpTopic";

bool IsHelpKey(const QEvent& event)
{
    if (event.type() != QEvent::KeyPress) return false;
    const auto& key = static_cast<const QKeyEvent&>(event);
    return key.key() == Qt::Key_F1 && key.modifiers() == Qt::NoModifier;
}

} // namespace

void SetHelpTopic(QWidget& widget, const QString& topic)
{
    widget.setProperty(TopicProperty, topic);
}

HelpTopics::HelpTopics(QList<Title> windows, QString otherwise,
                       std::function<void(const QString& topic)> show)
    : m_windows(std::move(windows)), m_otherwise(std::move(otherwise)), m_show(std::move(show))
{
    qApp->installEventFilter(this);
}

HelpTopics::~HelpTopics() = default;

QString HelpTopics::TopicOfTitle(const QString& title) const
{
    for (const Title& window : m_windows)
        if (title.startsWith(window.beginning)) return window.topic;
    return {};
}

QString HelpTopics::TopicOf(const QWidget* widget) const
{
    for (; widget != nullptr; widget = widget->parentWidget()) {
        QString topic = widget->property(TopicProperty).toString();
        if (topic.isEmpty() && widget->isWindow()) topic = TopicOfTitle(widget->windowTitle());
        if (!topic.isEmpty()) return topic;
    }
    return m_otherwise;
}

void HelpTopics::ShowForFocus() const
{
    const QWidget* widget = QApplication::focusWidget();
    if (widget == nullptr) widget = QApplication::activeWindow();
    widgets::RunGuarded([&] { m_show(TopicOf(widget)); }, u"手册"_s);
}

// A key goes to the window first and from there to the widget; only the latter knows what it is about.
bool HelpTopics::eventFilter(QObject* watched, QEvent* event)
{
    if (!watched->isWidgetType() || !IsHelpKey(*event)) return false;
    widgets::RunGuarded([&] { m_show(TopicOf(static_cast<const QWidget*>(watched))); }, u"手册"_s);
    return true;
}

QList<HelpTopics::Title> TopicsOfWindows()
{
    return {
        {u"自动套配置-["_s, u"config.md"_s},
        {u"自动套-云模板"_s, u"dialogs.md#向导"_s},
        {u"新建工程"_s, u"editor.md#工程菜单"_s},
        {u"新建规则文件"_s, u"files.md#新建复制重命名"_s},
        {u"复制一份"_s, u"files.md#新建复制重命名"_s},
        {u"复制到工程"_s, u"files.md#新建复制重命名"_s},
        {u"重命名"_s, u"files.md#新建复制重命名"_s},
        {u"删除当前配置"_s, u"files.md#删除"_s},
        {u"比较规则文件"_s, u"files.md#比较两个规则文件"_s},
        {u"新建"_s, u"dialogs.md"_s},
        {u"调用"_s, u"dialogs.md"_s},
        {u"另存"_s, u"dialogs.md#另存"_s},
        {u"添加清单编号"_s, u"dialogs.md#清单编号"_s},
        {u"清单编号"_s, u"dialogs.md#清单编号"_s},
        {u"套清单"_s, u"windows.md#套清单"_s},
        {u"套定额"_s, u"windows.md#套定额"_s},
        {u"计算结果编辑"_s, u"windows.md#计算结果编辑"_s},
        {u"云盘"_s, u"windows.md#云盘"_s},
        {u"办公室"_s, u"office.md"_s},
        {u"名称已存在"_s, u"windows.md#云盘"_s},
        {u"启动向导"_s, u"dialogs.md#向导"_s},
        {u"历史"_s, u"data.md#历史"_s},
        {u"导入"_s, u"data.md#导入和导出"_s},
        {u"导出"_s, u"data.md#导入和导出"_s},
        {u"改用别的库"_s, u"editor.md#库不在了的工程"_s},
    };
}

} // namespace editor
