#pragma once

#include "fuzz/MemoryFiles.h"
#include "platform/Messages.h"
#include "support/MemoryHost.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace fuzz {

/// Host, files and messages of one process; made at the first input, emptied before each.
class World
{
public:
    static World& Fresh();

    MemoryFiles& Files() { return m_files; }
    static CString RuleFile();
    static CString AttributeFile();
    static CString ParameterFile();
    static CString Spec();

private:
    World();

    MemoryFiles m_files;
    platform::ScopedFileSystem m_filesInstalled{m_files};
    test::MemoryHost m_host;
    host::Installation m_hostInstalled;
    platform::ScopedMessageHandler m_messages;
};

QByteArray Bytes(const std::uint8_t* data, std::size_t size);

/// Ends the process with a message when something that must hold does not: that is what a fuzzer looks for.
void Require(bool holds, const char* what);

/// Requires that an independent strict parser takes the bytes.
void RequireStrictXml(const QByteArray& bytes, const char* what);

} // namespace fuzz
