#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QDateTime>
#include <QtCore/QDebug>
#include <QtCore/QJsonValue>
#include <QtCore/QRect>
#include <QtCore/QString>

#include <ostream>

// How GoogleTest shows texts, bytes and other values in a failure; found by argument-dependent look-up, hence
// global. Every source of a test program that compares texts includes this, so that they all print alike. The
// other headers of this folder bring it along.

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

inline void PrintTo(QChar character, std::ostream* out)
{
    PrintTo(QString(character), out);
}

namespace test {

/// As the toolkit shows a value in its own messages.
template <typename Value>
void PrintByDebug(const Value& value, std::ostream* out)
{
    QString text;
    QDebug(&text).nospace() << value;
    *out << text.toStdString();
}

} // namespace test

inline void PrintTo(const QPoint& point, std::ostream* out)
{
    test::PrintByDebug(point, out);
}

inline void PrintTo(const QSize& size, std::ostream* out)
{
    test::PrintByDebug(size, out);
}

inline void PrintTo(const QRect& rectangle, std::ostream* out)
{
    test::PrintByDebug(rectangle, out);
}

inline void PrintTo(const QDate& date, std::ostream* out)
{
    test::PrintByDebug(date, out);
}

inline void PrintTo(const QDateTime& time, std::ostream* out)
{
    test::PrintByDebug(time, out);
}

inline void PrintTo(const QJsonValue& value, std::ostream* out)
{
    test::PrintByDebug(value, out);
}

/// What `QJsonObject::operator[]` gives: GoogleTest would not convert it.
inline void PrintTo(const QJsonValueConstRef& value, std::ostream* out)
{
    PrintTo(QJsonValue(value), out);
}
