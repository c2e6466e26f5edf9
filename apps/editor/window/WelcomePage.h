#pragma once

#include "editor/project/RecentProjects.h"

#include <QtWidgets/QWidget>

#include <functional>

class QListWidget;

namespace editor {

struct Actions;

/// What the window shows while no project is open: the ways to one.
class WelcomePage : public QWidget
{
public:
    /// `open` is called with the folder of a recent project that the user chooses.
    WelcomePage(const Actions& actions, std::function<void(const QString&)> open);

    /// Lists the recent projects. Those that have vanished cannot be chosen.
    void ShowRecent(const QList<RecentProjects::Entry>& entries);

private:
    std::function<void(const QString&)> m_open;
    QListWidget* m_recent;
};

/// How a recent project is listed: its folder, with a mark when it has vanished.
QString RecentText(const RecentProjects::Entry& entry);

} // namespace editor
