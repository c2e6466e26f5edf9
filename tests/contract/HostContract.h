#pragma once

#include "host/Installation.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

namespace test {

/// A host under test, and what the suite has to know of its content.
class ContractHost
{
public:
    virtual ~ContractHost() = default;
    virtual host::Roles Roles() = 0;
    /// The full name of a small category that has attributes.
    virtual CString SmallCategory() const = 0;
    /// What `GetAttType` answers for it.
    virtual int AttType() const = 0;
    /// The code of an attribute whose values come from a drop list.
    virtual CString DropListCode() const = 0;
    /// The code of an attribute that has values of its own.
    virtual CString OwnValuesCode() const = 0;
    /// A number of the bill library.
    virtual CString BillNumber() const = 0;
    /// The coding rule of the bill library.
    virtual std::pair<int, int> EnCodeRule() const = 0;
    /// A base number for which the history holds items.
    virtual CString HistoryNumber() const = 0;
    /// The full name of a small category that has calculation items.
    virtual CString CalculatedCategory() const = 0;
};

/// Makes a host for one test, with content of its own.
using HostFactory = std::function<std::unique_ptr<ContractHost>()>;

/// A host that takes part in the suite.
struct ContractParam
{
    std::string name;
    HostFactory make;
};

inline void PrintTo(const ContractParam& param, std::ostream* out)
{
    *out << param.name;
}

inline std::string ContractName(const ::testing::TestParamInfo<ContractParam>& info)
{
    return info.param.name;
}

/// What every host promises, asked through the names by which the module calls it. The host is installed
/// during a test.
///
///     INSTANTIATE_TEST_SUITE_P(Memory, HostContract, ::testing::Values(ContractParam{"Memory",
///     MakeMemoryHost}),
///                              ContractName);
class HostContract : public ::testing::TestWithParam<ContractParam>
{
protected:
    HostContract();

    ContractHost& Sample() { return *m_host; }
    const TempFolder& Folder() const { return m_folder; }

    /// The id of the sample small category.
    SNvKtSmallCategoryId SampleId() const;

private:
    TempFolder m_folder;
    std::unique_ptr<ContractHost> m_host;
    host::Installation m_installed;
};

/// A category as a test walks over it.
template <typename Id>
struct Category
{
    CString fullName;
    Id id;
};

/// Every category of a level, in the host's order, by the host's own lists. A list that the host refuses
/// fails the test.
std::vector<Category<SNvKtSpecId>> AllSpecs();
std::vector<Category<SNvKtBigCategoryId>> AllBigs();
std::vector<Category<SNvKtSmallCategoryId>> AllSmalls();

/// The fields of an id in one text, the level's own last.
CString Fields(const SNvKtSpecId& id);
CString Fields(const SNvKtBigCategoryId& id);
CString Fields(const SNvKtSmallCategoryId& id);

} // namespace test
