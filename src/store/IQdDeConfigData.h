#pragma once

#include "platform/Export.h"
#include "tree/CPath.h"
#include "tree/ConfigNode.h"

#include <map>
#include <set>
#include <vector>

/// The store of one rule file: it holds the rule tree of one specialty and brings it to and from the file.
///
/// An operation on a path resolves it first and, when that finds no node, returns false or null with nothing
/// changed. All but the first five change memory only; a change reaches the disk with the next `Save`.
/// Pointers handed out stay the tree's and are good until the node is deleted or the store reloads. `rules`
/// arguments are replaced, `indexes` are appended to. Not copied in practice: copying does nothing of its
/// own.
class KTQDDE_EXPORT IQdDeConfigData
{
public:
    IQdDeConfigData() = default;
    IQdDeConfigData(const IQdDeConfigData&) = default;
    IQdDeConfigData& operator=(const IQdDeConfigData&) = default;
    virtual ~IQdDeConfigData();

    /// The path text of the file that the store is bound to.
    virtual CString GetFilePath() = 0;
    /// Writes the tree to the bound file: only this specialty's element is replaced, and it moves to the end.
    /// Raises `xml::Error` when the file cannot be written; the tree keeps its edits.
    virtual bool Save() = 0;
    /// Copies the bound file over `path` unless that is the bound path, and writes the tree there. The store
    /// stays bound to the first file. False, after a warning, when the copy fails.
    virtual bool SaveAs(const CString& path) = 0;
    /// Saves the bound file if `path` is another one (compared without regard to case), whether or not the
    /// rest succeeds, then replaces the tree from `path` and binds to it. False, with tree and binding as
    /// before, for a missing file (after a warning), one that cannot be parsed and one with another document
    /// element. Whatever it raises leaves tree and binding as before, too.
    virtual bool ReLoad(const CString& path) = 0;
    /// Copies the template over `path`, then `ReLoad(path)`. A missing template is not reported: whatever
    /// stands at `path` is loaded.
    virtual bool NewFile(const CString& path) = 0;

    /// The rule at `path`, or null.
    virtual ConfigNode* GetConfig(const CPath& path) = 0;
    /// All rules of the small category at `path`.
    virtual bool GetConfig(const CPath& path, std::vector<ConfigNode*>& rules) = 0;
    /// The bill numbers of the rule at `path`.
    virtual bool GetExistQdIndex(const CPath& path, std::vector<CString>& indexes) = 0;

    /// Rules of the small category at `path`; see `SMember` for what each does.
    virtual bool AddConfig(const CPath& path, int& newId) = 0;
    virtual bool MoveUpConfig(const CPath& path) = 0;
    virtual bool MoveDownConfig(const CPath& path) = 0;
    virtual bool AddConfigByCopy(const CPath& path, int& newId) = 0;
    virtual bool DelConfig(const CPath& path) = 0;

    /// Conditions of the rule at `path`. `DelCondition` is true also when the rule lacks the condition.
    virtual bool AddCondition(const CPath& path, const ConditionNode& condition) = 0;
    virtual bool ResetCondition(const CPath& path, const ConditionNode& condition) = 0;
    virtual bool DelCondition(const CPath& path, std::vector<ConfigNode*>& rules) = 0;

    /// Bill and quota items. `rules` becomes the rules of the small category.
    virtual bool AddQd(const QdStruct& qd, const CPath& path, std::vector<ConfigNode*>& rules) = 0;
    virtual bool AddDe2QdNode(const DeStruct& de, const CPath& path, std::vector<ConfigNode*>& rules) = 0;
    virtual bool AddDe2ConfigNode(const DeStruct& de, const CPath& path, std::vector<ConfigNode*>& rules) = 0;
    virtual bool DelQd(const CPath& path, const std::set<int>& qdIds) = 0;
    /// Quota ids by bill id. Always true: bill items that are not there are skipped, and so is a path that
    /// resolves to nothing.
    virtual bool DelDeInQdNode(const CPath& path, const std::map<int, std::set<int>>& deIdsByQd) = 0;
    virtual bool DelDeInConfigNode(const CPath& path, const std::set<int>& deIds) = 0;
    virtual bool ResetQd(const CPath& path, const QdStruct& qd) = 0;
    virtual bool ResetDeToConfig(const CPath& path, const DeStruct& de) = 0;
    virtual bool ResetDeToQd(const CPath& path, const DeStruct& de) = 0;
};
