#!/usr/bin/env python3
"""Measures how long the program takes to start and what memory it needs, against a bare Qt window.

usage: bench/startup.py [--build BUILD] [--scale shop|max] [--rounds N]

Both programs start in turn on a screen of their own (Xvfb), so that what else the machine does hits both. A start ends
when the process has had nothing to do for a while. Ends with 1 when a hard limit is passed twice.
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


def processor_seconds(pid):
    """The processor time of all threads."""
    return sum(int(Path(task, "schedstat").read_text().split()[0]) for task in Path(f"/proc/{pid}/task").iterdir()) / 1e9


def start(program, environment):
    """Seconds until the program has settled, its processor seconds, and its peak memory in megabytes."""
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
        return busy - began, processor_seconds(process.pid), int(peak[1]) / 1024
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

    sample = chosen.build / "bench" / "cribs" / f"{chosen.scale}.mdb"  # shared with vorlane-bench
    if not sample.exists() or sample.stat().st_mtime < (programs / "vorlane-admin").stat().st_mtime:
        sample.parent.mkdir(parents=True, exist_ok=True)
        sample.unlink(missing_ok=True)
        subprocess.run([programs / "vorlane-admin", "sample", "--scale", chosen.scale, sample], check=True)

    # A machine that was busy just then is no fault of the program's.
    failed = measure(programs, sample, chosen) and measure(programs, sample, chosen)
    return 1 if failed else 0


def measure(programs, sample, chosen):
    """Prints the figures of one batch of rounds. True when one of them is above its hard limit."""
    server, display = screen()
    try:
        with tempfile.TemporaryDirectory() as folder:
            shutil.copy(programs / "vorlane", folder)
            shutil.copy(sample, f"{folder}/dorvak.mdb")
            environment = dict(os.environ, DISPLAY=display, QT_QPA_PLATFORM="xcb", LC_ALL="C.UTF-8", HOME=folder,
                               XDG_RUNTIME_DIR=folder, NO_AT_BRIDGE="1")
            rounds = [[start(program, environment) for program in (programs / "bare-window", f"{folder}/vorlane")]
                      for _ in range(chosen.rounds + 1)][1:]  # the first one warms the disk cache
    finally:
        server.terminate()
        server.wait()

    print(f"scale {chosen.scale}, {chosen.rounds} rounds after one; seconds and MB")
    failed = False
    for index, name in enumerate(("start-up", "processor time", "peak memory")):
        bare = [figures[0][index] for figures in rounds]
        ours = [figures[1][index] for figures in rounds]
        ratios = [own / floor for own, floor in zip(ours, bare)]
        ratio = statistics.median(ratios)
        line = (f"{name:15} {statistics.median(bare):7.2f} {statistics.median(ours):7.2f}  ratio {ratio:5.2f} "
                f"{min(ratios):.2f}..{max(ratios):.2f}")
        if (name, chosen.scale) in LIMITS:
            goal, hard = LIMITS[name, chosen.scale]
            failed = failed or ratio > hard
            line += f"  goal {goal} hard {hard}  " + ("FAIL" if ratio > hard else "ok, above goal" if ratio > goal else "ok")
        print(line)
    return failed


if __name__ == "__main__":
    sys.exit(main())
