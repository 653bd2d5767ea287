#!/usr/bin/env python3
"""Fails when a folder of src/ includes one that it may not know, or when headers form a circle."""
import pathlib
import re
import sys

# Each folder and what it may include besides its own headers: folders ("platform" stands for all below it) or one header.
MAY_INCLUDE = {
    "platform/text": [],
    "platform/system": [],
    "platform/engine/dialect": ["platform/text", "platform/engine/EngineError.h"],
    "platform/engine/driver": ["platform/text", "platform/engine/EngineError.h", "platform/engine/dialect"],
    "platform/engine/sqlite": ["platform/text", "platform/system", "platform/engine/EngineError.h",
                               "platform/engine/dialect", "platform/engine/driver"],
    "platform/engine/postgres": ["platform/text", "platform/system", "platform/engine/EngineError.h",
                                 "platform/engine/dialect", "platform/engine/driver"],
    "platform/engine": ["platform/text", "platform/system", "platform/engine/dialect", "platform/engine/driver",
                        "platform/engine/sqlite", "platform/engine/postgres"],
    "platform/jet": ["platform/text"],
    "platform/reportengine": ["platform/text", "platform/system", "platform/engine", "platform/engine/driver/Value.h"],
    "platform/gui": ["platform/text", "platform/system", "platform/engine"],
    "platform/reportcontrol": ["platform/text", "platform/system", "platform/engine", "platform/reportengine", "platform/gui"],
    "db": ["platform/text", "platform/system", "platform/engine"],
    "common": ["platform", "db"],
    "transactions": ["platform", "db", "common"],
    "catalogue": ["platform", "db", "common", "transactions"],
    "reports": ["platform", "db", "common"],
    "queries": ["platform", "db", "common", "reports"],
    "explorer": ["platform", "db", "common", "transactions", "catalogue", "reports", "queries"],
    "app": ["platform", "db", "common", "transactions", "catalogue", "reports", "queries", "explorer"],
    "desk": ["platform", "db", "common", "transactions", "catalogue", "reports"],
    "start": ["platform/text", "platform/system", "platform/engine", "platform/engine/postgres/ConnectionFile.h",
              "platform/jet", "platform/gui"],
    "admin": ["platform/text", "platform/system", "platform/engine", "platform/engine/driver/StoredValue.h",
              "platform/engine/dialect/SqlText.h", "platform/reportengine", "platform/jet", "db"],
}
INCLUDE = re.compile(r'^\s*#\s*include\s+"([^"]+)"', re.M)


def folder_of(path):
    fitting = [folder for folder in MAY_INCLUDE if path.startswith(folder + "/")]
    return max(fitting, key=len, default=None)


def circle(graph):
    """The first circle found among the headers, as the list of its files."""
    done, trail = set(), []

    def visit(file):
        if file in trail:
            return trail[trail.index(file):] + [file]
        if file in done:
            return None
        trail.append(file)
        found = next(filter(None, map(visit, graph.get(file, ()))), None)
        trail.pop()
        done.add(file)
        return found

    return next(filter(None, map(visit, graph)), None)


def main():
    root = pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else pathlib.Path(__file__).parent.parent / "src")
    problems, graph = [], {}
    for file in sorted(root.rglob("*.[ch]*")):
        name = file.relative_to(root).as_posix()
        mine = folder_of(name)
        if mine is None:
            problems.append(f"{name}: lies in no known folder")
            continue
        graph[name] = [target for target in INCLUDE.findall(file.read_text("utf-8")) if folder_of(target)]
        allowed = [mine] + MAY_INCLUDE[mine]
        for target in graph[name]:
            theirs = folder_of(target)
            if not any(folder in (theirs, target) or (folder == "platform" and theirs.startswith("platform/")) for folder in allowed):
                problems.append(f"{name}: may not include {target}")
    if found := circle(graph):
        problems.append("circle: " + " -> ".join(found))
    print("\n".join(problems) or f"{len(graph)} files: every include within its bounds, no circle")
    return bool(problems)


sys.exit(main())
