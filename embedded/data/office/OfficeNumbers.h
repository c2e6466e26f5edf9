#pragma once

#include "embedded/data/office/ProjectOffice.h"
#include "embedded/data/project/CurrentConfiguration.h"
#include "embedded/data/project/NumberRegister.h"

namespace embedded {

/// The bill numbers of a project's current configuration, shared through the office. Only what has been
/// published is shared: the numbers of a configuration that never came from the office are the project's own
/// matter. Claims are those of this object, so that two programs on one project do not get the same number
/// either. Whoever reads the office only sees the numbers, but claims none.
class OfficeNumbers final : public NumberRegister
{
public:
    /// `office` must outlive this.
    OfficeNumbers(ProjectOffice& office, CurrentConfiguration configuration);
    ~OfficeNumbers() override;
    OfficeNumbers(const OfficeNumbers&) = delete;
    OfficeNumbers& operator=(const OfficeNumbers&) = delete;

    /// Those of others and kept ones bear the name of their project behind their own.
    CArray<SQdInfo> Find(const CString& library, const CString& base) override;
    bool Claim(const CString& library, const CArray<SQdInfo>& items) override;
    void Keep(const CString& library, const SQdInfo& item) override;
    void Release() override;

private:
    /// The configuration whose numbers are shared; empty when those of the current one are not.
    CString Shared();
    /// Calls `action` with the connection, again when a connection that has broken could be made anew.
    void Ask(const std::function<void(Database& office)>& action);

    ProjectOffice& m_office;
    CurrentConfiguration m_configuration;
    CString m_claimer;
    bool m_hasClaims = false;
};

} // namespace embedded
