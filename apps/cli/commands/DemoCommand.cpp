#include "cli/commands/DemoCommand.h"

#include "cli/commands/DemoEdit.h"
#include "cli/pricing/BillTable.h"
#include "cli/pricing/PricingRules.h"
#include "cli/printing/Output.h"
#include "cli/printing/RuleText.h"
#include "cli/reading/Failure.h"
#include "cli/reading/RuleFiles.h"
#include "cli/reading/Session.h"
#include "cli/reading/TextFiles.h"
#include "embedded/data/project/ProjectFolder.h"
#include "host/NvKtDataMng.h"
#include "platform/Paths.h"
#include "sample/SampleProject.h"
#include "shared/BillFiles.h"
#include "shared/ChangeText.h"
#include "shared/Outcomes.h"
#include "shared/PricingText.h"
#include "store/RuleFile.h"

#include <QtCore/QDir>
#include <QtCore/QTemporaryDir>

using namespace Qt::StringLiterals;

namespace cli {

namespace {

/// How much of the sample's bill a terminal shows.
constexpr std::size_t BillLinesShown = 24;

QString FreshFolder()
{
    QTemporaryDir folder(QDir::tempPath() + u"/ktqdde-demo-XXXXXX"_s);
    folder.setAutoRemove(false); // the person may want to look around in it afterwards
    if (!folder.isValid()) throw Refusal(u"建不了临时文件夹：%1"_s.arg(folder.errorString()));
    return folder.path();
}

void CreateDemoProject(const QString& folder)
{
    if (embedded::IsProject(folder))
        throw Refusal(u"%1 中已有工程：请换一个文件夹，或先删除它"_s.arg(QDir::toNativeSeparators(folder)));
    sample::CreateSampleProject(folder);
}

CString Heading(const CString& title, const CString& explanation)
{
    return u"\n%1\n  %2\n\n"_s.arg(title, explanation);
}

CString TablesThatHoldRules(CQdDeConfigPresenter& presenter, const CString& filter)
{
    CString text;
    int folded = 0;
    for (const CategoryRules& category :
         CollectRules(presenter, NvKtDataMng::CProj().GetCurrentSpec(), filter)) {
        if (HoldsNothing(category)) {
            ++folded;
        } else {
            text += (text.isEmpty() ? u""_s : u"\n"_s) + RuleTable(category);
        }
    }
    return folded == 0 ? text : text + u"\n另有 %1 个小类只有空的默认规则，这里不列。\n"_s.arg(folded);
}

void Introduce(const QString& folder, const CString& path)
{
    WriteText(
        u"KtQdDeConfig 演示\n"
        "  一条规则说的是：某一小类的构件，在条件全部满足时，套哪些清单项和定额项。\n"_s +
        Heading(u"一、示例工程"_s, u"工程是一个文件夹；规则写在规则文件里，每个专业一段。"_s) +
        u"  工程文件夹：%1\n  规则文件：%2\n  专业：给排水　模式：清单模式（规则下挂清单，清单下挂定额）\n"_s
            .arg(QDir::toNativeSeparators(folder), platform::ToNative(path)));
}

void EditAndSave(const CPath& category)
{
    CQdDeConfigPresenter presenter({});
    WriteText(
        Heading(u"二、规则文件里原有的规则"_s, u"“其它”是每个小类的默认规则，收下别的规则管不到的构件。"_s) +
        TablesThatHoldRules(presenter, {}));
    WriteText(Heading(u"三、新增一条规则"_s, u"小类 %1；条件有四种写法，各加一个。"_s.arg(DemoCategory())) +
              AddDemoRule(presenter, category));
    if (!presenter.Save()) throw Refusal(u"保存没有成功"_s);
}

void ShowOutcome(const CString& path, const CStringArray& before)
{
    CQdDeConfigPresenter presenter({});
    WriteText(Heading(u"四、保存以后，从文件重新读取"_s, u"下面是文件里的规则，新规则在默认规则之前。"_s) +
              TablesThatHoldRules(presenter, DemoCategory()));
    WriteText(Heading(u"五、规则文件里变了什么"_s, platform::ToNative(path)) +
              shared::DescribeChanges(shared::CompareLines(before, LinesOf(path))));
}

/// Prices the sample take-off table by the full sample rules: the bill's beginning, and the file that has it
/// all.
void PriceSample(const QString& folder, const Session& session)
{
    const CString table = ResolvePath(folder + u"/给排水构件表.csv"_s);
    const CString target = ResolvePath(folder + u"/工程量清单.xlsx"_s);
    const CString rules = ConfigurationPath(sample::TakeoffConfiguration());
    sample::WriteSampleTakeoff(table);
    rules::TakeoffPricing pricing(JobFor(table, rules, session));
    const rules::Bill& bill = pricing.Price();
    shared::WriteBillWorkbook(target, pricing, {});
    WriteText(
        Heading(u"六、按规则给构件表套价"_s,
                u"每个构件套一条规则；工程量由计算式得出，同一编码的合计成一行。"_s) +
        u"  构件表：%1\n  规则文件：%2\n\n"_s.arg(platform::ToNative(table), platform::ToNative(rules)) +
        BillTable(bill, pricing.Job().facts.mode, {}, BillLinesShown) + u'\n' +
        shared::TotalsText(bill.totals) +
        u"\n工程量清单（连同每个构件的规则、未套价的原因）：%1\n"_s.arg(platform::ToNative(target)));
}

void SayWhatNext(const QString& folder)
{
    WriteText(u"\n接着可以试：\n  ktqdde --project %1 show\n  ktqdde --project %1 show --category 电气 "
              u"--spec 电气\n"
              "  ktqdde --project %1 try --config %2 --category 给水管 材质=镀锌钢管 连接方式=螺纹连接 "
              "公称直径=65 水平管长度=12.5 立管长度=0\n"
              "  ktqdde --help\n"_s.arg(QDir::toNativeSeparators(folder), sample::TakeoffConfiguration()));
}

} // namespace

CommandInfo DemoCommand::Describe()
{
    CommandInfo info;
    info.name = u"demo"_s;
    info.syntax = u"[DIR]"_s;
    info.summary = u"在示例工程上走一遍：看规则、加规则、保存、看变化、套价"_s;
    info.description = u"在 DIR（不写时为临时文件夹下的新文件夹）中建立示例工程，显示规则文件，加一条规则，\n"
                       "保存后重新读取，说明规则文件里变了什么，最后给一份构件表套价，写出工程量清单。\n"
                       "DIR 中已有工程时拒绝。"_s;
    info.maxPositional = 1;
    info.needsProject = false;
    return info;
}

DemoCommand::DemoCommand() : Command(Describe()) {}

void DemoCommand::Run(const Arguments& arguments) const
{
    const QString folder = arguments.Positional().isEmpty() ? FreshFolder() : arguments.Positional()[0];
    ResolvePath(folder);
    CreateDemoProject(folder);
    Session session(folder);
    const CString path = ConfigurationPath(store::DefaultConfigName());
    session.History().Keep(path);
    CPath category{};
    if (!FindCategory(DemoCategory(), category)) throw Refusal(u"没有类别“%1”"_s.arg(DemoCategory()));
    const CStringArray before = LinesOf(path);
    Introduce(folder, path);
    EditAndSave(category);
    ShowOutcome(path, before);
    PriceSample(folder, session);
    SayWhatNext(folder);
}

} // namespace cli
