#pragma once

#include <QtCore/QByteArrayView>

#include <memory>
#include <string_view>

namespace tables {

class ZipReader;

/// What a start tag says. Names come without their prefix; valid during the call only.
class XmlAttributes
{
public:
    explicit XmlAttributes(const char* const* pairs) : m_pairs(pairs) {}
    /// The value of an attribute, whatever its prefix; null (not only empty) when there is none.
    QByteArrayView Value(std::string_view name) const;
    /// The same of an attribute that has a prefix.
    QByteArrayView Prefixed(std::string_view name) const;
    /// Whether an attribute of that name, under any prefix, has the value.
    bool Holds(std::string_view name, std::string_view value) const;

private:
    const char* const* m_pairs;
};

/// Takes what stands in a part of a workbook, in the order of the file. Names come without their prefix,
/// texts are UTF-8 and may come in pieces. What an operation raises travels on through the parser.
class XmlHandler
{
public:
    virtual ~XmlHandler();
    virtual void Start(std::string_view name, const XmlAttributes& attributes) = 0;
    virtual void End(std::string_view name) = 0;
    virtual void Text(std::string_view text) = 0;
};

/// Parses a part of an archive piece by piece, and stops when the handler asks for it. Bounded in memory
/// whatever the part holds: a document type, deep nesting and endless tags are refused.
class XmlStream
{
public:
    /// Opens the part. `zip` and `handler` must outlive this. Raises `TableError`.
    XmlStream(ZipReader& zip, const char* part, XmlHandler& handler);
    ~XmlStream();
    XmlStream(const XmlStream&) = delete;
    XmlStream& operator=(const XmlStream&) = delete;

    /// Parses on until `Pause` is called or the part ends. False when it has ended. Raises `TableError` for
    /// what is no XML, and what the handler raises.
    bool Run();
    /// For handlers: `Run` returns after the event of now.
    void Pause();

private:
    struct Parser;
    std::unique_ptr<Parser> m_parser;
};

} // namespace tables
