#pragma once

#include "platform/Export.h"
#include "platform/Text.h"

/// One ini file. One key is read or written; every other byte of the file stays as it is.
///
/// The file may be UTF-8 (with or without byte order mark), UTF-16 with byte order mark or GB18030, and keeps
/// its encoding and line ends when it is written; a new file is UTF-8, and so is what is added to a file of
/// ASCII alone. Programs of different encodings may write the same file: without a mark of UTF-16 each line
/// is decoded by itself, as UTF-8 if it is that and else as GB18030, a line that is neither stays as it is
/// and says nothing, and what is written has the encoding that more lines have, GB18030 when there are as
/// many. (Lines whose only characters beyond ASCII are such as have two bytes in UTF-8, Latin or Greek
/// letters, could be both; they have the encoding that more lines have.) Section and key names are compared
/// without regard to case, blanks around names and values do not count, a line that begins with ";" is a
/// comment, and of several equal sections or keys the first counts, as with the profile functions of Windows.
/// One pair of quotes around a value is taken off when it is read.
namespace platform {

class KTQDDE_EXPORT ProfileFile
{
public:
    /// `path` is a path text; nothing is opened yet.
    explicit ProfileFile(CString path);

    /// The value of `key` in `section`, or `fallback` when file, section or key is missing or the file or
    /// the value cannot be read. Both are cut to `bufferSize` - 1 UTF-16 characters, as a reader with a
    /// buffer of that size gets it.
    CString Read(const CString& section, const CString& key, const CString& fallback, int bufferSize) const;

    /// Sets `key` in `section`, adding whichever is missing: a key behind the last line of its section that
    /// is not blank, a section at the end of the file. A value that reading would change (blanks or quotes
    /// around it) is put in quotes. False when the file cannot be written, and for what the format
    /// cannot carry: section, key or value with a line break or NUL, a key that is blank, holds "=" or begins
    /// with ";" or "[", a text that would be read back as another. The file then stays as it was. A file that
    /// already says so is not written.
    bool Write(const CString& section, const CString& key, const CString& value) const;

private:
    CString m_path;
};

} // namespace platform
