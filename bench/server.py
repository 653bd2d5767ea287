#!/usr/bin/env python3
"""Measures what a desk waits for when the crib lies on a server, near and far.

usage: bench/server.py [--build BUILD] [--scale max] [--distances 0,0.3,5] [--rounds N]

A throw-away server holds a sample crib; between it and vorlane-bench stands a proxy that holds everything back as a network
would, half of the distance (milliseconds there and back) each way. Ends with 1 when a hard limit is passed twice.
"""
import argparse
import heapq
import select
import socket
import subprocess
import sys
import tempfile
import threading
import time
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent


def forward(near, far, delay):
    """Carries bytes both ways until one side is done; each chunk leaves `delay` seconds after it came."""
    peers = {near: far, far: near}
    waiting, order = [], 0
    while True:
        timeout = max(0, waiting[0][0] - time.monotonic()) if waiting else None
        for source in select.select(list(peers), [], [], timeout)[0]:
            data = source.recv(1 << 16)
            heapq.heappush(waiting, (time.monotonic() + delay, order, peers[source], data))
            order += 1
        while waiting and waiting[0][0] <= time.monotonic():
            target, data = heapq.heappop(waiting)[2:]
            if not data:
                near.close()
                far.close()
                return
            target.sendall(data)


def proxy(server, distance):
    """Starts a proxy to the server's socket file. @returns its port."""
    listener = socket.create_server(("127.0.0.1", 0))

    def accept():
        while True:
            near = listener.accept()[0]
            near.setsockopt(socket.IPPROTO_TCP, socket.TCP_NODELAY, 1)
            far = socket.socket(socket.AF_UNIX)
            far.connect(server)
            threading.Thread(target=forward, args=(near, far, distance / 2000), daemon=True).start()

    threading.Thread(target=accept, daemon=True).start()
    return listener.getsockname()[1]


def main():
    options = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    options.add_argument("--build", type=Path, default=ROOT / "build")
    options.add_argument("--scale", default="max")
    options.add_argument("--distances", default="0,0.3,5")
    options.add_argument("--rounds", default="5")
    given = options.parse_args()
    programs = given.build.resolve() / "bin"
    status = 0
    with tempfile.TemporaryDirectory() as folder:
        control = ROOT / "scripts/test_server"
        subprocess.run([control, "start", folder_of(folder)], check=True)
        try:
            place = subprocess.run([control, "run", folder, "printenv", "VORLANE_TEST_SERVER"], check=True,
                                   capture_output=True, text=True).stdout.strip()
            host, port = place.rsplit(":", 1)
            connection = Path(folder, "dorvak.mdb")

            def connect(where, at, database):
                connection.write_text(f"[postgresql]\nhost={where}\nport={at}\nuser=postgres\ndbname={database}\n")

            connect(host, port, "postgres")
            subprocess.run([programs / "vorlane-admin", "sample", "--scale", given.scale, connection], check=True)
            for distance in given.distances.split(","):
                connect("127.0.0.1", proxy(f"{host}/.s.PGSQL.{port}", float(distance)), "postgres")
                print(f"{distance} ms away:", flush=True)
                bench = [programs / "vorlane-bench", "--server", connection, "--rounds", given.rounds]
                status |= subprocess.run(bench).returncode
        finally:
            subprocess.run([control, "stop", folder])
    return status


def folder_of(folder):
    """The folder as test_server takes a build's, with a place for what it links there."""
    Path(folder, "tests").mkdir()
    return folder


if __name__ == "__main__":
    sys.exit(main())
