#pragma once

#include "store/IQdDeConfigData.h"
#include "tree/Spec.h"
#include "xml/Dom.h"

/// The store of one specialty in one XML rule file. It keeps no document between calls: every open and every
/// save parses the file as it then stands, so the other specialties' elements survive each save, and whoever
/// else changed them is not overwritten. There is no modified flag, and destruction does not save.
class KTQDDE_EXPORT CXmlQdDeConfig final : public IQdDeConfigData
{
public:
    /// Opens the file and reports nothing. A missing file is created at once, with default rules; one that
    /// cannot be parsed is left alone and gives a tree of defaults (the next `Save` replaces it); one with
    /// another document element gives an empty tree. Raises `xml::Error` when a missing file cannot be
    /// created.
    CXmlQdDeConfig(const CString& filePath, const CString& specName);
    CXmlQdDeConfig(const CXmlQdDeConfig&) = delete;
    CXmlQdDeConfig& operator=(const CXmlQdDeConfig&) = delete;
    ~CXmlQdDeConfig() override;

    CString GetFilePath() override;
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
    LMember* GetLMember(const CPath& path) const;
    SMember* GetSMember(const CPath& path) const;
    QdNode* GetQdNode(const CPath& path);
    static IXMLDOMElement GetRootElement(const IXMLDOMDocument& document, const CString& rootName);
    IXMLDOMElement FindSpecElement(const IXMLDOMElement& root, const CString& specName) const;
    IXMLDOMElement RenewSpecElement(const IXMLDOMElement& root, const CString& specName) const;
    IXMLDOMElement AddSpecElement(const IXMLDOMElement& root, const CString& specName) const;

    CString m_filePath;
    CString m_specName;
    Spec m_spec;
};
