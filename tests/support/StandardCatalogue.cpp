#include "support/StandardCatalogue.h"

using namespace Qt::StringLiterals;

namespace test {

namespace {

void FillCategories(MemoryHost& host)
{
    host.AddSpec(u"1"_s, u"给排水"_s);
    host.AddBig(u"1"_s, u"11"_s, u"管道"_s);
    host.AddSmall(u"11"_s, u"111"_s, u"给水管"_s);
    host.AddSmall(u"11"_s, u"112"_s, u"排水管"_s);
    host.AddBig(u"1"_s, u"12"_s, u"阀门"_s);
    host.AddSmall(u"12"_s, u"121"_s, u"截止阀"_s);
    host.AddSpec(u"2"_s, u"电气"_s);
    host.AddBig(u"2"_s, u"21"_s, u"电缆桥架"_s);
    host.AddSmall(u"21"_s, u"211"_s, u"桥架"_s);
    host.AddSmall(u"21"_s, u"212"_s, u"托盘"_s);
    host.AddSpec(u"3"_s, u"建筑"_s);
    host.AddBig(u"3"_s, u"31"_s, u"门窗"_s);
    host.AddSmall(u"31"_s, u"311"_s, u"门"_s);
    host.SetIndexPath(u"给排水\\管道\\给水管\\"_s, u"10\\1\\1"_s);
}

void FillAttributes(MemoryHost& host)
{
    host.AddAttribute(u"111"_s, u"物理属性"_s, u"材质"_s, u"管材"_s, u"CZ"_s);
    host.AddAttribute(u"111"_s, u"物理属性"_s, u"管径"_s, u""_s, u"GJ"_s);
    host.AddAttribute(u"111"_s, u"几何属性"_s, u"长度"_s, u""_s, u"CD"_s);
    host.AddAttribute(u"121"_s, u"物理属性"_s, u"管径"_s, u""_s, u"GJ"_s);
    host.SetAttType(u"111"_s, 1);
    host.SetCellData(u"CZ"_s, 9, {});
    host.SetDropList(u"CZ"_s, {u"PPR"_s, u"镀锌钢管"_s, u"铸铁管"_s});
    host.SetCellData(u"GJ"_s, 1, {u"DN15"_s, u"DN20"_s, u"DN25"_s});
}

SQdInfo BillItem(const CString& number, const CString& name, const CString& unit)
{
    SQdInfo item;
    item.nUnitCode = 1;
    item.nWithAnnex = 1;
    item.strNumber = number;
    item.strName = name;
    item.strUnit = unit;
    item.strCalRule = u"按设计图示尺寸计算"_s;
    return item;
}

void FillLibraries(MemoryHost& host)
{
    host.Libraries() = {u"QD2013"_s,   u"DE2018"_s,       u"QDDE2018"_s, u"安装清单"_s,
                        u"安装定额"_s, u"安装清单定额"_s, u"全国"_s,     u"广东"_s,
                        u"湖南"_s,     u"2018"_s,         u"2020"_s};
    host.SetEnCodeRule(9, 3);
    host.AddBillItem(BillItem(u"031001001"_s, u"镀锌钢管"_s, u"m"_s));
    host.AddBillItem(BillItem(u"031001006"_s, u"塑料管"_s, u"m"_s));
    host.AddHistory(u"031001001"_s, BillItem(u"031001001001"_s, u"镀锌钢管 DN15"_s, u"m"_s));
    host.AddHistory(u"031001001"_s, BillItem(u"031001001002"_s, u"镀锌钢管 DN20"_s, u"m"_s));
    host.AddCalItem(u"给排水\\管道\\给水管"_s, {u"L"_s, 0, u"AM_Length"_s, u"管道长度"_s});
}

} // namespace

void FillStandardCatalogue(MemoryHost& host)
{
    FillCategories(host);
    FillAttributes(host);
    FillLibraries(host);
    host.SetCurrentSpec(u"给排水"_s);
    host.SetVersion(u"1.2.3"_s);
}

} // namespace test
