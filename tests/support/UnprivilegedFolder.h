#pragma once

#include "support/TempFolder.h"

#include <stdexcept>

class QProcess;

namespace test {

/// A temporary folder for a program that must not be run by an administrator: an administrator's folder is
/// given to the user nobody, and the administrator, who may have given up the right to pass over permissions,
/// stays in by the group. Nobody else gets in. What the program has left goes with the folder.
class UnprivilegedFolder
{
public:
    UnprivilegedFolder();
    ~UnprivilegedFolder();
    UnprivilegedFolder(const UnprivilegedFolder&) = delete;
    UnprivilegedFolder& operator=(const UnprivilegedFolder&) = delete;

    QString Native(const QString& name) const { return m_folder.Native(name); }
    /// Sets a program up to run in here as the user whom the folder belongs to, and to be interrupted when
    /// this process dies.
    void SetUp(QProcess& process, const QString& program, const QStringList& arguments) const;

private:
    TempFolder m_folder;
    bool m_isForNobody;
};

/// Runs a program that was set up until its end. Raises `std::runtime_error` with what it said unless it has
/// succeeded.
void RequireSuccess(QProcess& process);

/// Why a program could not do its work, and what it said.
std::runtime_error Complaint(QProcess& process);

} // namespace test
