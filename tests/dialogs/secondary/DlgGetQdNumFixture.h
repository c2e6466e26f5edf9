#pragma once

#include "dialogs/secondary/CDlgGetQdNum.h"

#include "dialogs/DialogUser.h"
#include "support/HostGuard.h"

#include <QtWidgets/QListWidget>

#include <gtest/gtest.h>

namespace test::billnumber {

using namespace Qt::StringLiterals;
using platform::MessageKind;

inline constexpr int Ok = 1;
inline constexpr int Cancel = 2;
inline constexpr int Detail = 1069;
inline constexpr int Base = 1076;
inline constexpr int Suffix = 1077;
inline constexpr int Existing = 1111;
inline constexpr int New = 1112;
inline constexpr int History = 1113;
inline constexpr int Source = 1114;

inline const CString BaseNumber = u"030801001"_s;

inline const CString LengthText = u"新清单号不符合规范!"_s;
inline const CString UsedText = u"同一构件不能多次套同一清单 !"_s;
inline const CString TakenText = u"清单已经套用!"_s;

/// A bill number dialog over a host with the in-memory library and history of the test.
class DlgGetQdNumTest : public ::testing::Test
{
protected:
    void AddHistory(const CString& base, const CStringArray& numbers)
    {
        for (const CString& number : numbers) {
            SQdInfo item;
            item.strNumber = number;
            item.strName = u"名称"_s + number;
            item.strUnit = u"m"_s;
            m_guard.Host().AddHistory(base, item);
        }
    }
    void AddToLibrary(const CStringArray& numbers)
    {
        for (const CString& number : numbers) {
            SQdInfo item;
            item.strNumber = number;
            m_guard.Host().AddBillItem(item);
        }
    }
    void OpenWith(int length, int suffixLength, const CString& picked)
    {
        m_guard.Host().SetEnCodeRule(length, suffixLength);
        m_dialog.SetNumber(picked);
        test::Open(m_dialog);
    }
    CString Proposal() const { return m_dialog.ItemText(Suffix); }

    void ExpectNumber(const CString& number)
    {
        EXPECT_FALSE(m_dialog.isVisible());
        EXPECT_EQ(m_dialog.result(), dialogs::IdOk);
        EXPECT_EQ(m_dialog.GetNumber(), number);
        EXPECT_EQ(m_guard.Messages().Texts(), CStringArray());
    }
    void ExpectRefusal(const CString& text)
    {
        EXPECT_TRUE(m_dialog.isVisible());
        ASSERT_EQ(m_guard.Messages().Messages().size(), 1U);
        const platform::Message& message = m_guard.Messages().Messages().front();
        EXPECT_EQ(message.kind, MessageKind::Warning);
        EXPECT_EQ(message.text, text);
        EXPECT_EQ(message.caption, u"Norvasoft"_s);
        EXPECT_TRUE(message.owned);
        m_guard.Messages().Clear();
    }
    bool IsEnabled(int id) const { return m_dialog.GetDlgItem(id)->isEnabled(); }
    int SelectedLine() const
    {
        const auto& list = m_dialog.Item<QListWidget>(History);
        return list.selectedItems().isEmpty() ? -1 : list.row(list.selectedItems().first());
    }

    test::HostGuard m_guard;
    CDlgGetQdNum m_dialog;
};

} // namespace test::billnumber
