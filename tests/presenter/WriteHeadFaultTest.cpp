#include "presenter/CAutoQdDeConfigFacade.h"

#include "store/StoreTesting.h"
#include "store/WrappedFile.h"

#include "support/FaultyFileSystem.h"
#include "support/StrictXml.h"

using namespace Qt::StringLiterals;
using test::Fault;

// Finishing a rule file on a disk that fails. Write points: the head is 0, the wrapped form 1, and 2 is what
// puts the former bytes back.

namespace {

class WriteHeadFault : public test::FileFixture
{
protected:
    WriteHeadFault() : m_path(Put(u"r.xml"_s, test::RuleFile(test::Plumbing())))
    {
        MayBeBroken(u"r.xml"_s);
        // With the attributes that the head sets, so that the file to wrap is known.
        CAutoQdDeConfigFacade::WriteHead(m_path);
        m_withHead = store::ParseWrapped(Bytes(u"r.xml"_s)).value().content;
        m_host.Folder().WriteFile(u"r.xml"_s, m_withHead);
        m_files.emplace();
    }

    /// That wrapping raises an error about the file.
    void ExpectError()
    {
        try {
            CAutoQdDeConfigFacade::WriteHead(m_path);
            ADD_FAILURE() << "nothing was raised";
        } catch (const platform::FileError& error) {
            EXPECT_EQ(error.Path(), m_path);
            EXPECT_FALSE(error.Reason().isEmpty());
        }
    }

    CString m_path;
    QByteArray m_withHead;
    std::optional<test::FaultyFileSystem> m_files;
};

} // namespace

TEST_F(WriteHeadFault, HeadAndWrappedFormAreTheOnlyWritePoints)
{
    CAutoQdDeConfigFacade::WriteHead(m_path);
    EXPECT_EQ(m_files->WritePoints(), 2);
}

TEST_F(WriteHeadFault, WrappedFormThatCannotBeOpenedRaisesAndTheFormerBytesAreBack)
{
    m_files->Inject(Fault::RefuseOpen);
    m_files->OnlyAt(1);
    ExpectError();
    EXPECT_EQ(Bytes(u"r.xml"_s), m_withHead);
}

TEST_F(WriteHeadFault, WrappedFormThatBreaksOffAnywhereRaisesAndTheFormerBytesAreBack)
{
    for (const qint64 bytes : {0, 1, 4, 8, 9, 50, 100, 300}) {
        m_files.reset();
        m_host.Folder().WriteFile(u"r.xml"_s, m_withHead);
        m_files.emplace();
        m_files->FailAfter(bytes);
        m_files->OnlyAt(1);
        ExpectError();
        EXPECT_EQ(Bytes(u"r.xml"_s), m_withHead) << bytes;
    }
}

TEST_F(WriteHeadFault, DiskThatStaysBrokenRaisesTheFirstError)
{
    Host().Fail(test::Operation::SaveXml); // leaves the wrapped form as first write point
    m_files->FailAfter(20);
    ExpectError();
}

TEST_F(WriteHeadFault, FileThatCannotBeReadRaisesAndStays)
{
    class Unreadable : public test::FaultyFileSystem
    {
    public:
        explicit Unreadable(int reads) : m_reads(reads) {}
        std::optional<QByteArray> Read(const CString& path, CString* reason) override
        {
            if (--m_reads < 0) Inject(Fault::RefuseRead);
            return FaultyFileSystem::Read(path, reason);
        }

    private:
        int m_reads;
    } files(1); // opening for the head reads once
    ExpectError();
    EXPECT_EQ(Bytes(u"r.xml"_s), m_withHead);
}

TEST_F(WriteHeadFault, FileThatCannotBeRemovedRaisesAndStays)
{
    m_files->Inject(Fault::RefuseRemove);
    ExpectError();
    EXPECT_EQ(Bytes(u"r.xml"_s), m_withHead);
}

TEST_F(WriteHeadFault, HeadThatCannotBeWrittenIsNotNoticedAndWhatStandsThereIsWrapped)
{
    for (const Fault fault : {Fault::RefuseOpen, Fault::NoRoom, Fault::Write, Fault::Resize, Fault::Sync}) {
        m_files.reset();
        const QByteArray bare = test::RuleFile(test::Plumbing()).toUtf8();
        m_host.Folder().WriteFile(u"r.xml"_s, bare);
        m_files.emplace();
        m_files->Inject(fault);
        if (fault == Fault::Write) m_files->FailAfter(50);
        m_files->OnlyAt(0);
        CAutoQdDeConfigFacade::WriteHead(m_path);
        const auto wrapped = store::ParseWrapped(Bytes(u"r.xml"_s));
        ASSERT_TRUE(wrapped.has_value());
        EXPECT_EQ(wrapped->content, bare);
    }
}
