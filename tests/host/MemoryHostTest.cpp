#include "host/NvKtDataMng.h"
#include "host/NvQdInfo.h"
#include "host/NvSysRuleData.h"
#include "host/NvWindowsTool.h"
#include "support/HostGuard.h"

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <memory>
#include <stdexcept>
#include <tuple>

using namespace Qt::StringLiterals;
using namespace NvKtDataMng;
using NvWindowsTool::MSXMLUtilityPtr;
using test::Operation;

// The in-memory host as an instrument: each of its operations can be made to fail.

namespace {

const SNvKtSpecId Spec{u"1"_s};
const SNvKtBigCategoryId Big{u"1"_s, u"11"_s};
const SNvKtSmallCategoryId Small{u"1"_s, u"11"_s, u"111"_s};

/// An XML tool that has come as far as a selected element.
std::unique_ptr<MSXMLUtilityPtr> PreparedTool(const CString& path)
{
    auto tool = std::make_unique<MSXMLUtilityPtr>();
    tool->CreateDOMObj();
    tool->OpenXml(path);
    tool->SelectNode(u"a"_s);
    return tool;
}

/// For each operation a call that succeeds on the standard catalogue; `path` is a file with the element "a".
std::map<Operation, std::function<bool()>> SuccessfulCalls(const CString& path)
{
    const auto with = [](auto operation) {
        return [operation] {
            std::tuple<SNvKtSpecId, SNvKtBigCategoryId, SNvKtSmallCategoryId, CString, CStringArray, SQdInfo,
                       RuleCodeStruct, CArray<SNvKtBigCategoryId>, CArray<SNvKtSmallCategoryId>,
                       CArray<SQdInfo>>
                outputs;
            return operation(outputs);
        };
    };
    const auto tool = [path](auto operation) {
        return [path, operation] { return operation(*PreparedTool(path), path); };
    };
    return {
        {Operation::SpecNameToId, with([](auto& o) { return SpecNameToId(u"给排水"_s, std::get<0>(o)); })},
        {Operation::BigCategoryNameToId,
         with([](auto& o) { return BigCategoryNameToId(u"给排水\\管道"_s, std::get<1>(o)); })},
        {Operation::SmallCategoryNameToId,
         with([](auto& o) { return SmallCategoryNameToId(u"给排水\\管道\\给水管"_s, std::get<2>(o)); })},
        {Operation::GetAllSpecNames, with([](auto& o) { return CAtt().GetAllSpecNames(std::get<4>(o)); })},
        {Operation::GetAllBigCategoryIdsBySpec,
         with([](auto& o) { return CAtt().GetAllBigCategoryIdsBySpec(Spec, std::get<7>(o)); })},
        {Operation::GetAllSmallCategoryIdsByBigCategory,
         with([](auto& o) { return CAtt().GetAllSmallCategoryIdsByBigCategory(Big, std::get<8>(o)); })},
        {Operation::GetBigCategoryName,
         with([](auto& o) { return CAtt().GetBigCategoryName(Big, std::get<3>(o)); })},
        {Operation::GetSmallCategoryName,
         with([](auto& o) { return CAtt().GetSmallCategoryName(Small, std::get<3>(o)); })},
        {Operation::GetAttributeList,
         with([](auto& o) { return CSysSmallCategoryMng(Small).GetAttributeList(std::get<4>(o)); })},
        {Operation::GetDropList,
         with([](auto& o) { return CAtt().GetDropList(u"CZ"_s, std::get<4>(o), std::get<4>(o)); })},
        {Operation::GetQdInfo,
         with([](auto& o) { return NvQdInfo::IBillLib::GetQdInfo(u"031001001"_s, std::get<5>(o)); })},
        {Operation::IsInQdk, [] { return NvQdInfo::IBillLib::IsInQdk(u"031001001"_s); }},
        {Operation::GetQdInfoByQdNum,
         with([](auto& o) { return CQdHistoryMng().GetQdInfoByQdNum(u"031001001"_s, std::get<9>(o)); })},
        {Operation::GetCalItems,
         [] {
             CStringArray items;
             CStringArray other;
             return NvSysRuleData::CFaceSysRule::GetCalItems(u"给排水\\管道\\给水管"_s, items, other);
         }},
        {Operation::GetCalItemInfo, with([](auto& o) {
             return NvSysRuleData::CFaceSysRule::GetCalItemInfo(u"管道长度"_s, std::get<6>(o));
         })},
        {Operation::SetXmlVersion, [path] { return NvKtXmlVertion::SetXmlVersion(u"1"_s, path); }},
        {Operation::CreateDOMObj, tool([](auto& t, const CString&) { return t.CreateDOMObj(); })},
        {Operation::OpenXml, tool([](auto& t, const CString& file) { return t.OpenXml(file); })},
        {Operation::SelectNode, tool([](auto& t, const CString&) { return t.SelectNode(u"a"_s); })},
        {Operation::SetAttribute,
         tool([](auto& t, const CString&) { return t.SetAttribute(u"b"_s, u"1"_s); })},
        {Operation::SaveXml, tool([](auto& t, const CString& file) { return t.SaveXml(file); })},
    };
}

TEST(MemoryHost, EveryOperationSucceedsUntilItIsToldToFail)
{
    test::HostGuard guard;
    const auto calls = SuccessfulCalls(guard.Folder().WriteFile(u"a.xml"_s, "<a/>"));
    ASSERT_EQ(calls.size(), static_cast<std::size_t>(Operation::SaveXml) + 1);
    for (const auto& [operation, call] : calls) {
        const int index = static_cast<int>(operation);
        EXPECT_TRUE(call()) << index;
        guard.Host().Fail(operation);
        EXPECT_FALSE(call()) << index;
        guard.Host().Work(operation);
        EXPECT_TRUE(call()) << index;
        EXPECT_GE(guard.Host().Calls(operation), 3) << index;
    }
}

TEST(MemoryHost, FollowsARenamedAndARemovedCategory)
{
    test::HostGuard guard;
    guard.Host().RenameSmall(u"111"_s, u"新名称"_s);
    guard.Host().RemoveSmall(u"112"_s);
    CString name;
    EXPECT_TRUE(CAtt().GetSmallCategoryName(Small, name));
    EXPECT_EQ(name, u"新名称"_s);
    CArray<SNvKtSmallCategoryId> ids;
    EXPECT_TRUE(CAtt().GetAllSmallCategoryIdsByBigCategory(Big, ids));
    EXPECT_EQ(ids.size(), 1);
}

TEST(MemoryHost, CategoryBelowAMissingOneIsAMistakeOfTheTest)
{
    test::MemoryHost memory;
    EXPECT_THROW(memory.AddBig(u"1"_s, u"11"_s, u"管道"_s), std::invalid_argument);
    EXPECT_THROW(memory.AddSmall(u"11"_s, u"111"_s, u"给水管"_s), std::invalid_argument);
    EXPECT_THROW(memory.RenameSmall(u"111"_s, u"给水管"_s), std::invalid_argument);
}

TEST(MemoryHost, AttributeListMayEndInAnIncompleteGroup)
{
    test::HostGuard guard;
    guard.Host().SetAttributeList(u"111"_s, {u"a"_s, u"b"_s, u"c"_s});
    CStringArray list;
    EXPECT_TRUE(CSysSmallCategoryMng(Small).GetAttributeList(list));
    EXPECT_EQ(list.size(), 3);
}

} // namespace
