"""电气: a transformer room in the basement, a busway and trays up the shaft, boxes, lamps and sockets by storey."""

from table import FLOORS, Table, metres

COLUMNS = [
    "规格型号", "材质", "安装方式", "敷设方式", "连接方式", "公称直径", "宽度", "高度", "半周长(mm)", "宽+高(mm)",
    "线缆型号", "导体材质", "导体截面", "导线根数", "芯数", "联数", "额定电流", "额定功率", "额定容量", "变压器类型", "柜体类型",
    "针长", "安装部位",
    "桥架中心线长度", "母线中心线长度", "水平配管长度", "竖直配管长度", "配管长度", "预留长度", "电缆图示长度", "电缆根数",
    "图示长度", "构件个数", "构件套数", "支架单重", "支架个数",
]


def takeoff():
    table = Table("电气", COLUMNS)
    substation(table)
    earthing(table)
    for number, floor in enumerate(["B1"] + FLOORS):
        boxes(table, number, floor)
        trays(table, number, floor)
        lighting_circuits(table, number, floor)
        lamps(table, number, floor)
    for number, floor in enumerate(FLOORS, 1):
        feeders(table, number, floor)
        devices(table, number, floor)
    flaws(table)
    return table


def substation(table):
    floor, room = "B1", {"安装部位": "配电间"}
    for place, capacity in enumerate([1000, 1250], 1):
        table.add("BD", f"{place}#变压器", "变配电设备\\变压器", floor, "变配电", 变压器类型="干式", 额定容量=capacity,
                  规格型号="SCB13", 构件个数=1, **room)
    for name, kind, count in [("进线柜", "断路器柜", 2), ("出线柜", "断路器柜", 2), ("PT柜", "互感器柜", 2),
                              ("计量柜", "计量柜", 2)]:
        table.add("BD", f"高压{name}", "变配电设备\\高压柜", floor, "变配电", 柜体类型=kind, 构件个数=count, **room)
    for name, kind, count in [("馈线柜", "抽屉式", 9), ("电容补偿柜", "电容补偿柜", 4), ("进线柜", "抽屉式", 2),
                              ("联络柜", "抽屉式", 1)]:
        table.add("BD", f"低压{name}", "配电箱柜\\配电柜", floor, "变配电", 规格型号=kind, 安装方式="落地安装", 构件个数=count,
                  **room)
    table.add("BD", "直流屏", "变配电设备\\蓄电池柜", floor, "变配电", 额定容量=100, 构件个数=1, **room)
    table.add("BD", "柴油发电机组", "变配电设备\\柴油发电机组", floor, "变配电", 额定功率=400, 构件个数=1, 安装部位="机房")
    table.add("MX", "变压器低压母线", "母线\\母线槽", floor, "动力", 额定电流=2000, 母线中心线长度="9.6", **room)
    table.add("MX", "竖井母线槽", "母线\\母线槽", floor, "动力", 额定电流=1250, 母线中心线长度="38.4", 安装部位="管井")
    table.add("MX", "母线始端箱", "母线\\始端箱", floor, "动力", 额定电流=1250, 构件个数=1, 安装部位="管井")
    table.add("JX", "水泵控制箱", "配电箱柜\\控制箱", floor, "动力", 规格型号="XKF", 安装方式="落地安装", 构件个数=5,
              安装部位="水泵房")
    table.add("JX", "消防控制台", "配电箱柜\\控制箱", floor, "应急", 规格型号="控制台", 安装方式="落地安装", 构件个数=1)
    table.add("JX", "双电源转换装置", "配电箱柜\\元件装置", floor, "应急", 规格型号="ATSE-250", 额定电流=250, 构件个数=2, **room)
    for place, (length, size) in enumerate([("18.5", 100), ("26.2", 100), ("31.8", 150)], 1):
        table.add("DL", f"进户电缆保护管{place}", "电缆\\电缆保护管", floor, "动力", 材质="SC钢管", 公称直径=size,
                  敷设方式="埋地敷设", 水平配管长度=length, 竖直配管长度="1.2", 安装部位="室外")
    for place, section in enumerate([240, 185], 1):
        runs = {"导体材质": "铜芯", "线缆型号": "YJV22", "导体截面": section, "芯数": 4}
        table.add("DL", f"进户电缆{place}", "电缆\\电力电缆", floor, "动力", 敷设方式="直埋", 电缆图示长度=metres(86, place),
                  预留长度="7.5", 安装部位="室外", **runs)
        table.add("DL", f"进户电缆头{place}", "电缆\\电缆头", floor, "动力", 连接方式="热缩", 导体截面=section, 电缆根数=1,
                  构件个数=2, **room)
    for place, (cores, section) in enumerate([(1, 70), (1, 120), (4, 16)], 1):
        table.add("DL", f"消防干线{place}", "电缆\\矿物绝缘电缆", floor, "应急", 线缆型号="BTTZ", 导体材质="铜芯",
                  导体截面=section, 芯数=cores, 敷设方式="沿桥架敷设", 电缆图示长度=metres(62, place), 预留长度="4.5")
        table.add("DL", f"消防干线{place}终端", "电缆\\电缆头", floor, "应急", 规格型号="矿物绝缘电缆头", 导体截面=section,
                  电缆根数=4 if cores == 1 else 1, 构件个数=8 if cores == 1 else 2)
    for place, cores in enumerate([4, 7, 19], 1):
        table.add("DL", f"控制电缆{place}", "电缆\\控制电缆", floor, "动力", 线缆型号="KVV", 导体材质="铜芯", 导体截面="1.5",
                  芯数=cores, 电缆图示长度=metres(45, place, 3), 预留长度=3)
        table.add("DL", f"控制电缆头{place}", "电缆\\电缆头", floor, "动力", 规格型号="控制电缆头", 导体截面="1.5", 芯数=cores,
                  电缆根数=1, 构件个数=2)


def earthing(table):
    for name, category, values in [
        ("接地极", "接地极", {"材质": "镀锌圆钢", "构件个数": 12}),
        ("户外接地母线", "接地母线", {"材质": "镀锌扁钢", "敷设方式": "埋地敷设", "图示长度": "184.6"}),
        ("配电间接地母线", "接地母线", {"材质": "镀锌扁钢", "敷设方式": "明敷", "图示长度": "52.4"}),
        ("总等电位箱", "等电位端子箱", {"规格型号": "MEB", "构件个数": 1}),
    ]:
        table.add("JD", name, "防雷接地\\" + category, "B1", "防雷接地", **values)
    for down in range(1, 5):
        table.add("JD", f"引下线{down}", "防雷接地\\避雷引下线", "RF", "防雷接地", 材质="利用结构钢筋", 图示长度="33.9", 构件个数=1)
    table.add("JD", "引下线5", "防雷接地\\避雷引下线", "RF", "防雷接地", 材质="镀锌扁钢", 图示长度="34.2", 构件个数=1)
    table.add("JD", "女儿墙避雷带", "防雷接地\\避雷网", "RF", "防雷接地", 规格型号="沿女儿墙", 材质="镀锌圆钢", 图示长度="178")
    table.add("JD", "屋面避雷网格", "防雷接地\\避雷网", "RF", "防雷接地", 规格型号="沿混凝土块", 材质="镀锌圆钢", 图示长度="96.5")
    table.add("JD", "水箱间避雷针", "防雷接地\\避雷针", "RF", "防雷接地", 针长="1.5", 构件个数=2, 安装部位="屋面")
    table.add("JD", "屋面浪涌保护器", "防雷接地\\浪涌保护器", "RF", "防雷接地", 构件个数=2, 安装部位="屋面")
    table.add("ZM", "航空障碍灯", "照明器具\\障碍标志灯", "RF", "照明", 构件套数=2, 安装部位="屋面")
    table.add("JD", "均压环", "防雷接地\\均压环", "7F", "防雷接地", 材质="利用结构钢筋", 图示长度="181.2")


def boxes(table, number, floor):
    for name, system, mounting, half in [("AL照明箱", "照明", "嵌墙暗装", 1100), ("AP动力箱", "动力", "悬挂明装", 1400),
                                         ("ALE应急照明箱", "应急", "悬挂明装", 900)]:
        table.add("PX", f"{floor}{name}", "配电箱柜\\配电箱", floor, system, 安装方式=mounting, 半周长=half,
                  构件个数=2 if system == "照明" and number > 0 else 1, 安装部位="配电间")
    if number in (2, 5):
        table.add("PX", f"{floor}教室插座箱", "配电箱柜\\插座箱", floor, "动力", 安装方式="嵌墙暗装", 半周长=500, 构件个数=4)
    if number == 0:
        table.add("PX", "B1总照明柜", "配电箱柜\\配电箱", floor, "照明", 安装方式="落地安装", 半周长=2500, 构件个数=1)


def trays(table, number, floor):
    wide, high = (400, 200) if number == 0 else (300, 100)
    table.add("QJ", f"{floor}强电桥架", "电缆桥架\\桥架", floor, "动力", 材质="喷塑钢制", 宽度=wide, 高度=high,
              宽加高=wide + high, 桥架中心线长度=metres(58, number), 支架单重="1.42", 支架个数=36, 安装部位="吊顶内")
    table.add("QJ", f"{floor}消防桥架", "电缆桥架\\桥架", floor, "应急", 材质="防火型", 宽度=100, 高度=50, 宽加高=150,
              桥架中心线长度=metres(46, number, 1), 支架单重="0.86", 支架个数=30, 安装部位="吊顶内")
    table.add("QJ", f"{floor}桥架支架", "电缆桥架\\桥架支架", floor, "动力", 材质="喷塑钢制", 支架单重="1.42",
              支架个数=36 + number % 4, 安装部位="吊顶内")
    table.add("DL", f"{floor}竖井防火封堵", "电缆\\防火堵洞", floor, "动力", 规格型号="保护管", 构件个数=4, 安装部位="管井")
    if number == 0:
        table.add("QJ", "车库电缆托盘", "电缆桥架\\托盘", floor, "动力", 材质="热浸锌钢制", 宽度=600, 高度=150, 宽加高=750,
                  桥架中心线长度="64.5", 安装部位="地下室")
    if number in (3, 6):
        table.add("QJ", f"{floor}机房线槽", "配管配线\\线槽", floor, "动力", 材质="镀锌钢制", 宽度=100, 高度=50,
                  桥架中心线长度=metres(18, number, 2), 安装部位="机房")


def lighting_circuits(table, number, floor):
    """Lighting and sockets are measured level and upright, emergency lighting as one length."""
    for name, system, material, size, section, wires, level, model in [
        ("照明", "照明", "JDG管", 20, "2.5", 3, 310, "WDZ-BYJ"),
        ("插座", "动力", "JDG管", 20, "4", 3, 260, "WDZ-BYJ"),
    ]:
        run, drop = metres(level, number, 2), metres(level // 6, number, 5)
        table.add("PG", f"{floor}{name}配管", "配管配线\\配管", floor, system, 材质=material, 公称直径=size, 敷设方式="暗敷",
                  水平配管长度=run, 竖直配管长度=drop)
        table.add("PL", f"{floor}{name}配线", "配管配线\\配线", floor, system, 线缆型号=model, 导体材质="铜芯",
                  导体截面=section, 导线根数=wires, 敷设方式="穿管敷设", 水平配管长度=run, 竖直配管长度=drop, 预留长度="6.4")
    run = metres(140, number, 3)
    table.add("PG", f"{floor}应急照明配管", "配管配线\\配管", floor, "应急", 材质="SC钢管", 公称直径=20, 敷设方式="暗敷",
              配管长度=run, 水平配管长度=run, 竖直配管长度=0)
    table.add("PL", f"{floor}应急照明配线", "配管配线\\配线", floor, "应急", 线缆型号="WDZN-BYJ", 导体材质="铜芯",
              导体截面="2.5", 导线根数=3, 敷设方式="穿管敷设", 配管长度=run, 预留长度="3.2")


def lamps(table, number, floor):
    if number == 0:
        table.add("ZM", "车库荧光灯", "照明器具\\荧光灯", floor, "照明", 规格型号="双管", 安装方式="吊链式", 构件套数=48,
                  构件个数=48, 安装部位="地下室")
        table.add("ZM", "泵房防水防尘灯", "照明器具\\工厂灯", floor, "照明", 安装方式="吊管式", 构件套数=10, 构件个数=10,
                  安装部位="水泵房")
    else:
        count = 46 + number % 5
        table.add("ZM", f"{floor}教室灯盘", "照明器具\\荧光灯", floor, "照明", 规格型号="双管", 安装方式="嵌入式", 构件套数=count,
                  构件个数=count, 安装部位="吊顶内")
        table.add("ZM", f"{floor}走廊筒灯", "照明器具\\普通灯具", floor, "照明", 安装方式="嵌入式", 构件套数=22, 构件个数=22,
                  安装部位="走廊")
    table.add("ZM", f"{floor}楼梯吸顶灯", "照明器具\\普通灯具", floor, "照明", 安装方式="吸顶式", 构件套数=6, 构件个数=6,
              安装部位="楼梯间")
    table.add("ZM", f"{floor}疏散指示灯", "照明器具\\应急灯", floor, "应急", 规格型号="疏散指示灯", 构件套数=14, 构件个数=14,
              安装部位="走廊")
    if number in (0, 4, 8):
        table.add("ZM", f"{floor}应急照明灯", "照明器具\\应急灯", floor, "应急", 规格型号="应急照明灯", 构件套数=8, 构件个数=8,
                  安装部位="走廊")


def feeders(table, number, floor):
    for name, system, section in [("照明干线", "照明", 25), ("动力干线", "动力", 50 if number < 5 else 35)]:
        table.add("DL", f"{floor}{name}", "电缆\\电力电缆", floor, system, 线缆型号="WDZ-YJY", 导体材质="铜芯",
                  导体截面=section, 芯数=5, 敷设方式="沿桥架敷设", 电缆图示长度=metres(14 + 4 * number, number), 预留长度="3.5")
    table.add("DL", f"{floor}干线电缆头", "电缆\\电缆头", floor, "动力", 连接方式="压接", 导体截面=50 if number < 5 else 35,
              电缆根数=1, 构件个数=2, 安装部位="配电间")
    table.add("MX", f"{floor}插接箱", "母线\\插接箱", floor, "动力", 额定电流=160, 构件个数=1, 安装部位="管井")


def devices(table, number, floor):
    mounted = {"安装方式": "暗装"}
    for gangs, count in [(2, 12), (3, 16)]:
        table.add("KG", f"{floor}{gangs}联开关", "开关插座\\照明开关", floor, "照明", 联数=gangs, 构件个数=count + number % 3,
                  **mounted)
    table.add("KG", f"{floor}楼梯声控开关", "开关插座\\照明开关", floor, "照明", 规格型号="声控延时", 联数=1, 构件个数=4, **mounted)
    table.add("CZ", f"{floor}空调插座", "开关插座\\插座", floor, "动力", 规格型号="单相三孔", 额定电流=16,
              构件个数=18 + number % 4, **mounted)
    table.add("CZ", f"{floor}卫生间插座", "开关插座\\插座", floor, "动力", 规格型号="防溅型", 额定电流=10, 构件个数=8, **mounted)
    if number in (1, 5):
        table.add("CZ", f"{floor}办公插座", "开关插座\\插座", floor, "动力", 规格型号="单相五孔", 额定电流=10,
                  构件个数=64, **mounted)
    table.add("JH", f"{floor}开关插座盒", "开关插座\\接线盒", floor, "照明", 规格型号="开关盒", 敷设方式="暗敷", 构件个数=62)
    table.add("JH", f"{floor}吊顶接线盒", "开关插座\\接线盒", floor, "照明", 规格型号="接线盒", 敷设方式="明敷", 构件个数=84)
    if number in (1, 2, 3, 4):
        table.add("FS", f"{floor}教室吊扇", "开关插座\\风扇", floor, "动力", 规格型号="吊扇", 构件个数=8)
    table.add("JD", f"{floor}卫生间LEB", "防雷接地\\等电位端子箱", floor, "防雷接地", 规格型号="LEB", 构件个数=4)


def flaws(table):
    conduit = {"材质": "SC钢管", "敷设方式": "暗敷", "竖直配管长度": "2.4"}
    table.add("PX", "2F AL照明箱", "配电箱柜\\配电箱", "2F", "照明", id="PX-2F-01", 安装方式="嵌墙暗装", 半周长=1100,
              构件个数=2, flaw=("构件编号", "refused: the id came before"))
    table.add("PX", "展厅配电箱", "配电箱柜\\配电盘", "1F", "照明", 安装方式="嵌墙暗装", 半周长=800, 构件个数=1,
              flaw=("类别", "refused: no such category"))
    table.add("PG", "展厅配管", "配管配线\\配管", "1F", "照明", 公称直径=20, 水平配管长度="1,250",
              flaw=("水平配管长度", "quantity missing: a separator of thousands"), **conduit)
    table.add("PG", "食堂配管", "配管配线\\配管", "1F", "动力", 公称直径="SC25", 水平配管长度="34.6",
              flaw=("公称直径", "default rule: no number"), **conduit)
    table.add("PG", "锅炉房配管", "配管配线\\配管", "B1", "动力", 公称直径="３２", 水平配管长度="21.3",
              flaw=("公称直径", "full-width digits, read as 32"), **conduit)
    table.add("DL", "食堂电缆", "电缆\\电力电缆", "1F", "动力", 线缆型号="YJV", 导体材质="铜芯", 导体截面="35mm2", 芯数=5,
              电缆图示长度="48.2", 预留长度="3.5", flaw=("导体截面", "default rule: no number"))
    table.add("DL", "展厅电缆", "电缆\\电力电缆", "1F", "动力", 线缆型号="YJV", 导体截面=25, 芯数=5, 电缆图示长度="36.9",
              预留长度="3.5", flaw=("导体材质", "default rule: attribute empty"))
    table.add("PL", "展厅配线", "配管配线\\配线", "1F", "照明", 线缆型号="WDZ-BYJ", 导体材质="铜芯", 导体截面="2.5",
              敷设方式="穿管敷设", 水平配管长度="86.4", 竖直配管长度="12", 预留长度="3.2",
              flaw=("导线根数", "quantity missing: empty"))
    table.add("ZM", "门厅吸顶灯", "照明器具\\普通灯具", "1F", "照明", 安装方式="吸顶式 ", 构件套数=12, 构件个数=12,
              flaw=("安装方式", "blanks behind the text, read without them"))
    table.add("KG", "多退开关", "开关插座\\照明开关", "4F", "照明", 联数=2, 安装方式="暗装", 构件个数=-2,
              flaw=("构件个数", "negative quantity, counted as it stands"))
    table.add("QJ", "车库大跨度桥架", "电缆桥架\\桥架", "B1", "动力", 材质="热浸锌钢制", 宽度=1600, 高度=200, 宽加高=1800,
              桥架中心线长度="42.6", flaw=("宽+高(mm)", "default rule: no rule for the size"))
