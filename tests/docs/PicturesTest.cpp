#include "docs/Documents.h"
#include "docs/Shell.h"
#include "support/PrintText.h"
#include "support/SourceTree.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QSet>
#include <QtCore/QSize>
#include <QtCore/QtEndian>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype LargestPicture = 100'000;

QString PictureFolder()
{
    return test::InSourceTree(u"docs/pictures"_s);
}

QStringList PicturesIn(const QString& folder)
{
    return QDir(folder).entryList({u"*.png"_s}, QDir::Files, QDir::Name);
}

QByteArray BytesOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// The size that the head of a PNG file tells; invalid for another file.
QSize SizeOf(const QByteArray& png)
{
    constexpr qsizetype WidthAt = 16;
    constexpr qsizetype HeightAt = 20;
    if (!png.startsWith("\x89PNG") || png.size() < HeightAt + 4) return {};
    return {qFromBigEndian<qint32>(png.constData() + WidthAt),
            qFromBigEndian<qint32>(png.constData() + HeightAt)};
}

} // namespace

TEST(Pictures, OfTheDocumentsAreTheOnesInTheFolder)
{
    QSet<QString> named;
    for (const QString& path : test::DocumentPaths()) {
        const QString folder = QFileInfo(test::InSourceTree(path)).path();
        for (const QString& picture : test::Document(path).Pictures()) {
            const QFileInfo file(folder + u'/' + picture);
            EXPECT_EQ(QDir::cleanPath(file.absolutePath()), QDir::cleanPath(PictureFolder()));
            named.insert(file.fileName());
        }
    }
    QStringList names = named.values();
    names.sort();
    EXPECT_EQ(names, PicturesIn(PictureFolder()));
}

// The bytes may differ with the version of fonts and toolkit; a window that has changed has another size or
// shows so to the eye.
TEST(Pictures, AreThoseOfTheProgramAsItIs)
{
    const test::Shell shell;
    ASSERT_EQ(shell.Run({u"ktqdde-pictures"_s, u"--documents"_s, u"fresh"_s}).toStdString(), "");
    const QString fresh = shell.Folder().Native(u"fresh"_s);
    EXPECT_EQ(PicturesIn(fresh), PicturesIn(PictureFolder()));
    for (const QString& name : PicturesIn(PictureFolder())) {
        const QSize size = SizeOf(BytesOf(PictureFolder() + u'/' + name));
        EXPECT_TRUE(size.isValid()) << name.toStdString();
        EXPECT_EQ(size, SizeOf(BytesOf(fresh + u'/' + name))) << name.toStdString();
    }
}

// The program takes no picture of a window, list or tip of one colour, nor of a tip that is not there.
TEST(Pictures, OfTipsShowThem)
{
    const test::Shell shell;
    ASSERT_EQ(shell.Run({u"ktqdde-pictures"_s, u"--tips"_s, u"fresh"_s}).toStdString(), "");
    const QStringList pictures = PicturesIn(shell.Folder().Native(u"fresh"_s));
    for (const QString& name :
         {u"combo-list-tip"_s, u"combo-edit-tip"_s, u"list-tip"_s, u"quota-picker-tip"_s})
        for (const QString& look : {u"-light.png"_s, u"-dark.png"_s, u"-light-200.png"_s, u"-dark-200.png"_s})
            EXPECT_TRUE(pictures.contains(name + look)) << (name + look).toStdString();
}

TEST(Pictures, AreSmall)
{
    for (const QString& name : PicturesIn(PictureFolder()))
        EXPECT_LT(QFileInfo(PictureFolder() + u'/' + name).size(), LargestPicture) << name.toStdString();
}
