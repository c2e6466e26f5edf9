#include "embedded/data/engine/Error.h"
#include "embedded/data/exchange/TableImport.h"
#include "embedded/data/host/CreateProject.h"
#include "embedded/data/host/EmbeddedHost.h"
#include "host/BillNumbering.h"

#include <QtCore/QCoreApplication>

#include <cstdio>

namespace {

using namespace Qt::StringLiterals;

int Open(const QString& folder)
{
    const embedded::EmbeddedHost host(folder);
    return host.Contents().bills.empty() ? 3 : 0;
}

/// Replaces the bill table by that of a file.
int Import(const QString& folder, const QString& file)
{
    embedded::ImportOptions options;
    options.replace = true;
    return embedded::Import(folder, embedded::TableKind::Bill, file, options).stored ? 0 : 3;
}

/// Takes new numbers for an item of the bill library, as a dialog does, and prints each.
int Take(const QString& folder, const CString& picked, int count)
{
    embedded::EmbeddedHost host(folder);
    host::ILibraries& libraries = *host.Roles().libraries;
    for (int taken = 0; taken < count; ++taken) {
        CArray<SQdInfo> told;
        if (!libraries.GetQdInfoByQdNum(picked, told)) return 3;
        CStringArray numbers;
        for (const SQdInfo& item : told)
            numbers.append(item.strNumber);
        SQdInfo info;
        if (!libraries.GetQdInfo(picked, info)) return 3;
        std::printf("%s\n", (picked + host::SuffixAfter(numbers, 3)).toStdString().c_str());
    }
    return 0;
}

int Run(const QStringList& arguments)
{
    const QString verb = arguments.value(1);
    const QString folder = arguments.value(2);
    if (verb == u"create") embedded::CreateProject(folder, {});
    if (verb == u"create" || verb == u"open") return Open(folder);
    if (verb == u"import") return Import(folder, arguments.value(3));
    if (verb == u"take") return Take(folder, arguments.value(3), arguments.value(4).toInt());
    return 2;
}

} // namespace

/// opener create|open FOLDER
/// opener import FOLDER FILE
/// opener take FOLDER NUMBER COUNT
///
/// Does that and answers 0, or prints the reason and answers 1, with 4 for an office that has gone.
int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    try {
        return Run(QCoreApplication::arguments());
    } catch (const embedded::UnreachableError& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 4;
    } catch (const embedded::Error& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
}
