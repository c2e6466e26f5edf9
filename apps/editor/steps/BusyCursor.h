#pragma once

#include <QtCore/QObject>

#include <optional>

namespace editor {

/// Shows by the cursor, while it lives, that the program is busy.
class BusyCursor
{
public:
    BusyCursor();
    ~BusyCursor();
    BusyCursor(const BusyCursor&) = delete;
    BusyCursor& operator=(const BusyCursor&) = delete;
};

/// The same until a window comes up: the cursor of a step that ends by showing one, or by a message.
class BusyUntilWindow : public QObject
{
public:
    BusyUntilWindow();

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    std::optional<BusyCursor> m_cursor;
};

} // namespace editor
