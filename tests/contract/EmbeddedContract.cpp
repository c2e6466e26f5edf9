#include "HostContract.h"

#include "embedded/NewProject.h"
#include "embedded/OfficeDatabase.h"
#include "embedded/data/host/EmbeddedHost.h"
#include "embedded/data/office/Office.h"

using namespace Qt::StringLiterals;

namespace test {

namespace {

/// A new project in a folder of its own.
class EmbeddedContractHost : public ContractHost
{
public:
    explicit EmbeddedContractHost(const embedded::ProjectOptions& options = {})
        : m_host(NewProject(m_folder, options))
    {
    }
    host::Roles Roles() override { return m_host.Roles(); }
    CString SmallCategory() const override { return u"给排水\\管道\\给水管"_s; }
    int AttType() const override { return 1; }
    CString DropListCode() const override { return u"AM_Material"_s; }
    CString OwnValuesCode() const override { return u"AM_OuterDiameter"_s; }
    CString BillNumber() const override { return u"030411001"_s; }
    std::pair<int, int> EnCodeRule() const override { return {9, 3}; }
    CString HistoryNumber() const override { return u"031001001"_s; }
    CString CalculatedCategory() const override { return u"电气\\电缆桥架\\托盘"_s; }

private:
    static QString NewProject(const TempFolder& folder, const embedded::ProjectOptions& options)
    {
        const QString project = folder.Native(u"合同 工程"_s);
        PutNewProject(project, options);
        return project;
    }

    TempFolder m_folder;
    embedded::EmbeddedHost m_host;
};

/// A new office on a server.
class ContractOffice
{
protected:
    ContractOffice() { embedded::Office::Create(OfficeDatabase::Administrator()); }

    static embedded::ProjectOptions Options()
    {
        embedded::ProjectOptions options;
        options.office = OfficeDatabase::Administrator();
        return options;
    }

private:
    OfficeDatabase m_database;
};

/// A new project on it.
class OfficeContractHost final : private ContractOffice, public EmbeddedContractHost
{
public:
    OfficeContractHost() : EmbeddedContractHost(Options()) {}
};

} // namespace

INSTANTIATE_TEST_SUITE_P(Embedded, HostContract,
                         ::testing::Values(ContractParam{
                             "Embedded", [] { return std::make_unique<EmbeddedContractHost>(); }}),
                         ContractName);

INSTANTIATE_TEST_SUITE_P(Office, HostContract,
                         ::testing::Values(ContractParam{
                             "Office", [] { return std::make_unique<OfficeContractHost>(); }}),
                         ContractName);

} // namespace test
