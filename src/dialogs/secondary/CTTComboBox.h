#pragma once

#include "platform/Text.h"

#include <QtCore/QPointer>
#include <QtWidgets/QComboBox>

#include <memory>

class TipWindow;

/// A combo box that shows in full what does not fit: the entry under the mouse in its list, the text of its
/// edit field and of its face when the mouse rests there. A tip stays up for `TipWindow::Duration` and then
/// away as long as the mouse stays on the same entry or in the same part.
///
/// It can also refuse entries, place a list that is wider than itself, and draw its entries itself; all of
/// that is off at first.
class CTTComboBox : public QComboBox
{
    Q_OBJECT

public:
    /// Where a list wider than the control is placed.
    enum ListAlignment { AlignLeft = 0, AlignRight = 1, AlignCenter = 2 };

    explicit CTTComboBox(QWidget* parent = nullptr);
    ~CTTComboBox() override;

    /// A value outside the enumeration counts as `AlignLeft`.
    void SetListAlignment(int alignment) { m_listAlignment = alignment; }
    /// Whether tips are shown. On at first.
    void SetTipsEnabled(bool enabled);
    /// The entries, by index, that a click cannot choose and the wheel steps over. The order counts for the
    /// wheel: see `wheelEvent`. The keyboard still reaches them.
    void SetDisabledItems(const CArray<int>& items) { m_disabledItems = items; }
    /// Draws the entries itself: a refused entry then never shows as selected. Turning it off leaves the
    /// toolkit's standard look.
    void SetOwnerDrawn(bool ownerDrawn);

    /// The least width of the drop-down list in pixels. The list is never narrower than the control.
    int GetDroppedWidth() const;
    void SetDroppedWidth(int width);

    bool IsItemDisabled(int item) const { return m_disabledItems.contains(item); }

    void showPopup() override;
    bool eventFilter(QObject* watched, QEvent* event) override;

protected:
    bool event(QEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    /// After the toolkit's own step the refused entries are gone through in their order: each one equal to
    /// the selection moves it one further in the wheel's direction. Entries earlier in the order are not
    /// looked at again, so two refused neighbours in the wrong order leave the selection on a refused entry;
    /// past either end nothing is selected.
    void wheelEvent(QWheelEvent* event) override;

private:
    void HookParts();
    void UnhookParts();
    bool FilterList(QEvent* event);
    void FilterEdit(QEvent* event);
    bool RefusesClick(const QPoint& point) const;
    void OnListMove(const QPoint& point);
    void OnPartLeft();
    void OnFaceLeft();
    void ShowListTip(const QPoint& point);
    void ShowEditTip();
    void ShowFaceTip();
    void ShowPartTip(QWidget* part, const CString& text, const QRect& room, int bottom);
    void AlignDropDownList();

    int m_listAlignment = AlignLeft;
    bool m_tipsEnabled = true;
    CArray<int> m_disabledItems;
    std::shared_ptr<TipWindow> m_tip;
    /// The hooked parts. The toolkit may replace them; `HookParts` then hooks the new ones.
    QPointer<QWidget> m_list;
    QPointer<QWidget> m_edit;
};
