#include "HostContract.h"

#include "support/StandardCatalogue.h"

using namespace Qt::StringLiterals;

namespace test {

namespace {

class MemoryContractHost : public ContractHost
{
public:
    MemoryContractHost()
    {
        FillStandardCatalogue(m_host);
        m_host.SetProjectPath(u"C:\\工程\\工程.prj"_s);
        m_host.SetAppFolder(u"C:\\app"_s);
    }

    host::Roles Roles() override { return m_host.Roles(); }
    CString SmallCategory() const override { return u"给排水\\管道\\给水管"_s; }
    int AttType() const override { return 1; }
    CString DropListCode() const override { return u"CZ"_s; }
    CString OwnValuesCode() const override { return u"GJ"_s; }
    CString BillNumber() const override { return u"031001006"_s; }
    std::pair<int, int> EnCodeRule() const override { return {9, 3}; }
    CString HistoryNumber() const override { return u"031001001"_s; }
    CString CalculatedCategory() const override { return u"给排水\\管道\\给水管"_s; }

private:
    MemoryHost m_host;
};

} // namespace

INSTANTIATE_TEST_SUITE_P(Memory, HostContract,
                         ::testing::Values(ContractParam{
                             "Memory", [] { return std::make_unique<MemoryContractHost>(); }}),
                         ContractName);

} // namespace test
