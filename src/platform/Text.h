#pragma once

#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QStringList>

/// The text of this system: UTF-16, implicitly shared, cheap to copy.
using CString = QString;

/// A list of texts, as the host hands out names, values and attribute records.
using CStringArray = QStringList;

/// A list of records, as the host hands out ids and bill items. `at()` asserts, so code that relies on a
/// checked index uses a `std::vector`.
template <typename T>
using CArray = QList<T>;
