#include "dialogs/template/DataExchange.h"

#include "widgets/ControlText.h"

#include <QtWidgets/QButtonGroup>
#include <QtWidgets/QRadioButton>

namespace dialogs {

void DataExchange::Text(int id, CString& value)
{
    auto& edit = m_items.Item<QWidget>(id);
    if (m_direction == Direction::ToMembers)
        value = widgets::ControlText(edit);
    else
        widgets::SetControlText(edit, value);
}

void DataExchange::Radio(int firstId, int& value)
{
    const QButtonGroup* group = m_items.Item<QRadioButton>(firstId).group();
    if (m_direction == Direction::ToMembers)
        value = group->checkedId();
    else if (QAbstractButton* button = group->button(value))
        button->setChecked(true);
}

} // namespace dialogs
