#include "TreeTesting.h"

#include "support/StrictXml.h"

using namespace Qt::StringLiterals;

namespace test {

Page::Page() : m_document(IXMLDOMDocument::Create())
{
    m_root = m_document.AppendChild(m_document.CreateElement(u"n"_s)).ToElement();
}

Page::Page(const CString& text) : m_document(IXMLDOMDocument::Create())
{
    const bool loaded = m_document.LoadBytes(text.toUtf8());
    EXPECT_TRUE(loaded) << m_document.Reason().ToString().toStdString();
    for (IXMLDOMNode node = m_document.FirstChild(); node && m_root.IsNull(); node = node.NextSibling())
        m_root = node.ToElement();
}

CString Page::Canonical() const
{
    const QByteArray bytes = m_document.ToBytes();
    EXPECT_TRUE(IsStrictXml(bytes));
    return CanonicalXml(bytes);
}

IXMLDOMNode CommentNode()
{
    return Page(u"<n><!--注--></n>"_s).Root().FirstChild();
}

} // namespace test
