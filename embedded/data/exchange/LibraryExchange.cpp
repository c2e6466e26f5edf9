#include "embedded/data/exchange/LibraryExchange.h"

#include "embedded/data/exchange/GuideTable.h"
#include "embedded/data/exchange/SharedColumns.h"

#include <algorithm>
#include <limits>
#include <utility>
#include <vector>

namespace embedded {

using namespace Qt::StringLiterals;

namespace {

const CString NumberColumn = u"number"_s;
const CString Section = u"section"_s;
const CString SectionTitle = u"section_title"_s;

constexpr int LargestUnitCode = 1'000'000;
/// Of a section. Every level is a section of its own, with a code as long as all above it: without a limit
/// one row could fill the memory.
constexpr qsizetype MostLevels = 32;

/// Columns of the item tables.
enum ItemColumn { NumberAt, NameAt, UnitAt, UnitCodeAt, WithAnnexAt, CalRuleAt, SectionAt, BillsAt };

/// The number at the head of a unit such as "10m", at least 1.
CString LeadingNumber(const CString& unit)
{
    int number = 0;
    for (const QChar character : unit) {
        if (character < u'0' || character > u'9' || number > LargestUnitCode / 10) break;
        number = number * 10 + character.digitValue();
    }
    return CString::number(std::clamp(number, 1, LargestUnitCode));
}

bool IsLetterOrDigit(QChar character)
{
    return character.unicode() < 0x80 && character.isLetterOrNumber();
}

/// How the tables of bill libraries and of quota libraries differ.
struct LibraryForm
{
    CString items;
    CString sections;
    CString sectionKey;  ///< the key column of the sections
    CString itemSection; ///< the column in which an item names its section
    QChar separator;     ///< between the levels of a section's key
    bool isBill = false;

    static LibraryForm Bill();
    static LibraryForm Quota();
};

/// The items of a library, one a row, each with its section and the titles on the way there.
class LibraryExchange final : public TableExchange
{
public:
    LibraryExchange(const LibraryForm& form, LibraryScope scope);
    void Load(Database& database) override;
    QList<CStringArray> Rows() const override;
    void Take(const ImportRow& row, ImportReport& report) override;
    void Finish(ImportReport& report) override;
    QList<const KeyedTable*> Tables() const override;

private:
    void Clear() override;

    CString Number(const ImportRow& row) const;
    CString ParentOf(const CString& section) const;
    CString TitlesOf(const CString& section) const;
    KeyedTable::Change TakeSection(const ImportRow& row, const CString& section);
    KeyedTable::Change PutLoadedSection(const CString& section);
    qsizetype CountLostBills() const;

    LibraryForm m_form;
    LibraryScope m_scope;
    KeyedTable m_items;
    KeyedTable m_sections;
    std::vector<KeyedTable> m_quotas; ///< of a bill library: the item sets whose guides speak of its items
    SeenKeys m_seen;
    SeenKeys m_titles;
};

LibraryForm LibraryForm::Bill()
{
    return {u"bill_items"_s, u"bill_sections"_s, u"index_path"_s, u"index_path"_s, u'\\', true};
}

LibraryForm LibraryForm::Quota()
{
    return {u"quota_items"_s, u"quota_sections"_s, u"code"_s, u"section"_s, u'-', false};
}

LibraryExchange::LibraryExchange(const LibraryForm& form, LibraryScope scope)
    : TableExchange({{NumberColumn, u"编号"_s, true, true},
                     {u"name"_s, u"名称"_s, true},
                     {Unit, u"单位"_s, true},
                     {u"unit_code"_s, u"单位倍数"_s},
                     {u"with_annex"_s, u"带管件"_s},
                     {u"cal_rule"_s, u"计算规则"_s},
                     {Section, u"章节"_s, true},
                     {SectionTitle, u"章节名称"_s}}),
      m_form(form), m_scope(std::move(scope)),
      m_items(form.items,
              CStringArray{NumberColumn, u"name"_s, Unit, u"unit_code"_s, u"with_annex"_s, u"cal_rule"_s,
                           form.itemSection} +
                  (form.isBill ? CStringArray() : CStringArray{u"bills"_s}),
              1),
      m_sections(form.sections, {form.sectionKey, u"title"_s}, 1)
{
}

void LibraryExchange::Load(Database& database)
{
    m_items.Load(database, m_scope.library.items);
    m_sections.Load(database, m_scope.library.items);
    for (const CString& guide : m_scope.guides)
        m_quotas.emplace_back(GuideTable()).Load(database, guide);
}

CString LibraryExchange::ParentOf(const CString& section) const
{
    return section.left(std::max(qsizetype{0}, section.lastIndexOf(m_form.separator)));
}

CString LibraryExchange::TitlesOf(const CString& section) const
{
    const CStringArray row = m_sections.Find({section});
    if (row.isEmpty()) return {};
    const CString above = TitlesOf(ParentOf(section));
    return above.isEmpty() ? row[1] : above + u'\\' + row[1];
}

QList<CStringArray> LibraryExchange::Rows() const
{
    QHash<CString, QList<CStringArray>> bySection;
    for (const CStringArray& item : m_items.Rows())
        bySection[item[SectionAt]].append(item);
    QList<CStringArray> rows;
    for (const CStringArray& section : m_sections.Rows()) {
        const CString titles = TitlesOf(section[0]);
        for (CStringArray item : bySection.value(section[0])) {
            item[WithAnnexAt] = item[WithAnnexAt] == u"0" ? u"否"_s : u"是"_s;
            rows.append(item.first(BillsAt) + CStringArray{titles});
        }
    }
    return rows;
}

void LibraryExchange::Clear()
{
    m_items.Clear();
    m_sections.Clear();
}

/// Numbers of bill items follow the coding rule of their library, and a comma would end them where quota
/// items name them.
CString LibraryExchange::Number(const ImportRow& row) const
{
    CString number = row.Key(NumberColumn);
    if (!m_form.isBill) return number;
    if (!std::all_of(number.begin(), number.end(), IsLetterOrDigit))
        row.Refuse(NumberColumn, u"“%1”只能由数字和拉丁字母组成"_s.arg(number));
    const int length = m_scope.library.codeLength;
    if (length > 0 && number.size() != length) {
        row.Refuse(NumberColumn,
                   u"“%1”有 %2 位，清单库的编码规则要求 %3 位"_s.arg(number).arg(number.size()).arg(length));
    }
    return number;
}

void LibraryExchange::Take(const ImportRow& row, ImportReport& report)
{
    const CString number = Number(row);
    m_seen.Take(number, row.Line());
    const CString name = row.Text(u"name"_s);
    if (name.trimmed().isEmpty()) row.Refuse(u"name"_s, u"不能为空"_s);
    const CString unit = row.Key(Unit);
    const CString section = row.Key(Section);
    if (const qsizetype levels = section.count(m_form.separator) + 1; levels > MostLevels)
        row.Refuse(Section, u"有 %1 级，最多 %2 级"_s.arg(levels).arg(MostLevels));

    const CStringArray loaded = m_items.FindLoaded({number});
    const bool isSameUnit = loaded.value(UnitAt) == unit;
    const CString unitCode = LeadingNumber(unit);
    CStringArray item{number, name, unit};
    item.append(row.Number(u"unit_code"_s, 1, LargestUnitCode,
                           isSameUnit ? loaded.value(UnitCodeAt) : unitCode, unitCode));
    item.append(row.Choice(u"with_annex"_s, {{u"1"_s, u"是"_s}, {u"0"_s, u"否"_s}},
                           loaded.value(WithAnnexAt, u"0"_s), u"0"_s));
    item.append(row.Text(u"cal_rule"_s, loaded.value(CalRuleAt)));
    item.append(section);
    if (!m_form.isBill) item.append(loaded.value(BillsAt));
    const auto change = TakeSection(row, section);
    Count(Stronger(m_items.Put(item), change), report);
}

/// The titles are those of the section and of the levels above it, as many as are given.
KeyedTable::Change LibraryExchange::TakeSection(const ImportRow& row, const CString& section)
{
    const CString joined = row.Word(SectionTitle);
    auto change = KeyedTable::Change::None;
    if (joined.isEmpty()) {
        if (!m_sections.Has({section}) && m_sections.FindLoaded({section}).isEmpty())
            row.Refuse(Section, u"：没有章节“%1”，新章节要写明章节名称"_s.arg(section));
        return PutLoadedSection(section);
    }
    CStringArray titles = joined.split(u'\\');
    CStringArray codes;
    for (CString code = section; codes.size() < titles.size(); code = ParentOf(code)) {
        if (code.isEmpty())
            row.Refuse(SectionTitle, u"有 %1 级，章节“%2”没有这么多级"_s.arg(titles.size()).arg(section));
        codes.prepend(code);
    }
    for (qsizetype level = 0; level < codes.size(); ++level) {
        const CString title = titles[level].trimmed();
        if (title.isEmpty()) row.Refuse(SectionTitle, u"“%1”中有空的一级"_s.arg(joined));
        m_titles.Agree(codes[level], title, row.Line());
        change = Stronger(change, m_sections.Put({codes[level], title}));
    }
    return change;
}

/// A section that the file names without a title stays what it was, and so do those above it.
KeyedTable::Change LibraryExchange::PutLoadedSection(const CString& section)
{
    const CStringArray loaded = m_sections.FindLoaded({section});
    if (m_sections.Has({section}) || loaded.isEmpty()) return KeyedTable::Change::None;
    PutLoadedSection(ParentOf(section));
    return m_sections.Put(loaded);
}

void LibraryExchange::Finish(ImportReport& report)
{
    if (!Replaces()) return;
    report.removed = m_items.CountVanished();
    if (report.removed == 0) return;
    qsizetype guides = m_form.isBill ? 0 : CountLostBills();
    for (KeyedTable& quotas : m_quotas)
        guides += LeaveOutOfGuide(quotas, [&](const CString& number) { return m_items.Has({number}); });
    report.notes += NoteOfGuides(guides);
}

/// The bill items that quota items which have gone went with.
qsizetype LibraryExchange::CountLostBills() const
{
    qsizetype lost = 0;
    for (const CStringArray& quota : m_items.Loaded())
        lost += m_items.Has({quota[NumberAt]}) ? 0 : BillsOf(quota).size();
    return lost;
}

QList<const KeyedTable*> LibraryExchange::Tables() const
{
    QList<const KeyedTable*> tables{&m_sections, &m_items};
    for (const KeyedTable& quotas : m_quotas)
        tables.append(&quotas);
    return tables;
}

} // namespace

std::unique_ptr<TableExchange> MakeBillExchange(LibraryScope scope)
{
    return std::make_unique<LibraryExchange>(LibraryForm::Bill(), std::move(scope));
}

std::unique_ptr<TableExchange> MakeQuotaExchange(LibraryScope scope)
{
    return std::make_unique<LibraryExchange>(LibraryForm::Quota(), std::move(scope));
}

} // namespace embedded
