#include "xml/RootAttribute.h"

#include "platform/Files.h"
#include "xml/DocumentData.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace xml {

namespace {

/// The document element's start tag is looked for in so many bytes before the whole file is read.
constexpr qint64 HeadLength = 64 * 1024;

/// The value between two quotes as readers of the file get it.
QByteArray ReadValue(const QByteArray& quoted)
{
    pugi::xml_document document;
    const QByteArray text = "<a v=" + quoted + "/>";
    document.load_buffer(text.constData(), static_cast<std::size_t>(text.size()), pugi::parse_default,
                         pugi::encoding_utf8);
    return document.first_child().attribute("v").value();
}

const detail::AttributeOutline* FindAttribute(const detail::Outline& head, const QByteArray& name)
{
    const std::string_view wanted(name.constData(), static_cast<std::size_t>(name.size()));
    const auto found = std::find_if(head.rootAttributes.begin(), head.rootAttributes.end(),
                                    [wanted](const detail::AttributeOutline& a) { return a.name == wanted; });
    return found == head.rootAttributes.end() ? nullptr : &*found;
}

/// Changes the text. False when it says so already.
bool Patch(QByteArray& text, const QByteArray& name, const QByteArray& value)
{
    const detail::Outline head = detail::Scanner(text).ScanHead();
    if (const detail::AttributeOutline* attribute = FindAttribute(head, name)) {
        const auto begin = static_cast<qsizetype>(attribute->valueBegin) - 1;
        const qsizetype length = static_cast<qsizetype>(attribute->valueEnd) + 1 - begin;
        if (ReadValue(text.mid(begin, length)) == value) return false;
        text.replace(begin, length, '"' + detail::EscapedValue(value) + '"');
        return true;
    }
    qsizetype place = static_cast<qsizetype>(head.rootTagEnd) - (head.rootSelfClosing ? 2 : 1);
    if (!head.rootAttributes.empty()) place = static_cast<qsizetype>(head.rootAttributes.back().valueEnd) + 1;
    text.insert(place, ' ' + name + "=\"" + detail::EscapedValue(value) + '"');
    return true;
}

/// Whether the head of a UTF-8 file already says so. False also when the head does not tell.
bool HeadSays(const CString& path, const QByteArray& name, const QByteArray& value)
{
    const std::optional<QByteArray> bytes = platform::Files().ReadHead(path, HeadLength);
    if (!bytes) return false;
    try {
        detail::SourceText source = detail::DecodeSource(*bytes);
        return !Patch(source.utf8, name, value);
    } catch (const detail::Refusal&) {
        return false; // perhaps only cut off
    }
}

bool IsPossible(const CString& name, const CString& value)
{
    return IsName(name) && IsText(value);
}

CString NotPossible(const CString& name)
{
    return u"“%1”不能作为 XML 属性"_s.arg(name);
}

QByteArray Patched(const QByteArray& bytes, const QByteArray& name, const QByteArray& value)
{
    try {
        detail::SourceText source = detail::DecodeSource(bytes);
        return Patch(source.utf8, name, value) ? detail::EncodeSource(source.utf8, source) : bytes;
    } catch (const detail::Refusal& refusal) {
        throw Error(refusal.text.toString());
    }
}

CString SetInWholeFile(const CString& path, const QByteArray& name, const QByteArray& value)
{
    CString reason;
    const std::optional<QByteArray> bytes = platform::Files().Read(path, &reason);
    if (!bytes) return reason;
    try {
        const QByteArray patched = Patched(*bytes, name, value);
        if (patched != *bytes) platform::Files().WriteInPlace(path, patched, &*bytes);
        return {};
    } catch (const platform::FileError& error) {
        return error.Message();
    } catch (const Error& error) {
        return error.Message();
    }
}

} // namespace

bool SetRootAttribute(const CString& path, const CString& name, const CString& value, CString* reason)
{
    CString why;
    if (!IsPossible(name, value))
        why = NotPossible(name);
    else if (!HeadSays(path, name.toUtf8(), value.toUtf8()))
        why = SetInWholeFile(path, name.toUtf8(), value.toUtf8());
    if (!why.isEmpty() && reason != nullptr) *reason = why;
    return why.isEmpty();
}

QByteArray WithRootAttribute(const QByteArray& bytes, const CString& name, const CString& value)
{
    if (!IsPossible(name, value)) throw Error(NotPossible(name));
    return Patched(bytes, name.toUtf8(), value.toUtf8());
}

} // namespace xml
