#pragma once

#include "tree/FindById.h"
#include "tree/SMember.h"

#include <vector>

/// One big category with its small categories, which it owns. Which small categories there are, in which
/// order and with which ids, is the host's to say on every read; the file contributes what hangs below them.
class KTQDDE_EXPORT LMember final : public QdDeConfigNode
{
public:
    LMember() = default;
    /// Copies share their children with the source, and only one of the two may be destroyed.
    LMember(const LMember& other) = default;
    LMember& operator=(const LMember& other) = default;
    ~LMember();

    CString GetName() const { return m_name; }
    void SetName(const CString& name) { m_name = name; }
    /// The first small category with that id, or null.
    SMember* GetSMember(int id) const noexcept { return tree::FindById(m_members, id); }
    /// A copy of the list in the host's order. The nodes stay this node's.
    std::vector<SMember*> GetAllSMember() const { return m_members; }
    void DeleteAllSMember();

    /// Reads the small categories that the host lists, looking each up by its name; `parent` must be the
    /// `Spec`. Categories that the file lacks are made in the document read from, elements that the host does
    /// not know are passed over. False when the host cannot list them: the big category is then absent from
    /// the tree.
    bool ReadData(IXMLDOMNode node) override;
    bool WriteData(IXMLDOMNode node) override;

private:
    CString FullName() const;
    int GetSMemberId(const CString& name) const;

    CString m_name;
    std::vector<SMember*> m_members;
};
