#pragma once

#include "editor/docks/details/DetailsFixture.h"

namespace test {

/// The panel on two rules: the first has two bill items, of which the first has two quota items; the second
/// rule has that one alone.
class DetailItems : public DetailsFixture
{
protected:
    explicit DetailItems(SQdDeInfo::EQdDeMode mode = SQdDeInfo::BillMode) : DetailsFixture(mode) {}

    void HaveItems()
    {
        rules::BillItem first = Bill(QStringLiteral("031001001001"));
        first.quotas = {Quota(QStringLiteral("示10-1-1")), Quota(QStringLiteral("示10-1-2"))};
        HaveRules({RuleOf({}, {first, Bill(QStringLiteral("031001002001"))}), RuleOf({}, {first})});
        Show();
    }
    QTreeWidgetItem& Row(int bill, int quota = -1) const
    {
        QTreeWidgetItem* row = Tree().topLevelItem(bill);
        return quota < 0 ? *row : *row->child(quota);
    }
    void GoTo(QTreeWidgetItem& row, int column)
    {
        Tree().setFocus();
        Tree().setCurrentItem(&row, column, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    }
};

} // namespace test
