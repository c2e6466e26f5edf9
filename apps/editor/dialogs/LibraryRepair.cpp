#include "editor/dialogs/LibraryRepair.h"

#include "editor/dialogs/DialogParts.h"
#include "editor/dialogs/LibraryCombo.h"
#include "editor/project/Project.h"
#include "embedded/data/catalogue/Library.h"
#include "embedded/data/engine/Error.h"
#include "embedded/data/project/ProjectFolder.h"

#include <QtCore/QDir>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QVBoxLayout>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace editor {

namespace {

constexpr int TextWidth = 72; ///< in characters

/// A text that is broken into lines.
QLabel* Words(const QString& text)
{
    auto* label = new QLabel(text);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setMinimumWidth(label->fontMetrics().averageCharWidth() * TextWidth);
    return label;
}

/// Whether something is missing, and each of it can be replaced.
bool CanChoose(const LibraryChoices& choices)
{
    return !choices.empty() && std::none_of(choices.begin(), choices.end(),
                                            [](const auto& choice) { return choice.second.isEmpty(); });
}

} // namespace

LibraryChoices MissingLibraries(const QString& nativeProject)
{
    const CArray<embedded::LibraryEntry> entries = embedded::ListLibraries(nativeProject);
    LibraryChoices choices;
    for (const embedded::LibraryRole role : embedded::AllLibraryRoles) {
        const bool isThere = std::any_of(entries.begin(), entries.end(), [role](const auto& entry) {
            return entry.role == role && entry.isInUse;
        });
        if (isThere) continue;
        CArray<embedded::LibraryName>& others = choices[role];
        for (const embedded::LibraryEntry& entry : entries) {
            if (entry.role == role) others.append(entry.name);
        }
    }
    return choices;
}

LibraryRepairDialog::LibraryRepairDialog(QWidget* parent, const QString& nativeProject,
                                         const LibraryChoices& choices)
    : QDialog(parent)
{
    setWindowTitle(u"改用别的库"_s);
    auto* form = new QFormLayout;
    for (const auto& [role, libraries] : choices) {
        m_libraries.append(MakeLibraryCombo());
        FillLibraries(*m_libraries.last(), libraries, libraries.value(0).code);
        form->addRow(embedded::RoleLabel(role) + u"："_s, m_libraries.last());
    }
    auto* column = new QVBoxLayout(this);
    column->addWidget(Words(u"%1\n工程使用的库不在它的数据中，打不开。可以改用下面的库："_s.arg(
        QDir::toNativeSeparators(nativeProject))));
    column->addLayout(form);
    column->addWidget(Words(u"规则中属于原来的库的清单、定额不再显示，但仍留在规则文件里。"_s));
    column->addWidget(MakeButtons(*this, new QPushButton(u"改用并打开"_s), u"工程改用上面的库，然后打开"_s));
}

CStringArray LibraryRepairDialog::Chosen() const
{
    CStringArray codes;
    for (const QComboBox* library : m_libraries)
        codes.append(ChosenLibrary(*library));
    return codes;
}

std::unique_ptr<Project> OpenOrMend(QWidget* parent, const QString& nativeFolder)
{
    LibraryChoices choices;
    try {
        return std::make_unique<Project>(nativeFolder);
    } catch (const embedded::Error&) {
        if (embedded::IsProject(nativeFolder)) choices = MissingLibraries(nativeFolder);
        if (!CanChoose(choices)) throw;
    }
    LibraryRepairDialog dialog(parent, nativeFolder, choices);
    if (dialog.exec() != QDialog::Accepted) return nullptr;
    for (const CString& code : dialog.Chosen())
        embedded::UseLibrary(nativeFolder, code);
    return std::make_unique<Project>(nativeFolder);
}

} // namespace editor
