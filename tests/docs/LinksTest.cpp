#include "docs/Documents.h"
#include "support/SourceTree.h"

#include <QtCore/QFileInfo>

#include <gtest/gtest.h>

TEST(Links, LeadToSomethingInTheSourceTree)
{
    for (const QString& path : test::DocumentPaths()) {
        const QString folder = QFileInfo(test::InSourceTree(path)).path();
        for (const QString& link : test::Document(path).Links())
            EXPECT_TRUE(QFileInfo::exists(folder + u'/' + link))
                << path.toStdString() << " links to " << link.toStdString();
    }
}
