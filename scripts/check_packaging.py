#!/usr/bin/env python3
"""check_packaging.py BIN: fails when a man page has other options or commands than its program, or when the programs that
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


def options_in(text):
    return set(re.findall(r"(?<![\w-])--[a-z][a-z-]+", text))


def differences_to_man_page(program):
    page = (packaging / "man" / f"{program.name}.1").read_text("utf-8").replace("\\-", "-")
    overview = said(program, "--help")[1]
    for option in sorted(options_in(overview) - options_in(page)):
        yield f"{program.name}.1 does not tell of {option}"
    entries = re.split(r"^\.(?:TP|SH.*)\n", page, flags=re.M)
    for command in re.findall(r"^  ([a-z][a-z-]*) .*", overview, re.M) if program.name == "vorlane-admin" else ():
        entry = next((entry for entry in entries if entry.startswith(f".BI {command} ")), None)
        if entry is None:
            yield f"{program.name}.1 does not tell of {command}"
            continue
        for option in sorted(options_in(said(program, command, "--help")[1]) ^ options_in(entry)):
            yield f"{program.name}.1 and the program differ in the {option} of {command}"


def faults_of_validators():
    for validator, *rest in (
        ("desktop-file-validate", packaging / "vorlane.desktop", packaging / "vorlane-desk.desktop"),
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
    faults += differences_to_man_page(programs / name)
print("\n".join(faults) or "nothing amiss")
sys.exit(bool(faults))
