#include "tables/XmlStream.h"

#include "tables/TableError.h"
#include "tables/ZipReader.h"

#include <expat.h>

#include <exception>
#include <type_traits>

namespace tables {

using namespace Qt::StringLiterals;

namespace {

constexpr int ParsedAtOnce = 1 << 16;
constexpr int Deepest = 256;
/// Bytes without an event: the parser keeps a tag until it ends.
constexpr qsizetype LongestSilence = qsizetype{1} << 22;

std::string_view Local(std::string_view name)
{
    const std::size_t colon = name.rfind(':');
    return colon == std::string_view::npos ? name : name.substr(colon + 1);
}

} // namespace

XmlHandler::~XmlHandler() = default;

QByteArrayView XmlAttributes::Value(std::string_view name) const
{
    for (const char* const* pair = m_pairs; *pair != nullptr; pair += 2) {
        if (Local(*pair) == name) return QByteArrayView(pair[1]);
    }
    return {};
}

QByteArrayView XmlAttributes::Prefixed(std::string_view name) const
{
    for (const char* const* pair = m_pairs; *pair != nullptr; pair += 2) {
        const std::string_view full = *pair;
        if (full.size() > name.size() && Local(full) == name) return QByteArrayView(pair[1]);
    }
    return {};
}

bool XmlAttributes::Holds(std::string_view name, std::string_view value) const
{
    for (const char* const* pair = m_pairs; *pair != nullptr; pair += 2) {
        if (Local(*pair) == name && pair[1] == value) return true;
    }
    return false;
}

struct XmlStream::Parser
{
    ZipReader& zip;
    CString part;
    XmlHandler& handler;
    std::unique_ptr<std::remove_pointer_t<XML_Parser>, decltype(&XML_ParserFree)> expat;
    std::exception_ptr raised{};
    int depth = 0;
    qsizetype silence = 0;
    bool isPaused = false;
    bool isFed = false; ///< the last piece has been given
    bool isDone = false;

    /// An exception must not cross the parser, which is no C++: it waits here.
    template <typename Event>
    void Guard(Event event)
    {
        silence = 0;
        if (raised) return;
        try {
            event();
        } catch (...) {
            raised = std::current_exception();
            XML_StopParser(expat.get(), XML_FALSE);
        }
    }

    [[noreturn]] void Fail(const CString& reason) const
    {
        throw TableError(zip.Path(), u"不是完整的工作簿：部件“%1”%2"_s.arg(part, reason));
    }

    static void OnStart(void* data, const char* name, const char** attributes)
    {
        auto& self = *static_cast<Parser*>(data);
        self.Guard([&] {
            if (++self.depth > Deepest) self.Fail(u"嵌套太深"_s);
            self.handler.Start(Local(name), XmlAttributes(attributes));
        });
    }

    static void OnEnd(void* data, const char* name)
    {
        auto& self = *static_cast<Parser*>(data);
        self.Guard([&] {
            --self.depth;
            self.handler.End(Local(name));
        });
    }

    static void OnText(void* data, const char* text, int length)
    {
        auto& self = *static_cast<Parser*>(data);
        self.Guard([&] { self.handler.Text({text, static_cast<std::size_t>(length)}); });
    }

    static void OnDocumentType(void* data, const char* /*name*/, const char* /*system*/,
                               const char* /*publicId*/, int /*hasSubset*/)
    {
        auto& self = *static_cast<Parser*>(data);
        self.Guard([&] { self.Fail(u"含有文档类型声明"_s); });
    }

    static void OnOther(void* data, const char* /*text*/) { static_cast<Parser*>(data)->silence = 0; }

    static void OnInstruction(void* data, const char* /*target*/, const char* /*text*/)
    {
        static_cast<Parser*>(data)->silence = 0;
    }

    XML_Status Feed()
    {
        void* const buffer = XML_GetBuffer(expat.get(), ParsedAtOnce);
        if (buffer == nullptr) Fail(u"太大"_s);
        const qsizetype read = zip.Read(static_cast<char*>(buffer), ParsedAtOnce);
        silence += read;
        if (silence > LongestSilence) Fail(u"含有过长的标签"_s);
        isFed = read == 0;
        return XML_ParseBuffer(expat.get(), static_cast<int>(read), isFed ? XML_TRUE : XML_FALSE);
    }

    void Check(XML_Status status) const
    {
        if (raised) std::rethrow_exception(raised);
        if (status != XML_STATUS_ERROR) return;
        const CString reason = CString::fromLatin1(XML_ErrorString(XML_GetErrorCode(expat.get())));
        Fail(u"第 %1 行不是 XML（%2）"_s.arg(XML_GetCurrentLineNumber(expat.get())).arg(reason));
    }
};

XmlStream::XmlStream(ZipReader& zip, const char* part, XmlHandler& handler)
    : m_parser(
          new Parser{zip, CString::fromUtf8(part), handler, {XML_ParserCreate(nullptr), &XML_ParserFree}})
{
    zip.Open(m_parser->part);
    XML_ParserStruct* const expat = m_parser->expat.get();
    XML_SetUserData(expat, m_parser.get());
    XML_SetElementHandler(expat, Parser::OnStart, Parser::OnEnd);
    XML_SetCharacterDataHandler(expat, Parser::OnText);
    XML_SetStartDoctypeDeclHandler(expat, Parser::OnDocumentType);
    XML_SetCommentHandler(expat, Parser::OnOther);
    XML_SetProcessingInstructionHandler(expat, Parser::OnInstruction);
}

XmlStream::~XmlStream() = default;

bool XmlStream::Run()
{
    Parser& parser = *m_parser;
    if (parser.isDone) return false;
    if (parser.isPaused) {
        parser.isPaused = false;
        parser.Check(XML_ResumeParser(parser.expat.get()));
    }
    while (!parser.isPaused && !parser.isFed)
        parser.Check(parser.Feed());
    if (parser.isPaused) return true;
    parser.isDone = true;
    return false;
}

void XmlStream::Pause()
{
    m_parser->isPaused = true;
    XML_StopParser(m_parser->expat.get(), XML_TRUE);
}

} // namespace tables
