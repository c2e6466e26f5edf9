#pragma once

/// The plain address of a node, copied freely. It has no constructor: a caller fills only the fields that the
/// operation at hand reads, the others hold whatever they held. Write `CPath path{};` to start from zeros.
/// Each field is the id of a node among its siblings; an id that is not there makes the path resolve to
/// nothing.
class CPath
{
public:
    int specId;      ///< the `Spec`; only compared with the one that the store holds
    int lMemberId;   ///< an `LMember` of the `Spec`
    int sMemberId;   ///< an `SMember` of the `LMember`
    int configId;    ///< a `ConfigNode` of the `SMember`
    int conditionId; ///< a `ConditionNode` of the rule
    int qdId;        ///< a `QdNode` of the rule
    int spareId;     ///< nothing: it only travels along when a path is copied
    int deId;        ///< a `DeNode` of the rule, or of the `QdNode` at `qdId`
};
