#include "presenter/CAutoQdDeConfigFacade.h"

#include "store/RuleFileHead.h"
#include "store/StoreTesting.h"
#include "store/WrappedFile.h"

#include "platform/Files.h"
#include "support/StrictXml.h"

#include <functional>

using namespace Qt::StringLiterals;

// Finishing a rule file: head attributes and the wrapped form.

namespace {

QByteArray Field(qint32 tag, const QByteArray& bytes)
{
    QByteArray field;
    for (const qint32 number : {tag, static_cast<qint32>(bytes.size())})
        for (const int shift : {0, 8, 16, 24})
            field += static_cast<char>(number >> shift & 0xff);
    return field + bytes;
}

class WriteHead : public test::FileFixture
{
protected:
    WriteHead() : m_path(Put(u"r.xml"_s, test::RuleFile(test::Plumbing()))), m_before(Bytes(u"r.xml"_s))
    {
        MayBeBroken(u"r.xml"_s); // wrapped, it is no XML
    }

    /// The rule file inside the wrapped one.
    QByteArray Content() const
    {
        CString reason;
        const auto wrapped = store::ParseWrapped(Bytes(u"r.xml"_s), &reason);
        EXPECT_TRUE(wrapped.has_value()) << reason.toStdString();
        return wrapped ? wrapped->content : QByteArray();
    }

    CString m_path;
    QByteArray m_before;
};

/// A tool of the host that succeeds in everything and on saving does something else with the file.
class OtherSave : public host::IXmlTools
{
public:
    OtherSave(test::MemoryHost& host, std::function<void()> save)
        : m_save(std::move(save)), m_installed(With(host, this))
    {
    }

    std::unique_ptr<host::IXmlTool> CreateXmlTool() override { return std::make_unique<Tool>(m_save); }
    bool SetXmlVersion(const CString&, const CString&) override { return true; }

private:
    class Tool : public host::IXmlTool
    {
    public:
        explicit Tool(std::function<void()> save) : m_save(std::move(save)) {}
        bool CreateDOMObj() override { return true; }
        bool OpenXml(const CString&) override { return true; }
        bool SelectNode(const CString&) override { return true; }
        bool SetAttribute(const CString&, const CString&) override { return true; }
        bool SaveXml(const CString&) override
        {
            m_save();
            return true;
        }

    private:
        std::function<void()> m_save;
    };

    static host::Installation With(test::MemoryHost& host, host::IXmlTools* tools)
    {
        host::Roles roles = host.Roles();
        roles.xml = tools;
        return host::Install(roles);
    }

    std::function<void()> m_save;
    host::Installation m_installed;
};

} // namespace

TEST_F(WriteHead, BillModeSetsTheHeadAttributesInOrder)
{
    CAutoQdDeConfigFacade::WriteHead(m_path);
    EXPECT_TRUE(test::CanonicalXml(Content()).startsWith(
        u"<自动套清单定额配置信息 Version=\"1.2.3\" CalMode=\"清单版\" BillName=\"安装清单\" "
        u"BillGuid=\"QD2013\" "
        "BillCorpCode=\"全国\" QuotaName=\"安装清单定额\" QuotaGuid=\"QDDE2018\" QuotaArea=\"2020\" "
        "QuotaYear=\"湖南\">\n"_s));
}

TEST_F(WriteHead, QuotaModeSetsTheHeadAttributesInOrder)
{
    Host().SetMode(SQdDeInfo::QuotaMode);
    CAutoQdDeConfigFacade::WriteHead(m_path);
    EXPECT_TRUE(test::CanonicalXml(Content()).startsWith(
        u"<自动套清单定额配置信息 Version=\"1.2.3\" CalMode=\"定额版\" BillName=\"安装清单\" "
        u"BillGuid=\"QD2013\" "
        "BillCorpCode=\"全国\" QuotaName=\"安装定额\" QuotaGuid=\"DE2018\" QuotaArea=\"2018\" "
        "QuotaYear=\"广东\">\n"_s));
}

TEST_F(WriteHead, EveryModeButZeroIsQuotaMode)
{
    for (const int mode : {1, 2, -1, 100}) {
        m_host.Folder().WriteFile(u"r.xml"_s, m_before);
        Host().SetMode(static_cast<SQdDeInfo::EQdDeMode>(mode));
        CAutoQdDeConfigFacade::WriteHead(m_path);
        EXPECT_TRUE(Content().contains("CalMode=\"定额版\"")) << mode;
        EXPECT_TRUE(Content().contains("QuotaName=\"安装定额\"")) << mode;
        EXPECT_TRUE(Bytes(u"r.xml"_s)
                        .contains(Field(1002, u"定额模式"_s.toUtf8()) + Field(1003, {}) +
                                  Field(1004, u"安装定额.mdb"_s.toUtf8())))
            << mode;
    }
}

TEST_F(WriteHead, WrappedFileInBillModeIsByteForByteThis)
{
    CAutoQdDeConfigFacade::WriteHead(m_path);
    EXPECT_EQ(Bytes(u"r.xml"_s), Field(1001, "5") + Field(1011, "1.2.3") +
                                     Field(1002, u"清单模式"_s.toUtf8()) +
                                     Field(1003, u"安装清单.mdb"_s.toUtf8()) +
                                     Field(1004, u"安装清单定额.mdb"_s.toUtf8()) + Field(1000, Content()));
}

TEST_F(WriteHead, WrappedFileInQuotaModeHasAnEmptyBillFileWithItsTag)
{
    Host().SetMode(SQdDeInfo::QuotaMode);
    CAutoQdDeConfigFacade::WriteHead(m_path);
    EXPECT_EQ(Bytes(u"r.xml"_s), Field(1001, "5") + Field(1011, "1.2.3") +
                                     Field(1002, u"定额模式"_s.toUtf8()) + Field(1003, {}) +
                                     Field(1004, u"安装定额.mdb"_s.toUtf8()) + Field(1000, Content()));
}

TEST_F(WriteHead, EmptyVersionIsWrappedAsTheFallback)
{
    Host().SetVersion({});
    CAutoQdDeConfigFacade::WriteHead(m_path);
    EXPECT_TRUE(Bytes(u"r.xml"_s).startsWith(Field(1001, "5") + Field(1011, "1.0.0")));
}

TEST_F(WriteHead, ContentIsTheRuleFileWithItsHeadAndLoadsAgain)
{
    CAutoQdDeConfigFacade::WriteHead(m_path);
    EXPECT_TRUE(test::IsStrictXml(Content()));
    EXPECT_TRUE(Content().contains(test::Plumbing().toUtf8()));
    const CString cut = m_host.Folder().WriteFile(u"cut.xml"_s, Content());
    CQdDeConfigPresenter presenter(cut);
    EXPECT_NE(presenter.GetConfig(test::RulePath(1)), nullptr);
}

TEST_F(WriteHead, HeadAttributesThatAreThereKeepTheirPlaces)
{
    Put(u"r.xml"_s, u"<自动套清单定额配置信息 QuotaYear='x' CalMode='y'/>"_s);
    CAutoQdDeConfigFacade::WriteHead(m_path);
    EXPECT_TRUE(test::CanonicalXml(Content()).startsWith(
        u"<自动套清单定额配置信息 QuotaYear=\"湖南\" CalMode=\"清单版\" BillName=\"安装清单\" "_s));
}

TEST_F(WriteHead, ContentOfAFileThatWasEmptiedMeanwhileIsEmptyAndTheFileEndsBehindItsLength)
{
    const OtherSave tools(Host(), [this] { m_host.Folder().WriteFile(u"r.xml"_s, {}); });
    CAutoQdDeConfigFacade::WriteHead(m_path);
    EXPECT_TRUE(Bytes(u"r.xml"_s).endsWith(u"安装清单定额.mdb"_s.toUtf8() + Field(1000, {})));
}

TEST_F(WriteHead, FileThatVanishedMeanwhileIsMadeWithEmptyContent)
{
    const OtherSave tools(Host(), [this] { platform::RealFileSystem().Remove(m_path); });
    CAutoQdDeConfigFacade::WriteHead(m_path);
    EXPECT_TRUE(Content().isEmpty());
}

TEST_F(WriteHead, ContentIsTakenByteForByteWhateverItIs)
{
    QByteArray bytes;
    for (int i = 0; i < 70000; ++i)
        bytes += static_cast<char>(i * 7);
    const OtherSave tools(Host(), [&] { m_host.Folder().WriteFile(u"r.xml"_s, bytes); });
    CAutoQdDeConfigFacade::WriteHead(m_path);
    EXPECT_EQ(Content(), bytes);
}

TEST_F(WriteHead, FileWithoutTheDocumentElementIsLeftAsItWas)
{
    Put(u"other.xml"_s, u"<其它><自动套清单定额配置信息/></其它>"_s);
    const QByteArray before = Bytes(u"other.xml"_s);
    CAutoQdDeConfigFacade::WriteHead(File(u"other.xml"_s));
    EXPECT_EQ(Bytes(u"other.xml"_s), before);
    EXPECT_TRUE(Messages().Messages().empty());
}

TEST_F(WriteHead, SecondCallStopsAtTheWrappedFileAndLeavesIt)
{
    CAutoQdDeConfigFacade::WriteHead(m_path);
    const QByteArray wrapped = Bytes(u"r.xml"_s);
    CAutoQdDeConfigFacade::WriteHead(m_path);
    EXPECT_EQ(Bytes(u"r.xml"_s), wrapped);
}

TEST_F(WriteHead, MissingFileIsNotMade)
{
    CAutoQdDeConfigFacade::WriteHead(File(u"missing.xml"_s));
    EXPECT_FALSE(Exists(u"missing.xml"_s));
}

TEST_F(WriteHead, EmptyFileIsLeftAsItWas)
{
    Put(u"r.xml"_s, {});
    CAutoQdDeConfigFacade::WriteHead(m_path);
    EXPECT_TRUE(Bytes(u"r.xml"_s).isEmpty());
}

TEST_F(WriteHead, ToolThatFailsBeforeTheAttributesLeavesTheFileAsItWas)
{
    for (const test::Operation operation :
         {test::Operation::CreateDOMObj, test::Operation::OpenXml, test::Operation::SelectNode}) {
        Host().Fail(operation);
        CAutoQdDeConfigFacade::WriteHead(m_path);
        EXPECT_EQ(Bytes(u"r.xml"_s), m_before);
        Host().Work(operation);
    }
    EXPECT_TRUE(Messages().Messages().empty());
    EXPECT_EQ(Host().Calls(test::Operation::SetAttribute), 0);
}

TEST_F(WriteHead, AttributesThatCannotBeSetAreNotNoticed)
{
    Host().Fail(test::Operation::SetAttribute);
    CAutoQdDeConfigFacade::WriteHead(m_path);
    EXPECT_EQ(Host().Calls(test::Operation::SetAttribute), 8);
    EXPECT_EQ(test::CanonicalXml(Content()), test::CanonicalXml(m_before));
}

TEST_F(WriteHead, HeadThatCannotBeSavedIsNotNoticedAndTheFormerFileIsWrapped)
{
    Host().Fail(test::Operation::SaveXml);
    CAutoQdDeConfigFacade::WriteHead(m_path);
    EXPECT_EQ(Content(), m_before);
}

TEST_F(WriteHead, WrappedFileIsReplacedByTheSaveOfAStoreOnIt)
{
    CAutoQdDeConfigFacade::WriteHead(m_path);
    CQdDeConfigPresenter presenter(m_path);
    EXPECT_TRUE(presenter.Save());
    EXPECT_TRUE(test::IsStrictXml(Bytes(u"r.xml"_s)));
    EXPECT_EQ(Specialties(u"r.xml"_s), CStringArray{u"给排水/给排水"_s});
}

TEST_F(WriteHead, WrappedFileTellsWhetherItHoldsTheHeadOfTheHost)
{
    CAutoQdDeConfigFacade::WriteHead(m_path);
    store::WrappedFile wrapped = store::ParseWrapped(Bytes(u"r.xml"_s)).value();
    EXPECT_TRUE(store::HoldsHead(wrapped));
    Host().SetMode(SQdDeInfo::QuotaMode);
    EXPECT_FALSE(store::HoldsHead(wrapped));
    Host().SetMode(SQdDeInfo::BillMode);
    Host().Libraries().qdCode = u"other"_s;
    EXPECT_FALSE(store::HoldsHead(wrapped));
    wrapped.content = "no xml";
    EXPECT_FALSE(store::HoldsHead(wrapped));
}

TEST_F(WriteHead, WrappedFileWhoseHeadCouldNotBeSavedHoldsNone)
{
    Host().Fail(test::Operation::SaveXml);
    CAutoQdDeConfigFacade::WriteHead(m_path);
    EXPECT_FALSE(store::HoldsHead(store::ParseWrapped(Bytes(u"r.xml"_s)).value()));
}
