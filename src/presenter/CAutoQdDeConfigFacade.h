#pragma once

#include "platform/Export.h"
#include "platform/Window.h"
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

    // The operations that show a dialog are defined beside their dialogs, so that a program without windows
    // can do without them. They return when the dialog has ended. They need a host with windows and otherwise
    // raise `host::NoHostError`. A host that runs a `QApplication` has it used as it is, and is not ended
    // when the dialog was its last visible window. For a process without any application object one is made
    // for the call and is gone afterwards, so what such a host makes as `host::IWindows` must end with the
    // dialog; the toolkit looks for its plugins and Chinese texts beside the module, too. Where such a
    // process has no screen, the toolkit reports that on standard error and ends the process. Beside an
    // application object that is no `QApplication` there can be no dialog: `std::logic_error` is raised, and
    // nothing has happened. What the host's roles raise while the dialog is being made goes on to the host,
    // and no dialog is shown; what they raise later is shown to the user. While the dialog runs, messages are
    // shown in boxes of the module's own; afterwards, and when an error was raised, the host's handler is in
    // force again.

    /// Runs the configuration dialog on the project's current configuration. Both arguments are ignored: the
    /// dialog has no parent window, and stands in the middle of the host's main frame. How it ended is not
    /// told, for every end saves. A file that cannot be opened is not reported: the dialog then works on what
    /// could be loaded.
    static void StartQdDeConfig(CWnd* parent, const CRect& area);

    /// Runs the configuration dialog as a step of the host's wizard, on the rule file `configFile`; an empty
    /// path is the current configuration. `billFile` and `quotaFile` are shown up to their ".mdb". `note` is
    /// what the link 说明 shows; without text there is no link. `allowBack` enables 上一步. `parent` may be
    /// null.
    ///
    /// Gives 1 when 下一步 ended it, -1 for 上一步, and 0 for 取消 and every other way. The file is written
    /// on all ways out, so it may have changed when this gives 0. A step whose save failed leaves the dialog
    /// open and has no result; what ends the dialog after it decides.
    static int StartOnlineConfig(const CString& configFile, const CString& billFile, const CString& quotaFile,
                                 const CString& note, bool allowBack, CWnd* parent);

private:
    void WrapFile(const CString& path);
};
