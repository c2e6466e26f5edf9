#pragma once

#include "platform/Text.h"

#include <QtCore/QObject>

namespace editor {

/// While it lives, a configuration dialog of the module that comes up goes to a category: the module itself
/// begins with the first one. Does what a user would: it selects the category in the dialog's tree.
class CategoryOpener : public QObject
{
public:
    /// `category` is its full text; an empty or unknown one leaves the dialog where it begins.
    explicit CategoryOpener(CString category);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    CString m_category;
};

} // namespace editor
