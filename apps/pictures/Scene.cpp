#include "Scene.h"

#include <QtGui/QImage>
#include <QtGui/QPalette>
#include <QtWidgets/QApplication>
#include <QtWidgets/QDialog>
#include <QtWidgets/QScrollArea>
#include <QtWidgets/QStyle>

using namespace Qt::StringLiterals;

namespace {

constexpr int SmallestPoints = 8;
constexpr int UsualPoints = 9;
constexpr int LargestPoints = 16;

QPalette DarkPalette()
{
    QPalette dark(QColor(53, 53, 53), QColor(45, 45, 45));
    dark.setColor(QPalette::Base, QColor(30, 30, 30));
    dark.setColor(QPalette::Highlight, QColor(42, 130, 218));
    dark.setColor(QPalette::Link, QColor(42, 130, 218));
    return dark;
}

void SetPoints(int points)
{
    QFont font = QApplication::font();
    font.setPointSize(points);
    QApplication::setFont(font);
}

// A dialog that is too large for the screen of this platform shows its whole content nevertheless.
void Unfold(QWidget& widget)
{
    const auto* scroll = widget.findChild<QScrollArea*>(QString(), Qt::FindDirectChildrenOnly);
    if (scroll != nullptr && scroll->widget() != nullptr) widget.setFixedSize(scroll->widget()->size());
}

bool Save(const Scene& scene, const QString& path, int ratio)
{
    const std::unique_ptr<QWidget> widget = scene.make();
    Unfold(*widget);
    widget->show();
    QCoreApplication::processEvents();
    QImage image(widget->size() * ratio, QImage::Format_RGB32);
    image.setDevicePixelRatio(ratio);
    widget->render(&image);
    return image.save(path);
}

} // namespace

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
    for (const int points : {SmallestPoints, LargestPoints}) {
        SetPoints(points);
        good = Save(scene, path + u"-%1pt.png"_s.arg(points), 1) && good;
    }
    return good;
}
