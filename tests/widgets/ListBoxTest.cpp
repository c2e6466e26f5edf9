#include "widgets/ListBox.h"

#include "widgets/ListControls.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

class ListBox : public ::testing::Test
{
protected:
    ListBox()
    {
        for (const CString& text : {u"甲"_s, u"乙"_s})
            widgets::AddString(m_list, text);
        m_list.OnSelected([this] { ++m_told; });
    }

    widgets::ListBox m_list;
    int m_told = 0;
};

} // namespace

TEST_F(ListBox, TellsOfASelectionOnce)
{
    m_list.setCurrentRow(1);
    EXPECT_EQ(m_told, 1);
}

TEST_F(ListBox, SaysNothingOfWhatADialogSelects)
{
    widgets::SetCurSel(m_list, 1);
    EXPECT_EQ(widgets::GetCurSel(m_list), 1);
    EXPECT_EQ(m_told, 0);
}

TEST_F(ListBox, KeepsTheIntegerOfAnEntry)
{
    EXPECT_EQ(widgets::GetItemData(m_list, 1), 0);
    widgets::SetItemData(m_list, 1, 42);
    EXPECT_EQ(widgets::GetItemData(m_list, 0), 0);
    EXPECT_EQ(widgets::GetItemData(m_list, 1), 42);
}
