#include "dialogs/MyGridCtrl.h"

#include "host/NvKtDataMng.h"

#include <QtGui/QMouseEvent>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace {

/// The columns whose item data hold what a row is.
constexpr int KindData = 1;
constexpr int IdData = 0;
constexpr std::uint32_t TextBackground = 0xE0FFFF;
constexpr unsigned HeaderFormat = GridFormatCenter | GridFormatWordBreak | GridFormatNoPrefix;
constexpr std::array Types{CellType::Text,   CellType::Text,  CellType::Text,
                           CellType::Choice, CellType::Click, CellType::YesNo};
/// The last column keeps the width that its caption needs.
constexpr std::array Widths{20, 100, 170, 50, 80};

CStringArray Captions()
{
    const bool quota = NvKtDataMng::CAtt().GetQdDeMode() == SQdDeInfo::QuotaMode;
    return {CString(),
            quota ? u"定额编号"_s : u"清单/定额编号"_s,
            quota ? u"定额名称"_s : u"清单/定额名称"_s,
            u"单位"_s,
            u"计算结果编辑"_s,
            u"带管道配件"_s};
}

} // namespace

MyGridCtrl::MyGridCtrl(CWnd* parent) : CNvGridCtrl(parent)
{
    SetAutoEnterNext(false);
    SetOptionsFunName([this](int column, CStringArray& options) { return GetUnitOptions(column, options); });
}

MyGridCtrl::~MyGridCtrl() = default;

bool MyGridCtrl::GetUnitOptions(int column, CStringArray& options) const
{
    options.clear();
    if (column == UnitColumn) {
        options = {u"m"_s,  u"m2"_s, u"m3"_s, u"吨"_s, u"千克"_s, u"个"_s, u"根"_s,
                   u"座"_s, u"榀"_s, u"块"_s, u"套"_s, u"只"_s,   u"樘"_s, u"副"_s};
    } else if (column == AnnexColumn) {
        options = {u"是"_s, u"否"_s};
    }
    return true;
}

bool MyGridCtrl::SetupColumns(std::int32_t attType)
{
    const CStringArray captions = Captions();
    const int plan = attType == 0 ? AnnexColumn : AnnexColumn + 1;
    SetDefaultCellType(CellType::Text);
    SetTextBkColor(TextBackground);
    SetFmtType(Types.data(), plan);
    SetRowCount(1);
    SetColumnCount(plan);
    SetFixedRowCount(1);
    SetFixedColumnCount(1);
    for (int col = 0; col < plan; ++col) {
        SetItem({0, col, GridItemText | GridItemFormat, HeaderFormat, captions[col]});
    }
    AutoSize(0);
    for (int col = 0; const int width : Widths)
        SetColumnWidth(col++, width);
    SetRowHeight(0, GetFixedRowHeight() + 2);
    return true;
}

int MyGridCtrl::AppendItem(RowKind kind, int id, const CStringArray& texts)
{
    const int row = InsertOneprop(GetRowCount(), texts, nullptr);
    SetItemState(row, NumberColumn, ReadOnlyState);
    SetItemData(row, KindData, kind);
    SetItemData(row, IdData, id);
    return row;
}

MyGridCtrl::RowKind MyGridCtrl::KindOf(int row) const
{
    return GetItemData(row, KindData) == BillRow ? BillRow : QuotaRow;
}

int MyGridCtrl::IdOf(int row) const
{
    return static_cast<int>(GetItemData(row, IdData));
}

int MyGridCtrl::BillRowOf(int row) const
{
    while (row >= 1 && KindOf(row) != BillRow)
        --row;
    return std::max(row, 0);
}

std::int32_t MyGridCtrl::GetSelectedRow() const
{
    const GridRange range = GetSelectedCellRange();
    if (!IsValid(range) || range.minRow != range.maxRow) return -1;
    return range.minRow < 1 ? -1 : range.minRow;
}

void MyGridCtrl::GetSelectedRows(std::vector<int>& rows)
{
    rows.clear();
    const GridRange range = GetSelectedCellRange();
    if (!IsValid(range)) return;
    for (int row = range.maxRow; row >= range.minRow; --row) {
        for (int col = 1; col < GetColumnCount(); ++col) {
            if (!IsSelected(row, col)) continue;
            rows.push_back(row);
            break;
        }
    }
}

void MyGridCtrl::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() == Qt::RightButton) {
        event->accept();
        return;
    }
    CNvGridCtrl::mouseReleaseEvent(event);
}
