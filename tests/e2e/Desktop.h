#pragma once

#include "support/TempFolder.h"

#include <QtCore/QByteArray>
#include <QtCore/QMargins>
#include <QtCore/QPointF>
#include <QtCore/QProcess>
#include <QtCore/QProcessEnvironment>
#include <QtCore/QRect>
#include <QtCore/QString>

#include <functional>
#include <optional>

namespace test {

/// A screen with a window manager, and the hands of the user in front of it. What does not come about within
/// a generous time ends the test by an exception. Ends its programs with itself.
class Desktop
{
public:
    Desktop();
    ~Desktop();
    Desktop(const Desktop&) = delete;
    Desktop& operator=(const Desktop&) = delete;

    /// For programs that are to appear here: the screen, and a home of their own.
    const QProcessEnvironment& Environment() const noexcept { return m_environment; }
    const TempFolder& Home() const noexcept { return m_home; }

    // A window is known by `title`, a regular expression that a part of its title matches.

    /// Whether such a window is to be seen.
    bool Shows(const QString& title) const;
    /// Whether it has the keyboard.
    bool HasFocus(const QString& title) const;
    /// Waits for it and lets it have the keyboard.
    void Focus(const QString& title);
    /// Waits until no such window is to be seen any more.
    void WaitUntilGone(const QString& title);

    /// Where a window stands that is there or coming up, in pixels and without its frame.
    QRect Geometry(const QString& title) const;
    /// The same with the frame that the window manager has put around it.
    QRect FrameGeometry(const QString& title) const;
    /// Tells the program of a window of another frame around it, as a window manager does. The window manager
    /// may tell of its own afterwards.
    void TellFrame(const QString& title, const QMargins& frame);

    /// Presses keys one after another where the focus is, named as in "alt+b", "Return".
    void Press(const QStringList& keys);
    /// Presses a key in a window, wherever the focus is; nothing happens when there is no such window any
    /// more.
    void PressIn(const QString& title, const QString& key);
    /// Types ASCII text where the focus is.
    void Type(const QString& text);
    /// Clicks in a window, at a place given as parts of its width and height. Keys that are pressed then come
    /// after the click: the window manager holds a click up until it has looked at it, and keys would
    /// overtake it meanwhile.
    void Click(const QString& title, QPointF place);
    /// Lets the window manager do nothing for a second from now on.
    void KeepManagerBusy();

    /// The titles and places of all windows, a line each, for who has to find out why a test failed.
    QString Describe() const;

    /// Waits for something else; `what` says for what.
    static void WaitFor(const QString& what, const std::function<bool()>& holds);

private:
    void StartServer();
    void StartManager();
    /// Waits until the window manager has done what was asked of it before.
    void WaitForManager();
    /// Whether there are as many desktops as the window manager has been asked for.
    bool HasDesktops() const;
    QByteArray WindowId(const QString& title) const;
    std::optional<QMargins> ToldFrame(const QString& title) const;
    /// Runs a tool on this screen; gives its output, and nothing when it fails. `complaint` takes what it
    /// says of errors.
    std::optional<QByteArray> Run(const QString& tool, const QStringList& words,
                                  QByteArray* complaint = nullptr) const;
    /// Runs xdotool; gives its output, and an empty one when it fails, as it does for a window that is gone:
    /// for questions, and for what is tried again.
    QByteArray Do(const QStringList& words) const;
    /// The same for what has to be done; raises `std::runtime_error` when it fails.
    void Act(const QStringList& words) const;

    TempFolder m_home;
    TempFolder m_records; ///< of what the server says when it cannot start
    QProcessEnvironment m_environment;
    QProcess m_server;
    QProcess m_manager;
    int m_desktops = 1; ///< how many the window manager has been asked to have
};

} // namespace test
