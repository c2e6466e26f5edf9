#pragma once

#include "tree/CPath.h"
#include "tree/ConfigNode.h"
#include "tree/FindById.h"

#include <vector>

/// One small category with its ordered list of rules, which it owns. The last rule is the default rule, its
/// id is 1, new rules go in front of it and no move takes a rule past it. Nothing but the operations below
/// enforces that: a file whose default rule stands elsewhere is read as it is, and whatever rule is last then
/// takes that place.
class KTQDDE_EXPORT SMember final : public QdDeConfigNode
{
public:
    SMember() = default;
    /// Copies share their children with the source, and only one of the two may be destroyed.
    SMember(const SMember& other) = default;
    SMember& operator=(const SMember& other) = default;
    ~SMember();

    CString GetName() const { return m_name; }
    void SetName(const CString& name) { m_name = name; }

    /// A copy of the list in rule order. The rules stay this node's.
    std::vector<ConfigNode*> GetAllConfig() const { return m_configs; }
    /// The first rule with that id, or null.
    ConfigNode* GetConfig(int id) const noexcept { return tree::FindById(m_configs, id); }

    /// Adds an empty rule in front of the last one and gives its id. The path is not used. True. The list
    /// must hold a rule, as it does after every read; raises `std::out_of_range`, with nothing changed, when
    /// it does not.
    bool AddConfig(const CPath& path, int& newId);
    /// Appends the rule as it is. Takes ownership.
    void AddConfig(ConfigNode* config);
    /// Adds a clone of the rule with that id in front of the last one and gives the clone's id; false when
    /// there is no such rule. The default rule can be copied, too, and the copy is a second default rule.
    bool AddConfigByCopy(int id, int& newId);
    /// Deletes the first rule with that id, the default rule included. Always true, also when there is none,
    /// in contrast to `ConfigNode::DelCondition`.
    bool DelConfig(int id);
    /// Deletes all rules. The counter stays.
    void DeleteAllConfig();

    /// Swaps the rule at `path.configId` with its neighbour. False, with nothing changed, for the first rule
    /// moving up, for the last rule, for the one before the last moving down, and for an unknown id.
    bool MoveUpConfig(const CPath& path);
    /// With fewer than two rules the limit wraps around and the checked list index raises
    /// `std::out_of_range`; nothing has changed then.
    bool MoveDownConfig(const CPath& path);

    /// Reads name and rules; the id is the host's and set before. `LastConfigId` of the file is not read: the
    /// counter comes from the rules' ids, so the id of a deleted last rule is given out again after a save
    /// and a reload. A missing default rule is made, in the document read from, too.
    bool ReadData(IXMLDOMNode node) override;
    bool WriteData(IXMLDOMNode node) override;

private:
    static IXMLDOMElement AddDefaultConfig(const IXMLDOMNode& container);
    std::size_t IndexOf(int id) const;
    void InsertBeforeLast(ConfigNode* config);

    CString m_name;
    int LastConfigId = 0;
    std::vector<ConfigNode*> m_configs;
};
