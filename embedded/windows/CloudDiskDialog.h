#pragma once

#include "embedded/windows/CloudFolder.h"
#include "embedded/windows/TemplateFile.h"
#include "embedded/windows/TemplateTransfer.h"

#include <QtWidgets/QDialog>

#include <vector>

class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QTreeWidget;
class QVBoxLayout;

namespace embedded {

/// Copies rule files between the cloud disk and the application's rule folder. An imported file becomes the
/// project's current configuration unless the user says otherwise: whoever opened the dialog reads the
/// current configuration again afterwards.
class CloudDiskDialog : public QDialog
{
public:
    /// Where the dialog works; all path texts.
    struct Places
    {
        CString title;
        CString ruleFolder;  ///< of the application; made when something is imported
        CString projectFile; ///< beside it stands the profile that names the current configuration
    };

    /// `folder` outlives this. Without `mayUpload` files can only be imported.
    CloudDiskDialog(CloudFolder& folder, Places places, bool mayUpload, QWidget* parent);
    ~CloudDiskDialog() override;

private:
    void MakeFolderLine(QVBoxLayout& layout);
    void MakeLists(QVBoxLayout& layout, bool mayUpload);
    /// A list under its label, with `note` at the label's right.
    QWidget* MakeList(const CString& label, const CString& name, QTreeWidget*& list, QWidget* note);
    void MakeBottom(QVBoxLayout& layout);
    void Refresh();
    void ShowButtons();
    void ChooseFolder();
    void Import();
    void Upload();
    CString CurrentName() const;
    void UseConfiguration(const CString& name);
    TransferOutcome Transfer(const TemplateFile& file, const CString& folder);
    void Report(const CString& action, const TransferOutcome& outcome);

    CloudFolder& m_folder;
    Places m_places;
    std::vector<TemplateFile> m_templates;
    std::vector<TemplateFile> m_own;
    QLineEdit* m_path = nullptr;
    QLabel* m_fault = nullptr;
    QTreeWidget* m_templateList = nullptr;
    QTreeWidget* m_ownList = nullptr;
    QLabel* m_current = nullptr;
    QPushButton* m_import = nullptr;
    QPushButton* m_upload = nullptr;
    QCheckBox* m_use = nullptr;
    QLabel* m_status = nullptr;
};

} // namespace embedded
