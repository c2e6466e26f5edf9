#include "cli/pricing/PricingRules.h"

#include "cli/reading/Failure.h"
#include "cli/reading/Overwriting.h"
#include "cli/reading/RuleFiles.h"
#include "platform/Paths.h"
#include "rules/model/Snapshot.h"
#include "shared/GatherPricingFacts.h"

#include <QtCore/QFileInfo>

#include <utility>

using namespace Qt::StringLiterals;

namespace cli {

Option PricingConfigOption()
{
    return {u"config"_s, u"FILE"_s, u"规则文件或配置名；不写时为工程的当前配置"_s, {}};
}

Option SheetOption()
{
    return {u"sheet"_s, u"NAME"_s, u"工作簿中的工作表；不写时为第一个"_s, {}};
}

Option OutputOption(const CString& help)
{
    return {u"output"_s, u"OUT"_s, help, u'o'};
}

Option ForceOption()
{
    return {u"force"_s, {}, u"覆盖已有的 OUT"_s, {}};
}

CString OutputFile(const Arguments& arguments)
{
    const CString named = arguments.Value(u"output"_s);
    if (named.isEmpty()) return {};
    CString path = ResolvePath(named);
    RefuseToOverwrite(arguments, path);
    const CString table = ResolvePath(arguments.Positional()[0]);
    if (QFileInfo(platform::ToNative(path)) == QFileInfo(platform::ToNative(table)))
        throw Refusal(u"%1 就是要读的构件表，请换一个文件名"_s.arg(platform::ToNative(path)));
    return path;
}

CString NamedCategory(const CString& named, const rules::Configuration& configuration)
{
    if (configuration.Find(named)) return named;
    CStringArray found;
    for (const rules::Specialty& specialty : configuration.Specialties())
        for (const rules::BigCategory& big : specialty.bigCategories)
            for (const rules::SmallCategoryPtr& small : big.smallCategories)
                if (small->name == named) found.append(small->text);
    if (found.isEmpty()) throw Refusal(u"没有小类“%1”"_s.arg(named));
    if (found.size() > 1) throw Refusal(u"叫“%1”的小类有几个，请写全：%2"_s.arg(named, found.join(u"、"_s)));
    return found.first();
}

CString PricingFile(const Arguments& arguments)
{
    CString file = ChooseRuleFile(arguments.Value(u"config"_s));
    CheckRuleFile(file);
    return file;
}

rules::PricingMode ModeOf(const Session& session)
{
    return session.IsBillMode() ? rules::PricingMode::Bill : rules::PricingMode::Quota;
}

rules::ConfigurationPtr ReadPricingRules(const CString& file, const Session& session)
{
    CString reason;
    const rules::ConfigurationPtr read = rules::ReadRuleFile(file, reason);
    if (!read) throw Refusal(u"%1：%2"_s.arg(platform::ToNative(file), reason));
    return PricingRulesOf(*read, session);
}

rules::ConfigurationPtr PricingRulesOf(const rules::Configuration& read, const Session& session)
{
    return shared::WithinCatalogue(read, session.Host().CatalogueContents());
}

rules::TakeoffJob JobFor(const CString& table, rules::ConfigurationPtr configuration, const Session& session)
{
    rules::TakeoffJob job;
    job.table = table;
    job.configuration = std::move(configuration);
    job.facts = shared::PricingFactsOf(session.Host(), ModeOf(session));
    return job;
}

rules::TakeoffJob JobFor(const CString& table, const CString& file, const Session& session)
{
    return JobFor(table, ReadPricingRules(file, session), session);
}

} // namespace cli
