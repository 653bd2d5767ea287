#!/usr/bin/env python3
"""Measures how long the program takes to start and what memory it needs, against a bare Qt window.

usage: bench/startup.py [--build BUILD] [--scale shop|max] [--rounds N]

Both programs start in turn on a screen of their own (Xvfb), so that what else the machine does hits both. A start ends
when the process has had nothing to do for a while. Ends with 1 when a hard limit is passed.
"""
import argparse
import os
import re
import shutil
import statistics
import subprocess
import sys
import tempfile
import time
from pathlib import Path

QUIET = 0.7  # seconds
LONGEST = 60
LIMITS = {  # goal and hard limit, ratios to the bare window
    ("start-up", "shop"): (1.5, 3),
    ("start-up", "max"): (2.5, 4),
    ("peak memory", "shop"): (1.3, 1.6),
}


def state_and_work(pid):
    """What the process is doing, and the clock ticks of work it has done."""
    fields = Path(f"/proc/{pid}/stat").read_text().rsplit(") ", 1)[1].split()
    return fields[0], int(fields[11]) + int(fields[12])


def start(program, environment):
    """Seconds until the program has settled, and its peak memory in megabytes."""
    began = time.monotonic()
    process = subprocess.Popen([program], env=environment, stdout=subprocess.DEVNULL)
    try:
        busy, done = began, 0
        while time.monotonic() - busy < QUIET:
            time.sleep(0.005)
            if process.poll() is not None:
                sys.exit(f"{program} ended with {process.returncode}")
            state, work = state_and_work(process.pid)
            now = time.monotonic()
            if work > done or state in "RD":
                busy, done = now, work
            if now - began > LONGEST:
                sys.exit(f"{program} does not settle")
        peak = re.search(r"VmHWM:\s+(\d+)", Path(f"/proc/{process.pid}/status").read_text())
        return busy - began, int(peak[1]) / 1024
    finally:
        process.kill()
        process.wait()


def screen():
    """An X server, and the number of its screen."""
    reading, writing = os.pipe()
    server = subprocess.Popen(["Xvfb", "-displayfd", str(writing), "-screen", "0", "1280x1024x24"],
                              pass_fds=[writing], stderr=subprocess.DEVNULL)
    os.close(writing)
    with os.fdopen(reading) as number:
        return server, ":" + number.readline().strip()


def main():
    options = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    options.add_argument("--build", type=Path, default=Path(__file__).resolve().parent.parent / "build")
    options.add_argument("--scale", choices=["small", "shop", "max"], default="shop")
    options.add_argument("--rounds", type=int, default=7)
    chosen = options.parse_args()
    programs = chosen.build / "bin"

    failed = False
    server, display = screen()
    try:
        with tempfile.TemporaryDirectory() as folder:
            shutil.copy(programs / "vorlane", folder)
            subprocess.run([programs / "vorlane-admin", "sample", "--scale", chosen.scale, f"{folder}/dorvak.mdb"],
                           check=True, stdout=subprocess.DEVNULL)
            environment = dict(os.environ, DISPLAY=display, QT_QPA_PLATFORM="xcb", LC_ALL="C.UTF-8", HOME=folder,
                               XDG_RUNTIME_DIR=folder, NO_AT_BRIDGE="1")
            rounds = []
            for counted in range(chosen.rounds + 1):  # the first one warms the disk cache
                figures = [start(program, environment)
                           for program in (programs / "bare-window", f"{folder}/vorlane")]
                if counted:
                    rounds.append(figures)
    finally:
        server.terminate()
        server.wait()

    print(f"scale {chosen.scale}, {chosen.rounds} rounds after one; seconds and MB")
    for index, name in enumerate(("start-up", "peak memory")):
        bare = [figures[0][index] for figures in rounds]
        ours = [figures[1][index] for figures in rounds]
        ratios = [own / floor for own, floor in zip(ours, bare)]
        ratio = statistics.median(ratios)
        goal, hard = LIMITS.get((name, chosen.scale), (None, None))
        verdict = "" if hard is None else "FAIL" if ratio > hard else "ok, above goal" if ratio > goal else "ok"
        failed = failed or verdict == "FAIL"
        print(f"{name:12} {statistics.median(bare):8.2f} {statistics.median(ours):8.2f} ratio {ratio:5.2f} "
              f"{min(ratios):.2f}..{max(ratios):.2f}  goal {goal} hard {hard}  {verdict}")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
