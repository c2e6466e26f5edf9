// Runs a target over every file of the folders or files named on the command line.
#include "fuzz/FuzzSupport.h"

#include <QtCore/QDirIterator>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>

#include <cstdio>

namespace {

int Replay(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        std::fprintf(stderr, "cannot read %s\n", qPrintable(path));
        return 0;
    }
    const QByteArray bytes = file.readAll();
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.constData()),
                           static_cast<std::size_t>(bytes.size()));
    return 1;
}

} // namespace

int main(int argc, char** argv)
{
    int count = 0;
    for (int i = 1; i < argc; ++i) {
        const QString path = QString::fromLocal8Bit(argv[i]);
        if (QFileInfo(path).isFile()) count += Replay(path);
        for (QDirIterator files(path, QDir::Files); files.hasNext();)
            count += Replay(files.next());
    }
    std::printf("%d inputs\n", count);
    return count == 0 ? 1 : 0;
}
