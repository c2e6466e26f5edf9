#pragma once

#include <QtCore/QString>
#include <QtWidgets/QWidget>

#include <functional>
#include <memory>
#include <vector>

/// One thing to be pictured.
struct Scene
{
    QString name; ///< of the file, without extension
    /// Makes the widget in the state that is to be seen, not yet shown.
    std::function<std::unique_ptr<QWidget>()> make;
    /// Opens what is to lie over the widget, which is shown by then: lists, menus, tips. Empty for nothing.
    std::function<void(QWidget&)> open = {};
    /// Whether a tip has to lie over the widget then; without one there is no picture.
    bool showsTip = false;
};

/// The mouse comes to a place of a widget that is shown and rests there.
void Rest(QWidget& part, const QPoint& point);

/// Writes a scene into the folder: in a light and a dark palette, each at one and at two device pixels per
/// pixel, and in a smaller and larger fonts. Lists, menus and tips that stand over it are in the pictures.
/// False when a file could not be written, and when there is nothing to be seen: a window, list or tip of one
/// colour alone, or no tip where one has to be.
bool TakePictures(const Scene& scene, const QString& folder);

/// Writes a scene into the folder as the documents show it, under its bare name: light, in the usual font,
/// one device pixel per pixel, and with colours from a table, which keeps the file small. Folders that exist
/// for the pictures only are shown as the home folder of a user. False in the same cases.
bool TakeDocumentPicture(const Scene& scene, const QString& folder);
