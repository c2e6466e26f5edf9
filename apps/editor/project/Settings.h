#pragma once

#include <QtCore/QString>

namespace editor {

/// The user's settings file, native: what the environment variable KTQDDE_EDITOR_SETTINGS names, else
/// "KtQdDeConfig/editor.ini" in the user's configuration folder.
QString SettingsFile();

/// Whether the tour of the program has been offered to the user, and that it has been from now on. In a
/// settings file, native.
bool WasTourOffered(const QString& settingsFile);
void RememberTourOffered(const QString& settingsFile);

/// Where the sample project stands unless another folder is named: in the user's data folder.
QString SampleFolder();

} // namespace editor
