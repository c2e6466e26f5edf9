#include "HostWindowScenes.h"

#include "embedded/data/host/CreateProject.h"
#include "embedded/data/host/EmbeddedHost.h"
#include "embedded/windows/BillPickerWindow.h"
#include "embedded/windows/CalculatorDialog.h"
#include "embedded/windows/CloudDiskDialog.h"
#include "embedded/windows/NameConflictDialog.h"
#include "embedded/windows/QuotaPickerWindow.h"
#include "platform/Files.h"
#include "platform/Paths.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QTemporaryDir>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTableView>
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

/// How large a window that can be resized is pictured.
enum class Size { Usual, Smallest, Large };

QSize SizeOf(const QWidget& window, Size size)
{
    if (size == Size::Smallest) return window.minimumSizeHint();
    const QSize usual = window.size().expandedTo(window.sizeHint());
    return size == Size::Large ? usual * 3 / 2 : usual;
}

/// The pictured window, with all that it stands on. A window of its own cannot be drawn inside of another, so
/// it becomes the content of this one.
class Frame : public QWidget
{
public:
    template <typename Make>
    explicit Frame(const Make& make, Size size)
    {
        // The pictured windows read real files, not those of the other scenes.
        const platform::ScopedFileSystem real(platform::RealFileSystem());
        QDialog* const window = make(project, *this);
        const QSize pictured = SizeOf(*window, size);
        window->setWindowFlags(Qt::Widget);
        auto* layout = new QVBoxLayout(this);
        layout->setContentsMargins({});
        layout->addWidget(window);
        resize(pictured);
    }
    // The window goes before the project on which it stands.
    ~Frame() override { qDeleteAll(findChildren<QDialog*>(QString(), Qt::FindDirectChildrenOnly)); }

    PicturedProject project;
};

QDialog* MakeBillPicker(PicturedProject& project, QWidget& parent, const CString& search)
{
    auto* window = new embedded::BillPickerWindow(parent, project.host->Contents(),
                                                  std::make_shared<embedded::PickerMemory>());
    window->Load();
    for (QLineEdit* field : window->findChildren<QLineEdit*>()) {
        if (field->accessibleName() == u"搜索项目") field->setText(search);
    }
    return window;
}

/// A chapter is scrolled to, which takes a window that is laid out.
void SelectChapter(QWidget& window, const CString& key)
{
    dynamic_cast<embedded::PickerWindow&>(*window.findChild<QDialog*>()).SelectChapter(key);
}

void SelectPipeBills(QWidget& window)
{
    SelectChapter(window, u"0310.031001"_s);
}

void SelectPipeQuotas(QWidget& window)
{
    SelectChapter(window, u"示10-1"_s);
}

QDialog* MakeQuotaPicker(PicturedProject& project, QWidget& parent)
{
    auto* window = new embedded::QuotaPickerWindow(parent, project.host->Contents(),
                                                   std::make_shared<embedded::PickerMemory>());
    window->Load();
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
    const CString rules = project.host->RuleFolder();
    files.CreateFolder(rules);
    const QByteArray content = "<自动套清单定额配置信息 Version=\"1.2.0\"/>";
    for (const CString& name :
         {u"住宅给排水标准模板"_s, u"公建暖通"_s, u"地下车库消防喷淋与消火栓系统（含支架刷油）"_s})
        files.WriteInPlace(project.Path(u"云盘\\"_s + name + u".xml"_s), content);
    files.WriteInPlace(project.Path(u"云盘\\说明.xml"_s), "<note/>");
    files.WriteInPlace(rules + u"\\DefaultConfig.xml"_s, content);
}

void Press(const QWidget& window, const CString& caption)
{
    for (QPushButton* button : window.findChildren<QPushButton*>())
        if (button->text().startsWith(caption)) button->click();
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
    return new PicturedCloudDisk(std::move(cloud),
                                 {u"自动套模板"_s, project.host->RuleFolder(), project.host->ProjectPath()},
                                 &parent);
}

QDialog* MakeConflict(PicturedProject& project, QWidget& parent)
{
    WriteTemplates(project);
    return new embedded::NameConflictDialog(project.Path(u"云盘"_s), u"公建暖通"_s, &parent);
}

QDialog* MakeImported(PicturedProject& project, QWidget& parent)
{
    QDialog* const window = MakeCloudDisk(project, parent, u"云盘"_s);
    Press(*window, u"导入"_s);
    return window;
}

QDialog* MakeRefused(PicturedProject& project, QWidget& parent)
{
    QDialog* const window = MakeConflict(project, parent);
    window->findChild<QLineEdit*>()->setText(u"公建:暖通"_s);
    return window;
}

/// The tip of a name that its column cuts off.
void RestOnName(QWidget& window)
{
    SelectPipeQuotas(window);
    constexpr int NameColumn = 1;
    for (const QTableView* table : window.findChildren<QTableView*>()) {
        const QModelIndex name = table->model()->index(0, NameColumn);
        Rest(*table->viewport(), table->visualRect(name).center());
    }
}

} // namespace

std::vector<Scene> HostWindowScenes()
{
    const auto scene = [](const QString& name, const auto& make, Size size = Size::Usual,
                          const std::function<void(QWidget&)>& open = {}, bool showsTip = false) {
        return Scene{name, [make, size] { return std::make_unique<Frame>(make, size); }, open, showsTip};
    };
    using Project = PicturedProject;
    const auto bills = [](Project& p, QWidget& w) { return MakeBillPicker(p, w, {}); };
    const auto formula = [](Project& p, QWidget& w) { return MakeCalculator(p, w, u"管道长度×1.02"_s); };
    const auto disk = [](Project& p, QWidget& w) { return MakeCloudDisk(p, w, u"云盘"_s); };
    return {
        scene(u"bill-picker"_s, bills, Size::Usual, SelectPipeBills),
        scene(u"bill-picker-smallest"_s, bills, Size::Smallest, SelectPipeBills),
        scene(u"bill-picker-large"_s, bills, Size::Large, SelectPipeBills),
        scene(u"bill-picker-search"_s,
              [](Project& p, QWidget& w) { return MakeBillPicker(p, w, u"阀门"_s); }),
        scene(u"bill-picker-nothing"_s,
              [](Project& p, QWidget& w) { return MakeBillPicker(p, w, u"没有"_s); }),
        scene(u"quota-picker"_s, MakeQuotaPicker, Size::Usual, SelectPipeQuotas),
        scene(u"quota-picker-smallest"_s, MakeQuotaPicker, Size::Smallest, SelectPipeQuotas),
        scene(u"quota-picker-tip"_s, MakeQuotaPicker, Size::Usual, RestOnName, true),
        scene(u"calculator"_s, formula),
        scene(u"calculator-smallest"_s, formula, Size::Smallest),
        scene(u"calculator-large"_s, formula, Size::Large),
        scene(u"calculator-fault"_s,
              [](Project& p, QWidget& w) { return MakeCalculator(p, w, u"管道长度×(1+宽度)"_s); }),
        scene(u"cloud-disk"_s, disk),
        scene(u"cloud-disk-smallest"_s, disk, Size::Smallest),
        scene(u"cloud-disk-large"_s, disk, Size::Large),
        scene(u"cloud-disk-imported"_s, MakeImported),
        scene(u"cloud-disk-missing"_s, [](Project& p, QWidget& w) { return MakeCloudDisk(p, w, u"没有"_s); }),
        scene(u"name-conflict"_s, MakeConflict),
        scene(u"name-conflict-refused"_s, MakeRefused),
    };
}
