#pragma once

#include "dialogs/template/DataExchange.h"
#include "dialogs/template/DialogItems.h"
#include "dialogs/template/DialogTemplate.h"
#include "dialogs/template/EventTable.h"
#include "platform/Text.h"
#include "platform/Window.h"

#include <QtWidgets/QDialog>

#include <exception>
#include <functional>
#include <vector>

class QButtonGroup;
class QScrollArea;

namespace dialogs {

/// Ids of the OK and the cancel button, and the results of a modal run that they end.
inline constexpr int IdOk = 1;
inline constexpr int IdCancel = 2;

/// A modal dialog that is made from a table. Its size is fixed; it follows the font of the application, and
/// where the screen is too small for it, it scrolls.
///
/// A derived dialog enters its events in its constructor (`On`), and overrides the steps that it needs. Each
/// event and each step but the init step runs inside `RunGuarded`: what a handler raises is shown to the
/// user, and the dialog stays open. A dialog whose init step raises is not shown; the error goes to whoever
/// opens it, which for a dialog out of another one is a handler of that one.
///
/// Enter presses the button that the table names as default, or the push button that has the focus; in a
/// dialog without a default button Enter does nothing. Escape and the close box reach the cancel step.
///
/// `TemplateLayout.cpp` is the part that makes the controls and places them, `TemplateDialog.cpp` the rest.
class TemplateDialog : public QDialog
{
public:
    /// `layout` must outlive the dialog. The controls are made by `Create`.
    TemplateDialog(const DialogTemplate& layout, CWnd* parent);
    ~TemplateDialog() override;

    /// Makes the controls and runs the init step. Further calls do nothing. Raises what the init step raises,
    /// and from then on in every call: such a dialog is half-made and must not be shown.
    void Create();

    /// Shows the dialog and returns when it has ended: `IdOk`, `IdCancel`, or what `EndDialog` was given.
    /// Raises what the init step raises, and has shown nothing then.
    int DoModal();

    /// The control of that id; null when there is none.
    CWnd* GetDlgItem(int id) const;

    /// The control of that id as what it is. Raises `std::out_of_range` when there is none of that type.
    template <typename Widget>
    Widget& Item(int id) const
    {
        return m_items.Item<Widget>(id);
    }

    /// The text of a control: a caption or what stands in an edit field.
    CString ItemText(int id) const;
    /// Sets it. A caption that needs more room gets it.
    void SetItemText(int id, const CString& text);

    /// Where the table's rectangles lie; the parent of all controls. Null before `Create`.
    CWnd* Content() const { return m_content; }

protected:
    /// Makes the widget of a row; the base makes the toolkit's plain one. Text, notes and events come by
    /// themselves.
    virtual QWidget* CreateControl(const ControlRow& row, QWidget* parent);

    /// The init step. The base shows the members in the controls.
    virtual void OnInitDialog();
    /// The data-binding step: names the pairs of control and member. The base binds nothing.
    virtual void DoDataExchange(DataExchange& exchange);
    /// The OK step; the base ends the dialog with `IdOk`.
    virtual void OnOK();
    /// The cancel step; the base ends the dialog with `IdCancel`.
    virtual void OnCancel();
    /// The window is to be closed by its frame; the base goes on to the cancel step.
    virtual void OnClose();
    /// The controls have got their places, at the start and after every change of font or caption. For
    /// children that stand on the place of another.
    virtual void OnLayout();

    /// Enters a handler: a function without argument or with a `Notice&`, or a member function of the derived
    /// dialog.
    void On(DialogEvent event, int source, std::function<void()> handler);
    void On(DialogEvent event, int source, EventTable::Handler handler);
    template <typename Dialog>
    void On(DialogEvent event, int source, void (Dialog::*step)())
    {
        On(event, source, [this, step] { (static_cast<Dialog*>(this)->*step)(); });
    }
    template <typename Dialog>
    void On(DialogEvent event, int source, void (Dialog::*step)(Notice&))
    {
        On(event, source, [this, step](Notice& notice) { (static_cast<Dialog*>(this)->*step)(notice); });
    }

    /// Runs the handler of an event, if there is one. False when it raised something.
    bool Dispatch(DialogEvent event, int source);
    bool Dispatch(DialogEvent event, int source, Notice& notice);

    /// Runs `step` and shows what it raises, whatever its type. The one place where errors are caught before
    /// they reach the toolkit's event loop. False when something was raised.
    bool RunGuarded(const std::function<void()>& step);

    /// Makes a further child of `Content()`, such as a grid, known to `GetDlgItem`. Does not take it over.
    void AddDlgItem(int id, QWidget* widget);

    /// `ToControls` shows the members, `ToMembers` reads the controls.
    void UpdateData(DataExchange::Direction direction);

    /// Ends the dialog with that result.
    void EndDialog(int result);

    void reject() override;
    bool event(QEvent* event) override;
    void changeEvent(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    struct Control
    {
        const ControlRow* row;
        QWidget* widget;
    };

    void CreateControls();
    void NameControls();
    void JoinRadioGroup(const ControlRow& row, QWidget* widget);
    void Wire(const ControlRow& row, QWidget* widget);
    void Layout();
    void FitToScreen(QSize size);

    const DialogTemplate& m_layout;
    EventTable m_events;
    std::vector<Control> m_controls;
    DialogItems m_items;
    QScrollArea* m_scroll = nullptr;
    QWidget* m_content = nullptr;
    QButtonGroup* m_group = nullptr;
    bool m_created = false;
    std::exception_ptr m_initFailure;
};

} // namespace dialogs
