#pragma once

#include "embedded/data/host/EmbeddedHost.h"
#include "host/Roles.h"

#include <QtCore/QPointer>
#include <QtWidgets/QWidget>

#include <functional>
#include <memory>

namespace embedded {

struct PickerMemory;

/// The windows of the default host: pickers, calculator, cloud disk, main frame. How a person arranges the
/// pickers is remembered for as long as this lives.
class EmbeddedWindows : public host::IWindows
{
public:
    /// `host` outlives this and the pickers made by it.
    explicit EmbeddedWindows(EmbeddedHost& host);
    ~EmbeddedWindows() override;
    EmbeddedWindows(const EmbeddedWindows&) = delete;
    EmbeddedWindows& operator=(const EmbeddedWindows&) = delete;

    std::unique_ptr<host::IBillPicker> MakeBillPicker() override;
    std::unique_ptr<host::IPickerWindow> MakeQuotaPicker() override;
    int ShowCalculatorDlg(const CString& categoryText, const CString& text, CString& result,
                          CWnd* parent) override;
    /// `name` names the project's default folder and the window; files can be uploaded when `flag` is true.
    void ShowNetDisk(const CString& name, bool flag) override;
    CWnd* MainFrame() override;

    /// The window on which dialogs are centred; not owned, may be null, forgotten when it is destroyed.
    void SetMainFrame(QWidget* frame);
    /// Folder (native path) of the cloud disk's templates; empty means the project's default one: the folder
    /// that a person has chosen for the project, or else one inside of it (see `CloudFolder`). Given up when
    /// a person chooses another.
    void SetCloudFolder(const QString& nativeFolder);
    /// What runs in place of the cloud disk over a folder, to its end; empty for none. For a program that has
    /// another place where configurations are shared.
    void SetNetDisk(std::function<void()> run);

private:
    EmbeddedHost& m_host;
    QPointer<QWidget> m_frame;
    QString m_cloudFolder;
    std::function<void()> m_netDisk;
    std::shared_ptr<PickerMemory> m_billMemory;
    std::shared_ptr<PickerMemory> m_quotaMemory;
};

} // namespace embedded
