#pragma once

#include "dialogs/secondary/DlgSaveAs.h"

#include "dialogs/DialogUser.h"
#include "support/HostGuard.h"

#include <gtest/gtest.h>

namespace test::saveas {

using namespace Qt::StringLiterals;
using platform::MessageKind;

inline constexpr int Save = 1;
inline constexpr int Cancel = 2;
inline constexpr int FileList = 1000;
inline constexpr int TypeCombo = 1001;
inline constexpr int NameEdit = 1069;

inline const CString ForbiddenText = u"文件名不能包含下列任何字符:\n \\ /:*?\"<>|!"_s;
inline const CString CurrentText = u"当前配置文件不能覆盖!"_s;
inline const CString OverwriteText = u"是否覆盖已有配置文件?"_s;

/// The configuration folder with some files in it. Names are given without extension.
class DlgSaveAsTest : public ::testing::Test
{
protected:
    DlgSaveAsTest() { m_guard.Folder().MakeFolder(u"app\\自动套配置"_s); }

    void AddFiles(const CStringArray& names)
    {
        for (const CString& name : names)
            AddFile(name + u".xml"_s);
    }
    void AddFile(const CString& name) { m_guard.Folder().WriteFile(u"app\\自动套配置\\"_s + name, "<x/>"); }
    CString PathOf(const CString& name) const { return m_guard.AppFolder() + u"\\自动套配置\\"_s + name; }

    void ExpectOnlyMessage(MessageKind kind, const CString& text)
    {
        ASSERT_EQ(m_guard.Messages().Messages().size(), 1U);
        const platform::Message& message = m_guard.Messages().Messages().front();
        EXPECT_EQ(message.kind, kind);
        EXPECT_EQ(message.text, text);
        EXPECT_EQ(message.caption, u"Norvasoft"_s);
        EXPECT_TRUE(message.owned);
    }
    void ExpectSilence() { EXPECT_EQ(m_guard.Messages().Texts(), CStringArray()); }

    static void SaveUnder(DlgSaveAs& dialog, const CString& name)
    {
        test::Open(dialog);
        test::Type(dialog, NameEdit, name);
        test::Click(dialog, Save);
    }
    static void ExpectChosen(const DlgSaveAs& dialog, const CString& path)
    {
        EXPECT_FALSE(dialog.isVisible());
        EXPECT_EQ(dialog.result(), dialogs::IdOk);
        EXPECT_EQ(dialog.GetChosenPath(), path);
    }

    test::HostGuard m_guard;
};

} // namespace test::saveas
