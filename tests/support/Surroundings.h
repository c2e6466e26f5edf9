#pragma once

namespace test {

/// Sees to it that the tests of this process do not lean on each other: a test that leaves the process
/// another one than it found it fails, with what it left. That is the environment, the working folder, the
/// locales, the installed host, file system and message handler. To be called once, before the tests run.
void RequireCleanEnds();

/// The same for what belongs to windows: windows that are still to be seen, style, palette and font of the
/// program, the cursor over it and whether it ends with its last window. What a test cannot help to leave is
/// put back before the next one: the tool tip that is still fading, the clipboard, the place of the mouse and
/// keys that count as held. Needs an application object while the tests run.
void RequireCleanDesktop();

} // namespace test
