#include "dialogs/grid/GridHeader.h"

#include <QtCore/QEvent>
#include <QtGui/QPainter>
#include <QtWidgets/QStyle>

#include <algorithm>
#include <utility>

namespace {

/// Room for a caption that wraps into any number of lines.
constexpr int Unbounded = 10000;
/// Opacity of the tint over a selected section: the caption below stays readable.
constexpr int TintAlpha = 80;

} // namespace

GridHeader::GridHeader(Qt::Orientation orientation, std::function<bool(int)> isSelected, QWidget* parent)
    : QHeaderView(orientation, parent), m_isSelected(std::move(isSelected))
{
    setSectionsClickable(true);
    // The toolkit marks the sections of a selection by bold captions, which would no longer fit their widths.
    setHighlightSections(false);
    setMinimumSectionSize(1);
}

int GridHeader::NeededHeight() const
{
    const QFontMetrics metrics = fontMetrics();
    const int margin = 2 * style()->pixelMetric(QStyle::PM_HeaderMargin, nullptr, this);
    const int sections = model() == nullptr ? 0 : count();
    m_measured.resize(static_cast<std::size_t>(sections));
    int height = metrics.height();
    for (int section = 0; section < sections; ++section) {
        const QString caption = model()->headerData(section, orientation()).toString();
        const int flags = model()->headerData(section, orientation(), Qt::TextAlignmentRole).toInt();
        const int width = std::max(sectionSize(section) - margin, 1);
        Measured& last = m_measured[static_cast<std::size_t>(section)];
        if (last.width != width || last.flags != flags || last.caption != caption) {
            const QRect room(0, 0, width, Unbounded);
            last = {caption, width, flags, metrics.boundingRect(room, flags, caption).height()};
        }
        height = std::max(height, last.height);
    }
    return height + margin;
}

void GridHeader::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) m_measured.clear();
    QHeaderView::changeEvent(event);
}

void GridHeader::paintSection(QPainter* painter, const QRect& rect, int section) const
{
    // Styles leave a clip behind that lets nothing more through.
    painter->save();
    QHeaderView::paintSection(painter, rect, section);
    painter->restore();
    if (!m_isSelected(section)) return;
    QColor tint = palette().color(QPalette::Highlight);
    tint.setAlpha(TintAlpha);
    painter->fillRect(rect, tint);
}
