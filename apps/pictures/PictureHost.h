#pragma once

#include "host/Roles.h"
#include "platform/Files.h"

/// As much of a host as the pictured dialogs ask for, with answers that show them well filled.
class PictureHost : public host::ILibraries, public host::IProject, public host::INvKtAppProfile
{
public:
    /// The coding rule from now on.
    void SetEnCodeRule(int length, int suffixLength);
    /// The project's mode from now on.
    void SetMode(SQdDeInfo::EQdDeMode mode);

    CString GetQdCode() override { return {}; }
    CString GetDeCode() override { return {}; }
    CString GetQdDeCode() override { return {}; }
    CString GetQdFileName() override { return {}; }
    CString GetDeFileName() override { return {}; }
    CString GetQdDeFileName() override { return {}; }
    CString GetQdLocal() override { return {}; }
    CString GetDeLocal() override { return {}; }
    CString GetQdDeLocal() override { return {}; }
    CString GetDeYear() override { return {}; }
    CString GetQdDeYear() override { return {}; }
    bool GetQdInfo(const CString& number, SQdInfo& info) override;
    bool IsInQdk(const CString& number) override;
    void GetEnCodeRule(int& length, int& suffixLength) override;
    bool GetQdInfoByQdNum(const CString& number, CArray<SQdInfo>& items) override;
    CString GetPrjPath() override { return {}; }
    CString GetCurrentSpec() override { return {}; }
    SNvKtSpecId GetCurrentSpecId() override { return {}; }
    SQdDeInfo::EQdDeMode GetQdDeMode() override { return m_mode; }
    CString GetAppFolder() override;
    CNvKtVersion GetVersion() override;

private:
    int m_length = 9;
    int m_suffixLength = 3;
    SQdDeInfo::EQdDeMode m_mode = SQdDeInfo::BillMode;
};

/// A file system whose configuration folder holds some rule files.
class PictureFiles : public platform::FileSystemProxy
{
public:
    PictureFiles();
    CStringArray FindFiles(const CString& folder, const CString& extension) override;
};
