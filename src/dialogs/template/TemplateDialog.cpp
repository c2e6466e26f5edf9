#include "dialogs/template/TemplateDialog.h"

#include "dialogs/template/ControlFactory.h"
#include "host/UserMessage.h"
#include "platform/Apart.h"
#include "platform/Messages.h"
#include "widgets/ControlText.h"
#include "widgets/Guard.h"

#include <QtGui/QCloseEvent>
#include <QtGui/QKeyEvent>
#include <QtWidgets/QPushButton>

#include <utility>

namespace dialogs {

TemplateDialog::TemplateDialog(const DialogTemplate& layout, CWnd* parent)
    : QDialog(parent, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                          Qt::WindowCloseButtonHint),
      m_layout(layout)
{
    setWindowTitle(layout.caption.toString());
    On(DialogEvent::Command, IdOk, [this] { OnOK(); });
    On(DialogEvent::Command, IdCancel, [this] { OnCancel(); });
}

TemplateDialog::~TemplateDialog() = default;

void TemplateDialog::Create()
{
    if (m_initFailure) std::rethrow_exception(m_initFailure);
    if (m_created) return;
    CreateControls();
    m_created = true;
    Layout();
    try {
        OnInitDialog();
    } catch (...) {
        m_initFailure = std::current_exception();
        throw;
    }
}

int TemplateDialog::DoModal()
{
    Create();
    // The toolkit's own end, for instance when the window was hidden, leaves 0.
    const int ended = exec();
    return ended == Rejected ? IdCancel : ended;
}

CWnd* TemplateDialog::GetDlgItem(int id) const
{
    return m_items.Find(id);
}

CString TemplateDialog::ItemText(int id) const
{
    return widgets::ControlText(Item<QWidget>(id));
}

void TemplateDialog::SetItemText(int id, const CString& text)
{
    auto& widget = Item<QWidget>(id);
    widgets::SetControlText(widget, text);
    if (!widgets::HasCaption(widget)) return;
    widget.setAccessibleName(widgets::Spoken(text));
    Layout();
}

void TemplateDialog::OnInitDialog()
{
    UpdateData(DataExchange::Direction::ToControls);
}

void TemplateDialog::DoDataExchange(DataExchange& /*exchange*/) {}

void TemplateDialog::OnOK()
{
    EndDialog(IdOk);
}

void TemplateDialog::OnCancel()
{
    EndDialog(IdCancel);
}

void TemplateDialog::OnClose()
{
    Dispatch(DialogEvent::Command, IdCancel);
}

void TemplateDialog::OnLayout() {}

void TemplateDialog::On(DialogEvent event, int source, std::function<void()> handler)
{
    m_events.Set(event, source, [handler = std::move(handler)](Notice&) { handler(); });
}

void TemplateDialog::On(DialogEvent event, int source, EventTable::Handler handler)
{
    m_events.Set(event, source, std::move(handler));
}

bool TemplateDialog::Dispatch(DialogEvent event, int source)
{
    Notice notice;
    return Dispatch(event, source, notice);
}

bool TemplateDialog::Dispatch(DialogEvent event, int source, Notice& notice)
{
    // Assistive technology can press a button while the windows paint in the middle of reading or writing.
    if (event == DialogEvent::Command && platform::IsInLongWork()) return true;
    const EventTable::Handler handler = m_events.Find(event, source);
    return !handler || RunGuarded([&] { handler(notice); });
}

bool TemplateDialog::RunGuarded(const std::function<void()>& step)
{
    return widgets::RunGuarded(step, platform::MessageCaption());
}

void TemplateDialog::AddDlgItem(int id, QWidget* widget)
{
    m_items.Add(id, widget);
}

void TemplateDialog::UpdateData(DataExchange::Direction direction)
{
    DataExchange exchange(m_items, direction);
    DoDataExchange(exchange);
}

void TemplateDialog::EndDialog(int result)
{
    done(result);
}

void TemplateDialog::reject()
{
    Dispatch(DialogEvent::Command, IdCancel);
}

bool TemplateDialog::event(QEvent* event)
{
    if (event->type() != host::UserMessage::EventType()) return QDialog::event(event);
    auto* message = static_cast<host::UserMessage*>(event);
    Notice notice;
    notice.record = message->Record();
    Dispatch(DialogEvent::UserMessage, message->Code(), notice);
    message->SetResult(notice.result);
    return true;
}

void TemplateDialog::changeEvent(QEvent* event)
{
    QDialog::changeEvent(event);
    const bool moves = event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange;
    if (moves && m_created) Layout();
}

void TemplateDialog::closeEvent(QCloseEvent* event)
{
    RunGuarded([this] { OnClose(); });
    event->setAccepted(!isVisible());
}

void TemplateDialog::keyPressEvent(QKeyEvent* event)
{
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    auto* focused = qobject_cast<QPushButton*>(focusWidget());
    bool hasDefault = false;
    for (const Control& control : m_controls)
        hasDefault = hasDefault || (control.row->flags & DefaultButton) != 0;
    // Without this the toolkit would press the default button although the focus says another.
    if (isEnter && hasDefault && focused != nullptr)
        focused->click();
    else
        QDialog::keyPressEvent(event);
}

} // namespace dialogs
