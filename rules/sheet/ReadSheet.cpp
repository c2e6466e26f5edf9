#include "rules/compare/Content.h"
#include "rules/compare/RulePairing.h"
#include "rules/sheet/ConditionCell.h"
#include "rules/sheet/ItemCell.h"
#include "rules/sheet/RuleSheet.h"
#include "rules/sheet/SheetColumns.h"
#include "tree/Children.h"

#include <algorithm>
#include <limits>
#include <map>
#include <set>

using namespace Qt::StringLiterals;

namespace rules {

namespace {

/// The items of all rules, by number: those that no library in use has.
struct KnownItems
{
    std::map<CString, QdStruct> bills;
    std::map<CString, DeStruct> quotasOfBills;
    std::map<CString, DeStruct> quotas;

    explicit KnownItems(const Configuration& configuration)
    {
        for (const Specialty& specialty : configuration.Specialties())
            for (const BigCategory& big : specialty.bigCategories)
                for (const SmallCategoryPtr& small : big.smallCategories)
                    for (const Rule& rule : small->rules)
                        Take(rule);
    }

private:
    void Take(const Rule& rule)
    {
        for (const BillItem& item : rule.bills) {
            bills.emplace(item.record.strQdId, item.record);
            for (const QuotaItem& quota : item.quotas)
                quotasOfBills.emplace(quota.record.strDeId, quota.record);
        }
        for (const QuotaItem& item : rule.quotas)
            quotas.emplace(item.record.strDeId, item.record);
    }
};

template <typename Record>
std::optional<Record> Find(const CString& number, const CString& category, const LookUp<Record>& library,
                           const std::map<CString, Record>& known)
{
    if (auto found = library(number, category)) return found;
    const auto found = known.find(number);
    return found == known.end() ? std::nullopt : std::optional(found->second);
}

/// What a line says, and the words for its items, which tell what they leave to the library.
struct Line
{
    qint64 number = 0;
    CString category; ///< its full text
    Rule rule;
    CString bills; ///< the cells
    CString quotas;
};

CString SortedConditions(const Rule& rule)
{
    CStringArray texts;
    for (const Condition& condition : rule.conditions)
        texts.append(condition.Text());
    std::sort(texts.begin(), texts.end());
    return texts.join(u'\n');
}

/// The parts of a former rule, each of which becomes one part at the most.
template <typename Part>
class Unused
{
public:
    /// `parts` must outlive this.
    explicit Unused(const std::vector<Part>& parts) : m_parts(parts), m_isUsed(parts.size()) {}

    /// The first part that is right and has not been taken yet; null for none.
    template <typename IsRight>
    const Part* Take(IsRight isRight)
    {
        for (std::size_t i = 0; i < m_parts.size(); ++i)
            if (!m_isUsed[i] && isRight(m_parts[i])) {
                m_isUsed[i] = true;
                return &m_parts[i];
            }
        return nullptr;
    }

private:
    const std::vector<Part>& m_parts;
    std::vector<bool> m_isUsed;
};

/// The id of a default rule that is made for a category.
constexpr int DefaultId = 1;

/// An id that is not among `used`, and is then: the one behind the highest, as long as there is one.
int TakeFreeId(std::set<int>& used)
{
    int id = used.empty() ? 1 : *used.rbegin();
    if (id < std::numeric_limits<int>::max())
        ++id;
    else
        for (id = 1; used.contains(id);)
            ++id;
    used.insert(id);
    return id;
}

class Reader
{
public:
    Reader(const RuleSheet& sheet, const Configuration& present, const CatalogueFacts& facts,
           const SheetItems& items, std::vector<SheetFault>& faults)
        : m_sheet(sheet), m_present(present), m_facts(facts), m_items(items), m_known(present),
          m_faults(faults)
    {
    }

    Configuration Run()
    {
        if (!TakeHeadings()) return Configuration({});
        std::map<CString, std::vector<Line>> lines;
        for (const RuleSheet::Row& row : m_sheet.rows)
            TakeRow(row, lines);
        std::vector<Specialty> specialties = m_present.Specialties();
        for (Specialty& specialty : specialties)
            for (BigCategory& big : specialty.bigCategories)
                for (SmallCategoryPtr& small : big.smallCategories) {
                    const auto found = lines.find(small->text);
                    if (found == lines.end()) continue;
                    auto category = std::make_shared<SmallCategory>(*small);
                    category->rules = ListOf(found->second, *small);
                    small = std::move(category);
                }
        return Configuration(std::move(specialties));
    }

private:
    void Fault(qint64 line, const CString& text) { m_faults.push_back({line, text}); }

    bool TakeHeadings()
    {
        const std::size_t before = m_faults.size();
        for (qsizetype i = 0; i < m_sheet.headings.size(); ++i) {
            const CString& heading = m_sheet.headings[i];
            if (heading.isEmpty() || m_sheet.headings.indexOf(heading) != i)
                Fault(1,
                      heading.isEmpty() ? u"第 %1 列没有列名"_s.arg(i + 1) : u"列“%1”有两个"_s.arg(heading));
        }
        for (const CString& needed : {sheet::CategoryColumn, sheet::BillColumn, sheet::QuotaColumn})
            if (!m_sheet.headings.contains(needed)) Fault(1, u"缺少列“%1”"_s.arg(needed));
        return m_faults.size() == before;
    }

    CString CellAt(const RuleSheet::Row& row, const CString& heading) const
    {
        const qsizetype column = m_sheet.headings.indexOf(heading);
        return column < 0 ? CString() : row.cells.value(column).trimmed();
    }

    bool KnowsAttribute(const SmallCategory& category, const CString& name) const
    {
        const auto facts = m_facts.find(category.text);
        const bool isInCatalogue =
            facts != m_facts.end() &&
            std::any_of(facts->second.begin(), facts->second.end(),
                        [&](const AttributeFacts& known) { return known.name == name; });
        return isInCatalogue || name == OwnName ||
               std::any_of(category.rules.begin(), category.rules.end(), [&](const Rule& rule) {
                   return std::any_of(
                       rule.conditions.begin(), rule.conditions.end(),
                       [&](const Condition& condition) { return condition.attribute == name; });
               });
    }

    void TakeRow(const RuleSheet::Row& row, std::map<CString, std::vector<Line>>& lines)
    {
        const CString text = CellAt(row, sheet::CategoryColumn);
        const SmallCategoryPtr category = m_present.Find(text);
        if (!category) return Fault(row.line, u"没有小类“%1”"_s.arg(text));
        if (row.cells.size() > m_sheet.headings.size()) return Fault(row.line, u"单元格比列名多"_s);
        Line line;
        line.number = row.line;
        line.category = category->text;
        const CString isDefault = CellAt(row, sheet::DefaultColumn);
        line.rule.isDefault = isDefault == sheet::Yes;
        if (!isDefault.isEmpty() && isDefault != sheet::Yes && isDefault != u"否")
            Fault(row.line, u"“默认规则”只能是 是、否 或空：%1"_s.arg(isDefault));
        for (const CString& heading : m_sheet.headings)
            if (!sheet::IsFixed(heading)) TakeConditions(row, heading, *category, line.rule);
        line.bills = CellAt(row, sheet::BillColumn);
        line.quotas = CellAt(row, sheet::QuotaColumn);
        TakeItems(line);
        lines[text].push_back(std::move(line));
    }

    void TakeConditions(const RuleSheet::Row& row, const CString& attribute, const SmallCategory& category,
                        Rule& rule)
    {
        const CString cell = CellAt(row, attribute);
        if (cell.isEmpty()) return;
        if (!KnowsAttribute(category, attribute))
            return Fault(row.line, u"%1 没有属性“%2”"_s.arg(category.text, attribute));
        for (const CString& part : cell.split(u'\n')) {
            if (part.trimmed().isEmpty()) continue;
            const auto condition = ConditionOf(attribute, part.trimmed());
            if (condition)
                rule.conditions.push_back(*condition);
            else
                Fault(row.line, u"“%1”的范围写得不对：%2"_s.arg(attribute, part));
        }
    }

    void TakeItems(Line& line)
    {
        const auto bills = ReadItems(line.bills);
        const auto quotas = ReadItems(line.quotas);
        if (!bills || !quotas) return Fault(line.number, u"清单或定额写得不对，每行先写编号"_s);
        for (const ItemWords& words : *bills) {
            if (!words.isBelow) {
                const auto record = Find(words.number, line.category, m_items.bill, m_known.bills);
                if (!record) Fault(line.number, u"清单库里没有 %1"_s.arg(words.number));
                BillItem& item = line.rule.bills.emplace_back();
                item.record = Said(words, record.value_or(QdStruct()));
            } else {
                const auto record =
                    Find(words.number, line.category, m_items.quotaOfBills, m_known.quotasOfBills);
                if (!record) Fault(line.number, u"定额库里没有 %1"_s.arg(words.number));
                line.rule.bills.back().quotas.push_back({0, Said(words, record.value_or(DeStruct()))});
            }
        }
        for (const ItemWords& words : *quotas) {
            if (words.isBelow) return Fault(line.number, u"“定额”列里不能有 %1"_s.arg(sheet::Below));
            const auto record = Find(words.number, line.category, m_items.quota, m_known.quotas);
            if (!record) Fault(line.number, u"定额库里没有 %1"_s.arg(words.number));
            line.rule.quotas.push_back({0, Said(words, record.value_or(DeStruct()))});
        }
    }

    /// What a rule of that category says in a table: two rules that say the same have the same line.
    CString KeyOf(const Rule& rule, const CString& category) const
    {
        return (rule.isDefault ? sheet::Yes : CString()) + u'\x1' + SortedConditions(rule) + u'\x1' +
               BillCell(rule.bills, category, m_items).value_or(u"\x2"_s) + u'\x1' +
               QuotaCell(rule.quotas, category, m_items).value_or(u"\x2"_s);
    }

    /// The rules of a category: those that are there already where lines say them, the others made or
    /// changed.
    std::vector<Rule> ListOf(std::vector<Line>& lines, const SmallCategory& category) const
    {
        const std::vector<Rule>& present = category.rules;
        std::multimap<CString, std::size_t> byKey;
        for (std::size_t i = 0; i < present.size(); ++i)
            byKey.emplace(KeyOf(present[i], category.text), i);
        std::set<std::size_t> used;
        std::vector<Rule> list;
        std::vector<std::size_t> made; // indexes of the list
        for (Line& line : lines) {
            const auto [begin, end] = byKey.equal_range(KeyOf(line.rule, category.text));
            const auto same =
                std::find_if(begin, end, [&](const auto& entry) { return !used.contains(entry.second); });
            if (same == end) {
                made.push_back(list.size());
                list.push_back(line.rule);
            } else {
                used.insert(same->second);
                list.push_back(present[same->second]);
            }
        }
        TakeChanged(list, made, present, used);
        AddDefault(list, present, used);
        return list;
    }

    /// Gives the rules that were made the ids and hidden parts of those that they were, and the others new
    /// ids.
    static void TakeChanged(std::vector<Rule>& list, const std::vector<std::size_t>& made,
                            const std::vector<Rule>& present, std::set<std::size_t>& used)
    {
        std::vector<std::size_t> restIndex;
        std::vector<Rule> rest;
        std::set<int> ids{DefaultId};
        for (std::size_t i = 0; i < present.size(); ++i) {
            ids.insert(present[i].id);
            if (used.contains(i)) continue;
            restIndex.push_back(i);
            rest.push_back(present[i]);
        }
        std::vector<Rule> makes;
        makes.reserve(made.size());
        for (const std::size_t i : made)
            makes.push_back(list[i]);
        const RulePairing pairing = PairRules(rest, makes);
        for (std::size_t j = 0; j < made.size(); ++j) {
            Rule& rule = list[made[j]];
            const int former = pairing.beforeOf[j];
            if (former == RulePairing::None) {
                rule.id = TakeFreeId(ids);
                NumberParts(rule, Rule());
            } else {
                const auto index = static_cast<std::size_t>(former);
                used.insert(restIndex[index]);
                rule.id = rest[index].id;
                NumberParts(rule, rest[index]);
            }
        }
    }

    /// Parts that the former rule has keep what it has of them.
    static void NumberParts(Rule& rule, const Rule& former)
    {
        rule.counters = former.counters;
        std::set<int> conditionIds;
        Unused<Condition> conditions(former.conditions);
        for (Condition& condition : rule.conditions) {
            const Condition* const same = conditions.Take(
                [&](const Condition& candidate) { return candidate.Text() == condition.Text(); });
            if (same != nullptr && conditionIds.insert(same->id).second)
                condition = *same;
            else
                condition.id = tree::NextId(rule.counters.condition);
        }
        std::set<int> ids; // a file may have one twice
        Unused<BillItem> bills(former.bills);
        for (BillItem& item : rule.bills) {
            const BillItem* const same = bills.Take(
                [&](const BillItem& candidate) { return candidate.record.strQdId == item.record.strQdId; });
            if (same != nullptr) KeepHidden(item.record, same->record);
            item.id =
                same != nullptr && ids.insert(same->id).second ? same->id : tree::NextId(rule.counters.bill);
            int counter = 0;
            NumberQuotas(item.quotas, same != nullptr ? same->quotas : std::vector<QuotaItem>(), counter);
        }
        NumberQuotas(rule.quotas, former.quotas, rule.counters.quota);
    }

    static void NumberQuotas(std::vector<QuotaItem>& items, const std::vector<QuotaItem>& former,
                             int& counter)
    {
        for (const QuotaItem& item : former)
            counter = std::max(counter, item.id);
        std::set<int> ids;
        Unused<QuotaItem> quotas(former);
        for (QuotaItem& item : items) {
            const QuotaItem* const same = quotas.Take(
                [&](const QuotaItem& candidate) { return candidate.record.strDeId == item.record.strDeId; });
            if (same != nullptr) KeepHidden(item.record, same->record);
            item.id = same != nullptr && ids.insert(same->id).second ? same->id : tree::NextId(counter);
        }
    }

    /// All that no cell says stays as the rule had it.
    template <typename Record>
    static void KeepHidden(Record& record, const Record& former)
    {
        const CString formula = record.strFormula;
        const CString annex = record.strAnnex;
        record = former;
        record.strFormula = formula;
        if ((annex == sheet::Yes) != (former.strAnnex == sheet::Yes)) record.strAnnex = annex;
    }

    static void AddDefault(std::vector<Rule>& list, const std::vector<Rule>& present,
                           const std::set<std::size_t>& used)
    {
        if (std::any_of(list.begin(), list.end(), [](const Rule& rule) { return rule.isDefault; })) return;
        Rule rule;
        std::set<int> ids;
        for (const Rule& known : list)
            ids.insert(known.id);
        rule.id = ids.contains(DefaultId) ? TakeFreeId(ids) : DefaultId;
        rule.isDefault = true;
        if (!present.empty() && IsBareDefault(present.back()) && !used.contains(present.size() - 1))
            rule = present.back();
        list.push_back(std::move(rule));
    }

    const RuleSheet& m_sheet;
    const Configuration& m_present;
    const CatalogueFacts& m_facts;
    const SheetItems& m_items;
    KnownItems m_known;
    std::vector<SheetFault>& m_faults;
};

} // namespace

Configuration ReadSheet(const RuleSheet& sheet, const Configuration& present, const CatalogueFacts& facts,
                        const SheetItems& items, std::vector<SheetFault>& faults)
{
    return Reader(sheet, present, facts, items, faults).Run();
}

} // namespace rules
