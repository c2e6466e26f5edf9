#include "presenter/CQdDeConfigPresenter.h"

#include "host/ConfigurationEntry.h"
#include "host/NvKtDataMng.h"
#include "host/RuleFilePlaces.h"
#include "platform/Files.h"
#include "platform/Numbers.h"
#include "platform/Paths.h"
#include "store/CXmlQdDeConfig.h"
#include "store/RuleFile.h"

#include <memory>

using namespace Qt::StringLiterals;

namespace {

/// Texts of a condition.
constexpr qsizetype ConditionTexts = 8;

host::ConfigurationEntry CurrentEntry()
{
    return host::ConfigurationEntry(NvKtDataMng::CProj().GetPrjPath());
}

CString CurrentSpec()
{
    return NvKtDataMng::CProj().GetCurrentSpec();
}

ConditionNode ConditionFrom(const CStringArray& array)
{
    return ConditionNode(array[0], platform::_wtoi(array[1]) != 0, array[2], array[3], array[4], array[5],
                         array[6], array[7]);
}

} // namespace

CQdDeConfigPresenter::CQdDeConfigPresenter(const CString& filePath)
    : m_ruleStore(nullptr), m_attributeStore(nullptr)
{
    // The specialty is asked for once for each store, before anything else.
    const CString spec = CurrentSpec();
    auto ruleStore =
        std::make_unique<CXmlQdDeConfig>(filePath.isEmpty() ? GetCurConfigDetailPath() : filePath, spec);
    m_attributeStore = new CXmlAttrConfig(CurrentSpec());
    m_ruleStore = ruleStore.release();
}

CQdDeConfigPresenter::CQdDeConfigPresenter(std::unique_ptr<IQdDeConfigData> ruleStore,
                                           std::unique_ptr<CXmlAttrConfig> attributeStore)
    : m_ruleStore(ruleStore.release()), m_attributeStore(attributeStore.release())
{
}

CQdDeConfigPresenter::~CQdDeConfigPresenter()
{
    delete m_ruleStore;
    delete m_attributeStore;
}

CQdDeConfigPresenter& CQdDeConfigPresenter::operator=(const CQdDeConfigPresenter& other) = default;

CString CQdDeConfigPresenter::GetCurConfig() const
{
    return CurrentEntry().Name();
}

CString CQdDeConfigPresenter::GetCurConfigDetailPath() const
{
    const CString folder = store::RuleFolder();
    if (!platform::Files().Exists(folder)) platform::Files().CreateFolder(folder);
    return host::RuleFileIn(folder, GetCurConfig());
}

void CQdDeConfigPresenter::SetCurConfig(const CString& name) const
{
    CurrentEntry().Write(name);
}

bool CQdDeConfigPresenter::ReLoad(const CString& path)
{
    if (!m_ruleStore->ReLoad(path)) return false;
    SetCurConfig(platform::BeforeLastStop(platform::FileNameOf(path)));
    return true;
}

bool CQdDeConfigPresenter::NewFile(const CString& path)
{
    if (!m_ruleStore->NewFile(path)) return false;
    SetCurConfig(platform::BeforeLastStop(platform::FileNameOf(path)));
    return true;
}

bool CQdDeConfigPresenter::AddCondition(const CPath& path, const CStringArray& array)
{
    return array.size() >= ConditionTexts && m_ruleStore->AddCondition(path, ConditionFrom(array));
}

bool CQdDeConfigPresenter::ResetCondition(const CPath& path, const CStringArray& array)
{
    return array.size() >= ConditionTexts && m_ruleStore->ResetCondition(path, ConditionFrom(array));
}

bool CQdDeConfigPresenter::GetAttConfig(const CString& categoryText, const CString& attributeName,
                                        AttrConfig& config) const
{
    return m_attributeStore->GetAttConfig(categoryText + attributeName, config);
}

bool CQdDeConfigPresenter::SetAttConfig(const CString& categoryText, const CString& attributeName,
                                        const AttrConfig& config)
{
    return m_attributeStore->SetAttConfig(categoryText + attributeName, config);
}

bool CQdDeConfigPresenter::SaveAttConfig()
{
    return m_attributeStore->Save();
}

// What follows is forwarding, one to one.

bool CQdDeConfigPresenter::Save()
{
    return m_ruleStore->Save();
}
bool CQdDeConfigPresenter::SaveAs(const CString& path)
{
    return m_ruleStore->SaveAs(path);
}
ConfigNode* CQdDeConfigPresenter::GetConfig(const CPath& path)
{
    return m_ruleStore->GetConfig(path);
}

bool CQdDeConfigPresenter::GetConfig(const CPath& path, std::vector<ConfigNode*>& rules)
{
    return m_ruleStore->GetConfig(path, rules);
}

bool CQdDeConfigPresenter::GetExistQdIndex(const CPath& path, std::vector<CString>& indexes)
{
    return m_ruleStore->GetExistQdIndex(path, indexes);
}

bool CQdDeConfigPresenter::AddConfig(const CPath& path, int& newId)
{
    return m_ruleStore->AddConfig(path, newId);
}
bool CQdDeConfigPresenter::MoveUpConfig(const CPath& path)
{
    return m_ruleStore->MoveUpConfig(path);
}
bool CQdDeConfigPresenter::MoveDownConfig(const CPath& path)
{
    return m_ruleStore->MoveDownConfig(path);
}

bool CQdDeConfigPresenter::AddConfigByCopy(const CPath& path, int& newId)
{
    return m_ruleStore->AddConfigByCopy(path, newId);
}

bool CQdDeConfigPresenter::DelConfig(const CPath& path)
{
    return m_ruleStore->DelConfig(path);
}

bool CQdDeConfigPresenter::DelCondition(const CPath& path, std::vector<ConfigNode*>& rules)
{
    return m_ruleStore->DelCondition(path, rules);
}

bool CQdDeConfigPresenter::AddQd(const QdStruct& qd, const CPath& path, std::vector<ConfigNode*>& rules)
{
    return m_ruleStore->AddQd(qd, path, rules);
}

bool CQdDeConfigPresenter::AddDe2QdNode(const DeStruct& de, const CPath& path,
                                        std::vector<ConfigNode*>& rules)
{
    return m_ruleStore->AddDe2QdNode(de, path, rules);
}

bool CQdDeConfigPresenter::AddDe2ConfigNode(const DeStruct& de, const CPath& path,
                                            std::vector<ConfigNode*>& rules)
{
    return m_ruleStore->AddDe2ConfigNode(de, path, rules);
}

bool CQdDeConfigPresenter::DelQd(const CPath& path, const std::set<int>& qdIds)
{
    return m_ruleStore->DelQd(path, qdIds);
}

bool CQdDeConfigPresenter::DelDeInQdNode(const CPath& path, const std::map<int, std::set<int>>& deIdsByQd)
{
    return m_ruleStore->DelDeInQdNode(path, deIdsByQd);
}

bool CQdDeConfigPresenter::DelDeInConfigNode(const CPath& path, const std::set<int>& deIds)
{
    return m_ruleStore->DelDeInConfigNode(path, deIds);
}

bool CQdDeConfigPresenter::ResetQd(const CPath& path, const QdStruct& qd)
{
    return m_ruleStore->ResetQd(path, qd);
}

bool CQdDeConfigPresenter::ResetDeToConfig(const CPath& path, const DeStruct& de)
{
    return m_ruleStore->ResetDeToConfig(path, de);
}

bool CQdDeConfigPresenter::ResetDeToQd(const CPath& path, const DeStruct& de)
{
    return m_ruleStore->ResetDeToQd(path, de);
}
