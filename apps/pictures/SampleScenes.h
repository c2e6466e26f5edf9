#pragma once

#include "Scene.h"
#include "editor/project/Project.h"

#include <QtCore/QTemporaryDir>

/// The sample project as the host until this object ends: what a user has in front of him who opens it for
/// the first time.
class SampleOnShow
{
public:
    SampleOnShow();

    QString Folder() const { return m_folder.filePath(QStringLiteral("示例工程")); }
    QString SettingsFile() const { return m_folder.filePath(QStringLiteral("editor.ini")); }
    editor::Project& Project() { return *m_project; }

private:
    QTemporaryDir m_folder;
    std::unique_ptr<editor::Project> m_project;
};

/// The editor's dialogs over a project and the dialogs of the module over the sample project, which must
/// outlive the scenes and their widgets. The last scene changes its rules.
std::vector<Scene> SampleScenes(SampleOnShow& sample);
