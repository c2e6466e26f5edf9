#include "xml/DocumentData.h"

#include "xml/Utf8Name.h"

#include "platform/Apart.h"
#include "platform/Files.h"

#include <new>

using namespace Qt::StringLiterals;

namespace xml {

using detail::Access;

namespace {

bool& EngineAvailable() noexcept
{
    static bool available = true;
    return available;
}

} // namespace

void SetEngineAvailable(bool available) noexcept
{
    EngineAvailable() = available;
}

bool IsName(const CString& name)
{
    return detail::Utf8Name(name).IsXmlName();
}

bool IsText(const CString& text)
{
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text[i];
        if (c.isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate())
            ++i;
        else if (!detail::IsXmlCharacter(c.unicode()))
            return false;
    }
    return true;
}

CString LoadReason::ToString() const
{
    return line == 0 ? text : u"第 %1 行第 %2 列：%3"_s.arg(line).arg(column).arg(text);
}

Document Document::Create()
{
    if (!EngineAvailable()) return {};
    try {
        return Access::MakeDocument(std::make_shared<detail::DocumentData>());
    } catch (const std::bad_alloc&) {
        return {};
    }
}

bool Document::Load(const CString& path) const
{
    Access::CheckNotNull(*this, u"Load");
    CString reason;
    const std::optional<QByteArray> bytes = platform::Files().Read(path, &reason);
    if (bytes) {
        const bool loaded = LoadBytes(*bytes);
        m_document->Remember(path, *bytes);
        return loaded;
    }
    m_document->Clear();
    m_document->reason = {.line = 0, .column = 0, .text = reason};
    return false;
}

bool Document::LoadBytes(const QByteArray& bytes) const
{
    Access::CheckNotNull(*this, u"Load");
    try {
        platform::RunApart(bytes.size(), [&] { m_document->Load(bytes); });
        return true;
    } catch (const detail::Refusal& refusal) {
        m_document->reason.text = refusal.text.toString();
        return false;
    }
}

LoadReason Document::Reason() const
{
    Access::CheckNotNull(*this, u"Reason");
    return m_document->reason;
}

Element Document::CreateElement(const CString& name) const
{
    Access::CheckNotNull(*this, u"CreateElement");
    const detail::Utf8Name bytes(name);
    if (!bytes.IsXmlName()) throw Error(u"“%1”不能作为 XML 元素名"_s.arg(name));
    if (!m_document->CanNote()) return Access::MakeElement(m_document, m_document->MakeElement(bytes.Text()));
    m_document->NoteElement(bytes.Text());
    return Access::MakeNoted(m_document);
}

QByteArray Document::ToBytes() const
{
    Access::CheckNotNull(*this, u"Save");
    QByteArray bytes;
    platform::RunApart(m_document->SourceSize(), [&] { bytes = m_document->ToBytes(); });
    return bytes;
}

void Document::Save(const CString& path) const
{
    const QByteArray bytes = ToBytes();
    try {
        const bool isSource = path == m_document->LoadedPath();
        platform::Files().WriteInPlace(path, bytes, isSource ? &m_document->LoadedBytes() : nullptr);
    } catch (const platform::FileError& error) {
        throw Error(error.Message());
    }
}

} // namespace xml
