#pragma once

#include <QtCore/QtGlobal>

namespace tables {

/// What a worksheet can hold in every program that reads it: rows, columns, characters of a cell.
constexpr qint64 MostRows = 1048576;
constexpr qsizetype MostColumns = 16384;
constexpr qsizetype LongestCell = 32767;

} // namespace tables
