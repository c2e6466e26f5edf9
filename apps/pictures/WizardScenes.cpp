#include "WizardScenes.h"

#include "PictureProject.h"
#include "dialogs/secondary/wizard/COnlineAutoConfigDlg.h"

using namespace Qt::StringLiterals;

namespace {

/// What the wizard is opened with.
struct Arguments
{
    SQdDeInfo::EQdDeMode mode = SQdDeInfo::BillMode;
    CString billFile;
    CString quotaFile;
    CString note;
    bool allowBack = true;
};

/// The dialog outlives its host: a picture asks the host nothing any more.
std::unique_ptr<QWidget> MakeWizard(const Arguments& arguments)
{
    const PictureProject project(arguments.mode);
    auto wizard = std::make_unique<COnlineAutoConfigDlg>(CString(), arguments.billFile, arguments.quotaFile,
                                                         arguments.note, arguments.allowBack, nullptr);
    wizard->Create();
    return wizard;
}

} // namespace

std::vector<Scene> WizardScenes()
{
    const auto scene = [](const QString& name, const Arguments& arguments) {
        return Scene{name, [arguments] { return MakeWizard(arguments); }};
    };
    const CString longName = u"示例地区建设工程工程量清单计价办法实施细则（安装工程分册）"_s;
    return {
        scene(u"wizard-note-back"_s,
              {SQdDeInfo::BillMode, u"示例清单库.mdb"_s, u"示例定额库.mdb"_s, u"说明文字"_s, true}),
        scene(u"wizard-no-note-no-back"_s,
              {SQdDeInfo::BillMode, u"示例清单库.mdb"_s, u"示例定额库.mdb"_s, {}, false}),
        scene(u"wizard-quota"_s, {SQdDeInfo::QuotaMode, {}, u"示例定额库.mdb"_s, u"说明文字"_s, true}),
        scene(u"wizard-long-names"_s,
              {SQdDeInfo::QuotaMode, longName, longName + u".mdb"_s, u"说明文字"_s, false}),
    };
}
