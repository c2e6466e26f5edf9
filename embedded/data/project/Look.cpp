#include "embedded/data/project/Look.h"

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

} // namespace embedded
