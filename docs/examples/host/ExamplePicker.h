#pragma once

#include <host/Roles.h>

#include <QtCore/QPointer>
#include <QtWidgets/QListWidget>

/// An item of a library.
struct ExampleItem
{
    CString number;
    CString name;
    CString unit;
};

/// A picker for both modes: a list of bill items and quota items. A double click or Enter sends the item to
/// the parent.
class ExamplePicker : public host::IBillPicker
{
public:
    ExamplePicker(CArray<ExampleItem> bills, CArray<ExampleItem> quotas);
    ~ExamplePicker() override;

    bool Create(CWnd* parent) override;
    bool IsVisible() const override;
    void Show(bool visible) override;
    void EnableContent(bool enable) override;
    void MoveWndToRight(CWnd* wnd) override;
    void InitData() override;
    void SetShowGetQdNumDlg(bool) override {} // the dialog asks for the number itself
    void SetTreePosition(const CString&) override {}

private:
    void Send(int row);

    CArray<ExampleItem> m_bills;
    CArray<ExampleItem> m_quotas;
    QPointer<QListWidget> m_list; ///< its parent may end it before this does
};
