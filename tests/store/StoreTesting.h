#pragma once

#include "support/HostGuard.h"
#include "support/PrintText.h"
#include "tree/CPath.h"
#include "tree/ConfigNode.h"

#include <gtest/gtest.h>

#include <set>
#include <vector>

/// What the tests of the stores share.
namespace test {

/// A rule file: the document element around `inner`.
CString RuleFile(const CString& inner);
/// The element of the specialty 给排水 around `inner`, and around rules of its category 管道\给水管.
CString Plumbing(const CString& inner = {});
CString PlumbingRules(const CString& rules);

/// The path of a rule of 给排水\管道\给水管 in the standard catalogue.
CPath RulePath(int configId);

/// The ids of rules, in order.
std::vector<int> Ids(const std::vector<ConfigNode*>& rules);

/// A condition A＝`value`.
ConditionNode Condition(const CString& value);

/// A host, a temporary folder, and at the end a check that every file *.xml in it is well-formed.
class FileFixture : public ::testing::Test
{
protected:
    FileFixture();
    ~FileFixture() override;

    MemoryHost& Host() { return m_host.Host(); }
    MessageRecorder& Messages() { return m_host.Messages(); }

    /// The path text of a file in the temporary folder.
    CString File(const CString& name) const { return m_host.Folder().Path(name); }
    /// Writes a file as UTF-8 and gives its path text.
    CString Put(const CString& name, const CString& text) const;
    /// Writes a file that no parser takes and that is not checked at the end.
    CString PutBroken(const CString& name, const QByteArray& bytes);
    /// Takes a file out of the check at the end.
    void MayBeBroken(const CString& name) { m_broken.insert(name); }
    QByteArray Bytes(const CString& name) const { return m_host.Folder().ReadFile(name); }
    bool Exists(const CString& name) const { return m_host.Folder().Exists(name); }
    /// The file as an independent parser reads it: one node a line, indented by depth.
    CString Xml(const CString& name) const;
    /// The tags of the children of the document element, in order, with their attribute `name`.
    CStringArray Specialties(const CString& name) const;

    HostGuard m_host;

private:
    std::set<CString> m_broken;
};

/// Takes the place of the host's XML tools, remembering with what a version was recorded. In force as long as
/// it lives.
class VersionRecorder : public host::IXmlTools
{
public:
    struct Call
    {
        CString version;
        CString file;
        QByteArray content; ///< what the file held at that moment
    };

    explicit VersionRecorder(MemoryHost& host);

    std::unique_ptr<host::IXmlTool> CreateXmlTool() override { return m_host.CreateXmlTool(); }
    /// Changes nothing and answers `Result`.
    bool SetXmlVersion(const CString& version, const CString& file) override;

    bool Result = true;
    std::vector<Call> Calls;

private:
    static host::Roles RolesWith(MemoryHost& host, host::IXmlTools* tools);

    MemoryHost& m_host;
    host::Installation m_installed;
};

/// The machine has no XML engine while this lives.
class NoEngine
{
public:
    NoEngine();
    ~NoEngine();
    NoEngine(const NoEngine&) = delete;
    NoEngine& operator=(const NoEngine&) = delete;
};

/// The words about a missing XML engine.
CString NoEngineText();

} // namespace test
