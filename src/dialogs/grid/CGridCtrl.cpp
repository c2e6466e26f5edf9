#include "dialogs/grid/CGridCtrl.h"

#include "dialogs/grid/GridHeader.h"
#include "widgets/TextMetrics.h"

#include <QtCore/QEvent>
#include <QtWidgets/QAbstractButton>

#include <utility>
#include <vector>

// Cells, dimensions and geometry. Selection, focus and editing are in CGridCtrlInput.cpp, the clipboard in
// CGridCtrlClipboard.cpp.

namespace {

/// What a data row is higher than its text.
constexpr int RowPadding = 8;

} // namespace

GridCell::GridCell(CGridCtrl& grid, GridCellId id) : m_grid(&grid), m_id(id) {}

void GridCell::SetBackClr(std::uint32_t colour) const
{
    m_grid->m_model->Write(m_id.row, m_id.col, [colour](GridModel::Cell& cell) { cell.backColour = colour; });
}

bool GridCell::IsSelected() const
{
    return m_grid->IsSelected(m_id.row, m_id.col);
}

CGridCtrl::CGridCtrl(CWnd* parent)
    : QTableView(parent), m_model(new GridModel(this)), m_widthScale(widgets::FontScale(font()))
{
    // The headers first: taking the model in already reports a selection, which repaints them.
    MakeHeaders();
    setModel(m_model);
    setItemDelegate(new GridDelegate(*this, this));
    setSelectionMode(ExtendedSelection);
    setSelectionBehavior(SelectItems);
    setEditTriggers(DoubleClicked | EditKeyPressed | AnyKeyPressed);
    setTabKeyNavigation(false);
    setWordWrap(false);
    connect(this, &QAbstractItemView::clicked, this, &CGridCtrl::OnClicked);
}

CGridCtrl::~CGridCtrl() = default;

void CGridCtrl::MakeHeaders()
{
    m_topHeader = new GridHeader(
        Qt::Horizontal,
        [this](int section) { return m_fixedSelection.Contains(0, section + m_model->FixedColumns()); },
        this);
    m_sideHeader = new GridHeader(
        Qt::Vertical,
        [this](int section) {
            const int row = section + m_model->FixedRows();
            return m_fixedSelection.Contains(row, 0) || selectionModel()->isRowSelected(section);
        },
        this);
    setHorizontalHeader(m_topHeader);
    setVerticalHeader(m_sideHeader);
    m_sideHeader->setSectionResizeMode(QHeaderView::Fixed);
    // Heading and corner select nothing: the command that deletes the selected rows asks no question, and a
    // press there would have selected them all.
    disconnect(m_topHeader, &QHeaderView::sectionPressed, this, nullptr);
    disconnect(m_topHeader, &QHeaderView::sectionEntered, this, nullptr);
    connect(m_topHeader, &QHeaderView::sectionClicked, this, [this](int section) {
        Send(NM_CLICK, {0, section + m_model->FixedColumns()});
    });
    connect(m_sideHeader, &QHeaderView::sectionClicked, this, [this](int section) {
        Send(NM_CLICK, {section + m_model->FixedRows(), 0});
    });
    connect(m_topHeader, &QHeaderView::sectionResized, this, &CGridCtrl::FitHeader);
    if (auto* corner = findChild<QAbstractButton*>()) {
        disconnect(corner, &QAbstractButton::clicked, this, nullptr);
        connect(corner, &QAbstractButton::clicked, this, [this] { Send(NM_CLICK, {0, 0}); });
    }
    ShowHeaders();
    m_sideHeader->setDefaultSectionSize(fontMetrics().height() + RowPadding);
}

bool CGridCtrl::Create(const CRect& rect, CWnd* parent, int id, GridStyles style)
{
    setParent(parent);
    setObjectName(CString::fromLatin1("id%1").arg(id));
    setGeometry(rect);
    setFrameStyle(style.testFlag(GridStyle::Border) ? int(StyledPanel) | int(Sunken) : int(NoFrame));
    setFocusPolicy(style.testFlag(GridStyle::TabStop) ? Qt::StrongFocus : Qt::ClickFocus);
    setVisible(style.testFlag(GridStyle::Visible));
    return true;
}

void CGridCtrl::SetDefaultCellType(CellType type)
{
    m_model->SetDefaultType(type);
}

void CGridCtrl::SetFmtType(const CellType* types, int count)
{
    m_model->SetTypes(std::vector<CellType>(types, types + count));
}

void CGridCtrl::SetTextBkColor(std::uint32_t colour)
{
    m_model->SetTextBackColour(colour);
}
void CGridCtrl::SetOptionsFunName(OptionsFunction function)
{
    m_options = std::move(function);
}

void CGridCtrl::SetRowCount(int count)
{
    DropEdit();
    m_model->SetRows(count);
    ShowHeaders();
}

void CGridCtrl::SetColumnCount(int count)
{
    DropEdit();
    m_model->SetColumns(count);
    ShowHeaders();
}

void CGridCtrl::SetFixedRowCount(int count)
{
    DropEdit();
    m_model->SetFixedRows(count);
    ShowHeaders();
}

void CGridCtrl::SetFixedColumnCount(int count)
{
    DropEdit();
    m_model->SetFixedColumns(count);
    ShowHeaders();
}

int CGridCtrl::GetRowCount() const
{
    return m_model->Rows();
}
int CGridCtrl::GetColumnCount() const
{
    return m_model->Columns();
}

void CGridCtrl::DeleteAllItems()
{
    SetRowCount(0);
    SetColumnCount(0);
}

void CGridCtrl::DeleteNonFixedRows()
{
    DropEdit();
    m_model->RemoveDataRows();
}

int CGridCtrl::InsertOneprop(int row, const CStringArray& strings, const void* owner)
{
    const int inserted = m_model->InsertRow(row);
    int col = 1;
    for (const CString& text : strings)
        SetItemText(inserted, col++, text);
    SetItemData(inserted, 0, reinterpret_cast<std::intptr_t>(owner));
    return inserted;
}

bool CGridCtrl::SetItem(const GridItem& item)
{
    return m_model->Write(item.row, item.col, [&item](GridModel::Cell& cell) {
        if ((item.mask & GridItemText) != 0) cell.text = item.text;
        if ((item.mask & GridItemFormat) != 0) cell.format = item.format;
    });
}

bool CGridCtrl::SetItemText(int row, int col, const CString& text)
{
    return m_model->Write(row, col, [&text](GridModel::Cell& cell) { cell.text = text; });
}

CString CGridCtrl::GetItemText(int row, int col) const
{
    const GridModel::Cell* cell = m_model->Find(row, col);
    return cell == nullptr ? CString() : cell->text;
}

bool CGridCtrl::SetItemState(int row, int col, unsigned state)
{
    return m_model->Write(row, col, [state](GridModel::Cell& cell) { cell.state = state; });
}

bool CGridCtrl::SetItemData(int row, int col, std::intptr_t value)
{
    return m_model->Write(row, col, [value](GridModel::Cell& cell) { cell.data = value; });
}

std::intptr_t CGridCtrl::GetItemData(int row, int col) const
{
    const GridModel::Cell* cell = m_model->Find(row, col);
    return cell == nullptr ? 0 : cell->data;
}

std::optional<GridCell> CGridCtrl::GetCell(int row, int col)
{
    if (!IsValid(row, col)) return std::nullopt;
    return GridCell(*this, {row, col});
}

bool CGridCtrl::IsValid(int row, int col) const
{
    return m_model->Contains(row, col);
}

bool CGridCtrl::IsValid(const GridRange& range) const
{
    return range.minRow <= range.maxRow && range.minCol <= range.maxCol &&
           IsValid(range.minRow, range.minCol) && IsValid(range.maxRow, range.maxCol);
}

void CGridCtrl::AutoSize(unsigned)
{
    resizeColumnsToContents();
    for (int row = 0; row < m_model->rowCount(); ++row) {
        setRowHeight(row, m_sideHeader->defaultSectionSize());
    }
    m_headerPadding = 0;
    FitHeader();
}

void CGridCtrl::SetColumnWidth(int col, int width)
{
    const int scaled = qRound(width * m_widthScale);
    if (col < m_model->FixedColumns()) {
        m_sideHeader->setFixedWidth(scaled);
    } else {
        setColumnWidth(col - m_model->FixedColumns(), scaled);
    }
}

void CGridCtrl::SetRowHeight(int row, int height)
{
    if (row < m_model->FixedRows()) {
        m_headerPadding = height - GetFixedRowHeight();
        FitHeader();
    } else {
        setRowHeight(row - m_model->FixedRows(), height);
    }
}

int CGridCtrl::GetFixedRowHeight() const
{
    return m_topHeader->NeededHeight();
}

void CGridCtrl::FitHeader()
{
    m_topHeader->setFixedHeight(GetFixedRowHeight() + m_headerPadding);
}

void CGridCtrl::ShowHeaders()
{
    m_topHeader->setVisible(m_model->FixedRows() > 0 && m_model->Rows() > 0);
    m_sideHeader->setVisible(m_model->FixedColumns() > 0 && m_model->Columns() > 0);
}

void CGridCtrl::Refresh()
{
    viewport()->update();
    m_topHeader->viewport()->update();
    m_sideHeader->viewport()->update();
}

void CGridCtrl::changeEvent(QEvent* event)
{
    QTableView::changeEvent(event);
    if (event->type() != QEvent::FontChange && event->type() != QEvent::StyleChange) return;
    const double before = std::exchange(m_widthScale, widgets::FontScale(font()));
    const double growth = m_widthScale / before;
    for (int section = 0; section < m_model->columnCount(); ++section) {
        setColumnWidth(section, qRound(columnWidth(section) * growth));
    }
    m_sideHeader->setFixedWidth(qRound(m_sideHeader->width() * growth));
    m_sideHeader->setDefaultSectionSize(fontMetrics().height() + RowPadding);
    FitHeader();
}
