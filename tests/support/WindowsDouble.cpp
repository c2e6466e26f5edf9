#include "support/WindowsDouble.h"

#include "host/UserMessage.h"

#include <QtCore/QCoreApplication>
#include <QtWidgets/QWidget>

#include <stdexcept>

using namespace Qt::StringLiterals;

namespace test {

/// The picker that a dialog holds; everything it is told goes into the double.
class PickerWindow : public host::IBillPicker
{
public:
    explicit PickerWindow(PickerDouble& state) : m_state(state) { m_state = PickerDouble(); }
    ~PickerWindow() override
    {
        m_state.m_parent = nullptr;
        m_state.m_visible = false;
    }

    bool Create(CWnd* parent) override
    {
        m_state.m_parent = parent;
        return Note(u"create"_s);
    }
    bool IsVisible() const override { return m_state.m_visible; }
    void Show(bool visible) override
    {
        m_state.m_visible = visible;
        Note(visible ? u"show"_s : u"hide"_s);
    }
    void EnableContent(bool enable) override { Note(enable ? u"enable"_s : u"disable"_s); }
    void MoveWndToRight(CWnd*) override { Note(u"right"_s); }
    void InitData() override { Note(u"load"_s); }
    void SetShowGetQdNumDlg(bool show) override { m_state.m_asksNumber = show; }
    void SetTreePosition(const CString& position) override { Note(u"position "_s + position); }

private:
    bool Note(const CString& call)
    {
        m_state.m_calls.append(call);
        m_state.m_listener(call);
        return true;
    }

    PickerDouble& m_state;
};

int PickerDouble::PickBill(const SPickedQd* picked) const
{
    return Send(host::QdPickedMessage, picked);
}

int PickerDouble::PickQuota(const SPickedDe* picked) const
{
    return Send(host::DePickedMessage, picked);
}

int PickerDouble::Send(int code, const void* record) const
{
    if (m_parent == nullptr) throw std::logic_error("the picker has no parent");
    host::UserMessage message(code, record);
    QCoreApplication::sendEvent(m_parent, &message);
    return message.Result();
}

std::unique_ptr<host::IBillPicker> WindowsDouble::MakeBillPicker()
{
    return std::make_unique<PickerWindow>(m_bill);
}

std::unique_ptr<host::IPickerWindow> WindowsDouble::MakeQuotaPicker()
{
    return std::make_unique<PickerWindow>(m_quota);
}

int WindowsDouble::ShowCalculatorDlg(const CString& categoryText, const CString& text, CString& result, CWnd*)
{
    m_calculations.append(categoryText + u'|' + text);
    m_duringCalculation();
    if (!m_calculation) return 2;
    result = *m_calculation;
    return 1;
}

void WindowsDouble::ShowNetDisk(const CString& name, bool flag)
{
    m_netDisks.append(name + (flag ? u" 1"_s : u" 0"_s));
    m_duringNetDisk();
}

} // namespace test
