#include "editor/help/ManualPages.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QRegularExpression>
#include <QtCore/QUrl>
#include <QtGui/QTextBlock>
#include <QtGui/QTextDocument>
#include <QtGui/QTextFragment>

#include <algorithm>
#include <stdexcept>

using namespace Qt::StringLiterals;

// In no namespace: the macro declares a function of the global one.
static void InitManual()
{
    Q_INIT_RESOURCE(ktqdde_manual);
}

namespace editor {

namespace {

const QString Root = u":/manual/"_s;
const QString FirstPage = u"manual.zh-CN.md"_s;
const QString Chapters = u"manual.zh-CN/"_s;

/// The path of what a link on a page leads to, without the anchor.
QString Resolved(const QString& fromPath, const QString& link)
{
    const QString target = QUrl::fromPercentEncoding(link.section(u'#', 0, 0).toUtf8());
    if (target.isEmpty()) return fromPath;
    return QDir::cleanPath(QFileInfo(fromPath).path() + u'/' + target);
}

/// Whether a character is one that Chinese text is made of, which has no blanks between its words.
bool IsChinese(QChar c)
{
    constexpr char16_t FirstIdeograph = 0x2e80;
    constexpr char16_t LastIdeograph = 0x9fff;
    constexpr char16_t FirstWideForm = 0xff00;
    constexpr char16_t LastWideForm = 0xffef;
    const char16_t code = c.unicode();
    return (code >= FirstIdeograph && code <= LastIdeograph) ||
           (code >= FirstWideForm && code <= LastWideForm) || QStringView(u"“”‘’…—").contains(c);
}

/// Markdown that means the same with no line broken between two Chinese characters: Markdown takes a break
/// for a blank.
QString WithoutBreaks(const QString& markdown)
{
    static const QRegularExpression noText(u"^(    |```|#|\\|)"_s); // code, headings, tables
    constexpr qsizetype LargestIndent = 3;
    QStringList lines;
    bool isFenced = false;
    bool mayJoin = false; // the line that comes goes on with the last one
    for (const QString& line : markdown.split(u'\n')) {
        const QString text = line.trimmed();
        if (text.startsWith(u"```")) isFenced = !isFenced;
        const bool goesOn =
            mayJoin && !text.isEmpty() && IsChinese(text.front()) && line.indexOf(text) <= LargestIndent;
        if (goesOn)
            lines.last() += text;
        else
            lines.append(line);
        const bool isText = goesOn || (!isFenced && !noText.match(line).hasMatch());
        mayJoin = isText && !text.isEmpty() && IsChinese(text.back());
    }
    return lines.join(u'\n');
}

void CollectParts(const QTextBlock& block, ManualPage& page)
{
    for (auto part = block.begin(); !part.atEnd(); ++part) {
        const QTextCharFormat format = part.fragment().charFormat();
        if (format.isImageFormat()) page.pictures.append(format.toImageFormat().name());
        const QString link = format.anchorHref();
        if (!link.isEmpty() && !page.links.contains(link)) page.links.append(link);
    }
}

/// A heading like one before it is told from it by a number.
QString FreeAnchor(const ManualPage& page, const QString& anchor)
{
    const auto isTaken = [&](const QString& candidate) {
        return std::any_of(page.headings.begin(), page.headings.end(),
                           [&](const ManualHeading& heading) { return heading.anchor == candidate; });
    };
    QString free = anchor;
    for (int number = 1; isTaken(free); ++number)
        free = u"%1-%2"_s.arg(anchor).arg(number);
    return free;
}

} // namespace

ManualPages::ManualPages()
{
    InitManual();
    Add(FirstPage);
    // Grows while it is gone through.
    for (qsizetype i = 0; i < m_pages.size(); ++i) {
        const QStringList links = m_pages[i].links;
        for (const QString& link : links) {
            const QString path = Resolved(m_pages[i].path, link);
            if (path.endsWith(u".md") && Find(path) == nullptr && QFile::exists(Root + path)) Add(path);
        }
    }
}

void ManualPages::Add(const QString& path)
{
    QTextDocument document;
    Fill(document, MarkdownOf(path));
    ManualPage page;
    page.path = path;
    page.text = document.toRawText();
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        CollectParts(block, page);
        const int level = block.blockFormat().headingLevel();
        if (level > 0) page.headings.append({level, block.text(), FreeAnchor(page, AnchorOf(block.text()))});
    }
    page.title = page.headings.isEmpty() ? path : page.headings.first().text;
    m_pages.append(page);
}

const ManualPage* ManualPages::Find(const QString& path) const
{
    const auto page = std::find_if(m_pages.begin(), m_pages.end(),
                                   [&](const ManualPage& candidate) { return candidate.path == path; });
    return page == m_pages.end() ? nullptr : &*page;
}

std::optional<ManualPlace> ManualPages::PlaceOf(const QString& topic) const
{
    const QString inside = Chapters + topic;
    return Find(inside.section(u'#', 0, 0)) != nullptr ? Follow(FirstPage, inside) : Follow(FirstPage, topic);
}

std::optional<ManualPlace> ManualPages::Follow(const QString& fromPath, const QString& link) const
{
    const ManualPage* page = Find(Resolved(fromPath, link));
    if (page == nullptr) return std::nullopt;
    const QString anchor = QUrl::fromPercentEncoding(link.section(u'#', 1).toUtf8());
    const bool isThere = std::any_of(page->headings.begin(), page->headings.end(),
                                     [&](const ManualHeading& heading) { return heading.anchor == anchor; });
    return ManualPlace{page->path, isThere ? anchor : QString()};
}

bool ManualPages::IsOfTheManual(const QString& path)
{
    return path == FirstPage || path.startsWith(Chapters);
}

QString ManualPages::MarkdownOf(const QString& path)
{
    InitManual();
    QFile file(Root + path);
    if (!file.open(QIODevice::ReadOnly))
        throw std::runtime_error("the manual has no page " + path.toStdString());
    return QString::fromUtf8(file.readAll());
}

void ManualPages::Fill(QTextDocument& document, const QString& markdown)
{
    // What the documents say to their tests is no text, and what looks like markup is meant as it stands.
    static const QRegularExpression comments(u"^<!--.*-->$"_s, QRegularExpression::MultilineOption);
    QString text = markdown;
    text.remove(comments);
    QTextDocument::MarkdownFeatures features = QTextDocument::MarkdownDialectGitHub;
    features |= QTextDocument::MarkdownNoHTML;
    document.setMarkdown(WithoutBreaks(text), features);
}

QImage ManualPages::PictureOf(const QString& fromPath, const QString& link)
{
    return QImage(Root + Resolved(fromPath, link));
}

// As the web pages on which the documents are read make them.
QString ManualPages::AnchorOf(const QString& heading)
{
    QString anchor;
    for (const QChar c : heading.toLower()) {
        if (c == u' ')
            anchor += u'-';
        else if (c.isLetterOrNumber() || c == u'-' || c == u'_')
            anchor += c;
    }
    return anchor;
}

} // namespace editor
