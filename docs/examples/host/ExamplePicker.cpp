#include "ExamplePicker.h"

#include <host/UserMessage.h>

#include <QtCore/QCoreApplication>

#include <utility>

ExamplePicker::ExamplePicker(CArray<ExampleItem> bills, CArray<ExampleItem> quotas)
    : m_bills(std::move(bills)), m_quotas(std::move(quotas))
{
}

ExamplePicker::~ExamplePicker()
{
    delete m_list;
}

bool ExamplePicker::Create(CWnd* parent)
{
    m_list = new QListWidget(parent);
    m_list->setWindowFlag(Qt::Tool);
    m_list->setWindowTitle(QStringLiteral("清单定额"));
    QObject::connect(m_list, &QListWidget::activated, m_list,
                     [this](const QModelIndex& index) { Send(index.row()); });
    return true;
}

bool ExamplePicker::IsVisible() const
{
    return m_list && m_list->isVisible();
}

void ExamplePicker::Show(bool visible)
{
    if (m_list) m_list->setVisible(visible);
}

void ExamplePicker::EnableContent(bool enable)
{
    if (m_list) m_list->setEnabled(enable);
}

void ExamplePicker::MoveWndToRight(CWnd* wnd)
{
    if (m_list) m_list->move(wnd->frameGeometry().topRight());
}

void ExamplePicker::InitData()
{
    if (!m_list) return;
    m_list->clear();
    for (const ExampleItem& item : m_bills + m_quotas)
        m_list->addItem(item.number + u' ' + item.name);
}

// The message is handled when `sendEvent` returns, and the record need not live longer.
void ExamplePicker::Send(int row)
{
    if (row < m_bills.size()) {
        SPickedQd picked;
        picked.strNumber = m_bills[row].number;
        host::UserMessage message(host::QdPickedMessage, &picked);
        QCoreApplication::sendEvent(m_list->parentWidget(), &message);
    } else {
        const ExampleItem& quota = m_quotas[row - m_bills.size()];
        const SPickedDe picked{1, 0, quota.number, quota.name, quota.unit, CString()};
        host::UserMessage message(host::DePickedMessage, &picked);
        QCoreApplication::sendEvent(m_list->parentWidget(), &message);
    }
}
