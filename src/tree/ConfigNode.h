#pragma once

#include "tree/ConditionNode.h"
#include "tree/DeNode.h"
#include "tree/QdNode.h"

#include <set>
#include <vector>

/// One rule of a small category: conditions, and the bill and quota items that apply when they hold. The rule
/// owns all its children and looks at no mode: it holds, reads and writes both kinds of items. Ids come from
/// three counters that only grow, are written to the file and so survive a reload.
class KTQDDE_EXPORT ConfigNode final : public QdDeConfigNode
{
public:
    ConfigNode() = default;
    /// Copies share their children with the source, and only one of the two may be destroyed: `Clone`
    /// duplicates.
    ConfigNode(const ConfigNode& other) = default;
    ConfigNode& operator=(const ConfigNode& other) = default;
    ~ConfigNode();

    /// Whether this is the default rule, the catch-all of its small category.
    bool IfDefault() const noexcept { return bDefault; }
    void SetDefault(bool isDefault) noexcept { bDefault = isDefault; }

    /// The highest ids given out so far. A fresh rule has 0, so its first child gets 1. No delete lowers
    /// them.
    int GetLastConditionId() const noexcept { return LastConditionId; }
    int GetLastQdId() const noexcept { return LastQdId; }
    int GetLastDeId() const noexcept { return LastDeId; }
    void SetLastConditionId(int id) noexcept { LastConditionId = id; }
    void SetLastQdId(int id) noexcept { LastQdId = id; }
    void SetLastDeId(int id) noexcept { LastDeId = id; }

    /// Appends a copy of the condition with the next id. Always true. Sets no parent, unlike the other adds:
    /// nobody reads a condition's parent.
    bool AddCondition(const ConditionNode& condition);
    /// Appends a bill item or quota item of these values with the next id. Always true.
    bool AddQd(const QdStruct& record);
    bool AddDe(const DeStruct& record);
    /// Append the node as it is, unnumbered and with its own parent. Take ownership.
    void AddCondition(ConditionNode* condition);
    void AddQd(QdNode* node);
    void AddDe(DeNode* node);

    /// Copies of the lists in display order. The nodes stay the rule's; a pointer is good until the node is
    /// deleted or the store reloads.
    std::vector<ConditionNode*> GetCondition() const { return m_conditions; }
    std::vector<QdNode*> GetQd() const { return m_qd; }
    std::vector<DeNode*> GetDe() const { return m_de; }
    /// The first child with that id, or null.
    QdNode* GetQd(int id) const;
    DeNode* GetDe(int id) const;

    /// Overwrite the values of the first child with that id; false when there is none. Ids and a bill item's
    /// quota items stay.
    bool ResetCondition(int id, const ConditionNode& condition);
    bool ResetQd(int id, const QdStruct& record);
    bool ResetDe(int id, const DeStruct& record);

    /// Deletes the first condition with that id; false when there is none.
    bool DelCondition(int id);
    /// Delete every item whose id is in the set; unknown ids are ignored. Always true, also when nothing was
    /// deleted.
    bool DelQd(const std::set<int>& ids);
    bool DelDe(const std::set<int>& ids);
    /// Empty a list. The counters stay.
    void DeleteAllCondition();
    void DeleteAllQd();
    void DeleteAllDe();

    /// The rule as people read it: "其它" for the default rule, whatever it holds; else each condition's text
    /// followed by
    /// ";". Empty for a rule without conditions.
    CString GetConditionString() const;
    /// Appends the bill numbers of all bill items, in order, repeated ones too. Always true.
    bool GetExistQdIndex(std::vector<CString>& numbers) const;

    bool ReadData(IXMLDOMNode node) override;
    bool WriteData(IXMLDOMNode node) override;
    /// A deep copy that keeps id, parent, counters, the default flag and the ids of all items. All its
    /// conditions have id 0, because a condition's copy resets its id and nobody numbers it anew: they are
    /// written so, and a look-up by condition id on a cloned rule reaches the first of them. The caller owns
    /// it.
    virtual ConfigNode* Clone() const;

private:
    int LastConditionId = 0;
    int LastQdId = 0;
    int LastDeId = 0;
    bool bDefault = false;
    std::vector<ConditionNode*> m_conditions;
    std::vector<QdNode*> m_qd;
    std::vector<DeNode*> m_de;
};
