#include "editor/help/ManualView.h"

#include "editor/help/ManualPages.h"
#include "widgets/LineColour.h"

#include <QtCore/QEvent>
#include <QtCore/QTimer>
#include <QtGui/QAbstractTextDocumentLayout>
#include <QtGui/QFontDatabase>
#include <QtGui/QTextBlock>
#include <QtGui/QTextCursor>
#include <QtGui/QTextFrame>
#include <QtGui/QTextList>
#include <QtGui/QTextTable>
#include <QtWidgets/QScrollBar>

#include <cmath>
#include <utility>

using namespace Qt::StringLiterals;

namespace editor {

namespace {

constexpr qreal Margin = 16;
constexpr qreal CellPadding = 5;
/// Lines stand further apart than in a list: this is read from end to end.
constexpr qreal LineHeight = 130;

/// How much of the view's width lists and quotes take.
qreal IndentOf(const QTextBlock& block, const QTextDocument& document)
{
    const int lists = block.textList() != nullptr ? block.textList()->format().indent() : 0;
    return document.indentWidth() * (lists + block.blockFormat().indent()) + block.blockFormat().leftMargin();
}

bool IsCode(const QTextBlock& block)
{
    const QTextBlockFormat format = block.blockFormat();
    return format.hasProperty(QTextFormat::BlockCodeFence) || format.nonBreakableLines() ||
           format.hasProperty(QTextFormat::BlockCodeLanguage);
}

/// Between the paper and the colour of what is selected.
QColor PaleMark(const QPalette& palette)
{
    const QColor paper = palette.color(QPalette::Base);
    const QColor mark = palette.color(QPalette::Highlight);
    return QColor((2 * paper.red() + mark.red()) / 3, (2 * paper.green() + mark.green()) / 3,
                  (2 * paper.blue() + mark.blue()) / 3);
}

} // namespace

ManualView::ManualView()
{
    setOpenLinks(false);
    setUndoRedoEnabled(false);
    document()->setDocumentMargin(Margin);
    setAccessibleName(u"手册正文"_s);
}

void ManualView::ShowPage(const QString& path)
{
    m_path = path;
    m_pictures.clear();
    Load();
    verticalScrollBar()->setValue(0);
}

void ManualView::Load()
{
    if (m_path.isEmpty()) return;
    document()->setDefaultFont(font());
    ManualPages::Fill(*document(), ManualPages::MarkdownOf(m_path));
    StyleText();
    FitPictures();
}

void ManualView::StyleText()
{
    const QColor line = widgets::LineColour(palette(), QPalette::Base, QPalette::Text);
    for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
        QTextCursor cursor(block);
        QTextBlockFormat format;
        if (IsCode(block))
            format.setBackground(palette().alternateBase());
        else if (!block.text().contains(QChar::ObjectReplacementCharacter)) // a picture is high enough
            format.setLineHeight(LineHeight, QTextBlockFormat::ProportionalHeight);
        cursor.mergeBlockFormat(format);
        SizeCode(block);
    }
    for (QTextFrame* frame : document()->rootFrame()->childFrames()) {
        auto* table = qobject_cast<QTextTable*>(frame);
        if (table == nullptr) continue;
        QTextTableFormat format = table->format();
        format.setBorder(1);
        format.setBorderBrush(line);
        format.setBorderStyle(QTextFrameFormat::BorderStyle_Solid);
        format.setBorderCollapse(true);
        format.setCellPadding(CellPadding);
        format.setCellSpacing(0);
        table->setFormat(format);
    }
}

// The toolkit takes the size of the system's letters of one width.
void ManualView::SizeCode(const QTextBlock& block)
{
    QList<QTextFragment> parts;
    for (auto part = block.begin(); !part.atEnd(); ++part)
        if (part.fragment().charFormat().hasProperty(QTextFormat::FontPointSize))
            parts.append(part.fragment());
    for (const QTextFragment& part : parts) {
        QTextCursor cursor(document());
        cursor.setPosition(part.position());
        cursor.setPosition(part.position() + part.length(), QTextCursor::KeepAnchor);
        QTextCharFormat format;
        format.setFontPointSize(font().pointSizeF());
        cursor.mergeCharFormat(format);
    }
}

void ManualView::FitPictures()
{
    m_fittedRatio = devicePixelRatioF();
    for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
        const qreal room = viewport()->width() - 2 * Margin - IndentOf(block, *document());
        QList<QTextFragment> pictures;
        for (auto part = block.begin(); !part.atEnd(); ++part)
            if (part.fragment().charFormat().isImageFormat()) pictures.append(part.fragment());
        for (const QTextFragment& picture : pictures)
            FitPicture(picture, room);
    }
}

// Scaled here, once and smoothly for the pixels of the screen: the toolkit takes the nearest ones.
void ManualView::FitPicture(const QTextFragment& fragment, qreal room)
{
    QTextImageFormat format = fragment.charFormat().toImageFormat();
    if (!m_pictures.contains(format.name()))
        m_pictures.insert(format.name(), {ManualPages::PictureOf(m_path, format.name()), {}});
    auto& [picture, shown] = m_pictures[format.name()];
    if (picture.isNull()) return;
    const qreal width = std::floor(qBound(qreal(1), room, qreal(picture.width())));
    const qreal height = std::round(width * picture.height() / picture.width());
    const QSize pixels = (QSizeF(width, height) * m_fittedRatio).toSize();
    if (std::exchange(shown, pixels) == pixels && format.width() == width) return;
    // Of the 256 colours of a palette none stands between two others.
    QImage scaled = picture.convertToFormat(QImage::Format_ARGB32_Premultiplied)
                        .scaled(pixels, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    scaled.setDevicePixelRatio(m_fittedRatio);
    document()->addResource(QTextDocument::ImageResource, QUrl(format.name()), scaled);
    format.setWidth(width);
    format.setHeight(height);
    QTextCursor cursor(document());
    cursor.setPosition(fragment.position());
    cursor.setPosition(fragment.position() + fragment.length(), QTextCursor::KeepAnchor);
    cursor.setCharFormat(format);
}

// Nothing is looked for outside the program.
QVariant ManualView::loadResource(int /*type*/, const QUrl& /*name*/)
{
    return {};
}

QList<QTextBlock> ManualView::Headings() const
{
    QList<QTextBlock> headings;
    for (QTextBlock block = document()->begin(); block.isValid(); block = block.next())
        if (block.blockFormat().headingLevel() > 0) headings.append(block);
    return headings;
}

void ManualView::ScrollTo(int position)
{
    document()->size(); // lays all of it out; before, the end of the page cannot be scrolled to
    const QTextBlock block = document()->findBlock(position);
    const qreal top = document()->documentLayout()->blockBoundingRect(block).top();
    const qreal line = block.layout()->lineForTextPosition(position - block.position()).isValid()
                           ? block.layout()->lineForTextPosition(position - block.position()).y()
                           : 0;
    verticalScrollBar()->setValue(static_cast<int>(top + line));
}

int ManualView::TopPosition() const
{
    return verticalScrollBar()->value() == 0 ? 0 : cursorForPosition(QPoint(0, 0)).position();
}

void ManualView::GoToHeading(qsizetype number)
{
    const QList<QTextBlock> headings = Headings();
    if (number <= 0 || number >= headings.size()) return verticalScrollBar()->setValue(0);
    ScrollTo(headings[number].position());
}

qsizetype ManualView::HeadingAtTop() const
{
    // A heading that the view was scrolled to may stand a few pixels above or below its edge.
    const qreal top = verticalScrollBar()->value() + fontMetrics().height();
    qsizetype last = -1;
    for (const QTextBlock& block : Headings()) {
        if (document()->documentLayout()->blockBoundingRect(block).top() > top) break;
        ++last;
    }
    return last;
}

void ManualView::MarkPlaces(const QList<int>& places, int length, qsizetype current)
{
    QList<QTextEdit::ExtraSelection> marks;
    for (qsizetype i = 0; i < places.size(); ++i) {
        QTextCursor cursor(document());
        cursor.setPosition(places[i]);
        cursor.setPosition(places[i] + length, QTextCursor::KeepAnchor);
        QTextCharFormat format;
        const bool isCurrent = i == current;
        const QColor mark = palette().color(QPalette::Highlight);
        format.setBackground(isCurrent ? mark : PaleMark(palette()));
        format.setForeground(palette().brush(isCurrent ? QPalette::HighlightedText : QPalette::Text));
        marks.append({cursor, format});
    }
    setExtraSelections(marks);
    if (current < 0 || current >= places.size()) return;
    // Seen with what stands before it.
    ScrollTo(places[current]);
    verticalScrollBar()->setValue(verticalScrollBar()->value() - viewport()->height() / 3);
    // A place deep in a cell of a table lies far from where its block begins.
    const QRect seen = cursorRect(marks[current].cursor);
    const int below = seen.bottom() - viewport()->height();
    const int beside = seen.right() - viewport()->width();
    if (below > 0) verticalScrollBar()->setValue(verticalScrollBar()->value() + below + seen.height());
    if (seen.top() < 0) verticalScrollBar()->setValue(verticalScrollBar()->value() + seen.top());
    if (beside > 0) horizontalScrollBar()->setValue(horizontalScrollBar()->value() + beside + seen.height());
}

void ManualView::KeepingTop(const std::function<void()>& change)
{
    const int top = TopPosition();
    change();
    if (top > 0) ScrollTo(top);
}

void ManualView::resizeEvent(QResizeEvent* event)
{
    KeepingTop([&] {
        QTextBrowser::resizeEvent(event);
        FitPictures();
    });
}

// Links, tables and letters take their looks from the program when a page is laid out.
void ManualView::changeEvent(QEvent* event)
{
    QTextBrowser::changeEvent(event);
    const QEvent::Type type = event->type();
    if (type == QEvent::PaletteChange || type == QEvent::FontChange || type == QEvent::StyleChange)
        KeepingTop([&] { Load(); });
}

// The window may be moved to a screen of another resolution.
void ManualView::paintEvent(QPaintEvent* event)
{
    QTextBrowser::paintEvent(event);
    if (m_fittedRatio != devicePixelRatioF())
        QTimer::singleShot(0, this, [this] { KeepingTop([&] { FitPictures(); }); });
}

} // namespace editor
