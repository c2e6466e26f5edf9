#pragma once

#include "platform/Export.h"
#include "store/CXmlAttrConfig.h"
#include "store/IQdDeConfigData.h"

#include <map>
#include <memory>
#include <set>
#include <vector>

/// What dialogs and host hold when they work on a rule file: it owns one rule store and one attribute store,
/// chooses the rule file and remembers that choice in the project's ini file. Nearly all operations forward
/// to the rule store; see `IQdDeConfigData` for what they do. None shows a message of its own and none
/// catches an error raised below it.
class KTQDDE_EXPORT CQdDeConfigPresenter
{
public:
    /// Opens a rule file for the project's current specialty. An empty path means the project's current
    /// configuration; the rule folder is then created if it is missing. Failures in opening show only in what
    /// follows (see `CXmlQdDeConfig`).
    explicit CQdDeConfigPresenter(const CString& filePath);
    /// Works on stores that are open already, and owns them from now on. Neither may be null.
    CQdDeConfigPresenter(std::unique_ptr<IQdDeConfigData> ruleStore,
                         std::unique_ptr<CXmlAttrConfig> attributeStore);
    /// Destroys the stores; saves nothing.
    ~CQdDeConfigPresenter();
    CQdDeConfigPresenter(const CQdDeConfigPresenter&) = delete;
    /// Copies the two pointers and nothing else: both presenters then share their stores and each would
    /// destroy them. A presenter has one owner; do not assign one that will be destroyed.
    CQdDeConfigPresenter& operator=(const CQdDeConfigPresenter& other);

    /// The name of the project's current configuration: a file name without folder and extension, read from
    /// the ini anew at each call, at most 99 characters. "DefaultConfig" when the ini names none. May differ
    /// from the file that the store is bound to.
    CString GetCurConfig() const;
    /// The full path of the current configuration's rule file. Creates the rule folder, one level, if it is
    /// missing.
    CString GetCurConfigDetailPath() const;

    /// Loads another rule file and makes it the project's current configuration: the file name before its
    /// last full stop goes into the ini (a name without a full stop becomes empty, and so "DefaultConfig").
    /// False when the store refuses; the ini then stays.
    bool ReLoad(const CString& path);
    /// The same with a new file made from the template.
    bool NewFile(const CString& path);
    bool Save();
    /// Leaves the ini alone: the store stays bound to the old file.
    bool SaveAs(const CString& path);

    ConfigNode* GetConfig(const CPath& path);
    bool GetConfig(const CPath& path, std::vector<ConfigNode*>& rules);
    bool GetExistQdIndex(const CPath& path, std::vector<CString>& indexes);
    bool AddConfig(const CPath& path, int& newId);
    bool MoveUpConfig(const CPath& path);
    bool MoveDownConfig(const CPath& path);
    bool AddConfigByCopy(const CPath& path, int& newId);
    bool DelConfig(const CPath& path);

    /// The condition comes as at least eight texts: attribute, flag (a number; not 0 means value form),
    /// equality operator, lower operator, upper operator, value, lower bound, upper bound. Further texts are
    /// ignored; with fewer the result is false.
    bool AddCondition(const CPath& path, const CStringArray& array);
    bool ResetCondition(const CPath& path, const CStringArray& array);
    bool DelCondition(const CPath& path, std::vector<ConfigNode*>& rules);

    bool AddQd(const QdStruct& qd, const CPath& path, std::vector<ConfigNode*>& rules);
    bool AddDe2QdNode(const DeStruct& de, const CPath& path, std::vector<ConfigNode*>& rules);
    bool AddDe2ConfigNode(const DeStruct& de, const CPath& path, std::vector<ConfigNode*>& rules);
    bool DelQd(const CPath& path, const std::set<int>& qdIds);
    bool DelDeInQdNode(const CPath& path, const std::map<int, std::set<int>>& deIdsByQd);
    bool DelDeInConfigNode(const CPath& path, const std::set<int>& deIds);
    bool ResetQd(const CPath& path, const QdStruct& qd);
    bool ResetDeToConfig(const CPath& path, const DeStruct& de);
    bool ResetDeToQd(const CPath& path, const DeStruct& de);

    /// The record of an attribute of the category with that text (specialty, big and small category joined by
    /// backslashes); false, with `config` left alone, when there is none.
    bool GetAttConfig(const CString& categoryText, const CString& attributeName, AttrConfig& config) const;
    /// Changes a record in memory; false when there is none.
    bool SetAttConfig(const CString& categoryText, const CString& attributeName, const AttrConfig& config);
    /// Asks the attribute store to rebuild its file. That store is bound to a specialty and so raises
    /// `xml::PointerError` at the first attribute; `CAutoQdDeConfigFacade::AttrConfig` is the way that works.
    bool SaveAttConfig();

private:
    void SetCurConfig(const CString& name) const;

    IQdDeConfigData* m_ruleStore;
    CXmlAttrConfig* m_attributeStore;
};
