#include "embedded/data/history/KnownSpecialty.h"

#include "xml/Dom.h"

namespace embedded {

using namespace Qt::StringLiterals;

namespace {

/// The element of a specialty in one layout; empty when there is none, or no rule file.
QByteArray ElementOf(const QByteArray& file, const CString& specialty)
{
    const xml::Document document = xml::Document::Create();
    if (document.IsNull() || !document.LoadBytes(file)) return {};
    for (xml::Node child = document.FirstChild().FirstChild(); child; child = child.NextSibling()) {
        CString name;
        const xml::Element element = child.ToElement();
        if (element.IsNull() || !element.GetAttribute(u"name"_s, name) || name != specialty) continue;
        const xml::Document alone = xml::Document::Create();
        static_cast<void>(alone.AppendChild(element));
        return alone.ToBytes();
    }
    return {};
}

} // namespace

bool KnownSpecialty::IsOtherIn(const std::optional<QByteArray>& now, const CString& specialty) const
{
    if (!now || now == m_file) return false;
    const QByteArray theirs = ElementOf(*now, specialty);
    return !theirs.isEmpty() && theirs != ElementOf(m_file.value_or(QByteArray()), specialty);
}

bool KnownSpecialty::IsSame(const QByteArray& left, const QByteArray& right, const CString& specialty)
{
    return left == right || ElementOf(left, specialty) == ElementOf(right, specialty);
}

} // namespace embedded
