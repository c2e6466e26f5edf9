#pragma once

#include <QtCore/QString>

namespace editor {

/// The user's settings file, native: what the environment variable KTQDDE_EDITOR_SETTINGS names, else
/// "KtQdDeConfig/editor.ini" in the user's configuration folder.
QString SettingsFile();

/// Where the sample project stands unless another folder is named: in the user's data folder.
QString SampleFolder();

} // namespace editor
