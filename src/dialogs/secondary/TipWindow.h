#pragma once

#include "platform/Text.h"

#include <QtCore/QPointer>
#include <QtCore/QTimer>
#include <QtWidgets/QWidget>

#include <memory>

/// The tip window that shows a text too wide for its control. There is one for all controls: the first
/// control makes it and the last one that lets go takes it along. The mouse reaches through it.
///
/// While it is up it has a holder, the control that it speaks for. The tip goes, and the holder is given up,
/// when the time is over, when the mouse leaves the holder, when the holder is clicked, typed into, hidden or
/// destroyed, and by `HideTip`. Only while it is up it sees every mouse move of the program, so it notices
/// the leaving also where some other window comes under the mouse; it then sends the holder a leave event.
class TipWindow : public QWidget
{
    Q_OBJECT

public:
    /// How long a tip stays up, in milliseconds.
    static constexpr int Duration = 9000;
    static constexpr int NoItem = -1;

    /// The one window, made when nobody has it.
    static std::shared_ptr<TipWindow> Shared();
    ~TipWindow() override;

    /// The room that `text` takes from the top left of `rect` on, on one line of the tip's font.
    static QRect Measure(const CString& text, const QRect& rect);
    /// Shows `text` over `rect` of `holder`, in its coordinates, moved onto the screen if it would stick out,
    /// and starts the time anew.
    void ShowTip(QWidget* holder, const CString& text, const QRect& rect);
    void HideTip();
    /// The control that the tip is up for; null while the tip is hidden.
    QWidget* Holder() const { return m_holder; }
    const CString& Text() const { return m_text; }

    /// The list entry that last got a tip or was found to need none, `NoItem` when the mouse is in no list.
    int LastItem() const { return m_lastItem; }
    void SetLastItem(int item) { m_lastItem = item; }

    /// Begins to watch for the mouse's rest in a control and for its leaving. Nothing happens when it is
    /// watched already.
    void BeginMouseTracking(QWidget* control);
    /// Ends the watch.
    void EndMouseTracking();
    /// Whether the mouse rests in `control` for the first time since it came in. One rest counts per visit,
    /// so a tip that went by itself stays away.
    bool TakeHover(const QWidget* control);

    bool eventFilter(QObject* watched, QEvent* event) override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    TipWindow();
    void OnMouseAt(const QPoint& screenPoint);

    CString m_text;
    QTimer m_timer;
    QPointer<QWidget> m_holder;
    QPointer<QWidget> m_tracked;
    bool m_hoverTaken = false;
    int m_lastItem = NoItem;
};
