#include "editor/docks/details/DetailPanel.h"
#include "editor/docks/findings/FindingsPanel.h"
#include "editor/docks/takeoff/BillPanel.h"
#include "editor/docks/takeoff/HitsPanel.h"
#include "editor/docks/trial/TrialPanel.h"
#include "editor/help/HelpTopics.h"
#include "editor/help/ManualWindow.h"
#include "editor/help/Tour.h"
#include "editor/window/MainWindow.h"
#include "editor/window/ProjectPanel.h"
#include "editor/window/WelcomePage.h"
#include "editor/workbench/Workbench.h"

#include <QtCore/QSettings>
#include <QtGui/QAction>
#include <QtWidgets/QDockWidget>

using namespace Qt::StringLiterals;

// How a user gets to the manual, and through the tour.

namespace editor {

namespace {

constexpr QLatin1StringView TourKey("help/tourOffered");

} // namespace

void MainWindow::MakeHelp()
{
    m_manual = std::make_unique<ManualWindow>();
    m_help = std::make_unique<HelpTopics>(TopicsOfWindows(), u"workbench.md"_s,
                                          [this](const QString& topic) { m_manual->Show(topic); });
    SetHelpTopic(*m_welcome, u"editor.md"_s);
    SetHelpTopic(*m_workbench, u"workbench.md"_s);
    SetHelpTopic(*m_panel, u"files.md"_s);
    SetHelpTopic(*m_details, u"workbench-details.md"_s);
    SetHelpTopic(*m_trial, u"workbench-trial.md#试套"_s);
    SetHelpTopic(*m_findingsPanel, u"workbench-trial.md#问题"_s);
    SetHelpTopic(*m_hitsPanel, u"workbench-trial.md#构件"_s);
    SetHelpTopic(*m_bill, u"workbench-trial.md#清单"_s);
    connect(m_actions.manual, &QAction::triggered, this, [this] { m_help->ShowForFocus(); });
    connect(m_actions.tour, &QAction::triggered, this, [this] { StartTour(false); });
}

void MainWindow::StartTour(bool isOffer)
{
    QSettings settings(m_recent.File(), QSettings::IniFormat);
    if (isOffer && settings.value(TourKey).toBool()) return;
    settings.setValue(TourKey, true);
    const auto dock = [this](const QString& name) {
        return [this, name]() -> QWidget* {
            QDockWidget* const found = m_workbench->FindDock(name);
            found->show();
            found->raise();
            return found->widget();
        };
    };
    delete m_tour;
    m_tour = new Tour(
        *this, {{dock(u"categories"_s), u"类别"_s,
                 u"规则属于小类。选一个小类，例如 管道 下的 给水管；上面换专业，输入几个字可以筛选。"_s},
                {[this] { return m_workbench->RuleList(); }, u"规则"_s,
                 u"从上往下对照，第一条成立的起作用，最后一条是默认规则。Insert 增加，Ctrl+↑、Ctrl+↓ 换位置，"
                 "Ctrl+Z 撤销；Ctrl+F 查找，例如“公称直径 65”。"_s},
                {dock(u"details"_s), u"条件、清单和定额"_s,
                 u"在这里改选中的规则：给它条件，再套清单和定额。改动先是草稿，按 Ctrl+S 才写进文件。"_s},
                {dock(u"trial"_s), u"试套"_s,
                 u"填一个构件的属性，起作用的规则会亮起来，其余的说明为什么不成立。F1 随时打开手册。"_s}});
    if (isOffer)
        m_tour->Offer(u"第一次使用？"_s, u"用四步认识这个窗口。以后可以从“帮助”菜单再看。"_s);
    else
        m_tour->Start();
}

} // namespace editor
