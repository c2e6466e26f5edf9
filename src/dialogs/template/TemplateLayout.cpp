// The part of TemplateDialog that makes controls from the table and gives them their places.

#include "dialogs/template/ControlFactory.h"
#include "dialogs/template/DialogUnits.h"
#include "dialogs/template/TemplateDialog.h"
#include "widgets/ControlMetrics.h"
#include "widgets/ControlText.h"
#include "widgets/ListBox.h"
#include "widgets/NotifyingStatic.h"
#include "widgets/TreeControl.h"

#include <QtGui/QFontMetricsF>
#include <QtGui/QScreen>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QButtonGroup>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QRadioButton>
#include <QtWidgets/QScrollArea>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QStyle>
#include <QtWidgets/QTabWidget>
#include <QtWidgets/QVBoxLayout>

using namespace Qt::StringLiterals;

namespace dialogs {

namespace {

bool IsCombo(const ControlRow& row)
{
    return row.kind == ControlKind::DropList || row.kind == ControlKind::EditableCombo;
}

} // namespace

QWidget* TemplateDialog::CreateControl(const ControlRow& row, QWidget* parent)
{
    return MakeControl(row, parent);
}

void TemplateDialog::CreateControls()
{
    m_scroll = new QScrollArea(this);
    m_scroll->setFrameShape(QFrame::NoFrame);
    m_scroll->setFocusPolicy(Qt::NoFocus);
    m_content = new QWidget;
    auto* whole = new QVBoxLayout(this);
    whole->setContentsMargins(0, 0, 0, 0);
    whole->addWidget(m_scroll);
    m_scroll->setWidget(m_content);
    for (const ControlRow& row : m_layout.rows) {
        QWidget* widget = CreateControl(row, m_content);
        ApplyRow(row, *widget);
        JoinRadioGroup(row, widget);
        Wire(row, widget);
        m_controls.push_back({&row, widget});
        if (row.id != NoId) AddDlgItem(row.id, widget);
        // A box drawn around others must not lie on top of them and take their clicks, wherever the table has
        // it.
        if (row.kind == ControlKind::GroupBox || row.kind == ControlKind::Frame) widget->lower();
    }
    NameControls();
}

void TemplateDialog::NameControls()
{
    CString nearest;
    for (const Control& control : m_controls) {
        const CString caption = widgets::Spoken(control.row->caption.toString());
        if (!caption.isEmpty()) nearest = caption;
        const CString own = control.row->name.toString();
        control.widget->setAccessibleName(own.isEmpty() ? nearest : own);
        auto* label = qobject_cast<QLabel*>(control.widget);
        if (label != nullptr && control.row->buddy != NoId) label->setBuddy(GetDlgItem(control.row->buddy));
    }
}

void TemplateDialog::JoinRadioGroup(const ControlRow& row, QWidget* widget)
{
    auto* radio = qobject_cast<QRadioButton*>(widget);
    if (radio == nullptr) return;
    if ((row.flags & GroupStart) != 0 || m_group == nullptr) m_group = new QButtonGroup(m_content);
    m_group->addButton(radio, static_cast<int>(m_group->buttons().size()));
}

void TemplateDialog::Wire(const ControlRow& row, QWidget* widget)
{
    const int id = row.id;
    const auto sends = [this, id](DialogEvent event) { return [this, id, event] { Dispatch(event, id); }; };
    if (auto* button = qobject_cast<QAbstractButton*>(widget))
        connect(button, &QAbstractButton::clicked, this, sends(DialogEvent::Command));
    else if (auto* link = dynamic_cast<widgets::NotifyingStatic*>(widget))
        link->OnClicked(sends(DialogEvent::Command));
    else if (auto* list = dynamic_cast<widgets::ListBox*>(widget))
        list->OnSelected(sends(DialogEvent::ListSelection));
    else if (auto* tab = qobject_cast<QTabWidget*>(widget))
        connect(tab, &QTabWidget::currentChanged, this, sends(DialogEvent::TabSelection));
    else if (auto* tree = dynamic_cast<widgets::TreeControl*>(widget)) {
        tree->OnSelectionChanging(sends(DialogEvent::TreeSelectionChanging));
        connect(tree, &QTreeWidget::itemSelectionChanged, this, sends(DialogEvent::TreeSelectionChanged));
    } else if (auto* rows = qobject_cast<QTreeWidget*>(widget))
        connect(rows, &QTreeWidget::itemSelectionChanged, this, sends(DialogEvent::ListItemChanged));
}

void TemplateDialog::Layout()
{
    DialogUnits units{QFontMetricsF(font())};
    std::vector<QSize> needed;
    for (const auto& [row, widget] : m_controls) {
        needed.push_back(widgets::NeededSize(*widget, row->fits.toString()));
        // The table gives a combo's height with its list dropped. Closed it takes what it needs.
        units.GrowToFit(row->rect, IsCombo(*row) ? QSize(needed.back().width(), 0) : needed.back());
    }
    for (std::size_t index = 0; index < m_controls.size(); ++index) {
        const auto& [row, widget] = m_controls[index];
        QRect place = units.Map(row->rect);
        if (IsCombo(*row)) place.setHeight(needed[index].height());
        widget->setGeometry(place);
    }
    const QSize size = units.Map({0, 0, m_layout.width, m_layout.height}).size();
    m_content->resize(size);
    FitToScreen(size);
    OnLayout();
}

void TemplateDialog::FitToScreen(QSize size)
{
    const int titleBar = style()->pixelMetric(QStyle::PM_TitleBarHeight);
    const QSize room = screen()->availableSize() - QSize(0, titleBar);
    const int bar = style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    const bool scrollsX = size.width() > room.width();
    const bool scrollsY = size.height() > room.height();
    if (scrollsY) size.rwidth() += bar;
    if (scrollsX) size.rheight() += bar;
    setFixedSize(size.boundedTo(room));
}

} // namespace dialogs
