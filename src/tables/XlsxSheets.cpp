#include "tables/XlsxSheets.h"

#include "tables/TableError.h"
#include "tables/XmlStream.h"

namespace tables {

using namespace Qt::StringLiterals;

namespace {

/// More than any program makes.
constexpr qsizetype MostParts = 100000;

/// The path of a part that is named relatively to the folder of another one.
CString Resolve(const CString& folder, const CString& target)
{
    if (target.startsWith(u'/')) return target.sliced(1);
    CStringArray levels = folder.isEmpty() ? CStringArray() : folder.split(u'/');
    for (const CString& level : target.split(u'/')) {
        if (level == u"..") {
            if (!levels.isEmpty()) levels.removeLast();
        } else if (level != u".") {
            levels.append(level);
        }
    }
    return levels.join(u'/');
}

/// What a part refers to, by id.
class Relations final : public XmlHandler
{
public:
    struct Relation
    {
        CString type; ///< the last word of it
        CString part;
    };

    Relations(ZipReader& zip, const CString& folder, const CString& name)
        : m_path(zip.Path()), m_folder(folder)
    {
        const CString part = (folder.isEmpty() ? CString() : folder + u'/') + u"_rels/"_s + name + u".rels"_s;
        XmlStream(zip, part.toUtf8().constData(), *this).Run();
    }

    Relation Of(const CString& id) const { return m_relations.value(id); }
    /// The part of a type; empty when there is none.
    CString PartOf(const CString& type) const
    {
        for (const Relation& relation : m_relations) {
            if (relation.type == type) return relation.part;
        }
        return {};
    }

    void Start(std::string_view name, const XmlAttributes& attributes) override
    {
        if (name != "Relationship" || attributes.Value("TargetMode") == "External") return;
        if (m_relations.size() == MostParts) throw TableError(m_path, u"工作簿的部件太多"_s);
        m_relations.insert(CString::fromUtf8(attributes.Value("Id")),
                           {CString::fromUtf8(attributes.Value("Type")).section(u'/', -1),
                            Resolve(m_folder, CString::fromUtf8(attributes.Value("Target")))});
    }
    void End(std::string_view /*name*/) override {}
    void Text(std::string_view /*text*/) override {}

private:
    CString m_path;
    CString m_folder;
    QHash<CString, Relation> m_relations;
};

/// The list of sheets.
class Workbook final : public XmlHandler
{
public:
    Workbook(const CString& path, const Relations& relations, XlsxParts& parts)
        : m_path(path), m_relations(relations), m_parts(parts)
    {
    }

    void Start(std::string_view name, const XmlAttributes& attributes) override
    {
        if (name == "workbookPr") {
            const QByteArrayView flag = attributes.Value("date1904");
            m_parts.countsFrom1904 = flag == "1" || flag == "true";
        }
        if (name != "sheet") return;
        if (m_parts.sheets.size() == MostParts) throw TableError(m_path, u"工作表太多"_s);
        const Relations::Relation relation = m_relations.Of(CString::fromUtf8(attributes.Prefixed("id")));
        // Charts and macros have sheets, too, and no rows.
        if (relation.type != u"worksheet") return;
        const QByteArrayView state = attributes.Value("state");
        const bool isHidden = !state.isEmpty() && state != "visible";
        m_parts.sheets.push_back({CString::fromUtf8(attributes.Value("name")), relation.part, isHidden});
    }
    void End(std::string_view /*name*/) override {}
    void Text(std::string_view /*text*/) override {}

private:
    CString m_path;
    const Relations& m_relations;
    XlsxParts& m_parts;
};

} // namespace

XlsxParts ReadXlsxParts(ZipReader& zip)
{
    const CString book = Relations(zip, {}, {}).PartOf(u"officeDocument"_s);
    if (book.isEmpty() || !book.endsWith(u".xml", Qt::CaseInsensitive))
        throw TableError(zip.Path(), u"不是 XLSX 工作簿；请用表格软件另存为 .xlsx"_s);
    const Relations relations(zip, book.section(u'/', 0, -2), book.section(u'/', -1));
    XlsxParts parts;
    parts.strings = relations.PartOf(u"sharedStrings"_s);
    parts.styles = relations.PartOf(u"styles"_s);
    Workbook workbook(zip.Path(), relations, parts);
    XmlStream(zip, book.toUtf8().constData(), workbook).Run();
    return parts;
}

} // namespace tables
