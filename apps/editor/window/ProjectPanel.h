#pragma once

#include "editor/project/Project.h"

#include <QtWidgets/QWidget>

#include <functional>

class QComboBox;
class QGroupBox;
class QLabel;

namespace editor {

/// What the window shows of the open project: its settings, and its rule files below them.
class ProjectPanel : public QWidget
{
public:
    /// What the user asks for.
    struct Wishes
    {
        std::function<void(SQdDeInfo::EQdDeMode)> setMode;
        std::function<void(const CString&)> setSpec;
        std::function<void(embedded::LibraryRole, const CString& code)> setLibrary;
    };

    /// Takes `files`, the list of rule files.
    ProjectPanel(QWidget* files, Wishes wishes);

    /// Shows the project's settings. Asks for nothing back.
    void ShowProject(Project& project);

private:
    QGroupBox* MakeSettings();
    void ConnectSettings();

    Wishes m_wishes;
    QLabel* m_folder;
    QComboBox* m_mode;
    QComboBox* m_spec;
    QComboBox* m_billLibrary;
    QComboBox* m_quotaLibrary;
    QLabel* m_guideHint; ///< seen only while the two libraries do not match
    embedded::LibraryRole m_quotaRole = embedded::LibraryRole::QuotaOfBills;
};

} // namespace editor
