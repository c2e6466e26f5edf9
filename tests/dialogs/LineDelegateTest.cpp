#include "dialogs/secondary/CExListBox.h"
#include "dialogs/template/ControlFactory.h"
#include "widgets/ListControls.h"
#include "widgets/TreeControl.h"

#include <QtWidgets/QApplication>

#include <gtest/gtest.h>

#include <memory>

using namespace Qt::StringLiterals;

// Rows are high enough for Chinese whatever stands in them.

namespace {

class LineHeight : public ::testing::Test
{
protected:
    // A font that has no Chinese of its own, where there is one.
    LineHeight() { QApplication::setFont(QFont(u"DejaVu Sans"_s, 9)); }
    ~LineHeight() override { QApplication::setFont(m_font); }

    static int Needed(const QWidget& control)
    {
        return control.fontMetrics().size(Qt::TextSingleLine, u"其它"_s).height();
    }
    static void ExpectRoomInEachRow(const QAbstractItemView& view)
    {
        for (int row = 0; row < view.model()->rowCount(); ++row)
            EXPECT_GE(view.visualRect(view.model()->index(row, 0)).height(), Needed(view)) << row;
    }

private:
    QFont m_font = QApplication::font();
};

} // namespace

TEST_F(LineHeight, OfARuleListThatBeginsWithAnEmptyRuleHasRoomForChinese)
{
    const std::unique_ptr<QTreeWidget> list(widgets::MakeReportList(nullptr));
    list->setColumnCount(2);
    list->addTopLevelItem(new QTreeWidgetItem({u"1"_s, {}}));
    list->addTopLevelItem(new QTreeWidgetItem({u"2"_s, u"其它"_s}));
    ExpectRoomInEachRow(*list);
}

TEST_F(LineHeight, OfATreeThatBeginsInLatinHasRoomForChinese)
{
    widgets::TreeControl tree(nullptr);
    tree.addTopLevelItem(new QTreeWidgetItem(QStringList(u"HVAC"_s)));
    tree.addTopLevelItem(new QTreeWidgetItem(QStringList(u"给排水"_s)));
    ExpectRoomInEachRow(tree);
}

TEST_F(LineHeight, OfListBoxesIsTheSameForLatinAndChinese)
{
    const std::unique_ptr<QWidget> plain(
        dialogs::MakeControl({dialogs::NoId, dialogs::ControlKind::ListBox}, nullptr));
    CExListBox tipped;
    for (QListWidget* list : {qobject_cast<QListWidget*>(plain.get()), static_cast<QListWidget*>(&tipped)}) {
        widgets::AddString(*list, u"DefaultConfig"_s);
        widgets::AddString(*list, u"给排水示例"_s);
        ExpectRoomInEachRow(*list);
    }
}
