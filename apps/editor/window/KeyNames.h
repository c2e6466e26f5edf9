#pragma once

#include <QtCore/QTranslator>

namespace editor {

/// Calls keys by the words that the manual has for them, and that stand on keyboards, wherever the toolkit
/// names a key: in menus and tips. Its own texts shorten some of them and leave arrows to be spelt out. To be
/// installed after the toolkit's own texts, which it goes before.
class KeyNames : public QTranslator
{
public:
    using QTranslator::QTranslator;

    QString translate(const char* context, const char* text, const char* disambiguation,
                      int number) const override;
    bool isEmpty() const override { return false; }
};

} // namespace editor
