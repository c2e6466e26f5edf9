#pragma once

#include "store/IQdDeConfigData.h"
#include "support/PrintText.h"

#include <memory>
#include <set>

namespace test::autoconfig {

/// A rule store that notes what is asked of it, in order, and hands it on to another one. A note is the name
/// of the operation and, where it has any, the ids that it reads behind the small category's, named: "AddQd
/// rule 2". The two questions for rules are "GetConfig rule 2" and "GetConfig", for one and for all.
class RecordingStore final : public IQdDeConfigData
{
public:
    /// What the test sees of a store that the dialog owns.
    struct Log
    {
        CStringArray notes;
        std::set<CString> refused; ///< names of operations that answer false and are not handed on

        /// The notes so far, which are forgotten.
        CStringArray Take();
    };

    /// The log must outlive the store.
    RecordingStore(std::unique_ptr<IQdDeConfigData> target, Log& log);
    ~RecordingStore() override;

    CString GetFilePath() override { return m_target->GetFilePath(); }
    bool Save() override;
    bool SaveAs(const CString& path) override;
    bool ReLoad(const CString& path) override;
    bool NewFile(const CString& path) override;
    ConfigNode* GetConfig(const CPath& path) override;
    bool GetConfig(const CPath& path, std::vector<ConfigNode*>& rules) override;
    bool GetExistQdIndex(const CPath& path, std::vector<CString>& indexes) override;
    bool AddConfig(const CPath& path, int& newId) override;
    bool MoveUpConfig(const CPath& path) override;
    bool MoveDownConfig(const CPath& path) override;
    bool AddConfigByCopy(const CPath& path, int& newId) override;
    bool DelConfig(const CPath& path) override;
    bool AddCondition(const CPath& path, const ConditionNode& condition) override;
    bool ResetCondition(const CPath& path, const ConditionNode& condition) override;
    bool DelCondition(const CPath& path, std::vector<ConfigNode*>& rules) override;
    bool AddQd(const QdStruct& qd, const CPath& path, std::vector<ConfigNode*>& rules) override;
    bool AddDe2QdNode(const DeStruct& de, const CPath& path, std::vector<ConfigNode*>& rules) override;
    bool AddDe2ConfigNode(const DeStruct& de, const CPath& path, std::vector<ConfigNode*>& rules) override;
    bool DelQd(const CPath& path, const std::set<int>& qdIds) override;
    bool DelDeInQdNode(const CPath& path, const std::map<int, std::set<int>>& deIdsByQd) override;
    bool DelDeInConfigNode(const CPath& path, const std::set<int>& deIds) override;
    bool ResetQd(const CPath& path, const QdStruct& qd) override;
    bool ResetDeToConfig(const CPath& path, const DeStruct& de) override;
    bool ResetDeToQd(const CPath& path, const DeStruct& de) override;

private:
    /// Notes an operation; false when it is refused.
    bool Note(const CString& operation, const CString& ids = {});

    std::unique_ptr<IQdDeConfigData> m_target;
    Log& m_log;
};

} // namespace test::autoconfig
