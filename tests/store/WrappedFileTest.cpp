#include "store/WrappedFile.h"

#include "StoreTesting.h"

#include "store/RuleFile.h"

using namespace Qt::StringLiterals;

// The binary form of a finished rule file, and the words around rule files.

namespace {

store::WrappedFile Usual()
{
    return {u"5"_s, u"1.2.3"_s, u"清单模式"_s, u"清单.mdb"_s, u"定额.mdb"_s, QByteArray("<x/>\0\xff", 6)};
}

QByteArray Composed(const store::WrappedFile& file)
{
    QByteArray bytes;
    for (const QByteArray& field : store::ComposeFields(file))
        bytes += field;
    return bytes;
}

QByteArray Hex(const char* digits)
{
    return QByteArray::fromHex(digits);
}

/// That `bytes` are refused with a reason.
void ExpectRefused(const QByteArray& bytes)
{
    CString reason;
    EXPECT_FALSE(store::ParseWrapped(bytes, &reason).has_value());
    EXPECT_FALSE(reason.isEmpty());
}

} // namespace

TEST(WrappedFile, FieldsAreTagLengthAndBytesInFixedOrder)
{
    EXPECT_EQ(Composed(Usual()), Hex("e9030000 01000000") + "5" + Hex("f3030000 05000000") + "1.2.3" +
                                     Hex("ea030000 0c000000") + u"清单模式"_s.toUtf8() +
                                     Hex("eb030000 0a000000") + u"清单.mdb"_s.toUtf8() +
                                     Hex("ec030000 0a000000") + u"定额.mdb"_s.toUtf8() +
                                     Hex("e8030000 06000000") + QByteArray("<x/>\0\xff", 6));
}

TEST(WrappedFile, EachFieldIsComposedByItself)
{
    const std::vector<QByteArray> fields = store::ComposeFields(Usual());
    ASSERT_EQ(fields.size(), 6U);
    EXPECT_EQ(fields.front(), Hex("e9030000 01000000") + "5");
    EXPECT_EQ(fields.back(), Hex("e8030000 06000000") + QByteArray("<x/>\0\xff", 6));
}

TEST(WrappedFile, EmptyBillFileKeepsItsTagWithLengthZero)
{
    store::WrappedFile file = Usual();
    file.billFile.clear();
    EXPECT_EQ(store::ComposeFields(file).at(3), Hex("eb030000 00000000"));
}

TEST(WrappedFile, EmptyContentEndsTheFileAfterItsLength)
{
    store::WrappedFile file = Usual();
    file.content.clear();
    EXPECT_TRUE(Composed(file).endsWith(u"定额.mdb"_s.toUtf8() + Hex("e8030000 00000000")));
}

TEST(WrappedFile, ParsingGivesBackWhatWasComposed)
{
    const auto parsed = store::ParseWrapped(Composed(Usual()));
    ASSERT_TRUE(parsed.has_value());
    EXPECT_EQ(parsed->format, u"5"_s);
    EXPECT_EQ(parsed->version, u"1.2.3"_s);
    EXPECT_EQ(parsed->mode, u"清单模式"_s);
    EXPECT_EQ(parsed->billFile, u"清单.mdb"_s);
    EXPECT_EQ(parsed->quotaFile, u"定额.mdb"_s);
    EXPECT_EQ(parsed->content, QByteArray("<x/>\0\xff", 6));
}

TEST(WrappedFile, EveryTruncationIsRefused)
{
    const QByteArray whole = Composed(Usual());
    for (qsizetype length = 0; length < whole.size(); ++length)
        ExpectRefused(whole.first(length));
}

TEST(WrappedFile, BytesBehindTheLastFieldAreRefused)
{
    ExpectRefused(Composed(Usual()) + '\0');
}

TEST(WrappedFile, OtherTagsAreRefused)
{
    QByteArray bytes = Composed(Usual());
    bytes[0] = '\x01';
    ExpectRefused(bytes);
    ExpectRefused(test::RuleFile({}).toUtf8());
}

TEST(WrappedFile, NegativeAndTooLargeLengthsAreRefused)
{
    for (const char* length : {"ffffffff", "00000080", "ffffff7f"}) {
        QByteArray bytes = Composed(Usual());
        bytes.replace(4, 4, Hex(length));
        ExpectRefused(bytes);
    }
}

TEST(WrappedFile, TextThatIsNoUtf8IsRefused)
{
    QByteArray bytes = Composed(Usual());
    bytes[8] = '\xff';
    ExpectRefused(bytes);
}

TEST(RuleFileWords, NamesAndPlacesAreFixed)
{
    const test::HostGuard host;
    EXPECT_EQ(store::RootName(), u"自动套清单定额配置信息"_s);
    EXPECT_EQ(store::DefaultConfigName(), u"DefaultConfig"_s);
    EXPECT_EQ(store::RuleFolder(), host.AppFolder() + u"\\自动套配置"_s);
    EXPECT_EQ(store::TemplatePath(), host.AppFolder() + u"\\QdDeConfig.def"_s);
}

TEST(RuleFileWords, EmptyVersionHasAFallback)
{
    test::HostGuard host;
    EXPECT_EQ(store::VersionText(), u"1.2.3"_s);
    EXPECT_EQ(store::VersionTextOrDefault(), u"1.2.3"_s);
    host.Host().SetVersion({});
    EXPECT_EQ(store::VersionText(), CString());
    EXPECT_EQ(store::VersionTextOrDefault(), u"1.0.0"_s);
}
