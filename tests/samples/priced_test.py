#!/usr/bin/env python3
"""The bills that the program makes of the samples, against those of a script that shares no code with it.

    priced_test.py PROGRAM
"""

import collections
import csv
import json
import os
import pathlib
import re
import shutil
import sqlite3
import subprocess
import sys
import tempfile
import unittest
from decimal import Decimal

ROOT = pathlib.Path(__file__).resolve().parents[2]
SAMPLES = ROOT / "samples"
sys.path[:0] = [str(ROOT / "tests" / "rules")]

import independent_bill  # noqa: E402

PROGRAM = ""
TABLES = ["PlumbingTakeoff.csv", "ElectricalTakeoff.csv", "HvacTakeoff.csv"]

# Attributes that the samples name by their codes.
CODES = {"AM_NominalDiameter": "公称直径", "AM_LongEdge": "长边(mm)", "AM_Diameter": "直径(mm)"}

# What the program says where samples/takeoff/flaws.csv says that something is to be told: words that the reason has,
# {} being the attribute.
WORDS = {
    "refused: the id came before": ["构件编号重复"],
    "refused: no such category": ["没有这个类别"],
    "quantity missing: no number": ["缺工程量：“{}”的值不是数字"],
    "quantity missing: a separator of thousands": ["缺工程量：“{}”的值不是数字"],
    "quantity missing: empty": ["缺工程量：“{}”没有值"],
    "quantity missing: empty, of the insulation alone": ["缺工程量：“{}”没有值"],
    "quantity missing: no number, of the insulation alone": ["缺工程量：“{}”的值不是数字"],
    "default rule: attribute empty": ["套默认规则", "{}", "构件的值是空的"],
    "default rule: no number": ["套默认规则", "{} 的值“", "不在值列表中"],
    "default rule: no rule for the size": ["套默认规则", "{}", "构件的值是"],
    "full-width digits, read as 65": ["{} 的值“６５”不在值列表中"],
    "full-width digits, read as 32": ["{} 的值“３２”不在值列表中"],
    "full-width digits, read as 80": ["{} 的值“８０”不在值列表中"],
    "blanks behind the text, read without them": ["{} 的值“", "前后有空格"],
    "negative quantity, counted as it stands": ["{} 的值 -", "是负数，按原值计"],
    "goes before 水平管长度+立管长度": ["{} 的值 43.6 代替它的计算规则"],
}


class PricedSamples(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(cls.folder.cleanup)
        cls.path = pathlib.Path(cls.folder.name)
        cls.project = cls.path / "project"
        cls.run_program("init", str(cls.project))

    @classmethod
    def run_program(cls, *arguments, status=0):
        environment = {k: v for k, v in os.environ.items() if k != "KTQDDE_PROJECT"}
        done = subprocess.run([PROGRAM, *arguments], capture_output=True, encoding="utf-8", env=environment)
        assert done.returncode == status, f"{arguments}: {done.returncode} {done.stderr}"
        return done

    @classmethod
    def apply(cls, table, *options):
        rules = str(SAMPLES / table.replace("Takeoff.csv", "Rules.xml"))
        return cls.run_program("--project", str(cls.project), "apply", str(SAMPLES / table), "--config", rules, *options)

    @classmethod
    def independent(cls, table):
        rules = SAMPLES / table.replace("Takeoff.csv", "Rules.xml")
        return independent_bill.price_table(rules, SAMPLES / table, ROOT / "data")

    def test_bills_are_those_of_the_independent_script_row_by_row(self):
        for table in TABLES:
            out = self.path / f"{table}.bill.csv"
            self.apply(table, "-o", str(out))
            with open(out, encoding="utf-8-sig", newline="") as file:
                rows = list(csv.DictReader(file))
            expected = list(independent_bill.bill_rows(self.independent(table)))[1:]
            self.assertGreater(len(expected), 100, table)
            self.assertEqual(len(rows), len(expected), table)
            serial = 0
            for row, (kind, number, name, features, unit, amount, components, missing, repeated) in zip(rows, expected):
                where = f"{table} {number}"
                if kind == "bill":
                    serial += 1
                self.assertEqual(row["序号"], str(serial) if kind == "bill" else "", where)
                self.assertEqual(row["类型"], {"bill": "清单", "quota": "定额"}[kind], where)
                got = [row["项目编码"], row["项目名称"], row["项目特征描述"], row["计量单位"]]
                self.assertEqual(got, [number, name, features, unit], where)
                self.assertEqual([row["构件数"], row["缺工程量的构件数"]], [str(components), str(missing)], where)
                self.assertEqual("编码重复" in row["备注"], bool(repeated), where)
                if amount.startswith("-"):
                    self.assertEqual(Decimal(row["工程量"]), Decimal(amount), where)
                else:
                    self.assertEqual(row["工程量"], amount, where)

    def test_every_flaw_is_told(self):
        with open(SAMPLES / "takeoff" / "flaws.csv", encoding="utf-8", newline="") as file:
            flaws = list(csv.DictReader(file))
        self.assertGreater(len(flaws), 30)
        for table in TABLES:
            out = self.path / f"{table}.json"
            self.apply(table, "-o", str(out))
            bill = json.loads(out.read_text(encoding="utf-8"))
            told = {entry["line"]: entry for entry in bill["told"]}
            totals = bill["totals"]
            self.assertEqual(tuple(totals.values()), self.independent(table).totals())
            self.assertEqual(totals["components"], totals["priced"] + totals["default"] + totals["refused"])
            outcomes = collections.Counter(entry["outcome"] for entry in bill["told"])
            self.assertEqual(outcomes["refused"], totals["refused"])
            self.assertEqual(outcomes["default"], totals["default"])
            lines = {int(flaw["line"]) for flaw in flaws if flaw["table"] == table}
            for flaw in (flaw for flaw in flaws if flaw["table"] == table):
                entry = told[int(flaw["line"])]
                self.assertEqual(entry["id"], flaw["id"])
                name = {"AM_NominalDiameter": "公称直径"}.get(flaw["column"], flaw["column"])
                text = "；".join(entry["told"])
                for words in WORDS[flaw["told"]]:
                    self.assertIn(words.replace("{}", name), text, flaw)
            for line, entry in told.items():
                in_place = all(text.endswith("代替它的计算规则") for text in entry["told"])
                self.assertTrue(line in lines or entry["outcome"] == "default" or in_place, entry)

    @unittest.skipUnless(shutil.which("soffice"), "no spreadsheet program")
    def test_workbook_opens_in_a_spreadsheet_and_its_components_sum_up_to_the_bill(self):
        out = self.path / "bill.xlsx"
        self.apply(TABLES[0], "-o", str(out))
        every_sheet = "csv:Text - txt - csv (StarCalc):44,34,76,1,,0,false,true,false,false,false,-1"
        profile = (self.path / "profile").as_uri()
        subprocess.run(["soffice", f"-env:UserInstallation={profile}", "--headless", "--convert-to", every_sheet,
                        "--outdir", str(self.path), str(out)], check=True, capture_output=True)
        sheets = {}
        for name in ["工程量清单", "构件", "未套价及核对"]:
            with open(self.path / f"bill-{name}.csv", encoding="utf-8", newline="") as file:
                sheets[name] = list(csv.DictReader(file))
        expected = list(independent_bill.bill_rows(self.independent(TABLES[0])))[1:]
        got = [(row["项目编码"], row["项目特征描述"], row["工程量"] and Decimal(row["工程量"]))
               for row in sheets["工程量清单"]]
        self.assertEqual(got, [(row[1], row[3], row[5] and Decimal(row[5])) for row in expected])
        sums = collections.defaultdict(Decimal)
        for row in sheets["构件"]:
            sums[row["清单序号"]] += Decimal(row["工程量"] or 0)
        bill = [row for row in sheets["工程量清单"] if row["序号"]]
        self.assertEqual(len(bill), len(sums) - ("" in sums))
        for row in bill:
            self.assertEqual(Decimal(independent_bill.written(sums[row["序号"]], row["计量单位"])),
                             Decimal(row["工程量"]), row)
        ids = {row["行"] for row in sheets["构件"]}
        self.assertEqual(len(ids), self.independent(TABLES[0]).totals()[0])
        outcomes = collections.Counter(row["结果"] for row in sheets["未套价及核对"])
        self.assertEqual((outcomes["默认规则"], outcomes["未套价"]), self.independent(TABLES[0]).totals()[2:])

    def test_divided_bill_sums_up_to_the_whole(self):
        out = self.path / "by.csv"
        self.apply(TABLES[0], "-o", str(out), "--by", "楼层")
        with open(out, encoding="utf-8-sig", newline="") as file:
            rows = list(csv.DictReader(file))
        count = collections.Counter()
        for row in rows:
            if row["类型"] == "清单":
                count[row["项目编码"]] += int(row["构件数"])
        self.assertGreater(len({row["楼层"] for row in rows}), 5)
        expected = collections.Counter()
        for row in list(independent_bill.bill_rows(self.independent(TABLES[0])))[1:]:
            if row[0] == "bill":
                expected[row[1]] += row[6]
        self.assertEqual(count, expected)

    def load(self, table, query, database):
        """The take-off table as it stands, headings told by attributes and what no cell gives left empty."""
        wanted = re.findall(r'"((?:[^"]|"")*)" text', query.split("\nWITH ")[0])
        with open(SAMPLES / table, encoding="utf-8-sig", newline="") as file:
            rows = list(csv.reader(file))
        headings = [heading if heading in wanted else CODES.get(heading, re.sub(r"\(mm\)$", "", heading))
                    for heading in rows[0]]
        headings += [name for name in wanted if name not in headings]
        columns = ", ".join(f'"{heading}" text' for heading in headings)
        database.execute(f"CREATE TABLE components ({columns})")
        places = ", ".join("?" * len(headings))
        seen = set()
        for row in rows[1:]:
            if row and row[headings.index("构件编号")].strip() not in seen:  # of two with one id the first counts
                seen.add(row[headings.index("构件编号")].strip())
                cells = row + [None] * (len(headings) - len(row))
                database.execute(f"INSERT INTO components VALUES ({places})", cells)
        return seen

    def test_exported_query_gives_the_components_of_every_item_of_the_bill(self):
        for table in TABLES:
            rules = str(SAMPLES / table.replace("Takeoff.csv", "Rules.xml"))
            query = self.run_program("--project", str(self.project), "export", "rules-sql", "--dialect", "sqlite",
                                     "--config", rules).stdout
            database = sqlite3.connect(":memory:")
            ids = self.load(table, query, database)
            cursor = database.execute(query)
            headings = [column[0] for column in cursor.description]
            answer = [dict(zip(headings, row)) for row in cursor]
            self.assertEqual({row["构件编号"].strip() for row in answer}, ids)
            count = collections.Counter((row["所属清单"] or "", row["编码"]) for row in answer if row["编码"])
            expected = collections.Counter()
            bill = ""
            for kind, number, *_, components, _, _ in list(independent_bill.bill_rows(self.independent(table)))[1:]:
                bill = number if kind == "bill" else bill
                expected["" if kind == "bill" else bill, number] += components
            self.assertGreater(len(expected), 100, table)
            self.assertEqual(count, expected, table)


if __name__ == "__main__":
    PROGRAM = sys.argv.pop(1)
    unittest.main()
