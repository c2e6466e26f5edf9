// Opens the configuration dialog on a project as the editor does, adds a rule and closes it, several times
// over; prints "added" and "saved" as it goes. For tests that kill it: `dialog_saver PROJECT COUNT`.
#include "editor/ModuleSteps.h"
#include "editor/Project.h"

#include <QtCore/QTimer>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QApplication>
#include <QtWidgets/QDialog>

#include <cstdio>
#include <exception>

using namespace Qt::StringLiterals;

namespace {

void Tell(const char* what)
{
    std::puts(what);
    std::fflush(stdout);
}

/// Adds a rule in the configuration dialog, once it is there, and closes it.
class User : public QTimer
{
public:
    User()
    {
        connect(this, &QTimer::timeout, this, [this] { Look(); });
        start(0);
    }

private:
    void Look()
    {
        QWidget* dialog = QApplication::activeModalWidget();
        auto* add = dialog == nullptr ? nullptr : dialog->findChild<QAbstractButton*>(u"id7003"_s);
        if (add == nullptr) return;
        stop();
        add->click();
        Tell("added");
        dialog->close();
    }
};

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    try {
        editor::Project project(arguments.value(1));
        project.BecomeHost(nullptr);
        editor::ModuleSteps steps(nullptr, project);
        for (int run = 0; run < arguments.value(2).toInt(); ++run) {
            const User user;
            if (!steps.Configure()) return 1;
            Tell("saved");
        }
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
}
