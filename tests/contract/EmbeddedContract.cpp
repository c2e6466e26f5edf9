#include "HostContract.h"

#include "embedded/data/host/CreateProject.h"
#include "embedded/data/host/EmbeddedHost.h"

using namespace Qt::StringLiterals;

namespace test {

namespace {

/// A new project in a folder of its own.
class EmbeddedContractHost : public ContractHost
{
public:
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
    static QString NewProject(const TempFolder& folder)
    {
        const QString project = folder.Native(u"合同 工程"_s);
        embedded::CreateProject(project, {});
        return project;
    }

    TempFolder m_folder;
    embedded::EmbeddedHost m_host{NewProject(m_folder)};
};

} // namespace

INSTANTIATE_TEST_SUITE_P(Embedded, HostContract,
                         ::testing::Values(ContractParam{
                             "Embedded", [] { return std::make_unique<EmbeddedContractHost>(); }}),
                         ContractName);

} // namespace test
