#include "editor/window/WelcomePage.h"

#include "editor/window/Actions.h"
#include "widgets/TipDelegate.h"

#include <QtCore/QDir>
#include <QtGui/QAction>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QVBoxLayout>

#include <utility>

using namespace Qt::StringLiterals;

namespace editor {

namespace {

constexpr int Margin = 32;

QLabel* Heading(const QString& text, double scale)
{
    auto* label = new QLabel(text);
    QFont font = label->font();
    font.setPointSizeF(font.pointSizeF() * scale);
    font.setBold(true);
    label->setFont(font);
    return label;
}

QPushButton* ButtonFor(QAction& action, const QString& text)
{
    auto* button = new QPushButton(text);
    button->setToolTip(action.toolTip());
    QObject::connect(button, &QPushButton::clicked, &action, &QAction::trigger);
    return button;
}

} // namespace

WelcomePage::WelcomePage(const Actions& actions, std::function<void(const QString&)> open)
    : m_open(std::move(open)), m_recent(new QListWidget)
{
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(Margin, Margin, Margin, Margin);
    column->addWidget(Heading(u"KtQdDeConfig 规则编辑器"_s, 1.6));
    auto* words = new QLabel(u"规则按构件的属性自动套清单和定额。规则写在工程的规则文件里；"
                             u"先新建或打开一个工程，或者从示例工程开始。"_s);
    words->setWordWrap(true);
    column->addWidget(words);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(ButtonFor(*actions.newProject, u"新建工程(&1)…"_s));
    buttons->addWidget(ButtonFor(*actions.openProject, u"打开工程(&2)…"_s));
    buttons->addWidget(ButtonFor(*actions.sampleProject, u"示例工程(&3)"_s));
    buttons->addStretch();
    column->addLayout(buttons);
    column->addWidget(Heading(u"最近的工程"_s, 1.0));
    m_recent->setItemDelegate(new widgets::TipDelegate(m_recent));
    m_recent->setAccessibleName(u"最近的工程"_s);
    column->addWidget(m_recent, 1);
    connect(m_recent, &QListWidget::itemActivated, this,
            [this](const QListWidgetItem* item) { m_open(item->data(Qt::UserRole).toString()); });
}

void WelcomePage::ShowRecent(const QList<RecentProjects::Entry>& entries)
{
    m_recent->clear();
    for (const RecentProjects::Entry& entry : entries) {
        auto* item = new QListWidgetItem(RecentText(entry), m_recent);
        item->setData(Qt::UserRole, entry.folder);
        if (!entry.exists) item->setFlags(item->flags() & ~Qt::ItemIsEnabled);
    }
    if (entries.isEmpty())
        (new QListWidgetItem(u"打开过的工程会列在这里"_s, m_recent))->setFlags(Qt::NoItemFlags);
}

QString RecentText(const RecentProjects::Entry& entry)
{
    const QString folder = QDir::toNativeSeparators(entry.folder);
    return entry.exists ? folder : folder + u"（已不在）"_s;
}

} // namespace editor
