#include "dialogs/DataExchange.h"

#include "dialogs/TemplateDialog.h"

#include <QtWidgets/QButtonGroup>
#include <QtWidgets/QRadioButton>

namespace dialogs {

void DataExchange::Text(int id, CString& value)
{
    if (m_direction == Direction::ToMembers)
        value = m_dialog.ItemText(id);
    else
        m_dialog.SetItemText(id, value);
}

void DataExchange::Radio(int firstId, int& value)
{
    const QButtonGroup* group = m_dialog.Item<QRadioButton>(firstId).group();
    if (m_direction == Direction::ToMembers)
        value = group->checkedId();
    else if (QAbstractButton* button = group->button(value))
        button->setChecked(true);
}

} // namespace dialogs
