#include "embedded/data/project/RuleNumbers.h"

#include "embedded/data/project/Look.h"
#include "platform/Files.h"
#include "xml/Dom.h"

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

/// The elements of the bill items of a document. Walks with a stack of its own: a file may be nested more
/// deeply than calls may be.
CArray<xml::Element> BillsOf(const xml::Document& document)
{
    CArray<xml::Element> bills;
    CArray<xml::Node> open{document.FirstChild()};
    while (!open.isEmpty()) {
        const xml::Node node = open.takeLast();
        if (node.IsNull()) continue;
        open.append(node.NextSibling());
        const xml::Element element = node.ToElement();
        if (element.IsNull()) continue;
        if (element.Name() == BillName) {
            bills.append(element);
        } else {
            open.append(element.FirstChild());
        }
    }
    return bills;
}

/// Numbers say something else in every library.
bool IsOfLibrary(const CString& library, const CString& wanted)
{
    return library.isEmpty() || library.compare(wanted, Qt::CaseInsensitive) == 0;
}

} // namespace

RuleNumbers::RuleNumbers(CString folder) : m_folder(std::move(folder)) {}

CArray<RuleNumbers::Bill> RuleNumbers::ParseBills(const QByteArray& bytes)
{
    const xml::Document document = xml::Document::Create();
    if (document.IsNull() || !document.LoadBytes(bytes)) return {};
    CArray<Bill> bills;
    QSet<CString> known;
    for (const xml::Element& element : BillsOf(document)) {
        Bill bill{Attribute(element, u"strQdCode"_s), ToInfo(element)};
        const CString key = bill.library + u'\n' + bill.info.strNumber;
        if (known.contains(key)) continue;
        known.insert(key);
        bills.append(std::move(bill));
    }
    return bills;
}

CArray<SQdInfo> RuleNumbers::Find(const CString& baseNumber, const CString& library)
{
    CStringArray names = platform::Files().FindFiles(m_folder, u".xml"_s);
    names.sort();
    QHash<CString, File> files; // without those that are gone
    CArray<SQdInfo> found;
    QSet<CString> known;
    for (const CString& name : std::as_const(names)) {
        const File file = Current(m_folder + u'\\' + name);
        files.insert(m_folder + u'\\' + name, file);
        for (const Bill& bill : file.bills) {
            const CString& number = bill.info.strNumber;
            const bool belongs = number.size() > baseNumber.size() && number.startsWith(baseNumber) &&
                                 IsOfLibrary(bill.library, library);
            if (baseNumber.isEmpty() || !belongs || known.contains(number)) continue;
            known.insert(number);
            found.append(bill.info);
        }
    }
    m_files = std::move(files);
    return found;
}

RuleNumbers::File RuleNumbers::Current(const CString& path) const
{
    const Look look;
    const QByteArray bytes = platform::Files().Read(path).value_or(QByteArray());
    File former = m_files.value(path);
    if (former.bytes == bytes) return former;
    return {bytes, ParseBills(bytes)};
}

} // namespace embedded
