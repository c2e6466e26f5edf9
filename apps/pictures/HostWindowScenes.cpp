#include "HostWindowScenes.h"

#include "embedded/data/EmbeddedHost.h"
#include "embedded/windows/BillPickerWindow.h"
#include "embedded/windows/CalculatorDialog.h"
#include "embedded/windows/CloudDiskDialog.h"
#include "embedded/windows/NameConflictDialog.h"
#include "embedded/windows/QuotaPickerWindow.h"
#include "platform/Files.h"
#include "platform/Paths.h"

#include <QtCore/QTemporaryDir>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

/// A project with its host for as long as a scene needs it.
struct PicturedProject
{
    PicturedProject()
    {
        embedded::CreateProject(folder.filePath(u"project"_s), {SQdDeInfo::BillMode, u"给排水"_s});
        host = std::make_unique<embedded::EmbeddedHost>(folder.filePath(u"project"_s));
    }

    CString Path(const CString& name) const { return platform::FromNative(folder.path()) + u'\\' + name; }

    QTemporaryDir folder;
    std::unique_ptr<embedded::EmbeddedHost> host;
};

/// The pictured window, with all that it stands on. A window of its own cannot be drawn inside of another, so
/// it becomes the content of this one.
class Frame : public QWidget
{
public:
    template <typename Make>
    explicit Frame(const Make& make)
    {
        // The pictured windows read real files, not those of the other scenes.
        const platform::ScopedFileSystem real(platform::RealFileSystem());
        QDialog* const window = make(project, *this);
        const QSize size = window->size().expandedTo(window->sizeHint());
        window->setWindowFlags(Qt::Widget);
        auto* layout = new QVBoxLayout(this);
        layout->setContentsMargins({});
        layout->addWidget(window);
        resize(size);
    }
    // The window goes before the project on which it stands.
    ~Frame() override { qDeleteAll(findChildren<QDialog*>(QString(), Qt::FindDirectChildrenOnly)); }

    PicturedProject project;
};

QDialog* MakeBillPicker(PicturedProject& project, QWidget& parent, const CString& position,
                        const CString& search)
{
    auto* window = new embedded::BillPickerWindow(parent, project.host->Contents(),
                                                  std::make_shared<embedded::PickerMemory>());
    window->Load();
    window->SelectChapter(position);
    for (QLineEdit* field : window->findChildren<QLineEdit*>()) {
        if (field->accessibleName() == u"搜索项目") field->setText(search);
    }
    return window;
}

QDialog* MakeQuotaPicker(PicturedProject& project, QWidget& parent)
{
    auto* window = new embedded::QuotaPickerWindow(parent, project.host->Contents(),
                                                   std::make_shared<embedded::PickerMemory>());
    window->Load();
    window->SelectChapter(u"示10-1"_s);
    return window;
}

QDialog* MakeCalculator(PicturedProject& project, QWidget& parent, const CString& formula)
{
    return new embedded::CalculatorDialog(*project.host->Roles().calculation, u"给排水\\管道\\给水管"_s,
                                          formula, &parent);
}

void WriteTemplates(const PicturedProject& project)
{
    platform::FileSystem& files = platform::Files();
    files.CreateFolder(project.Path(u"云盘"_s));
    const CString rules = project.host->AppFolder() + u"\\自动套配置"_s;
    files.CreateFolder(rules);
    const QByteArray content = "<自动套清单定额配置信息 Version=\"1.2.0\"/>";
    for (const CString& name :
         {u"住宅给排水标准模板"_s, u"公建暖通"_s, u"地下车库消防喷淋与消火栓系统（含支架刷油）"_s})
        files.WriteInPlace(project.Path(u"云盘\\"_s + name + u".xml"_s), content);
    files.WriteInPlace(project.Path(u"云盘\\说明.xml"_s), "<note/>");
    files.WriteInPlace(rules + u"\\DefaultConfig.xml"_s, content);
}

/// A dialog that keeps what it stands on.
class PicturedCloudDisk : public embedded::CloudDiskDialog
{
public:
    PicturedCloudDisk(std::unique_ptr<embedded::CloudFolder> folder, Places places, QWidget* parent)
        : CloudDiskDialog(*folder, std::move(places), true, parent), m_kept(std::move(folder))
    {
    }

private:
    std::unique_ptr<embedded::CloudFolder> m_kept;
};

QDialog* MakeCloudDisk(PicturedProject& project, QWidget& parent, const CString& folder)
{
    WriteTemplates(project);
    auto cloud = std::make_unique<embedded::CloudFolder>(project.host->ProjectPath(), u"自动套模板"_s,
                                                         platform::ToNative(project.Path(folder)));
    return new PicturedCloudDisk(
        std::move(cloud),
        {u"自动套模板"_s, project.host->AppFolder() + u"\\自动套配置"_s, project.host->ProjectPath()},
        &parent);
}

QDialog* MakeConflict(PicturedProject& project, QWidget& parent)
{
    WriteTemplates(project);
    return new embedded::NameConflictDialog(project.Path(u"云盘"_s), u"公建暖通"_s, &parent);
}

} // namespace

std::vector<Scene> HostWindowScenes()
{
    const auto scene = [](const QString& name, const auto& make) {
        return Scene{name, [make] { return std::make_unique<Frame>(make); }};
    };
    using Project = PicturedProject;
    return {
        scene(u"bill-picker"_s,
              [](Project& p, QWidget& w) { return MakeBillPicker(p, w, u"0310.031001"_s, {}); }),
        scene(u"bill-picker-search"_s,
              [](Project& p, QWidget& w) { return MakeBillPicker(p, w, {}, u"阀门"_s); }),
        scene(u"quota-picker"_s, [](Project& p, QWidget& w) { return MakeQuotaPicker(p, w); }),
        scene(u"calculator"_s,
              [](Project& p, QWidget& w) { return MakeCalculator(p, w, u"管道长度×1.02"_s); }),
        scene(u"calculator-fault"_s,
              [](Project& p, QWidget& w) { return MakeCalculator(p, w, u"管道长度×(1+宽度)"_s); }),
        scene(u"cloud-disk"_s, [](Project& p, QWidget& w) { return MakeCloudDisk(p, w, u"云盘"_s); }),
        scene(u"cloud-disk-missing"_s, [](Project& p, QWidget& w) { return MakeCloudDisk(p, w, u"没有"_s); }),
        scene(u"name-conflict"_s, [](Project& p, QWidget& w) { return MakeConflict(p, w); }),
    };
}
