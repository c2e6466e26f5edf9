#pragma once

#include "platform/Encoding.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>

namespace platform {

/// The name under which tests that run once for each encoding are listed.
inline std::string NameOf(Encoding encoding)
{
    switch (encoding) {
    case Encoding::Utf8:
        return "Utf8";
    case Encoding::Utf8Bom:
        return "Utf8Bom";
    case Encoding::Utf16Le:
        return "Utf16Le";
    case Encoding::Utf16Be:
        return "Utf16Be";
    case Encoding::Gb18030:
        return "Gb18030";
    }
    return "Unknown";
}

inline void PrintTo(Encoding encoding, std::ostream* out)
{
    *out << NameOf(encoding);
}

/// Every encoding, for `INSTANTIATE_TEST_SUITE_P`.
inline auto AllEncodings()
{
    return ::testing::Values(Encoding::Utf8, Encoding::Utf8Bom, Encoding::Utf16Le, Encoding::Utf16Be,
                             Encoding::Gb18030);
}

inline std::string EncodingTestName(const ::testing::TestParamInfo<Encoding>& info)
{
    return NameOf(info.param);
}

} // namespace platform
