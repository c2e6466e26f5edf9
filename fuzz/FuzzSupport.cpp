#include "fuzz/FuzzSupport.h"

#include "support/StandardCatalogue.h"
#include "support/StrictXml.h"

#include <cstdio>
#include <cstdlib>

using namespace Qt::StringLiterals;

namespace fuzz {

namespace {

test::MemoryHost& Filled(test::MemoryHost& host)
{
    test::FillStandardCatalogue(host);
    host.SetAppFolder(u"\\app"_s);
    host.SetProjectPath(u"\\project\\p.prj"_s);
    return host;
}

} // namespace

World::World()
    : m_hostInstalled(host::Install(Filled(m_host).Roles())),
      m_messages([](const platform::Message&) { return platform::Answer::Ok; })
{
}

World& World::Fresh()
{
    static World world;
    world.m_files.Clear();
    return world;
}

CString World::RuleFile()
{
    return u"\\app\\自动套配置\\r.xml"_s;
}
CString World::AttributeFile()
{
    return u"\\app\\AttrConfig.xml"_s;
}
CString World::ParameterFile()
{
    return u"\\app\\AttributeInformation.xml"_s;
}
CString World::Spec()
{
    return u"给排水"_s;
}

QByteArray Bytes(const std::uint8_t* data, std::size_t size)
{
    return QByteArray(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
}

void Require(bool holds, const char* what)
{
    if (holds) return;
    std::fprintf(stderr, "does not hold: %s\n", what);
    std::abort();
}

void RequireStrictXml(const QByteArray& bytes, const char* what)
{
    const testing::AssertionResult result = test::IsStrictXml(bytes);
    if (!result) std::fprintf(stderr, "%s\n%s\n", result.message(), bytes.constData());
    Require(static_cast<bool>(result), what);
}

} // namespace fuzz
