#pragma once

#include "platform/Export.h"
#include "platform/Text.h"

namespace host {

/// The entry of the ini beside a project file which tells on what configuration the project works: section
/// "QdDeConfigInfo", key "ConfigName". Module and hosts read and write the same one. Nothing is kept in
/// memory.
class KTQDDE_EXPORT ConfigurationEntry
{
public:
    /// `Name` gives back no more characters than this.
    static constexpr int LongestName = 99;

    /// `projectFile` is the path text of the project file.
    explicit ConfigurationEntry(const CString& projectFile);

    /// The name, cut to `LongestName`; `DefaultName()` when there is none.
    CString Name() const;
    /// The name as it is stored, however long; empty when there is none.
    CString WholeName() const;
    /// Stores a name; whether it could be written.
    bool Write(const CString& name) const;

    /// Where the entry stands, for people: the native path of the ini, the section and the key.
    QString NativeIni() const;
    static CString Section();
    static CString Key();

    /// The configuration of a project that has chosen none.
    static CString DefaultName();

private:
    CString m_ini;
};

} // namespace host
