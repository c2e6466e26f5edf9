#include "embedded/data/project/Look.h"

#include "platform/Files.h"

namespace embedded {

namespace {

thread_local int looks = 0;

} // namespace

Look::Look() noexcept
{
    ++looks;
}

Look::~Look()
{
    --looks;
}

bool Look::IsUnderWay() noexcept
{
    return looks > 0;
}

QByteArray ReadToLook(const CString& path)
{
    const Look look;
    return platform::Files().ReadWhole(path);
}

} // namespace embedded
