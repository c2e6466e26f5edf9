#include "Scene.h"

#include <QtCore/QDir>
#include <QtCore/QHash>
#include <QtCore/QRegularExpression>
#include <QtGui/QCursor>
#include <QtGui/QHelpEvent>
#include <QtGui/QImage>
#include <QtGui/QMouseEvent>
#include <QtGui/QPainter>
#include <QtGui/QPalette>
#include <QtWidgets/QApplication>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QDialog>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QStatusBar>
#include <QtWidgets/QStyle>

#include <algorithm>
#include <array>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr int UsualPoints = 9;
constexpr std::array OtherPoints{8, 12, 16};

QPalette DarkPalette()
{
    QPalette dark(QColor(53, 53, 53), QColor(45, 45, 45));
    dark.setColor(QPalette::Base, QColor(30, 30, 30));
    dark.setColor(QPalette::Highlight, QColor(42, 130, 218));
    dark.setColor(QPalette::Disabled, QPalette::Highlight, QColor(80, 80, 80));
    dark.setColor(QPalette::Link, QColor(42, 130, 218));
    return dark;
}

void SetPoints(int points)
{
    QFont font = QApplication::font();
    font.setPointSize(points);
    QApplication::setFont(font);
}

QRect PlaceOf(const QWidget& window)
{
    return {window.mapToGlobal(QPoint()), window.size()};
}

/// The lists, menus and tips that are open.
QWidgetList Overlays()
{
    QWidgetList windows = QApplication::topLevelWidgets();
    const auto isNone = [](const QWidget* window) {
        return !window->isVisible() ||
               (window->windowType() != Qt::Popup && window->windowType() != Qt::ToolTip);
    };
    windows.erase(std::remove_if(windows.begin(), windows.end(), isNone), windows.end());
    // Tips lie over everything else.
    std::stable_partition(windows.begin(), windows.end(),
                          [](const QWidget* window) { return window->windowType() != Qt::ToolTip; });
    return windows;
}

// A list opens, and a tip comes up, by events that wait for those of the window's own appearance.
void Show(const Scene& scene, QWidget& widget)
{
    widget.show();
    QCoreApplication::processEvents();
    if (scene.open) scene.open(widget);
    QCoreApplication::processEvents();
}

/// Whether the widget leaves anything but one colour, be it a background alone.
bool IsBlank(QWidget& widget)
{
    const QImage image = widget.grab().toImage();
    QImage plain = image;
    plain.fill(image.pixel(0, 0));
    return plain == image;
}

/// Whether what has to be seen of the scene is there.
bool IsWhole(const Scene& scene, QWidget& widget, const QWidgetList& overlays)
{
    const auto isTip = [](const QWidget* window) { return window->windowType() == Qt::ToolTip; };
    if (scene.showsTip && std::none_of(overlays.begin(), overlays.end(), isTip)) return false;
    return !IsBlank(widget) &&
           std::none_of(overlays.begin(), overlays.end(), [](QWidget* window) { return IsBlank(*window); });
}

/// A null image when something that has to be seen is not there.
QImage Render(const Scene& scene, QWidget& widget, int ratio)
{
    Show(scene, widget);
    const QWidgetList overlays = Overlays();
    if (!IsWhole(scene, widget, overlays)) return {};
    QRect seen = PlaceOf(widget);
    for (const QWidget* window : overlays)
        seen |= PlaceOf(*window);
    QImage image(seen.size() * ratio, QImage::Format_RGB32);
    image.setDevicePixelRatio(ratio);
    image.fill(Qt::gray);
    QPainter painter(&image);
    widget.render(&painter, PlaceOf(widget).topLeft() - seen.topLeft());
    for (QWidget* window : overlays) {
        window->render(&painter, PlaceOf(*window).topLeft() - seen.topLeft());
        window->hide();
    }
    return image;
}

bool Save(const Scene& scene, const QString& path, int ratio)
{
    const std::unique_ptr<QWidget> widget = scene.make();
    return Render(scene, *widget, ratio).save(path);
}

QString WithoutTemporaryFolders(QString text)
{
    static const QRegularExpression folder(QRegularExpression::escape(QDir::tempPath()) +
                                           u"/ktqdde-pictures-[A-Za-z]{6}"_s);
    return text.replace(folder, u"/home/user"_s);
}

void HideTemporaryFolders(QWidget& widget)
{
    for (QLabel* label : widget.findChildren<QLabel*>())
        label->setText(WithoutTemporaryFolders(label->text()));
    for (QLineEdit* edit : widget.findChildren<QLineEdit*>()) {
        const QString text = WithoutTemporaryFolders(edit->text());
        if (text != edit->text()) edit->setText(text); // the cursor stays otherwise
    }
    for (QComboBox* combo : widget.findChildren<QComboBox*>())
        for (int i = 0; i < combo->count(); ++i)
            combo->setItemText(i, WithoutTemporaryFolders(combo->itemText(i)));
    for (QStatusBar* bar : widget.findChildren<QStatusBar*>())
        bar->showMessage(WithoutTemporaryFolders(bar->currentMessage()));
}

/// The colours that cover most of the image, as many as a table holds.
QList<QRgb> MainColours(const QImage& image)
{
    QHash<QRgb, int> pixels;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            ++pixels[image.pixel(x, y)];
    QList<QRgb> colours = pixels.keys();
    std::sort(colours.begin(), colours.end(), [&](QRgb left, QRgb right) {
        return std::pair(pixels[right], left) < std::pair(pixels[left], right);
    });
    return colours.first(std::min<qsizetype>(colours.size(), 256));
}

} // namespace

// A mouse that is elsewhere would take the tip away again.
void Rest(QWidget& part, const QPoint& point)
{
    const QPoint there = part.mapToGlobal(point);
    QCursor::setPos(there);
    QCoreApplication::processEvents();
    QMouseEvent move(QEvent::MouseMove, point, there, Qt::NoButton, {}, {});
    QCoreApplication::sendEvent(&part, &move);
    QHelpEvent rest(QEvent::ToolTip, point, there);
    QCoreApplication::sendEvent(&part, &rest);
}

bool TakePictures(const Scene& scene, const QString& folder)
{
    const QString path = folder + u'/' + scene.name;
    const QPalette light = QApplication::style()->standardPalette();
    bool good = true;
    SetPoints(UsualPoints);
    QApplication::setPalette(light);
    good = Save(scene, path + u"-light.png"_s, 1) && good;
    good = Save(scene, path + u"-light-200.png"_s, 2) && good;
    QApplication::setPalette(DarkPalette());
    good = Save(scene, path + u"-dark.png"_s, 1) && good;
    good = Save(scene, path + u"-dark-200.png"_s, 2) && good;
    QApplication::setPalette(light);
    for (const int points : OtherPoints) {
        SetPoints(points);
        good = Save(scene, path + u"-%1pt.png"_s.arg(points), 1) && good;
    }
    return good;
}

bool TakeDocumentPicture(const Scene& scene, const QString& folder)
{
    constexpr int SmallestFile = 0; // the writer's quality of a PNG is how little it compresses
    SetPoints(UsualPoints);
    QApplication::setPalette(QApplication::style()->standardPalette());
    const std::unique_ptr<QWidget> widget = scene.make();
    HideTemporaryFolders(*widget);
    const QImage image = Render(scene, *widget, 1);
    if (image.isNull()) return false;
    const QImage indexed = image.convertToFormat(QImage::Format_Indexed8, MainColours(image));
    return indexed.save(folder + u'/' + scene.name + u".png"_s, "PNG", SmallestFile);
}
