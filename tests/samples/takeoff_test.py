"""The sample take-off tables: made by their script, written in the words of the catalogue, priced as they should be."""

import csv
import pathlib
import sys
import unittest
from decimal import Decimal

ROOT = pathlib.Path(__file__).resolve().parents[2]
SAMPLES = ROOT / "samples"
sys.path[:0] = [str(SAMPLES / "takeoff"), str(ROOT / "tests" / "rules")]

import independent_bill  # noqa: E402
import make  # noqa: E402

FIXED = ["构件编号", "具体构件", "类别", "楼层", "系统"]
CATALOGUE = independent_bill.Catalogue(ROOT / "data")


def flaws():
    """The flaw of each line that has one, by table."""
    found = {name: {} for name in make.TABLES}
    with open(SAMPLES / "takeoff" / "flaws.csv", encoding="utf-8", newline="") as file:
        for row in csv.DictReader(file):
            found[row["table"]][int(row["line"])] = row
    return found


def names_in(formula):
    found = []
    independent_bill.Expression(formula, lambda name: found.append(name) or Decimal(1)).result()
    return found


class TakeoffTables(unittest.TestCase):
    def setUp(self):
        self.tables = {name: independent_bill.read_table(SAMPLES / name) for name in make.TABLES}

    def pricing(self, table):
        rules = table.replace("Takeoff.csv", "Rules.xml")
        return independent_bill.price_table(SAMPLES / rules, SAMPLES / table, ROOT / "data")

    def test_are_what_the_script_makes(self):
        for path, text in make.files().items():
            self.assertEqual(path.read_bytes(), text.encode("utf-8"), path.name)

    def test_have_some_300_components_each(self):
        for name, (_, rows) in self.tables.items():
            self.assertTrue(280 <= len(rows) <= 350, name)

    def test_every_column_is_a_name_of_the_catalogue(self):
        attributes = {name for known in CATALOGUE.attributes.values() for name in known} | set(CATALOGUE.units)
        codes = {code for known in CATALOGUE.attributes.values() for code, _ in known.values()}
        codes |= set(CATALOGUE.shared_codes.values())
        quantities = set(CATALOGUE.rules)
        for rule in CATALOGUE.rules.values():
            quantities.update(names_in(rule))
        for name, (header, _) in self.tables.items():
            self.assertEqual(header[: len(FIXED)], FIXED, name)
            for column in header[len(FIXED):]:
                self.assertIn(column, attributes | codes | quantities, name)

    def test_every_value_is_on_the_list_of_its_attribute(self):
        for table, (header, rows) in self.tables.items():
            for line, row in rows:
                if line in flaws()[table]:
                    continue
                cells = dict(zip(header, row))
                category = cells["类别"]
                self.assertIn(category, CATALOGUE.categories, line)
                for name in CATALOGUE.attributes[category]:
                    code = CATALOGUE.code(category, name)
                    value = cells.get(name) or cells.get(code) or ""
                    listed = CATALOGUE.listed(category, name)
                    if value and listed:
                        self.assertIn(value, listed, f"{table} line {line} {name}")

    def test_most_components_get_a_rule_of_their_own_and_a_few_the_default(self):
        for table in make.TABLES:
            components, priced, default, refused = self.pricing(table).totals()
            self.assertEqual(components, priced + default + refused, table)
            self.assertGreater(priced, components * 0.85, table)
            self.assertGreater(default, 10, table)
            self.assertEqual(refused, 2, table)
            row = f"| `{table}` | {components} | {priced} | {default} | {refused} |"
            self.assertIn(row, (SAMPLES / "README.md").read_text(encoding="utf-8"))

    def test_every_flaw_is_found_and_nothing_else_lacks_a_quantity(self):
        for table, found in flaws().items():
            for line, id_, outcome, why, _, said, notes in self.pricing(table).results:
                missing = any(text.endswith("=?") for text in said)
                if line not in found:
                    self.assertFalse(missing or outcome == "refused", f"{table} line {line}")
                    continue
                self.assertEqual(id_, found[line]["id"])
                told, column, where = found[line]["told"], found[line]["column"], f"{table} line {line}: {notes}"
                name = {"AM_NominalDiameter": "公称直径"}.get(column, column)
                if told.startswith("refused"):
                    self.assertEqual(outcome, "refused", where)
                    self.assertIn("id of line" if "id" in told else "unknown category", why, where)
                elif told.startswith("default rule"):
                    self.assertEqual(outcome, "default", where)
                    if "no number" in told:
                        self.assertTrue(any(n.startswith(name) and n.endswith("is no number") for n in notes), where)
                    if "empty" in told:
                        self.assertIn(f"{name}: empty", notes, where)
                elif told.startswith("quantity missing"):
                    self.assertTrue(missing, where)
                    self.assertTrue(any(n.startswith("quantity missing") and name in n for n in notes), where)
                    self.assertEqual("alone" in told, not all(text.endswith("=?") for text in said), where)
                elif told.startswith("negative"):
                    self.assertTrue(any("is negative" in n for n in notes), where)
                elif told.startswith("goes before"):
                    self.assertEqual(said[0], "031001006010=43.6", where)
                else:
                    self.assertEqual(outcome, "priced", where)
                    self.assertTrue(any(n.startswith(name) and "counts as" in n for n in notes), where)

    def test_the_description_lists_every_flaw(self):
        description = (SAMPLES / "README.md").read_text(encoding="utf-8")
        for table, found in flaws().items():
            for line, flaw in found.items():
                self.assertIn(f"| `{table}` | {line} | {flaw['id']} | ", description)

    def test_some_quantities_as_worked_out_by_hand(self):
        """One of each kind of unit and formula, from the cells of the tables."""
        expected = {
            "PlumbingTakeoff.csv": {
                # 38.38 + 39.14
                "031001007009": "77.52",
                # 62 brackets of 3.24 kg; 10, 11 or 12 of 1.86 kg on eight storeys: 90 - 1
                "031002001001": "366.42",
                # 4.5 + 7 × 3.9
                "031001003014": "31.80",
            },
            "ElectricalTakeoff.csv": {
                # 184.6 × 1.039
                "030409002001": "191.80",
                # 4 × 33.9 × 1.039
                "030409003002": "140.89",
                # 46 + number % 5 on storeys 1 to 8
                "030412005004": "384",
            },
            "HvacTakeoff.csv": {
                # 8 × 3.9 × 2 × (1 + 0.5)
                "030702001066": "93.60",
                # 8 × 2.24 × 0.2
                "030703019002": "3.58",
                # the row of two cooling towers
                "030113017004": "2",
            },
        }
        for table, quantities in expected.items():
            rows = independent_bill.bill_rows(self.pricing(table))
            header = next(rows)
            got = {row[1]: row[header.index("quantity")] for row in rows if row[0] == "bill"}
            for number, amount in quantities.items():
                self.assertEqual(got[number], amount, f"{table} {number}")


class IndependentBill(unittest.TestCase):
    """The script that the program's bill is compared with has to be right itself."""

    def component(self, category="给排水\\管道\\给水管", **cells):
        cells = {"构件编号": "1", "类别": category, **cells}
        return independent_bill.Component(list(cells), list(cells.values()), CATALOGUE)

    def test_reads_numbers_as_decided(self):
        for text, value in [("65", "65"), (" 65.0 ", "65"), ("６５", "65"), ("-3.5", "-3.5"), (".5", "0.5")]:
            self.assertEqual(independent_bill.number(text), Decimal(value), text)
        for text in ["DN65", "65mm", "1,250", "1e3", "5²", "", "约12", "-"]:
            self.assertIsNone(independent_bill.number(text), text)

    def test_reads_a_unit_only_where_the_list_has_it(self):
        self.assertEqual(independent_bill.number_as_listed("DN50", ["DN15", "DN20"]), 50)
        self.assertEqual(independent_bill.number_as_listed("50 mm", ["15mm"]), 50)
        self.assertIsNone(independent_bill.number_as_listed("De50", ["DN15"]))
        self.assertIsNone(independent_bill.number_as_listed("DN50", ["15", "20"]))

    def test_works_out_formulas_in_metres(self):
        component = self.component(管外径="100", 水平管长度="4", 立管长度="6")
        self.assertEqual(independent_bill.quantity("3.1416×管外径×管道长度", component), Decimal("3.1416"))
        duct = self.component("暖通\\风管\\新风管", AM_LongEdge="500", 短边="250", 保温厚度="25", 风管中心线长度="10")
        # 2 × (0.5 + 0.25 + 2 × 0.025825) × 0.025825 × 10
        self.assertEqual(independent_bill.quantity("风管绝热体积", duct), Decimal("0.414052225"))
        self.assertEqual(independent_bill.quantity("-2+(1+2)×4÷3", component), 2)
        self.assertEqual(independent_bill.quantity("管道长度", self.component(管道长度="9", 水平管长度="1")), 9)
        for formula in ["", "2+", "(1", "1÷0", "壁厚", "1 2"]:
            with self.assertRaises(independent_bill.Unknown, msg=formula):
                independent_bill.quantity(formula, component)

    def test_rounds_once_half_away_from_zero_and_then_divides(self):
        for total, unit, text in [("123.455", "m", "123.46"), ("123.456", "10m", "12.346"), ("25", "10套", "2.5"),
                                  ("0.0005", "t", "0.001"), ("2.5", "个", "3"), ("-2.5", "个", "-3"),
                                  ("1.005", "m²", "1.01"), ("148.8", "100kg", "1.4880")]:
            self.assertEqual(independent_bill.written(Decimal(total), unit), text, unit)

    def test_ranges_hold_within_their_bounds(self):
        for operators, holding in [(("＞", "＜"), ["65"]), (("≥", "≤"), ["50", "65", "80.0"]), (("＞", "≤"), ["65", "80.0"]),
                                   (("≥", "＜"), ["50", "65"]), (("＜", "≤"), []), (("＞", "＞"), [])]:
            condition = independent_bill.ElementTree.Element(
                "condition", strCFType="公称直径", bEqual="false", strRangeoperator1=operators[0], strRange1="50",
                strRangeoperator2=operators[1], strRange2="80")
            got = [size for size in ["49.99", "50", "65", "80.0", "80.01", "DN65"]
                   if independent_bill.holds(condition, self.component(公称直径=size))]
            self.assertEqual(got, holding, operators)

    def test_no_condition_holds_for_an_empty_cell_or_an_unknown_operator(self):
        def condition(**attributes):
            return independent_bill.ElementTree.Element("condition", strCFType="材质", **attributes)

        component = self.component(材质="PPR管")
        value = {"bEqual": "true", "strValue": "PPR管"}
        self.assertTrue(independent_bill.holds(condition(strEqualoperator="＝", **value), component))
        self.assertFalse(independent_bill.holds(condition(strEqualoperator="≠", **value), component))
        self.assertFalse(independent_bill.holds(condition(strEqualoperator="=", **value), component))
        for cells in [{"材质": ""}, {"材质": "  "}, {}]:
            for operator in "＝≠":
                self.assertFalse(
                    independent_bill.holds(condition(strEqualoperator=operator, **value), self.component(**cells)))
        self.assertTrue(
            independent_bill.holds(condition(strEqualoperator="＝", **value), self.component(AM_Material=" ＰＰＲ管")))


if __name__ == "__main__":
    unittest.main()
