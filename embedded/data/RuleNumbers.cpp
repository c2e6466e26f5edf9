#include "embedded/data/RuleNumbers.h"

#include "platform/Files.h"
#include "platform/Paths.h"
#include "xml/Dom.h"

#include <QtCore/QFileInfo>
#include <QtCore/QSet>

#include <utility>

namespace embedded {

using namespace Qt::StringLiterals;

namespace {

const CString BillName = u"qd"_s;

CString Attribute(const xml::Element& element, const CString& name)
{
    CString value;
    element.GetAttribute(name, value);
    return value;
}

SQdInfo ToInfo(const xml::Element& bill)
{
    SQdInfo info;
    info.strNumber = Attribute(bill, u"strQdId"_s);
    info.strName = Attribute(bill, u"strName"_s);
    info.strUnit = Attribute(bill, u"strUnit"_s);
    info.nUnitCode = Attribute(bill, u"strUnitCode"_s).toInt();
    info.nWithAnnex = Attribute(bill, u"strAnnex"_s) == u"是"_s ? 1 : 0;
    info.strCalRule = Attribute(bill, u"strFormula"_s);
    return info;
}

/// The bill items of a document, each number once. Walks with a stack of its own: a file may be nested more
/// deeply than calls may be.
CArray<SQdInfo> BillsOf(const xml::Document& document)
{
    CArray<SQdInfo> items;
    QSet<CString> known;
    CArray<xml::Node> open{document.FirstChild()};
    while (!open.isEmpty()) {
        const xml::Node node = open.takeLast();
        if (node.IsNull()) continue;
        open.append(node.NextSibling());
        const xml::Element element = node.ToElement();
        if (element.IsNull()) continue;
        if (element.Name() != BillName) {
            open.append(element.FirstChild());
            continue;
        }
        SQdInfo info = ToInfo(element);
        if (known.contains(info.strNumber)) continue;
        known.insert(info.strNumber);
        items.append(std::move(info));
    }
    return items;
}

CArray<SQdInfo> ReadBills(const CString& path)
{
    const xml::Document document = xml::Document::Create();
    if (document.IsNull() || !document.Load(path)) return {};
    return BillsOf(document);
}

} // namespace

RuleNumbers::RuleNumbers(CString folder) : m_folder(std::move(folder)) {}

CArray<SQdInfo> RuleNumbers::Find(const CString& baseNumber)
{
    CStringArray names = platform::Files().FindFiles(m_folder, u".xml"_s);
    names.sort();
    QHash<CString, File> files; // without those that are gone
    CArray<SQdInfo> found;
    QSet<CString> known;
    for (const CString& name : std::as_const(names)) {
        const File file = Current(m_folder + u'\\' + name);
        files.insert(m_folder + u'\\' + name, file);
        for (const SQdInfo& item : file.items) {
            const CString& number = item.strNumber;
            const bool belongs = number.size() > baseNumber.size() && number.startsWith(baseNumber);
            if (baseNumber.isEmpty() || !belongs || known.contains(number)) continue;
            known.insert(number);
            found.append(item);
        }
    }
    m_files = std::move(files);
    return found;
}

RuleNumbers::File RuleNumbers::Current(const CString& path) const
{
    const QFileInfo info(platform::ToNative(path));
    const File former = m_files.value(path);
    if (former.size == info.size() && former.changed == info.lastModified()) return former;
    return {info.size(), info.lastModified(), ReadBills(path)};
}

} // namespace embedded
