#pragma once

#include "host/Roles.h"
#include "platform/Export.h"

#include <stdexcept>

namespace host {

/// The roles of one host. Nothing is owned: whoever installs them keeps them alive until the installation
/// ends. `windows` may be null for a host without a screen; all the others are needed.
struct Roles
{
    ICategories* categories = nullptr;
    IAttributes* attributes = nullptr;
    ILibraries* libraries = nullptr;
    IProject* project = nullptr;
    INvKtAppProfile* profile = nullptr;
    ICalculationRules* calculation = nullptr;
    IXmlTools* xml = nullptr;
    IWindows* windows = nullptr;
};

/// The module was called while no host, or a host without that role, was installed. The text says which.
class KTQDDE_EXPORT NoHostError : public std::logic_error
{
public:
    explicit NoHostError(const char* role);
    ~NoHostError() override;
};

/// A host in force. Ends with this object, giving the former host back.
class KTQDDE_EXPORT Installation
{
public:
    ~Installation();
    Installation(Installation&& other) noexcept;
    Installation(const Installation&) = delete;
    Installation& operator=(const Installation&) = delete;
    Installation& operator=(Installation&&) = delete;

private:
    friend KTQDDE_EXPORT Installation Install(const Roles& roles);
    explicit Installation(const Roles& previous);
    Roles m_previous;
    bool m_active = true;
};

/// Makes `roles` the host that the module calls. Installations nest: the innermost is in force, and they end
/// in reverse order.
[[nodiscard]] KTQDDE_EXPORT Installation Install(const Roles& roles);

/// The role in force; raises `NoHostError` when there is none.
KTQDDE_EXPORT ICategories& Categories();
KTQDDE_EXPORT IAttributes& Attributes();
KTQDDE_EXPORT ILibraries& Libraries();
KTQDDE_EXPORT IProject& Project();
KTQDDE_EXPORT INvKtAppProfile& Profile();
KTQDDE_EXPORT ICalculationRules& Calculation();
KTQDDE_EXPORT IXmlTools& Xml();
KTQDDE_EXPORT IWindows& Windows();

} // namespace host
