#!/usr/bin/env python3
"""Makes a seed corpus, one file a statement, and a dictionary of its words from the statements that the tests know.

usage: make_corpus.py STATEMENTS.txt CORPUS_FOLDER DICTIONARY
"""
import pathlib
import re
import sys

statements, corpus, dictionary = map(pathlib.Path, sys.argv[1:])
lines = statements.read_text("utf-8").splitlines()
lines = [line for line in lines if line.strip() and not line.startswith(("# ", "  "))]
# A condition stands alone where a recordset looks for a row.
lines += [re.split(r"\bwhere\b", line, flags=re.I)[-1] for line in lines]
corpus.mkdir(parents=True, exist_ok=True)
for number, line in enumerate(lines):
    (corpus / f"{number:04}").write_text(line, "utf-8")
words = set(re.findall(r"\w+|[<>]=|<>|[^\w\s]", "\n".join(lines)))
words.update([" is not null", " between 1 and ", " like '*'", "Count(*)", " order by 1 desc"])
quoted = ('"' + word.replace("\\", "\\\\").replace('"', '\\"') + '"' for word in sorted(words) if word.isascii())
dictionary.write_text("\n".join(quoted) + "\n", "utf-8")
