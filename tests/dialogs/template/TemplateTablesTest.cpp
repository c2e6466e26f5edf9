// The tables of the dialogs against a second copy of them: what stands where, under which id and with which
// caption. A number that is mistyped in either one shows here.

#include "dialogs/template/DialogTemplates.h"
#include "platform/Text.h"
#include "support/PrintText.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace dialogs;

namespace {

CString NameOf(ControlKind kind)
{
    using enum ControlKind;
    switch (kind) {
    case PushButton:
        return u"button"_s;
    case GroupBox:
        return u"group"_s;
    case Static:
        return u"static"_s;
    case Edit:
        return u"edit"_s;
    case MultiLineEdit:
        return u"lines"_s;
    case ListBox:
        return u"list"_s;
    case DropList:
        return u"drop-list"_s;
    case EditableCombo:
        return u"combo"_s;
    case RadioButton:
        return u"radio"_s;
    case CheckBox:
        return u"check"_s;
    case Tree:
        return u"tree"_s;
    case ReportList:
        return u"rows"_s;
    case Tab:
        return u"tab"_s;
    case Frame:
        return u"frame"_s;
    }
    return {};
}

/// A row as "id kind x,y,width,height "caption" notes", what is empty left out.
CString Described(const ControlRow& row)
{
    const DialogRect& rect = row.rect;
    CStringArray words{row.id == NoId ? u"-"_s : CString::number(row.id), NameOf(row.kind),
                       u"%1,%2,%3,%4"_s.arg(rect.x).arg(rect.y).arg(rect.width).arg(rect.height)};
    if (!row.caption.isEmpty()) words.append(u'"' + row.caption.toString() + u'"');
    const std::pair<ControlFlag, CString> notes[] = {
        {Hidden, u"hidden"_s},      {Disabled, u"disabled"_s},     {Sorted, u"sorted"_s},
        {ReadOnly, u"read-only"_s}, {DefaultButton, u"default"_s}, {GroupStart, u"first"_s},
        {Notifies, u"notifies"_s},  {NoScroll, u"no-scroll"_s}};
    for (const auto& [flag, name] : notes)
        if ((row.flags & flag) != 0) words.append(name);
    return words.join(u' ');
}

CStringArray Described(const DialogTemplate& layout)
{
    CStringArray lines;
    for (const ControlRow& row : layout.rows)
        lines.append(Described(row));
    return lines;
}

/// Caption, width and height.
CString FrameOf(const DialogTemplate& layout)
{
    return u"%1 %2x%3"_s.arg(layout.caption.toString()).arg(layout.width).arg(layout.height);
}

// clang-format off
const CStringArray AutoConfigLines{
    u"7000 button 16,7,48,15 \"新建\""_s,
    u"7001 button 74,7,48,15 \"调用\""_s,
    u"7002 button 131,7,48,15 \"另存\""_s,
    u"7011 button 189,7,48,15 \"从云盘导入\""_s,
    u"- group 7,31,137,326 \"构件列表\""_s,
    u"2000 tree 15,43,121,308"_s,
    u"7010 button 306,22,34,14 \"上移\""_s,
    u"7009 button 345,22,34,14 \"下移\""_s,
    u"7003 button 383,22,34,14 \"增加\""_s,
    u"7004 button 422,22,34,14 \"复制\""_s,
    u"7005 button 461,22,34,14 \"删除\""_s,
    u"1008 rows 158,39,346,67"_s,
    u"- group 152,108,362,84 \"取值设置\""_s,
    u"1009 list 158,121,91,66"_s,
    u"2001 tab 253,121,99,66"_s,
    u"1017 drop-list 262,137,29,42 sorted"_s,
    u"1018 drop-list 262,164,29,43 sorted"_s,
    u"1019 combo 299,137,43,59"_s,
    u"1020 combo 299,164,43,59 sorted no-scroll"_s,
    u"1021 drop-list 262,148,23,42 sorted"_s,
    u"1022 combo 290,148,57,59"_s,
    u"1011 button 356,137,25,17 \">>\""_s,
    u"1012 button 356,164,25,17 \"<<\""_s,
    u"1010 list 387,121,117,66"_s,
    u"- group 152,196,362,161 \"清单定额\""_s,
    u"1014 button 405,201,44,14 \"删除\""_s,
    u"1015 button 460,201,44,14 \"套定额>>\""_s,
    u"1013 frame 158,217,346,134"_s,
    u"7006 button 322,361,48,15 \"上一步\" hidden"_s,
    u"7007 button 393,361,48,15 \"下一步\" hidden"_s,
    u"7008 button 455,361,48,15 \"取消\" hidden"_s,
    u"2002 static 16,360,289,16 \"为保证结果的准确性，使用时请仔细检查设置并根据实际情况调整\" hidden"_s,
    u"2003 static 15,16,22,11 \"清单:\" hidden"_s,
    u"2004 edit 42,15,96,16 hidden read-only"_s,
    u"2005 static 147,16,22,11 \"定额:\" hidden"_s,
    u"2006 edit 172,15,96,16 hidden read-only"_s,
    u"2007 static 459,7,39,15 \"说明\" hidden notifies"_s,
};

const CStringArray SaveAsLines{
    u"1 button 179,126,50,13 \"保存(&S)\" default"_s,
    u"2 button 179,142,50,13 \"取消\""_s,
    u"1000 list 10,17,216,99 sorted"_s,
    u"- group 7,7,223,113 \"配置\""_s,
    u"- static 7,129,41,8 \"文件名(&N):\""_s,
    u"- static 7,143,49,8 \"保存类型(&T):\""_s,
    u"1069 edit 59,126,111,13"_s,
    u"1001 drop-list 59,142,111,30 sorted"_s,
};

const CStringArray GetQdNumLines{
    u"1 button 99,154,50,14 \"确定\" default"_s,
    u"2 button 151,154,50,14 \"取消\""_s,
    u"1111 radio 7,7,72,10 \"选用已有清单号\" first"_s,
    u"1112 radio 99,7,56,10 \"新建清单号\""_s,
    u"1113 list 7,19,85,87 sorted"_s,
    u"- group 99,14,102,134"_s,
    u"- static 104,30,45,8 \"1、新清单号\""_s,
    u"- static 104,77,61,8 \"2、复制计算项目\""_s,
    u"1076 edit 105,43,61,14 disabled"_s,
    u"1077 edit 170,43,26,14"_s,
    u"1114 drop-list 105,90,90,57"_s,
    u"1069 lines 7,111,85,37 read-only"_s,
};
// clang-format on

} // namespace

TEST(TemplateTables, RuleDialogHasEveryControlInItsPlace)
{
    EXPECT_EQ(FrameOf(templates::AutoConfig()), u" 525x383"_s);
    EXPECT_EQ(Described(templates::AutoConfig()), AutoConfigLines);
}

TEST(TemplateTables, SaveAsDialogHasEveryControlInItsPlace)
{
    EXPECT_EQ(FrameOf(templates::SaveAs()), u"另存为 243x170"_s);
    EXPECT_EQ(Described(templates::SaveAs()), SaveAsLines);
}

TEST(TemplateTables, BillNumberDialogHasEveryControlInItsPlace)
{
    EXPECT_EQ(FrameOf(templates::GetQdNum()), u"添加清单编号 208x175"_s);
    EXPECT_EQ(Described(templates::GetQdNum()), GetQdNumLines);
}
