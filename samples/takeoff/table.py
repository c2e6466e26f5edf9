"""A take-off table under construction: rows in columns, ids by system and floor, flaws that are noted."""

import csv
import io

FLOORS = ["1F", "2F", "3F", "4F", "5F", "6F", "7F", "8F"]

# Names that are no identifiers of this language, by those that stand for them here.
HEADERS = {
    "半周长": "半周长(mm)",
    "宽加高": "宽+高(mm)",
}


def floor_height(number):
    """Of storey 1 to 8, in metres."""
    return "4.5" if number == 1 else "3.9"


def metres(base, *seeds):
    """A length of about `base` whole metres: no two rooms are measured alike, yet every run gives the same."""
    spread = 0
    for place, seed in enumerate(seeds):
        spread += seed * (7 + 4 * place)
    centimetres = base * (96 + spread % 9) + 5 * (spread % 7)
    return plain(centimetres)


def plain(hundredths):
    """A number of hundredths as a person writes it: 1250 is 12.5."""
    text = f"{hundredths // 100}.{hundredths % 100:02d}"
    return text.rstrip("0").rstrip(".")


class Table:
    """Rows under one header. A row is told by keywords; what is not told stays empty."""

    FIXED = ["构件编号", "具体构件", "类别", "楼层", "系统"]

    def __init__(self, specialty, columns, codes=()):
        """`columns` follow the fixed ones. `codes` are columns that bear an attribute's code for its name."""
        self.specialty = specialty
        self.codes = dict(codes)
        self.columns = self.FIXED + columns
        self.rows = []
        self.flaws = []
        self._last = {}

    def add(self, prefix, name, category, floor, system, id=None, flaw=None, **values):
        """`category` without the specialty. `flaw` is (column, what a report must tell). The row's id."""
        if id is None:
            number = self._last.get((prefix, floor), 0) + 1
            self._last[prefix, floor] = number
            id = f"{prefix}-{floor}-{number:02d}"
        cells = {
            "构件编号": id,
            "具体构件": name,
            "类别": self.specialty + "\\" + category,
            "楼层": floor,
            "系统": system,
        }
        for key, value in values.items():
            column = HEADERS.get(key, key)
            if column not in self.columns:
                raise KeyError(f"{id}: no column {column}")
            cells[column] = str(value)
        self.rows.append([cells.get(column, "") for column in self.columns])
        if flaw is not None:
            self.flaws.append((len(self.rows) + 1, id, *flaw))
        return id

    def text(self):
        """The file: UTF-8 with commas and a header row, lines ended by a line feed."""
        header = [self.codes.get(column, column) for column in self.columns]
        return csv_text([header] + self.rows)


def csv_text(rows):
    out = io.StringIO()
    csv.writer(out, lineterminator="\n").writerows(rows)
    return out.getvalue()
