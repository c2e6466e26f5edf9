#!/usr/bin/env python3
"""Prices a take-off table by a rule file, slowly and plainly, for comparison with what the program gives.

    independent_bill.py RULES.xml TABLE.csv [--data DIR] [--what bill|components|totals]
                        [--bill-library CODE] [--quota-library CODE]

It shares no code with the program: rules are tried one after the other, formulas are worked out anew for every
component, and all numbers are decimal. Bill mode only: bill items with their quota items below them.

bill        the bill, sorted: quota items stand below their bill row
components  what became of each row of the table, with rule, quantities and whatever should be told
totals      components read = priced + on the default rule + refused

Rows of one specialty are one by number, name and unit; their features are what all their rules say.
"""

import argparse
import collections
import csv
import decimal
import pathlib
import re
import sys
import unicodedata
import xml.etree.ElementTree as ElementTree
from decimal import Decimal

ID, NAME, CATEGORY = "构件编号", "具体构件", "类别"
OWN_NAME = "具体构件"
BLANKS = " \t\r\n\v\f\u00a0\u3000"
QUOTIENT = Decimal(1).scaleb(-40)

# Sums and products of quantities stay exact; only a quotient without end is cut.
decimal.getcontext().prec = 400


class Unknown(Exception):
    """There is no quantity, and this is why."""


# Texts and numbers ---------------------------------------------------------------------------------------------


def trimmed(text):
    return text.strip(BLANKS)


def normalised(text):
    return trimmed(unicodedata.normalize("NFKC", trimmed(text)))


def half_width(text):
    """Full-width forms as the plain ones, and nothing else: a raised 2 is no digit."""
    return "".join(chr(ord(c) - 0xFEE0) if "\uff01" <= c <= "\uff5e" else c for c in text)


def number(text):
    """The number that a text is, or None. No exponent, no separator of thousands, no unit."""
    text = half_width(trimmed(text))
    if re.fullmatch(r"[+-]?([0-9]+\.?[0-9]*|\.[0-9]+)", text):
        return Decimal(text)
    return None


def around_number(text):
    """The texts before and behind the one number of a text, or None when there is none or several."""
    found = list(re.finditer(r"[0-9]+\.?[0-9]*|\.[0-9]+", half_width(trimmed(text))))
    if len(found) != 1:
        return None
    text, number_at = half_width(trimmed(text)), found[0]
    return text[: number_at.start()], number_at.group(), text[number_at.end() :]


def squeezed(text):
    return "".join(c for c in text if c not in BLANKS).lower()


def number_as_listed(text, listed):
    """As `number`, or written the way in which the attribute's value list writes numbers: DN50 beside DN15."""
    value = number(text)
    if value is not None:
        return value
    parts = around_number(text)
    if parts is None:
        return None
    before, digits, behind = parts
    sign = ""
    if before in ("-", "+"):
        before, sign = "", before
    for entry in listed:
        pattern = around_number(entry)
        if number(entry) is None and pattern is not None:
            if (squeezed(before), squeezed(behind)) == (squeezed(pattern[0]), squeezed(pattern[2])):
                return Decimal(sign + digits)
    return None


# The catalogue ---------------------------------------------------------------------------------------------------


def read_tsv(path):
    """The rows of a table of the catalogue. A single hyphen is an empty field."""
    lines = [line for line in path.read_text(encoding="utf-8").splitlines() if line and not line.startswith("#")]
    header = lines[0].split("\t")
    return [dict(zip(header, ["" if cell == "-" else cell for cell in line.split("\t")])) for line in lines[1:]]


class Catalogue:
    def __init__(self, folder):
        self.categories = {
            "\\".join((row["specialty"], row["big_category"], row["name"]))
            for row in read_tsv(folder / "small_categories.tsv")
        }
        self.rules = {row["item"]: row["rule"] for row in read_tsv(folder / "calculation_rules.tsv")}
        self.units = {row["name"]: row["unit"] for row in read_tsv(folder / "attribute_units.tsv")}
        self.shared_codes = {row["name"]: row["code"] for row in read_tsv(folder / "attribute_units.tsv")}
        self.attributes = {}
        for row in read_tsv(folder / "attributes.tsv"):
            self.attributes.setdefault(row["category"], {})[row["display_name"]] = (row["code"], row["extra"])
        self.cells = {row["code"]: row for row in read_tsv(folder / "cell_data.tsv")}
        self.drop_lists = read_tsv(folder / "drop_lists.tsv")
        libraries = read_tsv(folder / "libraries.tsv")
        self.bill_library = next(row["code"] for row in libraries if row["role"] == "qd")
        self.quota_library = next(row["code"] for row in libraries if row["role"] == "qd_de")

    def code(self, category, name):
        """The attribute's code in that category; that of a name that only expressions or ranges have otherwise."""
        if name in self.attributes.get(category, {}):
            return self.attributes[category][name][0]
        return self.shared_codes.get(name, "")

    def other_headers(self, category, name):
        """By what a column may go beside the name: the code, and the name with its unit."""
        unit = self.units.get(name)
        return [self.code(category, name)] + ([f"{name}({unit})"] if unit else [])

    def listed(self, category, name):
        """The values that the attribute's list offers."""
        cell = self.cells.get(self.code(category, name))
        if cell is None or cell["kind"] == "0":
            return []
        if cell["kind"] == "1":
            return cell["value_list"].split("|")
        lists = [row for row in self.drop_lists if row["code"] == cell["code"]]
        extra = self.attributes.get(category, {}).get(name, ("", ""))[1]
        chosen = [row for row in lists if row["name"] == extra] or lists[:1]
        return chosen[0]["value_list"].split("|") if chosen else []


# Rules -------------------------------------------------------------------------------------------------------------


def leading_number(text):
    found = re.match(r"\s*([+-]?[0-9]+)", text)
    return int(found.group(1)) if found else 0


def children(element, name):
    """The children of the first child of that name."""
    container = element.find(name)
    return [] if container is None else list(container)


def read_rules(path, catalogue):
    """The rules of each category that the catalogue knows, in the order of the file."""
    rules = {category: None for category in catalogue.categories}
    seen = set()
    for specialty in ElementTree.parse(path).getroot():
        if specialty.get("name", "") in seen:
            continue
        seen.add(specialty.get("name", ""))
        for big in specialty:
            for small in big:
                category = "\\".join(e.get("name", "") for e in (specialty, big, small))
                if category in rules and rules[category] is None:
                    rules[category] = children(small, "Config")
    for category in rules:
        rules[category] = rules[category] or []
        if not any(is_default(rule) for rule in rules[category]):
            rules[category].append(ElementTree.Element("config", id="1", bDefault="1"))
    return rules


def is_default(rule):
    return leading_number(rule.get("bDefault", "")) != 0


# Matching ----------------------------------------------------------------------------------------------------------


class Component:
    """One row of the table. Cells are found by header; the first of two equal headers counts."""

    def __init__(self, header, row, catalogue):
        self.catalogue = catalogue
        self.cells = {}
        for column, cell in zip(header, row):
            self.cells.setdefault(normalised(column), cell)
        self.id = trimmed(self.cells.get(ID, ""))
        self.name = self.cells.get(NAME, "")
        self.category = trimmed(self.cells.get(CATEGORY, ""))
        self.notes = []

    def column(self, name):
        return self.cells.get(normalised(name)) if name else None

    def attribute(self, name):
        """The cell that a condition looks at, or None when the table has no column for it."""
        if trimmed(name) == OWN_NAME:
            return self.name
        columns = map(self.column, [name] + self.catalogue.other_headers(self.category, trimmed(name)))
        return next((cell for cell in columns if cell is not None), None)

    def note(self, text):
        if text not in self.notes:
            self.notes.append(text)


def same(cell, value):
    """Whether two texts count as equal, and whether that took more than comparing them."""
    if trimmed(cell) == trimmed(value):
        return True, cell != trimmed(cell)
    a, b = number(cell), number(value)
    if a is not None and b is not None and a == b:
        return True, True
    return normalised(cell) == normalised(value), True


def in_range(condition, value, listed):
    bounds = [
        ("strRange1", "strRangeoperator1", {"＞": lambda v, b: v > b, "≥": lambda v, b: v >= b}),
        ("strRange2", "strRangeoperator2", {"＜": lambda v, b: v < b, "≤": lambda v, b: v <= b}),
    ]
    for bound, operator, known in bounds:
        text = condition.get(bound, "")
        if text == "":
            continue
        limit, compare = number_as_listed(text, listed), known.get(condition.get(operator, ""))
        if limit is None or compare is None or not compare(value, limit):
            return False
    return True


def holds(condition, component):
    name = trimmed(condition.get("strCFType", ""))
    if not name:
        return False
    cell = component.attribute(name)
    if cell is None or trimmed(cell) == "":
        component.note(f"{name}: empty")
        return False
    if condition.get("bEqual", "") == "true":
        value, operator = condition.get("strValue", ""), condition.get("strEqualoperator", "")
        equal, by_form = same(cell, value)
        if equal and by_form:
            component.note(f"{name}: {cell!r} counts as {value}")
        return {"＝": equal, "≠": not equal}.get(operator, False)
    listed = component.catalogue.listed(component.category, name)
    value = number_as_listed(cell, listed)
    if value is None:
        component.note(f"{name}: {cell!r} is no number")
        return False
    if half_width(cell) != cell:
        component.note(f"{name}: {cell!r} counts as {value}")
    return in_range(condition, value, listed)


def rule_for(rules, component):
    """The rule and its place in the list, from 1."""
    for place, rule in enumerate(rules, 1):
        if not is_default(rule) and all(holds(condition, component) for condition in children(rule, "Condition")):
            return place, rule
    for place, rule in enumerate(rules, 1):
        if is_default(rule):
            return place, rule
    return 0, None


# Quantities --------------------------------------------------------------------------------------------------------

TOKEN = re.compile(r"\s*(?:([0-9]+\.?[0-9]*|\.[0-9]+)|([^\W\d]\w*)|(.))")


class Expression:
    """Works out one formula while it reads it."""

    def __init__(self, text, value_of):
        text = half_width(text).replace("×", "*").replace("÷", "/")
        self.tokens = [found.groups() for found in TOKEN.finditer(text.strip(BLANKS))]
        self.value_of = value_of
        self.at = 0

    def result(self):
        if not self.tokens:
            raise Unknown("no formula")
        value = self.sum()
        if self.at < len(self.tokens):
            raise Unknown("no formula")
        return value

    def sign(self, signs):
        if self.at < len(self.tokens) and (self.tokens[self.at][2] or " ") in signs:
            self.at += 1
            return self.tokens[self.at - 1][2]
        return None

    def sum(self):
        value = self.product()
        while (sign := self.sign("+-")) is not None:
            value = value + self.product() if sign == "+" else value - self.product()
        return value

    def product(self):
        value = self.operand()
        while (sign := self.sign("*/")) is not None:
            factor = self.operand()
            if sign == "*":
                value = value * factor
            elif factor == 0:
                raise Unknown("division by zero")
            else:
                value = (value / factor).quantize(QUOTIENT, rounding=decimal.ROUND_DOWN)
        return value

    def operand(self):
        if (sign := self.sign("+-")) is not None:
            return self.operand() if sign == "+" else -self.operand()
        if self.sign("("):
            value = self.sum()
            if not self.sign(")"):
                raise Unknown("no formula")
            return value
        if self.at == len(self.tokens):
            raise Unknown("no formula")
        digits, name, _ = self.tokens[self.at]
        self.at += 1
        if digits:
            return Decimal(digits)
        if name:
            return self.value_of(name)
        raise Unknown("no formula")


def quantity(formula, component, within=()):
    """The formula's value for a component, in metres, pieces and so on."""
    catalogue = component.catalogue

    def value_of(name):
        is_item = name in catalogue.rules
        sources = [name] if is_item else [name] + catalogue.other_headers(component.category, name)
        cell = next((c for c in map(component.column, sources) if c is not None and trimmed(c)), None)
        if cell is None and is_item:
            if name in within:
                raise Unknown(f"{name} comes to itself")
            return quantity(catalogue.rules[name], component, within + (name,))
        if cell is None:
            raise Unknown(f"{name} has no value")
        value = number_as_listed(cell, [] if is_item else catalogue.listed(component.category, name))
        if value is None:
            raise Unknown(f"{name}: {cell!r} is no number")
        if value < 0:
            component.note(f"{name}: {cell} is negative")
        return value / 1000 if catalogue.units.get(name) == "mm" else value

    return Expression(formula, value_of).result()


# The bill ------------------------------------------------------------------------------------------------------------


def unit_parts(unit):
    """Multiple and digits behind the point."""
    found = re.match(r"[0-9]+", trimmed(unit))
    multiple = max(1, int(found.group())) if found else 1
    base = normalised(trimmed(unit)[found.end() if found else 0 :]).lower()
    by_base = {3: "t 吨 km 千米 公里", 2: "m 米 m2 平方米 m3 立方米 kg 千克 公斤"}
    digits = {name: count for count, names in by_base.items() for name in names.split()}
    return multiple, digits.get(base, 0)


def written(total, unit):
    """The sum in the unit: rounded once, in the base unit, and divided by the multiple after that."""
    multiple, digits = unit_parts(unit)
    rounded = total.quantize(Decimal(1).scaleb(-digits), rounding=decimal.ROUND_HALF_UP)
    more = len(str(multiple)) - 1 if re.fullmatch("10*", str(multiple)) else 40
    value = rounded / multiple
    text = f"{value:.{digits + more}f}" if more < 40 else f"{value.normalize():f}"
    return text


def feature_text(condition):
    if condition.get("bEqual", "") == "true":
        return ("≠" if condition.get("strEqualoperator") == "≠" else "") + condition.get("strValue", "")
    return "，".join(
        condition.get(f"strRangeoperator{i}", "") + condition.get(f"strRange{i}", "")
        for i in (1, 2) if condition.get(f"strRange{i}", "") != ""
    )


def conditions_said(rule):
    """What each condition of the rule says, as pairs of attribute and text. A default rule says nothing."""
    if is_default(rule):
        return []
    said = [(trimmed(c.get("strCFType", "")), feature_text(c)) for c in children(rule, "Condition")]
    return [(name, text) for name, text in said if text]


def feature_lines(said):
    """The description of features: a numbered line for each attribute."""
    joined = {}
    for name, text in said:
        joined.setdefault(name, []).append(text)
    return "\n".join(f"{i}.{name}：{'，'.join(texts)}" for i, (name, texts) in enumerate(joined.items(), 1))


class Row:
    def __init__(self):
        self.total = Decimal(0)
        self.components = 0
        self.missing = 0
        self.said = None
        self.quotas = collections.defaultdict(Row)

    def share(self, said):
        """Keeps what all rules of the row say."""
        self.said = said if self.said is None else [one for one in self.said if one in said]

    def add(self, value):
        self.components += 1
        if value is None:
            self.missing += 1
        else:
            self.total += value


class Pricing:
    def __init__(self, rules, catalogue, bill_library, quota_library):
        self.rules = rules
        self.catalogue = catalogue
        self.libraries = (bill_library.lower(), quota_library.lower())
        self.first_line = {}
        self.rows = collections.defaultdict(Row)
        self.results = []

    def price(self, line, component):
        outcome, why, place, said = self._outcome(line, component)
        self.results.append((line, component.id, outcome, why, place, said, list(component.notes)))

    def _outcome(self, line, component):
        if component.id and component.id in self.first_line:
            return "refused", f"id of line {self.first_line[component.id]}", "", []
        self.first_line[component.id] = line
        if component.category not in self.rules:
            return "refused", "unknown category", "", []
        place, rule = rule_for(self.rules[component.category], component)
        if rule is None:
            return "refused", "no rule", "", []
        bills = children(rule, "Qd")
        used = [bill for bill in bills if bill.get("strQdCode", "").lower() == self.libraries[0]]
        outcome = "default" if is_default(rule) else "priced"
        if not used and outcome == "priced":
            return "refused", "items of other libraries" if bills else "no items", place, []
        said = []
        for bill in used:
            self._add(bill, rule, component, said)
        return outcome, "" if used else "no items", place, said

    def _add(self, bill, rule, component, said):
        key = (component.category.split("\\")[0], bill.get("strQdId", ""), bill.get("strName", ""),
               bill.get("strUnit", ""))
        row = self.rows[key]
        row.share(conditions_said(rule))
        row.add(self._quantity(bill, component, said, bill.get("strQdId", "")))
        for quota in children(bill, "De"):
            if quota.get("strDeCode", "").lower() == self.libraries[1]:
                below = row.quotas[quota.get("strDeId", ""), quota.get("strName", ""), quota.get("strUnit", "")]
                below.add(self._quantity(quota, component, said, quota.get("strDeId", "")))

    @staticmethod
    def _quantity(item, component, said, name):
        try:
            value = quantity(item.get("strFormula", ""), component)
            said.append(f"{name}={value.normalize():f}")
            return value
        except Unknown as reason:
            said.append(f"{name}=?")
            component.note(f"quantity missing: {reason}")
            return None

    def totals(self):
        count = collections.Counter(result[2] for result in self.results)
        return len(self.results), count["priced"], count["default"], count["refused"]


def read_table(path):
    """Header and rows; the line of the file stands before each row."""
    with open(path, encoding="utf-8-sig", newline="") as file:
        reader = csv.reader(file)
        header, line = next(reader), reader.line_num
        rows = []
        for row in reader:
            if row:
                rows.append((line + 1, row + [""] * (len(header) - len(row))))
            line = reader.line_num
    return header, rows


def price_table(rules_path, table_path, data, bill_library=None, quota_library=None):
    catalogue = Catalogue(pathlib.Path(data))
    pricing = Pricing(read_rules(rules_path, catalogue), catalogue, bill_library or catalogue.bill_library,
                      quota_library or catalogue.quota_library)
    header, rows = read_table(table_path)
    for line, row in rows:
        pricing.price(line, Component(header, row, catalogue))
    return pricing


def bill_rows(pricing):
    """The bill as a table of texts, in a stable order."""
    numbers = collections.Counter(key[:2] for key in pricing.rows)
    yield ["kind", "number", "name", "features", "unit", "quantity", "components", "missing", "number_repeated"]
    for (specialty, number_, name, unit), row in sorted(pricing.rows.items()):
        amount = "" if row.missing == row.components else written(row.total, unit)
        yield ["bill", number_, name, feature_lines(row.said), unit, amount, row.components, row.missing,
               int(numbers[specialty, number_] > 1)]
        for (quota, quota_name, quota_unit), below in sorted(row.quotas.items()):
            amount = "" if below.missing == below.components else written(below.total, quota_unit)
            yield ["quota", quota, quota_name, "", quota_unit, amount, below.components, below.missing, 0]


def component_rows(pricing):
    yield ["line", "id", "outcome", "why", "rule", "quantities", "told"]
    for line, id_, outcome, why, place, said, notes in pricing.results:
        yield [line, id_, outcome, why, place, " ".join(said), "; ".join(notes)]


def total_rows(pricing):
    yield ["components", "priced", "default", "refused"]
    yield list(pricing.totals())


def main():
    parser = argparse.ArgumentParser(description="Prices a take-off table, slowly and plainly.")
    parser.add_argument("rules")
    parser.add_argument("table")
    parser.add_argument("--data", default=pathlib.Path(__file__).resolve().parents[2] / "data")
    parser.add_argument("--what", choices=["bill", "components", "totals"], default="bill")
    parser.add_argument("--bill-library")
    parser.add_argument("--quota-library")
    options = parser.parse_args()
    pricing = price_table(options.rules, options.table, options.data, options.bill_library, options.quota_library)
    rows = {"bill": bill_rows, "components": component_rows, "totals": total_rows}[options.what](pricing)
    sys.stdout.reconfigure(encoding="utf-8", newline="\n")
    csv.writer(sys.stdout, lineterminator="\n").writerows(rows)


if __name__ == "__main__":
    main()
