#pragma once

#include "support/PrintText.h"
#include "xml/Dom.h"

#include <gtest/gtest.h>

#include <vector>

/// What the tests of the tree share.
namespace test {

/// A document with one element, into which a node writes or from which it reads.
class Page
{
public:
    /// A new document with the empty element `n`.
    Page();
    /// The document that `text` is. A text that is refused is a failure of the test.
    explicit Page(const CString& text);

    IXMLDOMElement Root() const { return m_root; }
    /// The document as an independent strict parser reads it: one node a line, indented by depth.
    CString Canonical() const;

private:
    IXMLDOMDocument m_document;
    IXMLDOMElement m_root;
};

/// What a node writes into an empty element `n`, as `Page::Canonical` gives it.
template <typename Node>
CString Written(Node& node)
{
    const Page page;
    EXPECT_TRUE(node.WriteData(page.Root()));
    return page.Canonical();
}

/// Reads `node` from the root of the document that `text` is; the result of the reading.
template <typename Node>
bool Read(Node& node, const CString& text)
{
    return node.ReadData(Page(text).Root());
}

/// Writes `source` and reads what was written into `target`.
template <typename Node>
void RoundTrip(Node& source, Node& target)
{
    const Page page;
    EXPECT_TRUE(source.WriteData(page.Root()));
    EXPECT_TRUE(target.ReadData(page.Root()));
}

/// The ids of nodes, in order.
template <typename Node>
std::vector<int> Ids(const std::vector<Node*>& nodes)
{
    std::vector<int> ids;
    for (const Node* node : nodes)
        ids.push_back(node->GetId());
    return ids;
}

/// Nodes of the XML layer for tests: a comment, and a null node.
IXMLDOMNode CommentNode();

} // namespace test
