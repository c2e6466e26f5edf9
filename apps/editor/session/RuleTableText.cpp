#include "editor/session/RuleTableText.h"

#include "editor/project/Project.h"
#include "editor/session/WorkSession.h"
#include "rules/compare/Content.h"
#include "rules/sheet/RuleSheet.h"
#include "rules/sheet/SheetColumns.h"
#include "shared/LibraryItems.h"

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace editor {

namespace {

/// The name of a category that no file has, for rules that are on their way into another one.
const CString OnTheWay = u"\x1\\\x1\\\x1"_s;

CString Quoted(const CString& cell)
{
    if (!cell.contains(u'\n') && !cell.contains(u'\t') && !cell.contains(u'"')) return cell;
    return u'"' + CString(cell).replace(u'"', u"\"\""_s) + u'"';
}

CString LineOf(const CStringArray& cells)
{
    CStringArray quoted;
    for (const CString& cell : cells)
        quoted.append(Quoted(cell));
    return quoted.join(u'\t') + u'\n';
}

/// The lines of cells that a text is. A quotation mark opens a cell that ends with the next lone one.
std::vector<CStringArray> CellsOf(CString text)
{
    text.replace(u"\r\n"_s, u"\n"_s);
    std::vector<CStringArray> lines;
    CStringArray line;
    CString cell;
    bool isQuoted = false;
    const auto endLine = [&] {
        line.append(std::exchange(cell, {}));
        lines.push_back(std::exchange(line, {}));
    };
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text[i];
        if (isQuoted && c == u'"' && text.mid(i + 1, 1) == u"\"")
            cell += text[i++];
        else if (c == u'"' && (isQuoted || cell.isEmpty()))
            isQuoted = !isQuoted;
        else if (!isQuoted && c == u'\t')
            line.append(std::exchange(cell, {}));
        else if (!isQuoted && c == u'\n')
            endLine();
        else
            cell += c;
    }
    if (!cell.isEmpty() || !line.isEmpty()) endLine();
    return lines;
}

/// What the project's libraries say of items in the chosen category.
rules::SheetItems ItemsFor(const shared::LibraryItems& libraries, const CString& category)
{
    const auto there = [category](const auto& lookUp) {
        return [lookUp, category](const CString& number, const CString&) { return lookUp(number, category); };
    };
    const rules::SheetItems all = libraries.Items();
    return {there(all.bill), there(all.quotaOfBills), there(all.quota)};
}

rules::SmallCategoryPtr CategoryOnTheWay(std::vector<rules::Rule> rules)
{
    auto category = std::make_shared<rules::SmallCategory>();
    category->name = OnTheWay.section(u'\\', 2);
    category->text = OnTheWay;
    category->rules = std::move(rules);
    return category;
}

shared::LibraryItems LibrariesOf(const WorkSession& session)
{
    return {session.OpenedProject()->Host(), session.Facts()->isBillMode};
}

rules::CatalogueFacts FactsOnTheWay(const WorkSession& session)
{
    return {{OnTheWay, session.Facts()->AttributesOf(session.CategoryText())}};
}

} // namespace

CString TableTextOf(const std::vector<rules::Rule>& rules, const WorkSession& session)
{
    const shared::LibraryItems libraries = LibrariesOf(session);
    std::vector<rules::SheetFault> faults;
    const rules::RuleSheet sheet = rules::MakeSheet({CategoryOnTheWay(rules)}, FactsOnTheWay(session),
                                                    ItemsFor(libraries, session.CategoryText()), faults);
    CString text;
    if (!faults.empty()) {
        for (const rules::Rule& rule : rules)
            text += rule.Text() + u'\n';
        return text;
    }
    const qsizetype category = sheet.headings.indexOf(rules::sheet::CategoryColumn);
    text = LineOf(sheet.headings);
    for (const rules::RuleSheet::Row& row : sheet.rows) {
        CStringArray cells = row.cells;
        cells[category] = session.CategoryText();
        text += LineOf(cells);
    }
    return text;
}

bool IsTableText(const CString& text)
{
    const CStringArray headings = text.left(text.indexOf(u'\n')).trimmed().split(u'\t');
    return headings.contains(rules::sheet::BillColumn) && headings.contains(rules::sheet::QuotaColumn);
}

std::vector<rules::Rule> RulesOfTableText(const CString& text, const WorkSession& session,
                                          CStringArray& faults)
{
    rules::RuleSheet sheet;
    qint64 number = 0;
    for (CStringArray& cells : CellsOf(text)) {
        ++number;
        while (!cells.isEmpty() && cells.last().trimmed().isEmpty())
            cells.removeLast();
        if (sheet.headings.isEmpty())
            sheet.headings = std::move(cells);
        else if (!cells.isEmpty())
            sheet.rows.push_back({number, std::move(cells)});
    }
    if (!sheet.headings.contains(rules::sheet::CategoryColumn))
        sheet.headings.append(rules::sheet::CategoryColumn);
    const qsizetype category = sheet.headings.indexOf(rules::sheet::CategoryColumn);
    for (rules::RuleSheet::Row& row : sheet.rows) {
        while (row.cells.size() <= category)
            row.cells.append(CString());
        row.cells[category] = OnTheWay;
    }
    std::vector<rules::Specialty> all = session.Draft().Specialties();
    const CString part = OnTheWay.section(u'\\', 0, 0);
    all.push_back({0, part, {{0, part, {CategoryOnTheWay({})}}}});
    const shared::LibraryItems libraries = LibrariesOf(session);
    std::vector<rules::SheetFault> found;
    const rules::Configuration read =
        rules::ReadSheet(sheet, rules::Configuration(std::move(all)), FactsOnTheWay(session),
                         ItemsFor(libraries, session.CategoryText()), found);
    for (const rules::SheetFault& fault : found)
        faults.append(fault.line > 0 ? u"第 %1 行：%2"_s.arg(fault.line).arg(fault.text) : fault.text);
    if (!faults.isEmpty()) return {};
    std::vector<rules::Rule> rules = read.Find(OnTheWay)->rules;
    if (!rules.empty() && rules::IsBareDefault(rules.back())) rules.pop_back(); // reading adds it
    return rules;
}

} // namespace editor
