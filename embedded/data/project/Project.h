#pragma once

#include "embedded/data/project/ProjectDatabase.h"
#include "host/Roles.h"

namespace embedded {

/// The open project: where its file is, and what it is set to. The settings are those of the moment of
/// opening; what this process changes counts at once, what others change after the next opening.
class Project : public host::IProject
{
public:
    /// `categories` must outlive this. Raises `Error` when the stored specialty is not known.
    Project(CString path, const ProjectDatabase::Settings& settings, host::ICategories& categories);

    CString GetPrjPath() override;
    CString GetCurrentSpec() override;
    SNvKtSpecId GetCurrentSpecId() override;
    SQdDeInfo::EQdDeMode GetQdDeMode() override;

    /// Raise nothing but `Error` for a specialty that is not known; nothing has changed then.
    void UseSpec(const CString& name);
    void UseMode(SQdDeInfo::EQdDeMode mode);

private:
    CString m_path;
    host::ICategories& m_categories;
    SQdDeInfo::EQdDeMode m_mode;
    CString m_spec;
    SNvKtSpecId m_specId;
};

} // namespace embedded
