#pragma once

#include "embedded/data/host/EmbeddedHost.h"
#include "host/Installation.h"

#include <QtCore/QTemporaryDir>

#include <memory>

/// An embedded project of the specialty 给排水 in a folder of its own, as the host of a scene until this
/// object ends. Its windows never come up.
class PictureProject
{
public:
    explicit PictureProject(SQdDeInfo::EQdDeMode mode);

private:
    class NoWindows : public host::IWindows
    {
    public:
        std::unique_ptr<host::IBillPicker> MakeBillPicker() override;
        std::unique_ptr<host::IPickerWindow> MakeQuotaPicker() override;
        int ShowCalculatorDlg(const CString&, const CString&, CString&, CWnd*) override { return 0; }
        void ShowNetDisk(const CString&, bool) override {}
        CWnd* MainFrame() override { return nullptr; }
    };

    host::Roles Roles();

    QTemporaryDir m_folder;
    embedded::EmbeddedHost m_host;
    NoWindows m_windows;
    host::Installation m_installed;
};
