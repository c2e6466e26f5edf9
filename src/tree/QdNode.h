#pragma once

#include "tree/DeNode.h"

#include <set>
#include <vector>

/// One bill item of a rule with its quota items, which it owns.
class KTQDDE_EXPORT QdNode final : public QdDeConfigNode
{
public:
    QdNode() = default;
    /// Copies share their children with the source, and only one of the two may be destroyed: `Clone`
    /// duplicates.
    QdNode(const QdNode& other) = default;
    QdNode& operator=(const QdNode& other) = default;
    ~QdNode();

    const QdStruct& GetRecord() const noexcept { return m_record; }
    /// Overwrites the whole record; id and quota items stay.
    void SetRecord(const QdStruct& record) { m_record = record; }

    /// Appends a quota item with the next id. Always true.
    bool AddDe(const DeStruct& record);
    /// Appends the node as it is, unnumbered and with its own parent. Takes ownership.
    void AddDe(DeNode* node);
    /// The first quota item with that id, or null. Stays this node's.
    DeNode* GetDe(int id) const;
    /// A copy of the list; the nodes stay this node's and die with it.
    std::vector<DeNode*> GetDe() const { return m_de; }
    /// Overwrites the record of the quota item with that id; false when there is none. The capital S is this
    /// class's own: the rule has `ResetDe`.
    bool ReSetDe(int id, const DeStruct& record);
    /// Deletes the quota items with these ids; unknown ids are ignored. Always true.
    bool DelDe(const std::set<int>& ids);
    /// Deletes all quota items. The counter stays.
    void DeleteAllDe();

    /// The highest quota id given out so far. It is not in the file: reading rebuilds it, so the id of
    /// a deleted last item is given out again after a save and a reload.
    int GetLastDeId() const noexcept { return LastDeId; }
    void SetLastDeId(int id) noexcept { LastDeId = id; }

    /// A deep copy with the same ids, parent and counter. The caller owns it.
    QdNode* Clone() const;

    bool ReadData(IXMLDOMNode node) override;
    bool WriteData(IXMLDOMNode node) override;

private:
    QdStruct m_record;
    int LastDeId = 0;
    std::vector<DeNode*> m_de;
};
