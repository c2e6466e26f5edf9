#pragma once

#include "platform/Export.h"
#include "presenter/CQdDeConfigPresenter.h"

#include <memory>

/// The module's outer face: static operations that a host calls on its main thread, with a host installed
/// (see host/Installation.h). It holds nothing between calls; what connects two calls is on disk. Errors
/// raised below go on to the host.
class KTQDDE_EXPORT CAutoQdDeConfigFacade
{
public:
    /// A presenter on a rule file, or for an empty path on the project's current configuration. The caller
    /// owns it. A failure in opening is not reported: the presenter is usable, but its tree may be empty.
    static std::unique_ptr<CQdDeConfigPresenter> GetQdDeConfigPresenter(const CString& filePath);

    /// Rebuilds the attribute configuration file from the host's data (see `CXmlAttrConfig::Save`). Shows
    /// nothing.
    static void AttrConfig();

    /// Finishes a rule file: writes the head attributes about mode and libraries on its document element and
    /// turns the file into the wrapped binary form (see store/WrappedFile.h), which is no XML any more. The
    /// change is one way. A file that does not open as XML, or has another document element, is left as it
    /// is, without a word: so a second call does nothing. Raises `platform::FileError` when the wrapped file
    /// cannot be written; the file then has its former bytes again wherever the disk still takes them.
    static void WriteHead(const CString& filePath);

private:
    void WrapFile(const CString& path);
};
