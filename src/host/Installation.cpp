#include "host/Installation.h"

#include <string>
#include <utility>

namespace host {

namespace {

Roles& Current()
{
    static Roles current;
    return current;
}

template <typename Role>
Role& Require(Role* role, const char* name)
{
    if (role == nullptr) throw NoHostError(name);
    return *role;
}

} // namespace

NoHostError::NoHostError(const char* role)
    : std::logic_error(std::string("KtQdDeConfig was called without a host that supplies its ") + role)
{
}

NoHostError::~NoHostError() = default;

Installation::Installation(const Roles& previous) : m_previous(previous) {}

Installation::Installation(Installation&& other) noexcept
    : m_previous(other.m_previous), m_active(std::exchange(other.m_active, false))
{
}

Installation::~Installation()
{
    if (m_active) Current() = m_previous;
}

Installation Install(const Roles& roles)
{
    return Installation(std::exchange(Current(), roles));
}

ICategories& Categories()
{
    return Require(Current().categories, "categories");
}
IAttributes& Attributes()
{
    return Require(Current().attributes, "attributes");
}
ILibraries& Libraries()
{
    return Require(Current().libraries, "libraries");
}
IProject& Project()
{
    return Require(Current().project, "project");
}
INvKtAppProfile& Profile()
{
    return Require(Current().profile, "application profile");
}
ICalculationRules& Calculation()
{
    return Require(Current().calculation, "calculation rules");
}
IXmlTools& Xml()
{
    return Require(Current().xml, "XML tools");
}
IWindows& Windows()
{
    return Require(Current().windows, "windows");
}

} // namespace host
