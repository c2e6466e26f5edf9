#pragma once

#include <QtCore/QHash>
#include <QtCore/QList>
#include <QtCore/QString>
#include <QtGui/QImage>
#include <QtWidgets/QTextBrowser>

#include <functional>
#include <utility>

class QTextBlock;
class QTextFragment;

namespace editor {

/// Shows a page of the manual in the colours and letters of the program. Pictures are as wide as they were
/// made, or as the view where that is narrower. Follows no link itself: `anchorClicked` tells.
class ManualView : public QTextBrowser
{
public:
    ManualView();

    /// Shows a page of the documents from its beginning. Raises `std::runtime_error` when there is none.
    void ShowPage(const QString& path);
    /// Scrolls so that the heading of that number, counted from 0, stands at the top.
    void GoToHeading(qsizetype number);
    /// The number of the heading above or at the top; -1 when there is none.
    qsizetype HeadingAtTop() const;

    /// Marks some places of the page, one of them as the one that is looked at, and scrolls to that. `places`
    /// are positions in the text; `length` is how many characters each has; no `current` is -1.
    void MarkPlaces(const QList<int>& places, int length, qsizetype current);

    /// The position of the text at the top, and how to come back to it.
    int TopPosition() const;
    void ScrollTo(int position);

protected:
    QVariant loadResource(int type, const QUrl& name) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void Load();
    void FitPictures();
    void FitPicture(const QTextFragment& fragment, qreal room);
    void StyleText();
    void SizeCode(const QTextBlock& block);
    QList<QTextBlock> Headings() const;
    /// Does what moves the text and leaves that at the top where it is.
    void KeepingTop(const std::function<void()>& change);

    QString m_path;
    /// The pictures of the page as they were made, and the size in device pixels in which each is shown.
    QHash<QString, std::pair<QImage, QSize>> m_pictures;
    qreal m_fittedRatio = 0; ///< device pixels a pixel for which the pictures were scaled
};

} // namespace editor
