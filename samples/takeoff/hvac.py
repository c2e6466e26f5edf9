"""暖通: fresh air and fan coils by storey, chillers in the basement, towers on the roof, smoke and toilet exhaust."""

from table import FLOORS, Table, metres, plain

COLUMNS = [
    "系统类型", "规格型号", "截面形状", "材质", "宽度", "高度", "长边(mm)", "短边", "直径(mm)", "公称直径", "管外径", "铜管外径",
    "板材厚度", "连接方式", "敷设方式", "阀门类型", "保温材料", "保温厚度", "刷油防腐", "安装方式", "额定风量", "额定功率",
    "额定流量", "制冷量", "机组类型", "接管直径", "支路数", "安装部位",
    "截面周长", "风管中心线长度", "风管绝热体积", "软接长度", "水平管长度", "立管长度", "管件个数", "地暖敷设净面积", "散热器片数",
    "构件个数",
]

# These columns bear the attributes' codes.
CODES = {
    "长边(mm)": "AM_LongEdge",
    "直径(mm)": "AM_Diameter",
    "公称直径": "AM_NominalDiameter",
}

STEEL = {20: "26.8", 25: "33.5", 32: "42.3", 40: "48", 50: "60", 65: "76", 80: "89", 100: "108", 125: "133", 150: "159",
         200: "219"}


def takeoff():
    table = Table("暖通", COLUMNS, CODES)
    plant(table)
    for number, floor in enumerate(FLOORS, 1):
        fresh_air(table, number, floor)
        fan_coils(table, number, floor)
        exhaust(table, number, floor)
    roof(table)
    lobby(table)
    flaws(table)
    return table


def duct(table, prefix, name, category, floor, system, kind, wide, high, length, **values):
    """A rectangular duct: its circumference goes by metres, its edges by millimetres."""
    values = {"材质": "镀锌薄钢板", "连接方式": "共板法兰", "安装部位": "吊顶内", **values}
    return table.add(prefix, name, "风管\\" + category, floor, system, 系统类型=kind, 截面形状="矩形", 宽度=wide, 高度=high,
                     **{"长边(mm)": max(wide, high)}, 短边=min(wide, high), 截面周长=plain((wide + high) // 5),
                     风管中心线长度=length, **values)


INSULATED = {"保温材料": "橡塑", "保温厚度": 25}


def steel_pipe(table, prefix, name, category, floor, system, size, level, upright="0", **values):
    threaded = size <= 32
    fittings = values.pop("管件个数", 6)
    return table.add(prefix, name, "空调水管\\" + category, floor, system, 系统类型="空调水系统",
                     材质="焊接钢管" if threaded else "无缝钢管", 公称直径=size, 管外径=STEEL[size],
                     连接方式="螺纹连接" if threaded else "焊接", 刷油防腐="防锈漆两遍", 水平管长度=level, 立管长度=upright,
                     管件个数=fittings, **values)


def fresh_air(table, number, floor):
    system, kind = f"XF-{number}", "新风系统"
    for wide, high, length in [(800, 320, 24), (500, 250, 31), (320, 200, 38)]:
        duct(table, "XF", f"新风管{wide}×{high}", "新风管", floor, system, kind, wide, high, metres(length, number, wide // 100),
             板材厚度="0.75" if wide > 630 else "0.6", **INSULATED)
    machine = "落地安装" if number == 1 else "吊装"
    table.add("XF", f"新风机组X-{number}", "通风设备\\新风机组", floor, system, 系统类型=kind, 安装方式=machine, 额定风量=4000,
              额定功率="1.5", 构件个数=1, 安装部位="机房")
    parts = {"系统类型": kind, "宽度": 800, "高度": 320}
    table.add("XF", "新风防火阀", "通风部件\\防火阀", floor, system, 阀门类型="70℃防火阀", 构件个数=1, **parts)
    table.add("XF", "新风电动阀", "通风部件\\风阀", floor, system, 阀门类型="电动风阀", 构件个数=1, **parts)
    table.add("XF", "新风支管调节阀", "通风部件\\风阀", floor, system, 系统类型=kind, 阀门类型="多叶调节阀", 宽度=320, 高度=200,
              构件个数=6)
    table.add("XF", "新风消声器", "通风部件\\消声器", floor, system, 规格型号="片式", 构件个数=1, **parts)
    table.add("XF", "新风机组软接", "通风部件\\风管软接", floor, system, 截面周长="2.24", 软接长度="0.2", 构件个数=2, **parts)
    table.add("XF", "新风散流器", "通风部件\\散流器", floor, system, 系统类型=kind, 材质="铝合金", 宽度=250, 高度=250,
              构件个数=14 + number % 3)


def fan_coils(table, number, floor):
    system = f"FCU-{number}"
    duct(table, "SF", "盘管送风管", "空调送风管", floor, system, "送风系统", 630, 200, metres(46, number, 3), 板材厚度="0.6",
         **INSULATED)
    duct(table, "HF", "盘管回风管", "空调回风管", floor, system, "回风系统", 800, 200, metres(18, number, 4), 板材厚度="0.75",
         **INSULATED)
    table.add("SF", "散流器软管", "风管\\柔性软风管", floor, system, 系统类型="送风系统", 材质="柔性软管", 管外径=250,
              风管中心线长度=metres(21, number, 2), 截面周长="0.79", 安装部位="吊顶内")
    table.add("SF", "送风散流器", "通风部件\\散流器", floor, system, 系统类型="送风系统", 材质="铝合金", 宽度=300, 高度=300,
              构件个数=26 + number % 4)
    table.add("HF", "回风百叶", "通风部件\\风口", floor, system, 系统类型="回风系统", 材质="铝合金", 宽度=500, 高度=300, 构件个数=13)
    table.add("SB", "风机盘管", "通风设备\\风机盘管", floor, system, 系统类型="空调水系统",
              安装方式="落地安装" if number == 1 else "吊装", 额定风量=680, 额定功率="0.08", 构件个数=13 + number % 4)
    for name, size, length in [("供水干管", 80, 34), ("回水干管", 80, 34), ("供水支管", 50, 26), ("盘管支管", 20, 58)]:
        steel_pipe(table, "LD", f"{number}层冷冻{name}", "冷冻水管", floor, "LD", size, metres(length, number, size),
                   管件个数=14, 保温材料="橡塑", 保温厚度=30, 敷设方式="吊顶内", 安装部位="吊顶内")
    for size, length in [(25, 42), (32, 24)]:
        table.add("NJ", f"冷凝水管DN{size}", "空调水管\\冷凝水管", floor, "N", 系统类型="空调水系统", 材质="PVC-U管",
                  公称直径=size, 管外径=size + 7, 连接方式="粘接", 水平管长度=metres(length, number, size), 立管长度="0.6",
                  管件个数=9, 保温材料="橡塑", 保温厚度=13, 安装部位="吊顶内")
    for name, kind, size, connection, count in [("层间蝶阀", "蝶阀", 80, "法兰连接", 2),
                                                ("盘管截止阀", "截止阀", 20, "螺纹连接", 26),
                                                ("干管末端排气阀", "自动排气阀", 20, "螺纹连接", 2)]:
        table.add("FM", name, "水管附件\\阀门", floor, "LD", 阀门类型=kind, 公称直径=size, 连接方式=connection, 构件个数=count)
    table.add("FM", "盘管过滤器", "水管附件\\过滤器", floor, "LD", 公称直径=20, 连接方式="螺纹连接", 构件个数=13)
    table.add("FM", "盘管金属软管", "水管附件\\软接头", floor, "LD", 材质="不锈钢", 公称直径=20, 连接方式="螺纹连接", 构件个数=26)
    table.add("FM", "层间热量表", "水管附件\\热量表", floor, "LD", 公称直径=80, 连接方式="法兰连接", 构件个数=1)


def exhaust(table, number, floor):
    duct(table, "PF", "卫生间排风管", "排风管", floor, f"PF-{number}", "排风系统", 320, 200, metres(22, number, 5), 板材厚度="0.6")
    table.add("PF", "卫生间排风口", "通风部件\\风口", floor, f"PF-{number}", 系统类型="排风系统", 材质="铝合金", 宽度=250, 高度=200,
              构件个数=8)
    table.add("PF", "排风止回阀", "通风部件\\风阀", floor, f"PF-{number}", 系统类型="排风系统", 阀门类型="止回阀", 宽度=300,
              高度=200, 构件个数=2)
    duct(table, "PY", "走廊排烟管", "排烟风管", floor, "PY-1", "排烟系统", 800, 320, metres(32, number, 6), 连接方式="角钢法兰",
         板材厚度="1.0")
    table.add("PY", "走廊排烟口", "通风部件\\排烟口", floor, "PY-1", 系统类型="排烟系统", 宽度=500, 高度=500, 构件个数=3)
    table.add("PY", "排烟防火阀", "通风部件\\防火阀", floor, "PY-1", 系统类型="排烟系统", 阀门类型="280℃排烟阀", 宽度=800,
              高度=320, 构件个数=1)
    duct(table, "JY", "楼梯间加压送风管", "加压送风管", floor, "JY-1", "加压送风系统", 1000, 500, "3.9", 连接方式="角钢法兰",
         板材厚度="1.2", 安装部位="管井")


def plant(table):
    floor, room = "B1", {"安装部位": "机房"}
    water = {"系统类型": "空调水系统", **room}
    table.add("SB", "离心式冷水机组", "通风设备\\冷水机组", floor, "LD", 机组类型="离心式", 制冷量=2110, 额定功率=368, 构件个数=1, **water)
    table.add("SB", "螺杆式冷水机组", "通风设备\\冷水机组", floor, "LD", 机组类型="螺杆式", 制冷量=980, 额定功率=182, 构件个数=1, **water)
    for name, power, count in [("冷冻水泵", 30, 3), ("冷却水泵", 37, 3), ("补水泵", "2.2", 2)]:
        table.add("SB", name, "通风设备\\空调水泵", floor, "LD", 额定功率=power, 额定流量=180, 安装方式="减振台座安装",
                  构件个数=count, **water)
    for name, size, length in [("供水总管", 200, 26), ("回水总管", 200, 26), ("机组支管", 150, 18)]:
        steel_pipe(table, "LD", f"冷冻{name}", "冷冻水管", floor, "LD", size, metres(length, size), 管件个数=17,
                   保温材料="橡塑", 保温厚度=40, **room)
        steel_pipe(table, "LQ", f"冷却{name}", "冷却水管", floor, "LQ", size, metres(length, size, 1), 管件个数=16, **room)
    for side in ("供", "回"):
        steel_pipe(table, "LD", f"冷冻水立管{side}", "冷冻水管", floor, "LD", 150, "4.2", "33.6", 保温材料="橡塑", 保温厚度=40,
                   安装部位="管井")
        steel_pipe(table, "LQ", f"冷却水立管{side}", "冷却水管", floor, "LQ", 200, "6.8", "36.2", 安装部位="管井")
    for name, kind, size, count in [("机组蝶阀", "蝶阀", 150, 8), ("总管蝶阀", "蝶阀", 200, 6), ("水泵止回阀", "止回阀", 150, 6),
                                    ("平衡阀", "平衡阀", 150, 2), ("旁通电动阀", "电动阀", 100, 1)]:
        table.add("FM", name, "水管附件\\阀门", floor, "LD", 阀门类型=kind, 公称直径=size, 连接方式="法兰连接", 构件个数=count, **room)
    table.add("FM", "水泵过滤器", "水管附件\\过滤器", floor, "LD", 公称直径=150, 连接方式="法兰连接", 构件个数=6, **room)
    table.add("FM", "水泵软接头", "水管附件\\软接头", floor, "LD", 公称直径=150, 连接方式="法兰连接", 构件个数=12, **room)
    for wide, high, length in [(1250, 400, 42), (1000, 320, 36), (630, 320, 28)]:
        duct(table, "PF", f"车库排风排烟管{wide}×{high}", "排烟风管", floor, "PFY-B1", "排烟系统", wide, high, metres(length, high),
             连接方式="角钢法兰", 板材厚度="1.2", 安装部位="地下室")
    duct(table, "BF", "车库补风管", "补风管", floor, "BF-B1", "送风系统", 1000, 400, metres(34, 2), 板材厚度="0.75", 安装部位="地下室")
    duct(table, "PF", "变配电间排风管", "排风管", floor, "PF-B1", "排风系统", 630, 320, metres(19, 4), 板材厚度="0.75",
         安装部位="配电间")
    table.add("PF", "车库百叶风口", "通风部件\\风口", floor, "PFY-B1", 系统类型="排烟系统", 材质="碳钢", 宽度=500, 高度=400, 构件个数=14)
    table.add("PF", "排烟风机软接", "通风部件\\风管软接", floor, "PFY-B1", 系统类型="排烟系统", 宽度=1250, 高度=400,
              截面周长="3.3", 软接长度="0.25", 构件个数=2)
    for name, kind, power in [("车库排烟风机", "轴流式", 15), ("车库补风机", "轴流式", "5.5"), ("变配电间排风机", "离心式", "2.2")]:
        table.add("SB", name, "通风设备\\通风机", floor, "PF-B1", 系统类型="排风系统", 规格型号=kind, 额定功率=power, 构件个数=1,
                  **room)
    for size in (300, 500):
        table.add("RF", f"人防密闭阀D{size}", "通风部件\\人防密闭阀", floor, "RF", 接管直径=size, 构件个数=2, 安装部位="地下室")


def roof(table):
    floor, out = "RF", {"安装部位": "屋面"}
    table.add("SB", "冷却塔", "通风设备\\冷却塔", floor, "LQ", 额定流量=250, 额定功率="7.5", 构件个数=2, **out)
    table.add("SB", "消防排烟风机", "通风设备\\通风机", floor, "PY-1", 系统类型="排烟系统", 规格型号="离心式", 额定功率=15, 构件个数=1, **out)
    table.add("SB", "加压送风机", "通风设备\\通风机", floor, "JY-1", 系统类型="加压送风系统", 规格型号="轴流式", 额定功率="7.5",
              构件个数=2, **out)
    table.add("SB", "卫生间屋顶风机", "通风设备\\通风机", floor, "PF", 系统类型="排风系统", 规格型号="屋顶式", 额定功率="1.1", 构件个数=2, **out)
    table.add("PF", "排风风帽", "通风部件\\风帽", floor, "PF", 系统类型="排风系统", 规格型号="伞形", 接管直径=400, 构件个数=2, **out)
    for capacity in (45, 85):
        table.add("DL", f"数据机房多联机{capacity}kW", "通风设备\\多联机室外机", floor, "VRV", 制冷量=capacity, 构件个数=1, **out)
    for outer, length in [("9.52", "46.4"), ("15.88", "46.4"), ("28.6", "31.2")]:
        table.add("DL", f"冷媒管φ{outer}", "空调水管\\冷媒管", floor, "VRV", 系统类型="空调水系统", 材质="铜管", 铜管外径=outer,
                  管外径=outer, 连接方式="钎焊", 水平管长度=length, 立管长度="12.6", 管件个数=8, 保温材料="橡塑", 保温厚度=20, **out)
    for diameter, around in [(500, "1.57"), (320, "1.01")]:
        length = "28.4" if diameter == 500 else "19.6"
        table.add("SF", f"报告厅圆形送风管D{diameter}", "风管\\空调送风管", "8F", "K-1", 系统类型="送风系统", 截面形状="圆形",
                  材质="镀锌薄钢板", **{"直径(mm)": diameter}, 截面周长=around, 风管中心线长度=length,
                  风管绝热体积="1.212" if diameter == 500 else "0.55", 保温材料="橡塑", 保温厚度=25)
    table.add("SB", "报告厅空调机组", "通风设备\\空调机组", "8F", "K-1", 系统类型="送风系统", 安装方式="落地安装", 额定风量=8000,
              额定功率="5.5", 构件个数=1, 安装部位="机房")
    table.add("SF", "报告厅静压箱", "通风部件\\静压箱", "8F", "K-1", 系统类型="送风系统", 宽度=1250, 高度=800, 构件个数=1)


def lobby(table):
    table.add("CN", "门厅地暖", "采暖\\地暖盘管", "1F", "CN", 材质="PE-RT管", 管外径=20, 地暖敷设净面积="186.5")
    table.add("CN", "门厅分集水器", "采暖\\分集水器", "1F", "CN", 支路数=6, 公称直径=32, 构件个数=1)
    for size, length in [(25, "24.6"), (40, "18.2")]:
        table.add("CN", f"采暖管DN{size}", "采暖\\采暖管", "1F", "CN", 系统类型="采暖系统", 材质="镀锌钢管", 公称直径=size,
                  管外径=STEEL[size], 连接方式="螺纹连接", 水平管长度=length, 立管长度="2.8", 管件个数=6)
    table.add("CN", "楼梯间散热器", "采暖\\散热器", "1F", "CN", 材质="铸铁", 规格型号="柱型", 高度=600, 散热器片数=44, 构件个数=4)
    table.add("CN", "值班室散热器", "采暖\\散热器", "1F", "CN", 材质="碳钢", 规格型号="柱式", 高度=600, 散热器片数=12, 构件个数=1)


def flaws(table):
    table.add("XF", "新风散流器", "通风部件\\散流器", "4F", "XF-4", id="XF-4F-10", 系统类型="新风系统", 材质="铝合金", 宽度=250,
              高度=250, 构件个数=15, flaw=("构件编号", "refused: the id came before"))
    table.add("SB", "展厅风幕机", "通风设备\\风幕机", "1F", "K-2", 额定功率="1.2", 构件个数=2,
              flaw=("类别", "refused: no such category"))
    duct(table, "SF", "展厅送风管", "空调送风管", "1F", "K-2", "送风系统", 1250, 400, "16米", 板材厚度="1.0", **INSULATED,
         flaw=("风管中心线长度", "quantity missing: no number"))
    duct(table, "SF", "展厅送风支管", "空调送风管", "1F", "K-2", "送风系统", 400, 200, "22.4", 板材厚度="0.6", 保温材料="橡塑",
         flaw=("保温厚度", "quantity missing: empty, of the insulation alone"))
    duct(table, "PF", "厨房排风管", "排风管", "B1", "PF-2", "排风系统", 630, 320, "27.5", 材质="", 板材厚度="1.2",
         flaw=("材质", "default rule: attribute empty"))
    steel_pipe(table, "LD", "展厅冷冻水支管", "冷冻水管", "1F", "LD", 50, "14.2", 保温材料="橡塑", 保温厚度="30mm",
               flaw=("保温厚度", "quantity missing: no number, of the insulation alone"))
    table.add("FM", "展厅蝶阀", "水管附件\\阀门", "1F", "LD", 阀门类型="蝶阀", 公称直径="８０", 连接方式="法兰连接", 构件个数=2,
              flaw=("AM_NominalDiameter", "full-width digits, read as 80"))
    table.add("FM", "展厅闸阀", "水管附件\\阀门", "1F", "LD", 阀门类型="闸阀", 公称直径="DN80", 连接方式="法兰连接", 构件个数=2,
              flaw=("AM_NominalDiameter", "default rule: no number"))
    table.add("FM", "分水器总阀", "水管附件\\阀门", "B1", "LD", 阀门类型="闸阀", 公称直径=350, 连接方式="法兰连接", 构件个数=2,
              flaw=("AM_NominalDiameter", "default rule: no rule for the size"))
    table.add("HF", "展厅回风百叶", "通风部件\\风口", "1F", "K-2", 系统类型="回风系统", 材质="碳钢  ", 宽度=500, 高度=300, 构件个数=6,
              flaw=("材质", "blanks behind the text, read without them"))
    table.add("SF", "散流器扣减", "通风部件\\散流器", "5F", "FCU-5", 系统类型="送风系统", 材质="铝合金", 宽度=300, 高度=300,
              构件个数=-2, flaw=("构件个数", "negative quantity, counted as it stands"))
