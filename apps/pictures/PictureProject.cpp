#include "PictureProject.h"

#include "embedded/data/host/CreateProject.h"

using namespace Qt::StringLiterals;

namespace {

class NoPicker : public host::IBillPicker
{
public:
    bool Create(CWnd*) override { return true; }
    bool IsVisible() const override { return false; }
    void Show(bool) override {}
    void EnableContent(bool) override {}
    void MoveWndToRight(CWnd*) override {}
    void InitData() override {}
    void SetShowGetQdNumDlg(bool) override {}
    void SetTreePosition(const CString&) override {}
};

QString MakeProject(const QTemporaryDir& folder, SQdDeInfo::EQdDeMode mode)
{
    const QString project = folder.filePath(u"project"_s);
    embedded::CreateProject(project, {mode, u"给排水"_s});
    return project;
}

} // namespace

std::unique_ptr<host::IBillPicker> PictureProject::NoWindows::MakeBillPicker()
{
    return std::make_unique<NoPicker>();
}

std::unique_ptr<host::IPickerWindow> PictureProject::NoWindows::MakeQuotaPicker()
{
    return std::make_unique<NoPicker>();
}

PictureProject::PictureProject(SQdDeInfo::EQdDeMode mode)
    : m_host(MakeProject(m_folder, mode)), m_installed(host::Install(Roles()))
{
}

host::Roles PictureProject::Roles()
{
    host::Roles roles = m_host.Roles();
    roles.windows = &m_windows;
    return roles;
}
