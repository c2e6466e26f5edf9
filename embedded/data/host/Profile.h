#pragma once

#include "host/Roles.h"

namespace embedded {

/// The program as its own host: the project's application folder and this program's version.
class Profile : public host::INvKtAppProfile
{
public:
    explicit Profile(CString appFolder);

    CString GetAppFolder() override;
    CNvKtVersion GetVersion() override;

private:
    CString m_appFolder;
};

} // namespace embedded
