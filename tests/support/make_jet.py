#!/usr/bin/env python3
"""Writes a small crib as a Jet 3 or Jet 4 file, without template or library: good for readers, not for the engine itself
(there are no indexes and no permissions).

usage: make_jet.py FILE [--version 3|4] [--code-page N] [--key HEX] [--password TEXT] [--loans N] [CHANGE...]

A CHANGE is one of
  Table.Column[ROW]=VALUE   another value (from row 0 on; a Python literal)
  Table.Column:TYPE         another type of column, in the words of the dictionary below; adds a missing column or table
  -Table  -Table.Column     leaves it out
  =Table                    makes it a link to another file
  Table#N                   rows in the table's head, whatever there are
  Table@N                   last number that the table's counter gave out
"""
import argparse
import ast
import re
import struct

TYPES = {"yesno": 1, "byte": 2, "integer": 3, "long": 4, "money": 5, "single": 6, "double": 7, "date": 8, "binary": 9,
         "text": 10, "ole": 11, "memo": 12}
FORMATS = {2: "B", 3: "h", 4: "i", 5: "q", 6: "f", 7: "d", 8: "d"}
GONE, ELSEWHERE = 0x8000, 0x4000
CRIB = {  # columns with their types, then rows; money in ten-thousandths, dates in days since 1899-12-30
    "Types": ("ID long, description text, Parent long", [(1, "Drills", 0), (2, "Taps", 1), (9, "Spare", 0)]),
    "Locations": ("ID long, Description text, Parent long", [(1, "Hall", 0), (3, "Straße 5", 1)]),
    "TOOLS": ("ID long, Type long, Location long, Manufacturer text, PartNumber text, Description text, "
              "PricePer money, Out yesno, Weight double, Picture ole",
              [(1, 1, 1, "Corvane", None, "Drill 5 mm", 25000, True, 0.1, b"\0\1" * 40),
               (2, 2, 3, "", "T-8", "Tap M8", -12345, False, -1e-7, None),
               (7, 1, 3, None, "x" * 200, "d" * 250, None, False, 2.0 ** 70, b"")]),
    "CheckOutIn": ("ID long, Tool_Id long, Employee text, JobOrOH long, LineItemTypeId long, DateOut date, DateIn date, "
                   "Active yesno, CheckOutDesc text, CheckOutPartNo text",
                   [(1, 2, "7", 100, 4, 36526.25, 36526.5, False, "Tap M8", "T-8"),
                    (2, 1, "007", 100, 4, 45000 + 86399.7 / 86400, None, True, "Drill 5 mm", None)]),
    "Scrap": ("ID long, ToolID long, Type long, TypeDescription text, Manufacturer text, PartNumber text, "
              "Description text, PricePer money, Location long, Employee double, ScrapDate date, JobOrOH long, "
              "LineItemTypeId byte, Reason integer, Notes memo, Job long, Date date",
              [(4, 5, 1, "Drills", "", "", "Drill 9 mm", 100, 1, 7.0, -1.25, 900, 5, 1, "Ω" + "n" * 9000, None, None),
               (5, 6, 1, "Drills", "", "", "Drill 10 mm", 0, 1, 7.0, 36526.0, 100, 4, 1, "m" * 500, 100, 2.0)]),
    "ScrapReasons": ("ID long, Description text", [(1, "Worn")]),
    "Reports": ("Name text, Description text, Module text, FileName text, Default yesno, oem yesno", []),
    "JobVorlane": ("ID long, Jobno long", [(1, 100)]),
    "Employee": ("EmpID text, LastName text, FirstName text, EmpStatus text",
                 [("007", "Żak", "Ada\0x", "Active"), ("8", "żółw \u20ac", "", "")]),
    "Job": ("JobNo double, Shipped yesno", [(100.0, False)]),
    "Operation": ("OperNo long, Description text, OperType text", [(900, "Training", "O")]),
    "LineItemType": ("Index integer, Code text", [(4, "Job"), (5, "Overhead")]),
    "Vendor": ("Name text, Since date, Terms memo", [("Corvane", 2.5, "30 days")]),
}


def rc4(key, data):
    state = list(range(256))
    j = 0
    for i in range(256):
        j = (j + state[i] + key[i % len(key)]) & 255
        state[i], state[j] = state[j], state[i]
    i = j = 0
    out = bytearray(data)
    for k in range(len(out)):
        i = (i + 1) & 255
        j = (j + state[i]) & 255
        state[i], state[j] = state[j], state[i]
        out[k] ^= state[(state[i] + state[j]) & 255]
    return bytes(out)


class Table:
    def __init__(self, columns=(), rows=()):
        self.columns = [(name, TYPES[kind]) for name, kind in columns]
        self.rows = [list(row) for row in rows]
        self.stated = self.last = None

    def column(self, name):
        names = [column.lower() for column, _ in self.columns]
        return names.index(name.lower()) if name.lower() in names else None


class Jet:
    def __init__(self, version, code_page):
        self.jet3, self.code_page = version == 3, code_page
        self.page_size = 2048 if self.jet3 else 4096
        self.head_size = 10 if self.jet3 else 14
        self.pages = [None, None, None]  # head, map of free pages, catalogue
        self.definitions, self.maps, self.catalogue = [], [], []

    def new_page(self, content=None):
        self.pages.append(content)
        return len(self.pages) - 1

    def data_page(self, owner, rows):
        """A page of rows, each as (bytes, flags)."""
        page, end, slots = bytearray(self.page_size), self.page_size, []
        for row, flags in rows:
            end -= len(row)
            page[end:end + len(row)] = row
            slots.append(end | flags)
        free = end - self.head_size - 2 * len(rows)
        assert free >= 0
        struct.pack_into("<BBH4s", page, 0, 1, 1, free, owner if isinstance(owner, bytes) else struct.pack("<I", owner))
        struct.pack_into(f"<H{len(slots)}H", page, self.head_size - 2, len(rows), *slots)
        return bytes(page)

    def text(self, text):
        if self.jet3:
            return text.encode(f"cp{self.code_page}", "replace")
        out, wide = b"\xff\xfe", False
        for c in text:  # A zero changes between one byte and two a character.
            if (0 < ord(c) < 256) == wide:
                out, wide = out + b"\0", not wide
            out += c.encode("utf-16-le") if wide else c.encode("latin-1")
        unpacked = text.encode("utf-16-le")
        is_plain = all(ord(c) & 255 for c in text)  # Otherwise a zero would be taken for a change.
        return out if len(out) < len(unpacked) and is_plain else unpacked

    def long_value(self, body):
        """The head of a memo, with the memo behind it, on a page, or in a chain of pages."""
        room = self.page_size - self.head_size - 2
        if len(body) <= 64:
            return struct.pack("<III", len(body) | 0x80000000, 0, 0) + body
        if len(body) <= room:
            page = self.new_page(self.data_page(b"LVAL", [(body, 0)]))
            return struct.pack("<III", len(body) | 0x40000000, page << 8, 0)
        parts = [body[i:i + room - 4] for i in range(0, len(body), room - 4)]
        pages = [self.new_page() for _ in parts]
        for page, after, part in zip(pages, pages[1:] + [0], parts):
            self.pages[page] = self.data_page(b"LVAL", [(struct.pack("<I", after << 8) + part, 0)])
        return struct.pack("<III", len(body), pages[0] << 8, 0)

    def variable(self, kind, value):
        body = value if isinstance(value, bytes) else self.text(value)
        return self.long_value(body) if kind in (TYPES["memo"], TYPES["ole"]) else body

    def row(self, columns, values):
        mask, fixed, body, ends = bytearray((len(columns) + 7) // 8), b"", b"", []
        for i, ((_, kind), value) in enumerate(zip(columns, values)):
            if value is not None and value is not False:
                mask[i // 8] |= 1 << i % 8
            if kind in FORMATS:
                fixed += struct.pack("<" + FORMATS[kind], value or 0)
            elif kind != TYPES["yesno"]:
                ends.append(len(body))
                body += b"" if value is None else self.variable(kind, value)
        head = struct.pack("<B" if self.jet3 else "<H", len(columns)) + fixed
        offsets = [len(head) + end for end in ends + [len(body)]]
        if not ends:
            return head + bytes(mask)
        if not self.jet3:
            return head + body + struct.pack(f"<{len(offsets) + 1}H", *reversed(offsets), len(ends)) + bytes(mask)
        jumps = 0
        while (len(head + body) + len(offsets) + jumps + len(mask)) // 256 != jumps:
            jumps += 1
        leaps = [next((i for i, o in enumerate(offsets) if o >= 256 * (j + 1)), 255) for j in range(jumps)]
        return (head + body + bytes(o & 255 for o in reversed(offsets)) + bytes(reversed(leaps)) + bytes([len(ends)])
                + bytes(mask))

    def usage_map(self, pages):
        """A map of the pages of a table: their bits behind a number or, for a large table, on pages of their own."""
        start, size = min(pages, default=0), 128 if self.jet3 else 64
        if max(pages, default=0) - start < size * 8:
            bits = bytearray(size)
            for page in pages:
                bits[(page - start) // 8] |= 1 << (page - start) % 8
            return struct.pack("<BI", 0, start) + bytes(bits)
        per_page = (self.page_size - 4) * 8
        pointers = []
        for first in range(0, max(pages) + 1, per_page):
            bits = bytearray(self.page_size - 4)
            for page in pages:
                if first <= page < first + per_page:
                    bits[(page - first) // 8] |= 1 << page % per_page % 8
            pointers.append(self.new_page(struct.pack("<BBH", 5, 1, 0) + bytes(bits)))
        return struct.pack(f"<B{len(pointers)}I", 1, *pointers)

    def add(self, name, table, page=None):
        page = page or self.new_page()
        rows = [(self.row(table.columns, row), 0) for row in table.rows]
        if len(rows) > 1:  # The second row has moved to the end, and a row between has been deleted.
            moved = rows[1][0]
            rows[1] = (b"\0\0\0\0", ELSEWHERE)
            rows[1:1] = [(rows[0][0], GONE)]
        pages, waiting, used = [], [], 0
        for row in rows:
            if used + len(row[0]) + 2 > self.page_size - self.head_size:
                pages.append(self.new_page(self.data_page(page, waiting)))
                waiting, used = [], 0
            waiting.append(row)
            used += len(row[0]) + 2
        pages.append(self.new_page(self.data_page(page, waiting)))
        if len(rows) > 1:
            pages.append(self.new_page(self.data_page(page, [(moved, GONE)])))
            first = bytearray(self.pages[pages[0]])
            slot = struct.unpack_from("<H", first, self.head_size + 4)[0] & 0x1fff
            struct.pack_into("<I", first, slot, pages[-1] << 8)
            self.pages[pages[0]] = bytes(first)

        stated = len(table.rows) if table.stated is None else table.stated
        last = max((row[0] for row in table.rows if isinstance(row[0], int)), default=0)
        last = last if table.last is None else table.last
        variable = sum(kind not in FORMATS and kind != 1 for _, kind in table.columns)
        out = struct.pack("<II", stated, last) if self.jet3 else struct.pack("<IIII12x", 1625, stated, last, 1)
        out += struct.pack("<BHHHII", 0x4e, len(table.columns), variable, len(table.columns), 0, 0)
        map_at = len(out)
        out += bytes(8)
        offset = index = 0
        for i, (_, kind) in enumerate(table.columns):
            is_fixed = kind in FORMATS or kind == 1
            flags, size = (3 if is_fixed else 2), struct.calcsize("<" + FORMATS.get(kind, "0s"))
            if self.jet3:
                out += struct.pack("<BHHHHHHBHH", kind, i, index, i, 0x409, self.code_page, 0, flags, offset, size)
            else:
                out += struct.pack("<BIHHHHHBBIHH", kind, 1625, i, index, i, 0x409, 0, flags, 1, 0, offset, size)
            offset += size
            index += not is_fixed
        for column, _ in table.columns:
            encoded = column.encode(f"cp{self.code_page}" if self.jet3 else "utf-16-le")
            out += struct.pack("<B" if self.jet3 else "<H", len(encoded)) + encoded
        self.maps.append(self.usage_map(pages))
        self.definitions.append((page, bytearray(out + b"\xff\xff"), map_at))
        if name:
            self.catalogue.append((page, name, 1, 0))

    def finish(self, file, key, password):
        catalogue = Table([("Id", "long"), ("ParentId", "long"), ("Name", "text"), ("Type", "integer"), ("Flags", "long")])
        own = (2, "MSysObjects", 1, -0x80000000)
        catalogue.rows = [[page, 0x0f000001, name, kind, flags] for page, name, kind, flags in [own] + self.catalogue]
        self.add(None, catalogue, 2)
        for (page, body, map_at), usage_map in zip(self.definitions, self.maps):
            map_page = self.new_page(self.data_page(0, [(usage_map, 0)]))
            struct.pack_into("<I", body, map_at, map_page << 8)
            body = struct.pack("<I", len(body) + 8) + body
            parts = [body[i:i + self.page_size - 8] for i in range(0, len(body), self.page_size - 8)]
            pages = [page] + [self.new_page() for _ in parts[1:]]
            for at, after, part in zip(pages, pages[1:] + [0], parts):
                self.pages[at] = (struct.pack("<BBHI", 2, 1, 0, after) + part).ljust(self.page_size, b"\0")
        self.pages[1] = self.data_page(0, [])

        head, day = bytearray(self.page_size), 37000
        head[0:21] = b"\0\1\0\0Standard Jet DB\0" + bytes([0 if self.jet3 else 1])
        struct.pack_into("<HI", head, 0x3c, self.code_page, key)
        if self.jet3:
            head[0x42:0x42 + 20] = password.encode(f"cp{self.code_page}").ljust(20, b"\0")
        else:
            struct.pack_into("<d", head, 0x72, day + 0.5)
            mask = struct.pack("<i", day) * 10
            head[0x42:0x42 + 40] = bytes(a ^ b for a, b in zip(password.encode("utf-16-le").ljust(40, b"\0"), mask))
        end = 0x18 + (126 if self.jet3 else 128)
        head[0x18:end] = rc4(b"\xc7\xda\x39\x6b", head[0x18:end])
        self.pages[0] = bytes(head)
        with open(file, "wb") as out:
            for number, page in enumerate(self.pages):
                out.write(rc4(struct.pack("<I", key ^ number), page) if key and number else page)


def change(tables, linked, words):
    table, column, row, sign, value = re.fullmatch(r"([-=]?\w+)(?:\.(\w+))?(?:\[(\d+)\])?([=:#@]?)(.*)", words).groups()
    mark, name = (table[0], table[1:]) if table[0] in "-=" else ("", table)
    name = next((known for known in tables if known.lower() == name.lower()), name)
    place = tables[name].column(column) if column and name in tables else None
    if mark and not column:
        del tables[name]
        linked += [name] if mark == "=" else []
    elif mark:
        del tables[name].columns[place]
        for values in tables[name].rows:
            del values[place]
    elif sign == "=":
        tables[name].rows[int(row)][place] = ast.literal_eval(value)
    elif sign == "#":
        tables[name].stated = int(value)
    elif sign == "@":
        tables[name].last = int(value)
    elif place is None:
        tables.setdefault(name, Table()).columns.append((column, TYPES[value]))
        for values in tables[name].rows:
            values.append(None)
    else:
        tables[name].columns[place] = (tables[name].columns[place][0], TYPES[value])


def main():
    arguments = argparse.ArgumentParser()
    arguments.add_argument("file")
    arguments.add_argument("--version", type=int, default=4)
    arguments.add_argument("--code-page", type=int, default=1250)
    arguments.add_argument("--key", default="0")
    arguments.add_argument("--password", default="")
    arguments.add_argument("--loans", type=int, default=0)
    options, changes = arguments.parse_known_args()
    tables = {name: Table([column.split(" ") for column in columns.split(", ")], rows)
              for name, (columns, rows) in CRIB.items()}
    for number in range(options.loans):
        tables["CheckOutIn"].rows.append([number + 10, 1 + number % 2, "7", 100, 4, 30000 + number / 24 + 1 / 3,
                                          40000.5, False, f"Drill {number % 40} mm, long", "T-8"])
    linked = []
    for words in changes:
        change(tables, linked, words)
    jet = Jet(options.version, options.code_page)
    jet.catalogue += [(0, name, 6, 0) for name in linked]
    for name, table in tables.items():
        jet.add(name, table)
    jet.finish(options.file, int(options.key, 16), options.password)


if __name__ == "__main__":
    main()
