#pragma once

#include "tree/FindById.h"
#include "tree/LMember.h"

#include <vector>

/// One specialty: the root of a rule tree. Owns its big categories. Which there are, in which order and with
/// which ids, is the host's to say on every read. Has no parent.
class KTQDDE_EXPORT Spec final : public QdDeConfigNode
{
public:
    Spec() = default;
    /// A copy shares its children with the source, and only one of the two may be destroyed.
    Spec(const Spec& other) = default;
    /// Destroys its own children first, unless assigned to itself, and then shares the other's.
    Spec& operator=(const Spec& other);
    ~Spec();

    /// Exchanges id, name and children with another specialty. Raises nothing.
    void Swap(Spec& other) noexcept;

    /// The name is set before reading.
    CString GetSpecName() const { return m_name; }
    void SetSpecName(const CString& name) { m_name = name; }
    /// The first big category with that id, or null.
    LMember* GetLMember(int id) const noexcept { return tree::FindById(m_members, id); }
    /// A copy of the list in the host's order. The nodes stay this node's.
    std::vector<LMember*> GetAllLMember() const { return m_members; }
    void DeleteAllLMember();

    /// Reads the id and the big categories that the host lists, looking each up by its name. Categories that
    /// the file lacks are made in the document read from, elements that the host does not know are passed
    /// over. False, without categories, when the host cannot list them. Reading again needs
    /// `DeleteAllLMember` first.
    bool ReadData(IXMLDOMNode node) override;
    bool WriteData(IXMLDOMNode node) override;

private:
    void AdoptMembers() noexcept;
    int GetLMemberId(const CString& name) const;

    CString m_name;
    std::vector<LMember*> m_members;
};
