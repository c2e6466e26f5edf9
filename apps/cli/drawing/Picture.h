#pragma once

#include "platform/Text.h"

#include <QtCore/QByteArray>

#include <vector>

/// Pictures of bars and texts, as SVG and PNG, without a graphics library that wants a screen.
namespace cli {

/// What a shape is drawn for; its colour follows from it, so that a viewer with a dark background may choose
/// others.
enum class Ink { Paper, Text, Muted, Track, Caught, Default, Uncaught };

struct Bar
{
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;
    Ink ink = Ink::Caught;
};

struct Label
{
    double x = 0; ///< where the text begins, or ends when it stands at the right
    double y = 0; ///< base line
    double size = 0;
    bool isBold = false;
    bool endsAtX = false;
    Ink ink = Ink::Text;
    CString text;
    CString whole{}; ///< what the text was cut from; empty when it was not
};

/// Shapes on a sheet of paper; the later ones lie above. Lengths are those of a screen at its usual scale.
struct Picture
{
    double width = 0;
    double height = 0;
    CString title;
    std::vector<Bar> bars;
    std::vector<Label> labels;
};

/// How wide a text is at most, drawn at that size: Chinese characters take a square each.
double WidthOf(const CString& text, double size);

/// The text as far as it has room, with an ellipsis when it is cut.
CString CutToWidth(const CString& text, double size, double width);

/// The picture as SVG, which adapts to dark viewers and any scale.
QByteArray ToSvg(const Picture& picture);

/// The picture as PNG, at `scale` pixels for a unit. Raises `Refusal` when the system has no font with
/// Chinese characters, or the picture is larger than such a file should be.
QByteArray ToPng(const Picture& picture, double scale);

} // namespace cli
