#pragma once

class QAccessibleInterface;
class QObject;
class QString;

namespace widgets {

/// What assistive technology sees of a `NotifyingStatic`: a link that it can press. Null for any other
/// object. To be given to `QAccessible::installFactory`.
QAccessibleInterface* MakeAccessibleLink(const QString& className, QObject* object);

} // namespace widgets
