#!/usr/bin/env python3
"""Runs clang-tidy, or clang's warnings, over the sources of a build, and remembers which are clean: a source is looked at again only when
what the compiler sees of it changed, or a check has come to the rules. Called by scripts/lint.

    scripts/analyse.py tidy|clang COMPILE_COMMANDS FOLDER...

Most of the time goes into the standard library's headers. So sources of one folder are looked at together, as many as go into one
translation unit: names of their own that meet there, or hide one another, part them again.
"""
import concurrent.futures
import hashlib
import json
import os
import shlex
import subprocess
import sys

CLANG = "clang++-14"
TOGETHER = 12
WARNINGS = ["-Wall", "-Wextra", "-Wpedantic", "-Wshadow", "-Wconversion", "-Werror"]


def arguments_of(entry):
    """What clang is told: the definitions, the folders and the standard; g++'s own options are left out."""
    result = ["-std=c++20", "-ffp-contract=off"]
    words = iter(shlex.split(entry["command"]))
    for word in words:
        if word in ("-isystem", "-I", "-D"):
            result += [word, next(words)]
        elif word.startswith(("-I", "-D")):
            result.append(word)
    return [w if not w.startswith("-I") or len(w) == 2 else "-I" + os.path.join(entry["directory"], w[2:]) for w in result]


def run(command):
    return subprocess.run(command, capture_output=True, text=True, errors="replace", check=False)


def rules():
    """What .clang-tidy says beside its checks, and the checks that it comes to."""
    with open(".clang-tidy", encoding="utf-8") as file:
        others = [line for line in file if line[0] not in " #" and not line.startswith("Checks:")]
    return "".join(others), set(run(["clang-tidy-14", "--list-checks"]).stdout.split())


class Analysis:
    def __init__(self, kind):
        self.kind = kind
        self.root = os.getcwd()
        self.store = os.path.join(self.root, "build", "lint", "clean")
        os.makedirs(self.store, exist_ok=True)
        self.rules, self.checks = rules() if kind == "tidy" else ("", set())

    def remembered(self, entry):
        """The file that says by which checks this source, as it is, is clean."""
        seen = subprocess.run([CLANG, "-E", "-C", *arguments_of(entry), entry["file"]], capture_output=True, check=False)
        digest = hashlib.sha256(f"{self.kind}\n{self.rules}\n".encode() + seen.stdout).hexdigest()
        return os.path.join(self.store, digest)

    def is_clean(self, path):
        if not os.path.exists(path):
            return False
        with open(path, encoding="utf-8") as file:
            return self.checks <= set(file.read().split())

    def unit_of(self, entries):
        """One source that includes them, or the only one itself."""
        if len(entries) == 1:
            return entries[0]["file"]
        lines = "".join(f'#include "{entry["file"]}"  // NOLINT: one unit of many\n' for entry in entries)
        path = os.path.join(self.root, "build", "lint", hashlib.sha256(lines.encode()).hexdigest()[:16] + ".cpp")
        with open(path, "w", encoding="utf-8") as file:
            file.write(lines)
        return path

    def check(self, entries):
        """The sources found wanting, and what is said of them."""
        todo = [(entry, self.remembered(entry)) for entry in entries]
        todo = [(entry, path) for entry, path in todo if not self.is_clean(path)]
        return self.check_together(todo) if todo else ([], [])

    def apart(self, todo):
        half = len(todo) // 2
        first, second = self.check_together(todo[:half]), self.check_together(todo[half:])
        return first[0] + second[0], first[1] + second[1]

    def look_at(self, entries, source, arguments):
        if self.kind == "clang":
            return run([CLANG, "-fsyntax-only", *WARNINGS, *arguments, source])
        # What follows every path through the headers of the command line's parser takes minutes a file, and tells of those.
        without = ["--checks=-clang-analyzer-*"] if "/apps/" in entries[0]["file"] else []
        return run(["clang-tidy-14", "--quiet", *without, source, "--", *arguments])

    def check_together(self, todo):
        entries = [entry for entry, _ in todo]
        arguments = arguments_of(entries[0])
        source = self.unit_of(entries)
        if self.kind == "tidy" and len(todo) > 1 and run([CLANG, "-fsyntax-only", "-w", *arguments, source]).returncode:
            return self.apart(todo)
        done = self.look_at(entries, source, arguments)
        if done.returncode == 0:
            for entry, path in todo:
                with open(path, "w", encoding="utf-8") as file:
                    file.write("\n".join([entry["file"], *sorted(self.checks)]) + "\n")
            return [], []
        if self.kind == "clang" and len(todo) > 1:
            return self.apart(todo)
        text = (done.stdout if self.kind == "tidy" else done.stderr).strip()
        return [entry["file"] for entry in entries], [text or f"{source}: {self.kind} ended with {done.returncode}"]


def main():
    kind, commands, folders = sys.argv[1], sys.argv[2], sys.argv[3:]
    analysis = Analysis(kind)
    with open(commands, encoding="utf-8") as file:
        entries = {entry["file"]: entry for entry in json.load(file)}
    wanted = [os.path.join(analysis.root, folder).rstrip("/") for folder in folders]
    groups = {}
    for path, entry in sorted(entries.items()):
        if any(path == w or path.startswith(w + "/") for w in wanted) and "/build/" not in path[len(analysis.root):]:
            groups.setdefault((os.path.dirname(path), tuple(arguments_of(entry))), []).append(entry)
    batches = [group[i:i + TOGETHER] for group in groups.values() for i in range(0, len(group), TOGETHER)]
    count, wrong, told = sum(map(len, batches)), [], set()
    with concurrent.futures.ThreadPoolExecutor(int(os.environ.get("JOBS", os.cpu_count() or 1))) as pool:
        for sources, texts in pool.map(analysis.check, batches):
            wrong += sources
            for text in texts:
                if text not in told:
                    told.add(text)
                    print(text, flush=True)
    print(f"{kind}: {count - len(wrong)} of {count} sources are clean")
    return 1 if wrong else 0


sys.exit(main())
