#include "widgets/SelectedRow.h"

#include "support/Patience.h"
#include "support/WindowWaits.h"

#include <QtCore/QCoreApplication>
#include <QtWidgets/QTreeWidget>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

class SelectedRow : public ::testing::Test
{
protected:
    SelectedRow()
    {
        for (const QString& text : {u"一"_s, u"二"_s, u"三"_s})
            m_list.addTopLevelItem(new QTreeWidgetItem({text, text}));
        m_list.setCurrentItem(m_list.topLevelItem(0));
        widgets::MakeSelectedRowCurrent(m_list);
        QObject::connect(&m_list, &QTreeWidget::currentItemChanged, &m_list, [this] { ++m_changes; });
    }

    QTreeWidget m_list;
    int m_changes = 0;
};

} // namespace

TEST_F(SelectedRow, IsTheCurrentOneAlsoWhenAnAidForTheDisabledHasSelectedIt)
{
    test::SelectByAid(m_list, m_list.model()->index(2, 0));
    test::WaitInLoopFor(u"the row"_s, [this] { return m_list.currentItem() == m_list.topLevelItem(2); });
    EXPECT_EQ(m_changes, 1);
    EXPECT_TRUE(m_list.topLevelItem(2)->isSelected());
}

TEST_F(SelectedRow, OfTheUserIsToldOnce)
{
    m_list.setCurrentItem(m_list.topLevelItem(1), 1);
    QCoreApplication::processEvents();
    EXPECT_EQ(m_changes, 1);
    EXPECT_EQ(m_list.currentColumn(), 1);
}

TEST_F(SelectedRow, StaysCurrentWhenNothingIsSelected)
{
    m_list.clearSelection();
    QCoreApplication::processEvents();
    EXPECT_EQ(m_changes, 0);
}
