#include "PictureHost.h"

using namespace Qt::StringLiterals;

void PictureHost::SetEnCodeRule(int length, int suffixLength)
{
    m_length = length;
    m_suffixLength = suffixLength;
}

void PictureHost::SetMode(SQdDeInfo::EQdDeMode mode)
{
    m_mode = mode;
}

bool PictureHost::GetQdInfo(const CString& /*number*/, SQdInfo& /*info*/)
{
    return false;
}

bool PictureHost::IsInQdk(const CString& /*number*/)
{
    return false;
}

void PictureHost::GetEnCodeRule(int& length, int& suffixLength)
{
    length = m_length;
    suffixLength = m_suffixLength;
}

bool PictureHost::GetQdInfoByQdNum(const CString& number, CArray<SQdInfo>& items)
{
    items.clear();
    for (int suffix = 1; suffix <= 12; ++suffix) {
        SQdInfo item;
        item.strNumber = number + CString::number(suffix).rightJustified(3, u'0');
        item.strName = u"镀锌钢管 DN%1 螺纹连接，室内给水管道，含管件安装与水压试验"_s.arg(suffix * 10);
        item.strUnit = u"m"_s;
        items.append(item);
    }
    return true;
}

CString PictureHost::GetAppFolder()
{
    return u"C:\\Program Files\\Sample"_s;
}

CNvKtVersion PictureHost::GetVersion()
{
    return CNvKtVersion(u"1.0"_s);
}

PictureFiles::PictureFiles() : FileSystemProxy(platform::RealFileSystem()) {}

CStringArray PictureFiles::FindFiles(const CString& /*folder*/, const CString& extension)
{
    CStringArray names;
    for (int number = 1; number <= 12; ++number)
        names.append(u"安装工程规则 %1"_s.arg(number) + extension);
    names.append(
        u"一个名字特别长的配置文件，比列表框的宽度还要长得多，用来看水平滚动条是否出现在列表的下边"_s +
        extension);
    return names;
}
