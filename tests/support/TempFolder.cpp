#include "support/TempFolder.h"

#include "platform/Paths.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>

#include <stdexcept>

using namespace Qt::StringLiterals;

namespace test {

namespace {

void Require(bool done, const QString& nativePath)
{
    if (!done) throw std::runtime_error("cannot prepare " + nativePath.toStdString());
}

} // namespace

TempFolder::TempFolder()
{
    Require(m_folder.isValid(), m_folder.path());
}

CString TempFolder::Root() const
{
    return platform::FromNative(m_folder.path());
}

CString TempFolder::Path(const CString& name) const
{
    return Root() + u'\\' + name;
}

QString TempFolder::Native(const CString& name) const
{
    return platform::ToNative(Path(name));
}

CString TempFolder::MakeFolder(const CString& name) const
{
    Require(QDir().mkpath(Native(name)), Native(name));
    return Path(name);
}

CString TempFolder::WriteFile(const CString& name, const QByteArray& bytes) const
{
    QFile file(Native(name));
    Require(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size(), Native(name));
    return Path(name);
}

QByteArray TempFolder::ReadFile(const CString& name) const
{
    QFile file(Native(name));
    Require(file.open(QIODevice::ReadOnly), Native(name));
    return file.readAll();
}

bool TempFolder::Exists(const CString& name) const
{
    return QFileInfo::exists(Native(name));
}

CStringArray TempFolder::FileNames() const
{
    return QDir(m_folder.path()).entryList(QDir::Files | QDir::Hidden, QDir::Name);
}

void TempFolder::SetReadOnly(const CString& name, bool readOnly) const
{
    const QFile::Permissions writing =
        QFile::WriteOwner | QFile::WriteUser | QFile::WriteGroup | QFile::WriteOther;
    const QFile::Permissions old = QFile::permissions(Native(name));
    Require(QFile::setPermissions(Native(name), readOnly ? old & ~writing : old | QFile::WriteOwner),
            Native(name));
}

void TempFolder::SetTime(const CString& name, const QDateTime& written) const
{
    QFile file(Native(name));
    Require(file.open(QIODevice::ReadWrite) && file.setFileTime(written, QFileDevice::FileModificationTime),
            Native(name));
}

bool TempFolder::IgnoresPermissions()
{
    const TempFolder folder;
    folder.WriteFile(u"probe"_s, QByteArray());
    folder.SetReadOnly(u"probe"_s, true);
    return QFile(folder.Native(u"probe"_s)).open(QIODevice::ReadWrite);
}

} // namespace test
