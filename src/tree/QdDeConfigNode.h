#pragma once

#include "platform/Export.h"
#include "xml/Dom.h"

/// Base of all nodes of the rule tree: an id among siblings and a link to the node that holds this one.
///
/// The tree is owned from the top: each parent owns the children in its vectors through plain pointers of the
/// concrete type and deletes them through it, so the destructor is not virtual and nothing is ever deleted
/// through a `QdDeConfigNode` pointer. A subtree is duplicated by `Clone` only; copying a node copies its
/// fields and thereby shares its children. Used on the thread of the dialogs only.
class KTQDDE_EXPORT QdDeConfigNode
{
public:
    /// A node with id 0 and no parent.
    QdDeConfigNode();
    /// Copies id and parent.
    QdDeConfigNode(const QdDeConfigNode& other);
    /// Copies id and parent, unless assigned to itself.
    QdDeConfigNode& operator=(const QdDeConfigNode& other);

    int GetId() const noexcept { return m_id; }
    void SetId(int id) noexcept { m_id = id; }
    /// The node that holds this one, null at the top. Not owned.
    QdDeConfigNode* GetParent() const noexcept { return m_parent; }
    void SetParent(QdDeConfigNode* parent) noexcept { m_parent = parent; }

    /// Whether this id is the smaller one. Ids address nodes and never order them: no sibling order depends
    /// on this.
    bool operator<(const QdDeConfigNode& other) const noexcept { return m_id < other.m_id; }

    /// Fills the node from an element. A null node or one that is no element (a comment) reads as an element
    /// without attributes. The result says whether the node belongs into the tree.
    virtual bool ReadData(IXMLDOMNode node);
    /// Writes the node into an empty element. Raises `xml::Error` for characters that no XML file can hold
    /// and `xml::PointerError` for a null node.
    virtual bool WriteData(IXMLDOMNode node);

private:
    int m_id;
    QdDeConfigNode* m_parent;
};
