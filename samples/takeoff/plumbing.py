"""给排水: two toilet cores a storey, pantries, pump room and tank in the basement, rain water from the roof."""

from table import FLOORS, Table, floor_height, metres

COLUMNS = [
    "材质", "公称直径", "管外径", "连接方式", "敷设方式", "阀门类型", "规格型号", "保温材料", "保温厚度",
    "额定流量", "额定功率", "有效容积", "罐体直径", "安装部位",
    "水平管长度", "立管长度", "管道长度", "管件个数", "构件个数", "构件套数", "支架单重", "支架个数",
]


def takeoff():
    table = Table("给排水", COLUMNS)
    basement(table)
    for number, floor in enumerate(FLOORS, 1):
        risers(table, number, floor)
        branches(table, number, floor)
        fixtures(table, number, floor)
    roof(table)
    flaws(table)
    return table


def pipe(table, prefix, name, category, floor, system, level, upright="0", **values):
    """A run of pipe: both lengths are there, the one that it has not is 0."""
    fittings = values.pop("管件个数", 4)
    return table.add(prefix, name, "管道\\" + category, floor, system,
                     水平管长度=level, 立管长度=upright, 管件个数=fittings, **values)


def basement(table):
    floor = "B1"
    plant = {"安装部位": "水泵房"}
    pipe(table, "GS", "市政引入管", "给水管", floor, "J", metres(26, 1), 材质="PE管", 公称直径=100, 管外径=110,
         连接方式="热熔连接", 敷设方式="埋地", 安装部位="室外")
    pipe(table, "GS", "室外环管", "给水管", floor, "J", metres(64, 2), 材质="球墨铸铁管", 公称直径=150,
         连接方式="柔性承插连接", 敷设方式="埋地", 安装部位="室外")
    for run, size in enumerate([100, 100, 80, 65], 1):
        pipe(table, "GS", f"地下室给水干管{run}", "给水管", floor, "J", metres(38, run), 材质="钢塑复合管",
             公称直径=size, 连接方式="沟槽连接", 敷设方式="吊顶内", 管件个数=9, 安装部位="地下室")
    pipe(table, "GS", "泵房出水管", "给水管", floor, "J", metres(12, 3), "2.6", 材质="镀锌钢管", 公称直径=100,
         连接方式="沟槽连接", 敷设方式="明装", 管件个数=11, **plant)
    pipe(table, "GS", "水箱溢流管", "给水管", floor, "J", metres(5, 4), "2.2", 材质="镀锌钢管", 公称直径=80,
         连接方式="螺纹连接", 敷设方式="明装", 管件个数=3, **plant)
    for run, (material, size, outer) in enumerate([("PPR管", 25, 32), ("PPR管", 32, 40), ("钢塑复合管", 40, "")], 1):
        pipe(table, "ZS", f"中水管{run}", "中水管", floor, "Z", metres(22, run, 2), "1.8", 材质=material,
             公称直径=size, 管外径=outer, 连接方式="热熔连接" if outer else "螺纹连接", 安装部位="地下室")
    for pit, size in enumerate([100, 100, 80, 80], 1):
        pipe(table, "YP", f"集水坑{pit}压力排水管", "压力排水管", floor, "YP", metres(14, pit, 1), "4.1",
             材质="镀锌钢管", 公称直径=size, 连接方式="沟槽连接", 管件个数=6, 安装部位="地下室")
        table.add("SB", f"集水坑{pit}潜污泵", "给水设备\\潜污泵", floor, "YP", 规格型号="50WQ15-20",
                  额定流量=15, 额定功率="2.2" if size == 80 else "3", 构件个数=2, 安装部位="地下室")
        table.add("FM", f"集水坑{pit}止回阀", "阀门附件\\阀门", floor, "YP", 阀门类型="止回阀", 公称直径=size,
                  连接方式="法兰连接", 构件个数=2, 安装部位="地下室")
        table.add("FM", f"集水坑{pit}闸阀", "阀门附件\\阀门", floor, "YP", 阀门类型="闸阀", 公称直径=size,
                  连接方式="法兰连接", 构件个数=2, 安装部位="地下室")
    for run, (material, size) in enumerate([("HDPE排水管", 160), ("HDPE排水管", 160), ("柔性铸铁排水管", 150)], 1):
        pipe(table, "WS", f"排水出户管{run}", "排水管", floor, "W", metres(11, run, 4), 材质=material, 公称直径=size,
             连接方式="热熔连接" if size == 160 else "卡箍连接", 敷设方式="埋地", 安装部位="地下室")
    for name, kind, size in [("泵组进水蝶阀", "蝶阀", 100), ("水箱进水蝶阀", "蝶阀", 100), ("环管蝶阀", "蝶阀", 150)]:
        table.add("FM", name, "阀门附件\\阀门", floor, "J", 阀门类型=kind, 公称直径=size, 连接方式="法兰连接",
                  构件个数=2, **plant)
    table.add("FM", "总水表", "阀门附件\\水表", floor, "J", 公称直径=100, 连接方式="法兰连接", 构件个数=1, **plant)
    table.add("FM", "倒流防止器", "阀门附件\\倒流防止器", floor, "J", 公称直径=100, 连接方式="法兰连接", 构件套数=1,
              **plant)
    table.add("FM", "总表前过滤器", "阀门附件\\过滤器", floor, "J", 公称直径=100, 连接方式="法兰连接", 构件个数=1, **plant)
    table.add("FM", "低区减压阀组", "阀门附件\\减压器", floor, "J", 公称直径=80, 连接方式="法兰连接", 构件个数=1, **plant)
    table.add("FM", "泵组软接头", "阀门附件\\软接头", floor, "J", 公称直径=80, 连接方式="法兰连接", 构件个数=6, **plant)
    table.add("FM", "泵组法兰", "阀门附件\\法兰", floor, "J", 公称直径=80, 构件个数=6, **plant)
    table.add("SB", "变频给水设备", "给水设备\\变频给水设备", floor, "J", 规格型号="BT-36", 额定流量=36, 额定功率="7.5",
              构件套数=1, **plant)
    table.add("SB", "生活水箱", "给水设备\\水箱", floor, "J", 材质="不锈钢", 有效容积=36, 构件个数=1, **plant)
    table.add("SB", "高区给水泵", "给水设备\\给水泵", floor, "J", 额定流量=18, 额定功率="7.5", 公称直径=65, 构件个数=2,
              **plant)
    table.add("SB", "气压罐", "给水设备\\气压罐", floor, "J", 罐体直径=800, 构件个数=1, **plant)
    table.add("SB", "紫外线消毒器", "给水设备\\水处理设备", floor, "J", 规格型号="紫外线消毒器", 公称直径=100, 构件个数=1,
              **plant)
    table.add("SB", "食堂隔油器", "给水设备\\隔油器", floor, "F", 规格型号="GY-5", 额定流量=5, 构件套数=1, 安装部位="地下室")
    table.add("ZJ", "泵房设备支架", "支架套管\\设备支架", floor, "J", 支架单重="18.6", 支架个数=8, **plant)
    table.add("ZJ", "地下室管道支架", "支架套管\\管道支架", floor, "J", 支架单重="3.24", 支架个数=62, 安装部位="地下室")
    for kind, size, count in [("刚性防水套管", 100, 4), ("刚性防水套管", 150, 5), ("柔性防水套管", 150, 2),
                              ("柔性防水套管", 100, 2)]:
        table.add("TG", f"{kind} DN{size}", "支架套管\\套管", floor, "J", 材质=kind, 公称直径=size, 构件个数=count,
                  安装部位="地下室")


def riser_size(number):
    """Size and connection of a cold-water riser: it narrows on its way up."""
    if number <= 3:
        return 80, "沟槽连接"
    return (65, "沟槽连接") if number <= 6 else (50, "螺纹连接")


def risers(table, number, floor):
    height = floor_height(number)
    size, connection = riser_size(number)
    for core in (1, 2):
        pipe(table, "GS", f"JL-{core}", "给水管", floor, f"JL-{core}", "0", height, 材质="钢塑复合管", 公称直径=size,
             连接方式=connection, 敷设方式="管井内", 管件个数=2, 安装部位="管井")
        pipe(table, "WS", f"WL-{core}", "排水管", floor, f"WL-{core}", "0", height, 材质="PVC-U排水管", 公称直径=110,
             管外径=110, 连接方式="粘接", 敷设方式="管井内", 管件个数=2, 安装部位="管井")
    pipe(table, "RS", "RL-1", "热水管", floor, "RL-1", "0", height, 材质="薄壁不锈钢管", 公称直径=40, 管外径=40,
         连接方式="卡压连接", 敷设方式="管井内", 保温材料="橡塑", 保温厚度=25, 管件个数=2, 安装部位="管井")
    table.add("TG", "立管穿楼板套管", "支架套管\\套管", floor, "J", 材质="一般钢套管", 公称直径=100, 构件个数=3, 安装部位="管井")
    table.add("ZJ", "立管支架", "支架套管\\管道支架", floor, "J", 支架单重="1.86", 支架个数=10 + number % 3, 安装部位="管井")


def branches(table, number, floor):
    rooms = [("A区男卫", 25, 32), ("A区女卫", 25, 32), ("B区男卫", 20, 25), ("B区女卫", 20, 25), ("茶水间", 15, 20)]
    for place, (room, size, outer) in enumerate(rooms):
        pipe(table, "GS", f"{room}给水支管", "给水管", floor, "JL-1" if place < 2 else "JL-2",
             metres(11, number, place), "2.4", 材质="PPR管", 公称直径=size, 管外径=outer, 连接方式="热熔连接",
             敷设方式="暗装", 管件个数=12 - place, 安装部位="吊顶内")
    pipe(table, "RS", "茶水间热水支管", "热水管", floor, "RL-1", metres(9, number, 5), "1.2", 材质="PPR管", 公称直径=20,
         管外径=25, 连接方式="热熔连接", 敷设方式="吊顶内", 保温材料="橡塑", 保温厚度=20, 管件个数=7, 安装部位="吊顶内")
    drains = [("A区卫生间污水横管", 110), ("B区卫生间污水横管", 110), ("A区洗脸盆排水管", 50), ("B区洗脸盆排水管", 75)]
    for place, (name, size) in enumerate(drains):
        pipe(table, "WS", name, "排水管", floor, "WL-1" if place % 2 == 0 else "WL-2", metres(8, number, place, 1),
             "0.6", 材质="PVC-U排水管", 公称直径=size, 管外径=size, 连接方式="粘接", 管件个数=9 - place, 安装部位="吊顶内")
    for core in (1, 2):
        table.add("FM", f"JL-{core}支管球阀", "阀门附件\\阀门", floor, f"JL-{core}", 阀门类型="球阀", 公称直径=25,
                  连接方式="螺纹连接", 构件个数=2, 安装部位="管井")
    table.add("FM", "楼层水表", "阀门附件\\水表", floor, "J", 公称直径=25, 连接方式="螺纹连接", 构件个数=2, 安装部位="管井")


def fixtures(table, number, floor):
    basins = "挂墙式" if number % 2 else "台上式"
    table.add("WJ", "A区洗脸盆", "卫生器具\\洗脸盆", floor, "JL-1", 规格型号=basins, 构件个数=6, 构件套数=6)
    table.add("WJ", "A区坐便器", "卫生器具\\大便器", floor, "WL-1", 规格型号="坐式", 构件个数=8, 构件套数=8)
    if number in (1, 2, 5):
        table.add("WJ", "B区蹲便器", "卫生器具\\大便器", floor, "WL-2", 规格型号="蹲式", 构件个数=6, 构件套数=6)
    table.add("WJ", "A区小便器", "卫生器具\\小便器", floor, "WL-1", 规格型号="立式", 构件个数=4, 构件套数=4)
    table.add("WJ", "茶水间洗涤盆", "卫生器具\\洗涤盆", floor, "JL-2", 规格型号="双嘴", 构件个数=1, 构件套数=1)
    table.add("WJ", "拖布池", "卫生器具\\拖布池", floor, "JL-1", 构件个数=2, 构件套数=2)
    table.add("WJ", "卫生间地漏", "卫生器具\\地漏", floor, "WL-1", 公称直径=50, 构件个数=6, 构件套数=6)
    table.add("WJ", "立管清扫口", "卫生器具\\清扫口", floor, "WL-2", 公称直径=100, 构件个数=2)
    table.add("SB", "开水炉", "给水设备\\热水器", floor, "JL-2", 规格型号="开水炉", 额定功率=9, 构件个数=1, 安装部位="室内")


def roof(table):
    for down in range(1, 7):
        pipe(table, "YS", f"YL-{down}", "雨水管", "RF", f"YL-{down}", metres(3, down), "33.2", 材质="PVC-U排水管",
             公称直径=110, 管外径=110, 连接方式="粘接", 管件个数=10, 安装部位="室外")
    for run in (1, 2):
        pipe(table, "YS", f"雨水悬吊管{run}", "雨水管", "RF", "YL", metres(19, run, 6), 材质="HDPE排水管", 公称直径=160,
             管外径=160, 连接方式="热熔连接", 管件个数=6, 安装部位="吊顶内")
    for core, name in enumerate(["JL-1", "JL-2", "RL-1"], 1):
        table.add("FM", f"{name}顶部排气阀", "阀门附件\\阀门", "RF", name, 阀门类型="自动排气阀", 公称直径=20,
                  连接方式="螺纹连接", 构件个数=1, 安装部位="管井")
    table.add("SB", "热水机房水箱", "给水设备\\水箱", "RF", "R", 材质="不锈钢", 有效容积=8, 构件个数=1, 安装部位="屋面")


def flaws(table):
    """What people really deliver, for the report to find."""
    steel = {"材质": "镀锌钢管", "连接方式": "沟槽连接", "管件个数": 2, "安装部位": "地下室"}
    table.add("GS", "A区男卫给水支管", "管道\\给水管", "3F", "JL-1", id="GS-3F-03", 材质="PPR管", 公称直径=25, 管外径=32,
              连接方式="热熔连接", 水平管长度="11.2", 立管长度="2.4", 管件个数=12,
              flaw=("构件编号", "refused: the id came before"))
    table.add("WJ", "残卫洗手盆", "卫生器具\\洗手盆", "1F", "JL-1", 规格型号="挂墙式", 构件个数=1, 构件套数=1,
              flaw=("类别", "refused: no such category"))
    pipe(table, "GS", "食堂给水支管", "给水管", "B1", "J", "约12", 材质="PPR管", 公称直径=25, 管外径=32, 连接方式="热熔连接",
         flaw=("水平管长度", "quantity missing: no number"))
    pipe(table, "GS", "门卫给水支管", "给水管", "B1", "J", "", "", 材质="PPR管", 公称直径=20, 管外径=25, 连接方式="热熔连接",
         flaw=("水平管长度", "quantity missing: empty"))
    pipe(table, "GS", "车库冲洗管", "给水管", "B1", "J", "18.4", 公称直径=25, 管外径=32, 连接方式="热熔连接",
         flaw=("材质", "default rule: attribute empty"))
    pipe(table, "GS", "消防水池补水管", "给水管", "B1", "J", "9.6", 公称直径="６５", flaw=(
        "公称直径", "full-width digits, read as 65"), **steel)
    pipe(table, "GS", "冷却塔补水管", "给水管", "B1", "J", "7.85", 公称直径="ＤＮ６５", flaw=(
        "公称直径", "default rule: no number"), **steel)
    pipe(table, "GS", "空调补水管", "给水管", "B1", "J", "6.3", 公称直径="65mm", flaw=(
        "公称直径", "default rule: no number"), **steel)
    pipe(table, "GS", "消防水池进水管", "给水管", "B1", "J", "5.2", 公称直径=250, flaw=(
        "公称直径", "default rule: no rule for the size"), **steel)
    pipe(table, "GS", "值班室给水支管", "给水管", "B1", "J", "10.5", 材质="PPR管  ", 公称直径=20, 管外径=25,
         连接方式="热熔连接", flaw=("材质", "blanks behind the text, read without them"))
    pipe(table, "GS", "B区女卫给水支管扣减", "给水管", "6F", "JL-2", "-3.5", 材质="PPR管", 公称直径=20, 管外径=25,
         连接方式="热熔连接", flaw=("水平管长度", "negative quantity, counted as it stands"))
    table.add("GS", "绿化给水管", "管道\\给水管", "1F", "J", 材质="PE管", 公称直径=50, 管外径=63, 连接方式="热熔连接",
              敷设方式="埋地", 水平管长度="41", 立管长度="1", 管道长度="43.6", 管件个数=5,
              flaw=("管道长度", "goes before 水平管长度+立管长度"))
    table.add("SB", "食堂潜污泵", "给水设备\\潜污泵", "B1", "F", 规格型号="65WQ25-28", 额定流量=25, 额定功率="5.5", 构件个数=2,
              flaw=("额定功率", "default rule: no rule for the size"))
