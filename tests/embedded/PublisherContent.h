#pragma once

#include <QtCore/QByteArray>

#include <random>

namespace test {

/// The content of the version that the helper program publishes with a number: so large that a publication
/// takes a moment, and told from every other one by all its bytes.
inline QByteArray ContentOf(int number)
{
    constexpr int Numbers = 60'000;
    std::mt19937 random(static_cast<unsigned>(number));
    QByteArray content = "<QdDeConfig>" + QByteArray::number(number);
    content.reserve(Numbers * 11);
    for (int i = 0; i < Numbers; ++i)
        content += ' ' + QByteArray::number(static_cast<quint32>(random()));
    return content + "</QdDeConfig>";
}

} // namespace test
