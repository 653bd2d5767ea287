#!/usr/bin/env python3
"""Damages old files in every way that disks know and imports them. Each must be refused in one sentence within ten
seconds, leaving nothing behind and the file as it was, or become a database that the engine finds sound.

usage: damage_import.py VORLANE_ADMIN [FILES]
"""
import collections
import pathlib
import random
import sqlite3
import subprocess
import sys
import tempfile

MAKE = pathlib.Path(__file__).parent.parent / "support" / "make_jet.py"


def cut(dice, data, page):
    return data[:dice.randrange(len(data))]


def cut_at_page(dice, data, page):
    return data[:dice.randrange(len(data) // page) * page]


def flip_bits(dice, data, page):
    out = bytearray(data)
    for _ in range(dice.choice((1, 1, 2, 8, 64))):
        out[dice.randrange(len(out))] ^= 1 << dice.randrange(8)
    return bytes(out)


def overwrite_words(dice, data, page):
    out = bytearray(data)
    for _ in range(dice.choice((1, 2, 8))):
        at = dice.randrange(len(data) // page) * page + dice.randrange(64)
        out[at:at + 2] = dice.choice((b"\0\0", b"\xff\xff", b"\xff\x7f", b"\0\x40", bytes(dice.choices(range(256), k=2))))
    return bytes(out)


def zero_page(dice, data, page):
    at = dice.randrange(len(data) // page) * page
    return data[:at] + bytes(page) + data[at + page:]


def exchange_pages(dice, data, page):
    a, b = sorted(dice.sample(range(len(data) // page), 2))
    pages = [data[i:i + page] for i in range(0, len(data), page)]
    pages[a], pages[b] = pages[b], pages[a]
    return b"".join(pages)


def repeat_page(dice, data, page):
    a, b = dice.choices(range(len(data) // page), k=2)
    return data[:b * page] + data[a * page:a * page + page] + data[b * page + page:]


WAYS = [cut, cut_at_page, flip_bits, flip_bits, overwrite_words, zero_page, exchange_pages, repeat_page]


def main():
    admin, count = sys.argv[1], int(sys.argv[2]) if len(sys.argv) > 2 else 3000
    found = collections.Counter()
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        old, new = folder / "old.mdb", folder / "new.mdb"
        sound = []
        for version in 3, 4:
            subprocess.run([sys.executable, MAKE, old, "--version", str(version)], check=True)
            sound.append((old.read_bytes(), 2048 if version == 3 else 4096))
        for number in range(count):
            dice = random.Random(number)
            way = dice.choice(WAYS)
            data = way(dice, *dice.choice(sound))
            old.write_bytes(data)
            options = dice.choice(([], [], ["--mend", "--trust-rows"]))
            run = subprocess.run([admin, "import", old, new, *options], capture_output=True, text=True, timeout=10)
            fault = None
            if run.returncode in (0, 1):
                with sqlite3.connect(new) as database:
                    checks = [database.execute(f"PRAGMA {check}").fetchall()
                              for check in ("integrity_check", "foreign_key_check")]
                database.close()
                new.unlink()
                fault = "unsound file" if checks != [[("ok",)], []] else None
            elif run.returncode not in (3, 4, 5):
                fault = f"status {run.returncode}"
            elif run.stderr.count("\n") != 1 or run.stdout:
                fault = "not one sentence"
            if old.read_bytes() != data or [file.name for file in folder.iterdir()] != ["old.mdb"]:
                fault = "files left behind or changed"
            found[way.__name__, run.returncode] += 1
            if fault:
                print(f"file {number} ({way.__name__}): {fault}: {run.stderr}")
                sys.exit(1)
    for (way, status), files in sorted(found.items()):
        print(f"{way:16} status {status}: {files}")


if __name__ == "__main__":
    main()
