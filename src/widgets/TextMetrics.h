#pragma once

#include "platform/Text.h"

class QFont;
class QFontMetrics;

/// How much room texts take, where the toolkit does not say it itself.
namespace widgets {

/// The toolkit draws the text of an edit field that far from either side, and keeps room for the cursor.
inline constexpr int EditSideMargin = 2;
inline constexpr int EditCursorWidth = 1;

/// A text as high as lines of Chinese are: where the font that was asked for has no Chinese, the letters that
/// stand in for its own are often taller, and users type Chinese everywhere.
CString ChineseLine();

/// The width of that many Chinese characters.
int ChineseWidth(const QFontMetrics& metrics, int characters);

/// The width of a column that shows `sample` with some space around it.
int ColumnWidth(const QFontMetrics& metrics, const CString& sample);

/// By how much a width given in pixels for small fonts is to grow with `font`: 1 up to 9 points, in
/// proportion from there on.
double FontScale(const QFont& font);

} // namespace widgets
