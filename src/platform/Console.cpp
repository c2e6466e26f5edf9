#include "platform/Console.h"

#include "platform/Native.h"

#include <cstdio>
#include <iostream>
#include <string>

namespace platform {

namespace {

bool WriteTo(std::FILE* stream, const CString& text)
{
    const QByteArray bytes = text.toUtf8();
    const auto length = static_cast<std::size_t>(bytes.size());
    const bool written = std::fwrite(bytes.constData(), 1, length, stream) == length;
    return std::fflush(stream) == 0 && written;
}

} // namespace

void UseUtf8Console()
{
    native::UseUtf8();
}

bool WriteOut(const CString& text)
{
    return WriteTo(stdout, text);
}

void WriteErr(const CString& text)
{
    WriteTo(stderr, text);
}

bool ErrIsTerminal()
{
    return native::ErrIsTerminal();
}

bool CanAsk()
{
    return native::ErrIsTerminal() && native::InIsTerminal();
}

std::optional<CString> ReadLine()
{
    std::string line;
    if (!std::getline(std::cin, line)) return std::nullopt;
    return CString::fromUtf8(line);
}

} // namespace platform
