#pragma once

#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtGui/QImage>

#include <optional>

class QTextDocument;

namespace editor {

/// A place in the manual.
struct ManualPlace
{
    QString path;   ///< of the page, below the folder of the documents: manual.zh-CN/config.md
    QString anchor; ///< of a heading; empty for the beginning

    bool operator==(const ManualPlace&) const = default;
};

struct ManualHeading
{
    int level = 1;
    QString text;
    QString anchor; ///< as links to it end
};

struct ManualPage
{
    QString path;
    QString title;
    QList<ManualHeading> headings; ///< in the order of the page, its title first
    QStringList links;             ///< as they stand
    QStringList pictures;          ///< as they stand
    QString text; ///< as `QTextDocument::toRawText` gives it: positions are those of a cursor
};

/// The manual as it travels in the program: the pages and pictures of the documents that can be reached from
/// its first page. Reads them once, when it is made.
class ManualPages
{
public:
    ManualPages();

    /// The first page, then those that it leads to in its order, then those that these lead to.
    const QList<ManualPage>& Pages() const noexcept { return m_pages; }
    /// Null when there is none.
    const ManualPage* Find(const QString& path) const;

    /// What a topic names: a page of the manual with or without its folder, "#" and a heading: "config.md",
    /// "config.md#什么时候保存". A heading that is not there gives the beginning, a page that is not there
    /// nothing.
    std::optional<ManualPlace> PlaceOf(const QString& topic) const;
    /// Where a link on a page leads to; nothing when that is not in the manual.
    std::optional<ManualPlace> Follow(const QString& fromPath, const QString& link) const;

    /// Whether the page belongs to the manual itself and not to the documents beyond.
    static bool IsOfTheManual(const QString& path);

    /// A page in Markdown. Raises `std::runtime_error` when it is not there.
    static QString MarkdownOf(const QString& path);
    /// Lays a page out.
    static void Fill(QTextDocument& document, const QString& markdown);
    /// A picture that a page shows; null when it is not there.
    static QImage PictureOf(const QString& fromPath, const QString& link);
    /// What of a heading ends the links to it.
    static QString AnchorOf(const QString& heading);

private:
    void Add(const QString& path);

    QList<ManualPage> m_pages;
};

} // namespace editor
