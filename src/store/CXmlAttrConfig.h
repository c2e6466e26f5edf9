#pragma once

#include "platform/Export.h"
#include "platform/Text.h"
#include "xml/Dom.h"

#include <map>

/// How one attribute of a small category can be used in a condition.
struct AttrConfig
{
    CString name;         ///< display name
    CString namecode;     ///< code; the tag of its element
    int vartype = 1;      ///< value type; always written as 1
    int compar = 1;       ///< 0: the attribute can only be tested for equality
    int specrelation = 1; ///< material related; only carried along
};

/// The attribute configuration: AttrConfig.xml in the application folder. Two uses, told by the constructor.
/// Bound to a specialty it loads that specialty's records for look-ups. Unbound it rebuilds the file from the
/// host's lists and AttributeInformation.xml.
class KTQDDE_EXPORT CXmlAttrConfig
{
public:
    /// Bound: loads the records. A missing or broken file gives none, without a word. Raises `xml::Error`
    /// when the file is well-formed but has another document element.
    explicit CXmlAttrConfig(const CString& specName);
    /// Unbound: opens AttributeInformation.xml; loads no records.
    CXmlAttrConfig();

    /// Rebuilds the file from the host's lists, keeping the elements that are there. It does not write the
    /// records: what `SetAttConfig` changed does not reach the file, and a value changed by hand is
    /// overwritten for every attribute that still stands in the lists. Specialties whose name contains "建筑"
    /// are left alone. False when no document can be had. Raises `xml::PointerError` at the first attribute
    /// when AttributeInformation.xml is not open, as in the bound form; `std::invalid_argument` for an
    /// incomplete group in the host's attribute list; `xml::Error` for a name that cannot be a tag
    /// and for a file that cannot be written. The file then stays as it was.
    bool Save();

    /// Looks a record up: specialty, "\", big category, "\", small category and, without a separator,
    /// attribute name. False, with `config` left alone, when there is none; callers then treat the attribute
    /// as comparable.
    bool GetAttConfig(const CString& key, AttrConfig& config) const;
    /// Takes `compar`, `specrelation` and `vartype` into a record, in memory only. False when there is none;
    /// none is added.
    bool SetAttConfig(const CString& key, const AttrConfig& config);

private:
    bool Load();
    void LoadSmallCategory(const IXMLDOMNode& category, const CString& text);
    void SaveSpec(const IXMLDOMElement& root, const CString& specName);
    void SaveAttributes(const IXMLDOMElement& category, const CStringArray& attributes);

    std::map<CString, AttrConfig> m_records;
    CString m_filePath;
    CString m_specName;
    IXMLDOMDocument m_parameterDocument;
    IXMLDOMNode m_parameterRoot;
};
