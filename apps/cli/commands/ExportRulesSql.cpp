#include "cli/commands/ExportRulesSql.h"

#include "cli/pricing/PricingRules.h"
#include "cli/printing/Output.h"
#include "cli/reading/Failure.h"
#include "cli/reading/Overwriting.h"
#include "cli/reading/RuleFiles.h"
#include "platform/Files.h"
#include "platform/Paths.h"
#include "platform/ReplacedFile.h"
#include "rules/sql/RulesSql.h"
#include "shared/GatherPricingFacts.h"

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace cli {

namespace {

struct NamedDialect
{
    QStringView word;
    rules::SqlDialect dialect;
};

constexpr std::array Dialects{NamedDialect{u"postgresql", rules::SqlDialect::PostgreSql},
                              NamedDialect{u"sqlite", rules::SqlDialect::Sqlite},
                              NamedDialect{u"duckdb", rules::SqlDialect::DuckDb}};

CString DialectWords(QStringView between)
{
    CStringArray words;
    for (const NamedDialect& named : Dialects)
        words.append(named.word.toString());
    return words.join(between);
}

rules::SqlDialect DialectOf(const Arguments& arguments)
{
    if (!arguments.Has(u"dialect"_s)) throw UsageError(u"缺少 --dialect "_s + DialectWords(u"|"));
    const CString word = arguments.Value(u"dialect"_s);
    const auto* const end = Dialects.data() + Dialects.size();
    const auto* const named =
        std::find_if(Dialects.data(), end, [&](const NamedDialect& one) { return one.word == word; });
    if (named == end) throw UsageError(u"没有方言“%1”，只有 %2"_s.arg(word, DialectWords(u"、")));
    return named->dialect;
}

/// Where to write; empty for standard output.
CString TargetOf(const Arguments& arguments)
{
    const CString named = arguments.Value(u"output"_s);
    if (named.isEmpty() || named == u"-") return {};
    CString path = ResolvePath(named);
    RefuseToOverwrite(arguments, path);
    return path;
}

CString QueryOf(const Arguments& arguments, rules::SqlDialect dialect)
{
    const Session session(arguments);
    const rules::ConfigurationPtr configuration = ReadPricingRules(PricingFile(arguments), session);
    const rules::PricingFacts facts = shared::PricingFactsOf(session.Host(), ModeOf(session));
    rules::SqlOptions options;
    options.dialect = dialect;
    options.isBill = facts.mode == rules::PricingMode::Bill;
    options.billLibrary = facts.billLibrary;
    options.quotaLibrary = facts.quotaLibrary;
    if (arguments.Has(u"category"_s))
        options.category = NamedCategory(arguments.Value(u"category"_s), *configuration);
    return rules::RulesSql(*configuration, facts.attributes, options);
}

} // namespace

CArray<Option> RulesSqlOptions()
{
    return {{u"dialect"_s, u"NAME"_s, u"rules-sql 的数据库："_s + DialectWords(u"、"), {}},
            {u"output"_s, u"FILE"_s, u"rules-sql 写到这个文件；不写时为标准输出"_s, u'o'}};
}

void ExportRulesSql(const Arguments& arguments)
{
    if (arguments.Positional().size() > 1)
        throw UsageError(u"多余的参数：%1；rules-sql 的文件写在 -o 后面"_s.arg(arguments.Positional()[1]));
    if (arguments.Has(u"library"_s)) throw UsageError(u"--library 只用于 bill、quota、guide"_s);
    const rules::SqlDialect dialect = DialectOf(arguments);
    const CString target = TargetOf(arguments);
    const CString query = QueryOf(arguments, dialect);
    if (target.isEmpty()) return WriteText(query);
    const auto kept = KeepBeforeReplacing(arguments, target);
    platform::ReplacedFile file(target);
    file.Write(query.toUtf8());
    file.Commit();
    WriteText(u"已写出：%1\n"_s.arg(platform::ToNative(target)));
}

} // namespace cli
