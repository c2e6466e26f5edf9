#include "cli/rulefiles/RuleTables.h"

#include "cli/printing/Output.h"
#include "cli/reading/Failure.h"
#include "cli/reading/Overwriting.h"
#include "cli/reading/RuleFiles.h"
#include "cli/reading/Session.h"
#include "embedded/data/catalogue/CatalogueData.h"
#include "platform/Console.h"
#include "platform/Files.h"
#include "platform/Paths.h"
#include "presenter/CQdDeConfigPresenter.h"
#include "rules/compare/Content.h"
#include "rules/compare/DifferenceText.h"
#include "rules/document/RuleWriter.h"
#include "rules/model/Snapshot.h"
#include "rules/sheet/RuleSheet.h"
#include "shared/GatherPricingFacts.h"
#include "shared/LibraryItems.h"
#include "store/RuleFile.h"
#include "tables/CreateTable.h"
#include "tables/Record.h"
#include "tables/TableError.h"
#include "xml/Error.h"

#include <QtCore/QTemporaryDir>

using namespace Qt::StringLiterals;

namespace cli {

namespace {

const CString SheetName = u"规则"_s;

rules::ConfigurationPtr Read(const QByteArray& bytes, const CString& path)
{
    CString reason;
    rules::ConfigurationPtr read = rules::ReadRules(bytes, reason);
    if (!read) throw Refusal(u"%1：%2"_s.arg(platform::ToNative(path), reason));
    return read;
}

QByteArray ReadBytes(const CString& path)
{
    CString reason;
    const auto bytes = platform::Files().Read(path, &reason);
    if (!bytes) throw Refusal(u"%1：%2"_s.arg(platform::ToNative(path), reason));
    return *bytes;
}

void RefuseOptions(const Arguments& arguments, const CStringArray& options)
{
    for (const CString& option : options)
        if (arguments.Has(option)) throw UsageError(u"--%1 不用于 rules"_s.arg(option));
}

bool IsSelected(const rules::SmallCategory& category, const CString& filter)
{
    if (filter.isEmpty()) return !rules::HoldsBareDefaultAlone(category);
    return category.text == filter || category.name == filter || category.text.startsWith(filter + u'\\');
}

/// How many lines the rules of a category make: the empty default rule at its end makes none.
std::size_t RulesToWrite(const rules::SmallCategory& category)
{
    const bool endsBare = !category.rules.empty() && rules::IsBareDefault(category.rules.back());
    return category.rules.size() - (endsBare ? 1 : 0);
}

std::vector<rules::SmallCategoryPtr> Selected(const rules::Configuration& configuration,
                                              const CString& filter)
{
    std::vector<rules::SmallCategoryPtr> selected;
    for (const rules::Specialty& specialty : configuration.Specialties())
        for (const rules::BigCategory& big : specialty.bigCategories)
            for (const rules::SmallCategoryPtr& small : big.smallCategories)
                if (IsSelected(*small, filter)) selected.push_back(small);
    if (selected.empty())
        throw Refusal(filter.isEmpty() ? u"规则文件里没有规则；用 --category 指明小类可以得到一张空表"_s
                                       : u"没有小类“%1”"_s.arg(filter));
    return selected;
}

/// Tells on standard error which of the asked categories the catalogue has not: their rules are left out.
void TellUnknown(const rules::Configuration& read, const rules::Configuration& present, const CString& filter)
{
    for (const rules::Specialty& specialty : read.Specialties())
        for (const rules::BigCategory& big : specialty.bigCategories)
            for (const rules::SmallCategoryPtr& small : big.smallCategories)
                if (!present.Find(small->text) && !rules::HoldsBareDefaultAlone(*small) &&
                    IsSelected(*small, filter))
                    platform::WriteErr(u"工程的类别里没有“%1”，它的 %2 条规则没有写出\n"_s.arg(small->text)
                                           .arg(RulesToWrite(*small)));
}

/// Tells each fault on standard error. Raises `Refusal` when there are any.
void RefuseFaults(const std::vector<rules::SheetFault>& faults, const CString& result)
{
    if (faults.empty()) return;
    for (const rules::SheetFault& fault : faults)
        platform::WriteErr(fault.line > 0 ? u"第 %1 行：%2\n"_s.arg(fault.line).arg(fault.text)
                                          : fault.text + u'\n');
    throw Refusal(u"共 %1 处，%2"_s.arg(faults.size()).arg(result));
}

void WriteSheet(const rules::RuleSheet& sheet, const CString& path)
{
    const auto table = tables::CreateTable(path);
    CArray<tables::Column> columns;
    for (const CString& heading : sheet.headings)
        columns.append({.heading = heading});
    table->BeginSheet(SheetName, columns);
    for (const rules::RuleSheet::Row& row : sheet.rows) {
        for (const CString& cell : row.cells)
            cell.isEmpty() ? table->Empty() : table->Text(cell);
        table->EndRow();
    }
    table->Finish();
}

rules::RuleSheet ReadSheetFile(const CString& path, const CString& name,
                               std::vector<rules::SheetFault>& faults)
{
    const auto reader = tables::OpenTable(path, {.sheet = name});
    rules::RuleSheet sheet;
    for (const tables::Record& record : tables::ReadRecords(*reader)) {
        if (!record.fault.isEmpty()) faults.push_back({record.line, record.fault});
        if (sheet.headings.isEmpty()) {
            for (const CString& field : record.fields)
                sheet.headings.append(field.trimmed());
            while (!sheet.headings.isEmpty() && sheet.headings.last().isEmpty())
                sheet.headings.removeLast();
            continue;
        }
        CStringArray cells = record.fields;
        while (!cells.isEmpty() && cells.last().isEmpty())
            cells.removeLast();
        if (!cells.isEmpty()) sheet.rows.push_back({record.line, cells});
    }
    return sheet;
}

/// What the rule file becomes, and the bytes that it has and gets.
struct Change
{
    rules::ConfigurationPtr present;
    rules::Configuration wanted;
    QByteArray bytes;
};

Change ChangeOf(const Arguments& arguments, const Session& session, const CString& path,
                const QByteArray& bytes)
{
    std::vector<rules::SheetFault> faults;
    const rules::RuleSheet sheet =
        ReadSheetFile(ResolvePath(arguments.Positional()[1]), arguments.Value(u"sheet"_s), faults);
    const rules::ConfigurationPtr read = Read(bytes, path);
    const embedded::CatalogueData& catalogue = session.Host().CatalogueContents();
    const rules::ConfigurationPtr present = shared::WithinCatalogue(*read, catalogue);
    const shared::LibraryItems libraries(session.Host(), session.IsBillMode());
    const rules::Configuration taken =
        rules::ReadSheet(sheet, *present, shared::OfferedAttributesOf(catalogue), libraries.Items(), faults);
    RefuseFaults(faults, u"什么也没有导入，规则文件没有变"_s);
    // All else stays as the file has it.
    rules::Configuration wanted = read->With(taken.Specialties(), [&](const rules::SmallCategoryPtr& small) {
        return present->Find(small->text) != small;
    });
    try {
        QByteArray written = rules::WriteRules(bytes, wanted);
        return {read, std::move(wanted), std::move(written)};
    } catch (const xml::Error& error) {
        throw Refusal(u"规则写不进文件：%1"_s.arg(CString::fromUtf8(error.what())));
    }
}

/// What the rules are read into: the rule file or, where there is none, what the module makes of nothing,
/// default rules for the project's specialty. That is made away from the rule files, so that a preview writes
/// nothing among them and an import that is refused leaves nothing there.
QByteArray PresentBytes(const CString& path)
{
    if (platform::Files().Exists(path)) return ReadBytes(path);
    const QTemporaryDir folder;
    if (!folder.isValid()) throw platform::FileError(path, folder.errorString());
    const CString draft = platform::FromNative(folder.filePath(u"draft.xml"_s));
    const CQdDeConfigPresenter made(draft); // writes it
    return ReadBytes(draft);
}

void Tell(const Change& change)
{
    WriteText(rules::DifferenceLines(rules::Compare(*change.present, change.wanted)).join(u'\n') + u'\n');
}

} // namespace

bool ConcernsRules(const Arguments& arguments)
{
    return arguments.Positional()[0] == u"rules";
}

Option RuleFileOption()
{
    return {u"config"_s, u"FILE"_s, u"rules 的规则文件或配置名；不写时为工程的当前配置"_s, {}};
}

void ExportRules(const Arguments& arguments)
{
    RefuseOptions(arguments, {u"library"_s});
    if (arguments.Positional()[1] == u"-") throw UsageError(u"rules 要写到文件"_s);
    const Session session(arguments);
    const CString path = ResolvePath(arguments.Positional()[1]);
    RefuseToOverwrite(arguments, path);
    const CString file = ChooseRuleFile(arguments.Value(u"config"_s));
    CheckRuleFile(file);
    const embedded::CatalogueData& catalogue = session.Host().CatalogueContents();
    const rules::ConfigurationPtr read = Read(ReadBytes(file), file);
    const auto present = shared::WithinCatalogue(*read, catalogue);
    TellUnknown(*read, *present, arguments.Value(u"category"_s));
    const shared::LibraryItems libraries(session.Host(), session.IsBillMode());
    std::vector<rules::SheetFault> faults;
    const rules::RuleSheet sheet =
        rules::MakeSheet(Selected(*present, arguments.Value(u"category"_s)),
                         shared::OfferedAttributesOf(catalogue), libraries.Items(), faults);
    RefuseFaults(faults, u"没有写出"_s);
    const auto kept = KeepBeforeReplacing(arguments, path);
    WriteSheet(sheet, path);
    WriteText(u"已写出 %1 条规则：%2\n"_s.arg(sheet.rows.size()).arg(platform::ToNative(path)));
}

void ImportRules(const Arguments& arguments)
{
    RefuseOptions(arguments, {u"library"_s, u"replace"_s});
    Session session(arguments);
    const CString path = ChooseRuleFile(arguments.Value(u"config"_s));
    if (arguments.Has(u"dry-run"_s)) {
        CheckRuleFileIfThere(path);
        Tell(ChangeOf(arguments, session, path, PresentBytes(path)));
        return WriteText(u"只是预览，规则文件没有变。\n"_s);
    }
    const auto lock = LockRuleFiles(session.History(), {path});
    KeepAndCheck(path, session.History());
    const QByteArray bytes = PresentBytes(path);
    const Change change = ChangeOf(arguments, session, path, bytes);
    if (change.bytes != bytes || !platform::Files().Exists(path)) {
        EnsureRuleFolderOf(path);
        platform::Files().Replace(path, change.bytes);
    }
    Tell(change);
    WriteText(u"规则文件：%1\n"_s.arg(platform::ToNative(path)));
}

} // namespace cli
