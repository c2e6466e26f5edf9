#include "embedded/windows/PickerFixture.h"

#include "host/UserMessage.h"

using namespace Qt::StringLiterals;

namespace test {

namespace {

CString Text(const SPickedQd& bill)
{
    return u"bill %1 %2 %3"_s.arg(bill.strNumber).arg(bill.nUnitCode).arg(bill.nWithAnnex);
}

CString Text(const SPickedDe& quota)
{
    return CStringArray{quota.strNumber,
                        quota.strName,
                        quota.strUnit,
                        CString::number(quota.nUnitCode),
                        CString::number(quota.nWithAnnex),
                        quota.strCalRule}
        .join(u'|');
}

} // namespace

bool PickerParent::event(QEvent* event)
{
    if (event->type() != host::UserMessage::EventType()) return QDialog::event(event);
    const auto& message = *static_cast<host::UserMessage*>(event);
    m_step();
    if (message.Code() == host::QdPickedMessage)
        m_picked.append(Text(*static_cast<const SPickedQd*>(message.Record())));
    else if (message.Code() == host::DePickedMessage)
        m_picked.append(Text(*static_cast<const SPickedDe*>(message.Record())));
    else
        m_picked.append(u"message %1"_s.arg(message.Code()));
    return true;
}

EmbeddedWindowsTest::EmbeddedWindowsTest()
{
    m_project.Put({SQdDeInfo::BillMode, u"给排水"_s});
    m_host = std::make_unique<embedded::EmbeddedHost>(m_project.Folder());
    m_windows = std::make_unique<embedded::EmbeddedWindows>(*m_host);
    host::Roles roles = m_host->Roles();
    roles.windows = m_windows.get();
    m_installed = std::make_unique<host::Installation>(host::Install(roles));
    m_parent.resize(200, 150);
    m_parent.show();
}

QDialog& EmbeddedWindowsTest::Window() const
{
    auto* window = m_parent.findChild<QDialog*>();
    if (window == nullptr) throw std::logic_error("no picker was created");
    return *window;
}

} // namespace test
