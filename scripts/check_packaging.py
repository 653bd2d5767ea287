#!/usr/bin/env python3
"""check_packaging.py BIN: fails when a man page lacks an option or a command of its program, or when the programs that
validate desktop entries and AppStream files find fault. What is not installed is told of and passed over."""
import os
import pathlib
import re
import shutil
import subprocess
import sys

packaging = pathlib.Path(__file__).parent.parent / "packaging"


def said(*command):
    run = subprocess.run(command, capture_output=True, text=True, env=os.environ | {"QT_QPA_PLATFORM": "offscreen"})
    return run.returncode, run.stdout + run.stderr


def missing_in_man_page(program):
    text = said(program, "--help")[1]
    commands = re.findall(r"^  ([a-z][a-z-]*) .*", text, re.M) if program.name == "vorlane-admin" else []
    for command in commands:
        text += said(program, command, "--help")[1]
    page = (packaging / "man" / f"{program.name}.1").read_text("utf-8").replace("\\-", "-")
    for word in sorted(set(commands + re.findall(r"--[a-z][a-z-]+", text))):
        if not re.search(r"(?<![\w-])" + word + r"(?![\w-])", page):
            yield f"{program.name}.1 does not tell of {word}"


def faults_of_validators():
    for validator, *rest in (
        ("desktop-file-validate", packaging / "vorlane.desktop"),
        # The program has no domain that its name could be turned around from.
        ("appstreamcli", "validate", "--no-net", "--override=cid-desktopapp-is-not-rdns=info",
         packaging / "vorlane.metainfo.xml"),
    ):
        if not shutil.which(validator):
            print("not installed:", validator)
            continue
        status, text = said(validator, *rest)
        if status:
            yield f"{validator}: {text}"


programs = pathlib.Path(sys.argv[1])
faults = list(faults_of_validators())
for name in ("vorlane-start", "vorlane-admin"):
    faults += missing_in_man_page(programs / name)
print("\n".join(faults) or "nothing amiss")
sys.exit(bool(faults))
