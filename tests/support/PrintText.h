#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <ostream>

// How GoogleTest shows texts and bytes in a failure; found by argument-dependent look-up, hence global. Every
// source of a test program that compares texts includes this, so that they all print alike. The other headers
// of this folder bring it along.

inline void PrintTo(const QString& text, std::ostream* out)
{
    *out << '"' << text.toStdString() << '"';
}

/// Bytes that are no UTF-8 or cannot be seen are shown as %XX.
inline void PrintTo(const QByteArray& bytes, std::ostream* out)
{
    const QByteArray plain = " !\"#$&'()*+,-./:;<=>?@[\\]^_`{|}~\n\t";
    const bool readable = QString::fromUtf8(bytes).toUtf8() == bytes && !bytes.contains('\0');
    *out << '"' << (readable ? bytes : bytes.toPercentEncoding(plain)).toStdString() << '"';
}
