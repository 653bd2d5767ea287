#!/usr/bin/env python3
"""pictures.py RSVG_CONVERT DRAWINGS FOLDER: makes in FOLDER of each drawing NAME.svg a picture NAME_SIZE.png for every size
that screens of 100 to 400 % ask for, icons.qrc, which lists them, and of vorlane.svg the programs' icon, vorlane.ico."""
import pathlib
import struct
import subprocess
import sys

SIZES = 16, 20, 24, 32, 40, 48, 64, 128, 256


def icon(pictures):
    offset = 6 + 16 * len(pictures)
    entries = b""
    for size, picture in zip(SIZES, pictures):
        entries += struct.pack("<BBBBHHII", size % 256, size % 256, 0, 0, 1, 32, len(picture), offset)
        offset += len(picture)
    return struct.pack("<HHH", 0, 1, len(pictures)) + entries + b"".join(pictures)


def main():
    convert, drawings, folder = sys.argv[1], pathlib.Path(sys.argv[2]), pathlib.Path(sys.argv[3])
    folder.mkdir(parents=True, exist_ok=True)
    names = []
    for drawing in sorted(drawings.glob("*.svg")):
        for size in SIZES:
            names.append(f"{drawing.stem}_{size}.png")
            subprocess.run([convert, "-w", str(size), "-h", str(size), drawing, "-o", folder / names[-1]], check=True)
    files = "".join(f"<file>{name}</file>" for name in names)
    (folder / "icons.qrc").write_text(f'<RCC version="1.0"><qresource prefix="/icons">{files}</qresource></RCC>\n')
    (folder / "vorlane.ico").write_bytes(icon([(folder / f"vorlane_{size}.png").read_bytes() for size in SIZES]))


main()
