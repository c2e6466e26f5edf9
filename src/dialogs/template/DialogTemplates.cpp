#include "dialogs/template/DialogTemplates.h"

namespace dialogs::templates {

namespace {

using enum ControlKind;

// clang-format off
constexpr ControlRow AutoConfigRows[] = {
    {7000, PushButton, u"新建", {16, 7, 48, 15}},
    {7001, PushButton, u"调用", {74, 7, 48, 15}},
    {7002, PushButton, u"另存", {131, 7, 48, 15}},
    {7011, PushButton, u"从云盘导入", {189, 7, 48, 15}},
    {NoId, GroupBox, u"构件列表", {7, 31, 137, 326}},
    {2000, Tree, u"", {15, 43, 121, 308}},
    {7010, PushButton, u"上移", {306, 22, 34, 14}},
    {7009, PushButton, u"下移", {345, 22, 34, 14}},
    {7003, PushButton, u"增加", {383, 22, 34, 14}},
    {7004, PushButton, u"复制", {422, 22, 34, 14}},
    {7005, PushButton, u"删除", {461, 22, 34, 14}, 0, u"删除规则"},
    {1008, ReportList, u"", {158, 39, 346, 67}, 0, u"规则列表"},
    {NoId, GroupBox, u"取值设置", {152, 108, 362, 84}},
    {1009, ListBox, u"", {158, 121, 91, 66}, 0, u"属性列表"},
    {2001, Tab, u"", {253, 121, 99, 66}, 0, u"取值方式"},
    {1017, DropList, u"", {262, 137, 29, 42}, Sorted, u"下限比较符", u"＞"},
    {1018, DropList, u"", {262, 164, 29, 43}, Sorted, u"上限比较符", u"＜"},
    {1019, EditableCombo, u"", {299, 137, 43, 59}, 0, u"下限", u"00"},
    {1020, EditableCombo, u"", {299, 164, 43, 59}, Sorted | NoScroll, u"上限", u"00"},
    {1021, DropList, u"", {262, 148, 23, 42}, Sorted, u"等值比较符", u"＝"},
    {1022, EditableCombo, u"", {290, 148, 57, 59}, 0, u"取值", u"00"},
    {1011, PushButton, u">>", {356, 137, 25, 17}, 0, u"加入条件"},
    {1012, PushButton, u"<<", {356, 164, 25, 17}, 0, u"移除条件"},
    {1010, ListBox, u"", {387, 121, 117, 66}, 0, u"已选条件"},
    {NoId, GroupBox, u"清单定额", {152, 196, 362, 161}},
    {1014, PushButton, u"删除", {405, 201, 44, 14}, 0, u"删除清单定额"},
    {1015, PushButton, u"套定额>>", {460, 201, 44, 14}},
    {1013, Frame, u"", {158, 217, 346, 134}},
    {7006, PushButton, u"上一步", {322, 361, 48, 15}, Hidden},
    {7007, PushButton, u"下一步", {393, 361, 48, 15}, Hidden},
    {7008, PushButton, u"取消", {455, 361, 48, 15}, Hidden},
    {2002, Static, u"为保证结果的准确性，使用时请仔细检查设置并根据实际情况调整", {16, 360, 289, 16}, Hidden},
    {2003, Static, u"清单:", {15, 16, 22, 11}, Hidden, {}, {}, 2004},
    {2004, Edit, u"", {42, 15, 96, 16}, Hidden | ReadOnly, u"清单库"},
    {2005, Static, u"定额:", {147, 16, 22, 11}, Hidden, {}, {}, 2006},
    {2006, Edit, u"", {172, 15, 96, 16}, Hidden | ReadOnly, u"定额库"},
    {2007, Static, u"说明", {459, 7, 39, 15}, Hidden | Notifies},
};

constexpr ControlRow SaveAsRows[] = {
    {1, PushButton, u"保存(&S)", {179, 126, 50, 13}, DefaultButton},
    {2, PushButton, u"取消", {179, 142, 50, 13}},
    {1000, ListBox, u"", {10, 17, 216, 99}, Sorted, u"配置"},
    {NoId, GroupBox, u"配置", {7, 7, 223, 113}},
    {NoId, Static, u"文件名(&N):", {7, 129, 41, 8}, 0, {}, {}, 1069},
    {NoId, Static, u"保存类型(&T):", {7, 143, 49, 8}, 0, {}, {}, 1001},
    {1069, Edit, u"", {59, 126, 111, 13}, 0, u"文件名"},
    {1001, DropList, u"", {59, 142, 111, 30}, Sorted, u"保存类型", u"XML文件(*.xml)"},
};

constexpr ControlRow GetQdNumRows[] = {
    {1, PushButton, u"确定", {99, 154, 50, 14}, DefaultButton},
    {2, PushButton, u"取消", {151, 154, 50, 14}},
    {1111, RadioButton, u"选用已有清单号", {7, 7, 72, 10}, GroupStart},
    {1112, RadioButton, u"新建清单号", {99, 7, 56, 10}},
    {1113, ListBox, u"", {7, 19, 85, 87}, Sorted, u"已有清单号", u"000000000000"},
    {NoId, GroupBox, u"", {99, 14, 102, 134}, 0, u"新建清单号"},
    {NoId, Static, u"1、新清单号", {104, 30, 45, 8}, 0, {}, {}, 1076},
    {NoId, Static, u"2、复制计算项目", {104, 77, 61, 8}, 0, {}, {}, 1114},
    {1076, Edit, u"", {105, 43, 61, 14}, Disabled, u"清单号", u"000000000000"},
    {1077, Edit, u"", {170, 43, 26, 14}, 0, u"清单号后缀", u"000"},
    {1114, DropList, u"", {105, 90, 90, 57}, 0, u"复制计算项目", u"000000000000"},
    {1069, MultiLineEdit, u"", {7, 111, 85, 37}, ReadOnly, u"清单名称和单位"},
};
// clang-format on

constexpr DialogTemplate AutoConfigTemplate{u"", 525, 383, AutoConfigRows};
constexpr DialogTemplate SaveAsTemplate{u"另存为", 243, 170, SaveAsRows};
constexpr DialogTemplate GetQdNumTemplate{u"添加清单编号", 208, 175, GetQdNumRows};

} // namespace

const DialogTemplate& AutoConfig()
{
    return AutoConfigTemplate;
}

const DialogTemplate& SaveAs()
{
    return SaveAsTemplate;
}

const DialogTemplate& GetQdNum()
{
    return GetQdNumTemplate;
}

std::array<const DialogTemplate*, 3> All()
{
    return {&AutoConfigTemplate, &SaveAsTemplate, &GetQdNumTemplate};
}

} // namespace dialogs::templates
