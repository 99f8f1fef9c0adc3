"""Mutation testing of one folder of zelbase/: what scripts/mutate runs.

All places are compiled at once: each becomes a choice that a number decides when the program runs, `(zelbase_at(17) ? a <= b : a < b)`,
in a copy of the folder's files. So the folder is compiled once and its test program started once a place, with ZELBASE_MUTANT=17.
A first run without a mutant notes which test comes by which places, and how long it takes: of each mutant those tests run first,
the quick ones before the slow ones, and all others after them. Suites whose names end in Long stay out.

Places are taken from the bodies of functions by libclang. Left alone: constexpr functions and constants, labels, default arguments,
what a macro wrote, and calls that only make room (reserve). A place whose choice does not compile is replaced by another.
"""

import argparse
import hashlib
import inspect
import json
import os
import pickle
import re
import shlex
import shutil
import signal
import subprocess
import sys
import tempfile
import time
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

import clang.cindex
from clang.cindex import CursorKind as K, TypeKind as T

ROOT = Path(__file__).resolve().parent.parent
CLEAN = ROOT / "build/mutants/clean"
NOTICED_ENOUGH = 0.9
QUICK_SECONDS = 0.5         # of tests in the first batch of a mutant
SLOW_SECONDS = 2.0          # of the processor: a test that takes longer is left out, but for --patient; so fewer are noticed, not more
SHORT_SECONDS = 0.1         # of a test that runs against every survivor
BUSY = 20                   # how much longer a second of the processor may take on a busy machine
MEMORY = 4 << 30            # of one test program, in bytes
BIGGEST_FILE = 6 << 30      # that it may write, in bytes
COMPARISONS = {"<": ["<=", ">="], "<=": ["<", ">"], ">": [">=", "<="], ">=": [">", "<"], "==": ["!="], "!=": ["=="]}
EXCHANGED = {"+": ["-"], "-": ["+"], "&&": ["||"], "||": ["&&"], "+=": ["-="], "-=": ["+="]}
OPERATORS = {**COMPARISONS, **EXCHANGED}
ONLY_ROOM = re.compile(r"[.>](reserve|shrink_to_fit)\(|^(detail::)?Prefetch|^static_cast<void>|^\(void\)")
NUMBER = re.compile(r"^(0[xX][0-9a-fA-F']+|[0-9][0-9']*(\.[0-9]*)?([eE][-+]?[0-9]+)?)[uUlLzZfF]*$")
FUNCTIONS = (K.FUNCTION_DECL, K.CXX_METHOD, K.CONSTRUCTOR, K.DESTRUCTOR, K.CONVERSION_FUNCTION, K.FUNCTION_TEMPLATE)
WHOLE = (T.CHAR_S, T.CHAR_U, T.SCHAR, T.UCHAR, T.SHORT, T.USHORT, T.INT, T.UINT, T.LONG, T.ULONG, T.LONGLONG, T.ULONGLONG)
REAL = (T.FLOAT, T.DOUBLE, T.LONGDOUBLE)

SUPPORT_HEADER = """#pragma once
extern "C" int zelbase_mutant;
extern "C" unsigned char* zelbase_reached;
inline bool zelbase_at(int place) { zelbase_reached[place] = 1; return zelbase_mutant == place; }
"""

# Linked into the test program: which mutant is on, and for the first run which test came by which place. The marks are shared with
# children that a test forks.
SUPPORT_SOURCE = """#include <gtest/gtest.h>
#include <sys/mman.h>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
namespace { constexpr int kPlaces = 65536; unsigned char g_first[kPlaces]; }
extern "C" { int zelbase_mutant = 0; unsigned char* zelbase_reached = g_first; }
namespace {
__attribute__((constructor(101))) void Choose() {
  if (const char* number = std::getenv("ZELBASE_MUTANT")) zelbase_mutant = std::atoi(number);
  void* shared = mmap(nullptr, kPlaces, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
  if (shared != MAP_FAILED) zelbase_reached = static_cast<unsigned char*>(shared);
}
struct Tracer : testing::EmptyTestEventListener {
  explicit Tracer(const char* path) : file(std::fopen(path, "w")) {}
  void OnTestStart(const testing::TestInfo&) override {
    if (first) Write("", "", 0);
    first = false;
    begun = std::clock();
  }
  void OnTestEnd(const testing::TestInfo& test) override {
    Write(test.test_suite_name(), test.name(), static_cast<long>((std::clock() - begun) / (CLOCKS_PER_SEC / 1000)));
  }
  void OnTestProgramEnd(const testing::UnitTest&) override { Write("", "", 0); }
  void Write(const char* suite, const char* name, long milliseconds) {
    std::fprintf(file, "%s.%s %ld", suite, name, milliseconds);
    for (int i = 1; i < kPlaces; ++i) if (zelbase_reached[i] != 0) std::fprintf(file, " %d", i);
    std::fputc('\\n', file);
    std::fflush(file);
    std::memset(zelbase_reached, 0, kPlaces);
  }
  std::FILE* file;
  bool first = true;
  std::clock_t begun = 0;
};
[[maybe_unused]] const bool g_traced = [] {
  const char* const path = std::getenv("ZELBASE_MUTANT_TRACE");
  if (path != nullptr) testing::UnitTest::GetInstance()->listeners().Append(new Tracer(path));
  unsetenv("ZELBASE_MUTANT_TRACE");
  return path != nullptr;
}();
}
"""


class Place:
  """A stretch of a file, and what stands there instead while its mutant is on."""

  def __init__(self, file, start, end, kind, was, becomes, split=None):
    self.file, self.start, self.end, self.kind, self.split = file, start, end, kind, split
    self.was, self.becomes = " ".join(was.split()), " ".join(becomes.split())
    self.line = self.line_text = None
    self.template = False
    self.number = 0

  def key(self):
    return (self.file, self.line_text, f"{self.was} -> {self.becomes}")


def text_of(path):
  return path.read_bytes().decode("latin-1")  # so that an offset in bytes is one in characters


class Finder:
  """The places of one translation unit that lie in the folder."""

  def __init__(self, folder, places, texts):
    self.folder, self.places, self.texts, self.template = folder, places, texts, False

  def add(self, cursor, start, end, kind, becomes, split=None, was=None):
    file = str(Path(cursor.location.file.name).resolve().relative_to(ROOT))
    text = self.texts.setdefault(file, text_of(ROOT / file))
    place = Place(file, start, end, kind, text[start:end] if was is None else was, becomes, split)
    place.line = text.count("\n", 0, start) + 1
    place.line_text = " ".join(text.splitlines()[place.line - 1].split())
    place.template = self.template
    self.places.setdefault((file, start, end, kind, place.becomes), place)

  def source(self, cursor, start=None, end=None):
    file = str(Path(cursor.location.file.name).resolve().relative_to(ROOT))
    text = self.texts.setdefault(file, text_of(ROOT / file))
    return text[cursor.extent.start.offset if start is None else start:cursor.extent.end.offset if end is None else end]

  def unit(self, cursor):
    for child in cursor.get_children():
      if child.location.file is None or f"/zelbase/{self.folder}/" not in child.location.file.name:
        continue
      outside = self.template
      self.template = outside or child.kind in (K.FUNCTION_TEMPLATE, K.CLASS_TEMPLATE, K.CLASS_TEMPLATE_PARTIAL_SPECIALIZATION)
      if child.kind in FUNCTIONS:
        self.function(child)
      elif child.kind in (K.NAMESPACE, K.CLASS_DECL, K.STRUCT_DECL, K.CLASS_TEMPLATE, K.LINKAGE_SPEC,
                          K.UNEXPOSED_DECL, K.CLASS_TEMPLATE_PARTIAL_SPECIALIZATION):
        self.unit(child)
      self.template = outside

  def function(self, cursor):
    if not cursor.is_definition():
      return
    children = list(cursor.get_children())
    bodies = [c for c in children if c.kind == K.COMPOUND_STMT]
    begin = cursor.extent.start.file
    if not bodies or begin is None or begin.name != bodies[-1].extent.start.file.name:
      return  # a macro wrote it, or a part of it
    head = self.source(cursor, cursor.extent.start.offset, bodies[-1].extent.start.offset)
    if re.search(r"\b(constexpr|consteval)\b", head):
      return
    result = cursor.result_type.get_canonical()
    for child in children:
      if child.kind.is_expression() or child.kind == K.COMPOUND_STMT:
        self.walk(child, cursor, result)

  def walk(self, cursor, parent, result):
    kind = cursor.kind
    children = list(cursor.get_children())
    if kind == K.LAMBDA_EXPR:
      result = None
    elif kind in (K.BINARY_OPERATOR, K.COMPOUND_ASSIGNMENT_OPERATOR) and len(children) == 2:
      self.operator(cursor, children[0], children[1])
    elif kind == K.CALL_EXPR and cursor.spelling.startswith("operator") and len(children) == 3:
      self.overloaded(cursor, children)
    elif kind in (K.INTEGER_LITERAL, K.FLOATING_LITERAL):
      self.literal(cursor)
    elif kind in (K.IF_STMT, K.WHILE_STMT, K.CONDITIONAL_OPERATOR, K.FOR_STMT, K.DO_STMT):
      self.condition(cursor, children)
    elif kind == K.RETURN_STMT and children:
      self.returned(cursor, children[0], result)
    elif kind == K.VAR_DECL:
      if re.search(r"\bconstexpr\b", self.source(cursor)) or cursor.type.kind == T.CONSTANTARRAY:
        children = [c for c in children if c.kind == K.INIT_LIST_EXPR and "constexpr" not in self.source(cursor)]
    elif kind == K.CASE_STMT:
      self.statement(children[-1], cursor)
      children = children[1:]
    elif kind in (K.STATIC_ASSERT, K.TYPE_REF, K.TEMPLATE_REF, K.PARM_DECL, K.CLASS_DECL, K.STRUCT_DECL):
      return
    self.statements(cursor, children)
    for child in children:
      self.walk(child, cursor, result)

  def statements(self, cursor, children):
    if cursor.kind == K.COMPOUND_STMT:
      bodies = children
    elif cursor.kind == K.IF_STMT:
      bodies = children[1:]
    elif cursor.kind in (K.FOR_STMT, K.WHILE_STMT, K.CXX_FOR_RANGE_STMT, K.DEFAULT_STMT):
      bodies = children[-1:]
    else:
      return
    for body in bodies:
      self.statement(body, cursor)

  def statement(self, cursor, parent):
    if cursor.kind not in (K.CALL_EXPR, K.BINARY_OPERATOR, K.COMPOUND_ASSIGNMENT_OPERATOR, K.UNARY_OPERATOR, K.UNEXPOSED_EXPR):
      return
    text = self.source(cursor)
    if ONLY_ROOM.search(text) or "\n#" in text or text.startswith("delete"):
      return
    self.add(cursor, cursor.extent.start.offset, cursor.extent.end.offset, "drop", "(nothing)")

  def operator(self, cursor, left, right):
    start, end = left.extent.end.offset, right.extent.start.offset
    if not cursor.extent.start.offset <= start <= end <= cursor.extent.end.offset:
      return
    between = re.sub(r"//[^\n]*|/\*.*?\*/", lambda m: " " * len(m.group()), self.source(cursor, start, end), flags=re.S)
    sign = between.strip()
    if sign not in OPERATORS:
      return
    at = start + between.index(sign)
    whole = self.source(cursor)
    for other in OPERATORS[sign]:
      cut = at - cursor.extent.start.offset
      becomes = whole[:cut] + other + whole[cut + len(sign):]
      self.add(cursor, cursor.extent.start.offset, cursor.extent.end.offset, "operator", becomes, (at, at + len(sign), other))

  def overloaded(self, cursor, children):
    sign = cursor.spelling[len("operator"):]
    if cursor.extent.end.offset < children[2].extent.end.offset:
      return  # written the other way round by the compiler
    if sign in COMPARISONS:
      self.add(cursor, cursor.extent.start.offset, cursor.extent.end.offset, "negate", f"!({self.source(cursor)})")
    elif sign in EXCHANGED:
      self.operator(cursor, children[0], children[2])

  def literal(self, cursor):
    text = self.source(cursor)
    if NUMBER.match(text):
      for sign in "+-":
        self.add(cursor, cursor.extent.start.offset, cursor.extent.end.offset, "literal", f"{text} {sign} 1", sign)

  def condition(self, cursor, children):
    loop = cursor.kind in (K.WHILE_STMT, K.FOR_STMT, K.DO_STMT)
    condition = children[-1] if cursor.kind == K.DO_STMT else children[0] if children else None
    if cursor.kind == K.IF_STMT and re.match(r"if\s+constexpr", self.source(cursor)):
      return
    if cursor.kind == K.IF_STMT and len(children) >= 2 and not self.is_first(cursor, condition):
      return
    if cursor.kind == K.FOR_STMT:
      condition = self.loop_condition(cursor, children)
    if condition is None or not condition.kind.is_expression():
      return
    start, end = condition.extent.start.offset, condition.extent.end.offset
    for value in (["false"] if loop else ["true", "false"]):
      if self.source(condition) != value:
        self.add(condition, start, end, "force", value)

  def is_first(self, cursor, condition):
    return re.fullmatch(r"if\s*\(\s*", self.source(cursor, cursor.extent.start.offset, condition.extent.start.offset)) is not None

  def loop_condition(self, cursor, children):
    text, begin = self.source(cursor), cursor.extent.start.offset
    depth, ends = 0, []
    for at, c in enumerate(text):
      depth += (c in "([{") - (c in ")]}")
      if c == ";" and depth == 1:
        ends.append(begin + at)
      if len(ends) == 2:
        return next((c for c in children if ends[0] < c.extent.start.offset < ends[1]), None)
    return None

  def returned(self, cursor, value, result):
    text = self.source(value)
    start, end = cursor.extent.start.offset, cursor.extent.end.offset
    kind = (value.type.get_canonical() if result is None else result).kind
    if not text or text in ("{}", "nullptr") or not self.source(cursor).startswith("return"):
      return
    first = value.extent.start.offset
    if kind == T.BOOL:
      compared = value.kind == K.BINARY_OPERATOR and not re.search(r"&&|\|\|", text)
      if not compared:
        becomes = {"true": "false", "false": "true"}.get(text, f"!({text})")
        self.add(value, first, value.extent.end.offset, "negate", becomes)
    elif kind in WHOLE + REAL and not NUMBER.match(text):
      self.add(value, first, value.extent.end.offset, "more", f"{text} + 1")
    elif kind == T.POINTER:
      self.add(value, first, value.extent.end.offset, "null", "nullptr")
    elif kind == T.RECORD and result is not None and not re.fullmatch(r"[\w:<>]+(\(\)|\{\})|\"\"", text):
      file = self.texts[str(Path(cursor.location.file.name).resolve().relative_to(ROOT))]
      if re.match(r"\s*;", file[end:]):
        after = file.index(";", end) + 1
        self.add(cursor, start, after, "empty", "return {};", was=self.source(cursor))


def render(text, begin, end, places, out):
  """Appends text[begin:end] with the choices of `places` (sorted, properly nested) to the list `out`."""
  at = begin
  index = 0
  while index < len(places):
    place = places[index]
    last = index + 1
    while last < len(places) and places[last].start < place.end:
      last += 1
    inner = places[index + 1:last]
    out.append(text[at:place.start])
    out.append(("open", place))
    choose(text, place, inner, out)
    out.append(("close", place))
    at = place.end
    index = last
  out.append(text[at:end])


def within(places, begin, end):
  return [p for p in places if begin <= p.start and p.end <= end]


def choose(text, place, inner, out):
  def put(*parts):
    for part in parts:
      if isinstance(part, str):
        out.append(part)
      else:
        render(text, part[0], part[1], within(inner, *part), out)

  whole, test = (place.start, place.end), f"zelbase_at({place.number})"
  if place.kind == "operator":
    begin, end, other = place.split
    left, right = (place.start, begin), (end, place.end)
    put(f"({test} ? ((", left, f") {other} (", right, ")) : ((", left, f") {text[begin:end]} (", right, ")))")
  elif place.kind == "negate":
    put(f"({test} ? !(", whole, ") : static_cast<bool>(", whole, "))")
  elif place.kind == "literal":
    number = text[place.start:place.end]
    put(f"({test} ? static_cast<decltype({number})>({number} {place.split} 1) : ({number}))")
  elif place.kind == "force":
    put(f"({test} ? {place.becomes} : static_cast<bool>(", whole, "))")
  elif place.kind == "drop":
    put(f"({test} ? static_cast<void>(0) : static_cast<void>(", whole, "))")
  elif place.kind == "more":
    put(f"({test} ? static_cast<decltype(", whole, ")>((", whole, ") + 1) : (", whole, "))")
  elif place.kind == "null":
    put(f"({test} ? nullptr : (", whole, "))")
  elif place.kind == "empty":
    put(f"{{ if ({test}) return {{}}; ", whole, " }")


def write_copy(file, places, folder, copy):
  """Writes the copy of one file; gives where each place lies in it, as (begin, end, place)."""
  text = text_of(ROOT / file)
  out, ranges, opened, position = [], [], [], 0
  render(text, 0, len(text), sorted(places, key=lambda p: (p.start, -p.end, p.kind != "empty", p.kind != "drop")), out)
  pieces = []
  for part in out:
    if isinstance(part, str):
      pieces.append(part)
      position += len(part)
    elif part[0] == "open":
      opened.append(position)
    else:
      ranges.append((opened.pop(), position, part[1]))
  target = copy / file
  target.parent.mkdir(parents=True, exist_ok=True)
  content = "".join(pieces).encode("latin-1")
  if not target.exists() or target.read_bytes() != content:
    target.write_bytes(content)
  return ranges


def nested(places):
  """Without those that overlap others without lying in them, and one only of each stretch."""
  kept, stack, last = [], [], None
  for place in sorted(places, key=lambda p: (p.start, -p.end)):
    if (place.start, place.end) == last:
      continue
    while stack and stack[-1].end <= place.start:
      stack.pop()
    if stack and (place.end > stack[-1].end or not fits(stack[-1], place)):
      continue
    kept.append(place)
    stack.append(place)
    last = (place.start, place.end)
  return kept


def fits(outer, inner):
  return outer.kind != "operator" or inner.end <= outer.split[0] or inner.start >= outer.split[1]


def run(command, **more):
  return subprocess.run(command, capture_output=True, text=True, errors="replace", **more)


class Folder:
  def __init__(self, name, count):
    self.name, self.count = name, count
    self.build = ROOT / "build/mutants" / name
    self.copy = self.build / "copy"
    self.program = self.build / f"{name}_tests"
    self.dropped = set()
    self.patience = SLOW_SECONDS
    self.jobs = 1

  # ---- What is built ----

  def prepare(self):
    if not (ROOT / "zelbase" / self.name).is_dir() or not (ROOT / "tests" / self.name).is_dir():
      sys.exit(f"scripts/mutate: no such folder: {self.name}")
    self.build.mkdir(parents=True, exist_ok=True)
    if not (CLEAN / "build.ninja").exists():
      self.must(["cmake", "--preset", "debug", "-B", str(CLEAN), "-DZELBASE_BUILD_APPS=OFF", "-DZELBASE_BUILD_ADAPTERS=OFF"])
    self.must(["cmake", "--build", str(CLEAN), f"-j{self.jobs}", "--target", f"{self.name}_tests"])
    commands = json.loads((CLEAN / "compile_commands.json").read_text())
    self.commands = {str(Path(c["file"]).relative_to(ROOT)): c["command"] for c in commands
                     if Path(c["file"]).is_relative_to(ROOT)}
    self.sources = sorted(f for f in self.commands if f.startswith(f"zelbase/{self.name}/"))
    self.tests = sorted(f for f in self.commands if f.startswith(f"tests/{self.name}/"))

  def must(self, command, **more):
    result = run(command, cwd=ROOT, **more)
    if result.returncode != 0:
      sys.exit(f"scripts/mutate: {' '.join(map(str, command))[:300]} failed:\n{(result.stdout + result.stderr)[-3000:]}")
    return result.stdout

  def files(self):
    return sorted(str(p.relative_to(ROOT)) for p in (ROOT / "zelbase" / self.name).rglob("*") if p.suffix in (".h", ".cpp"))

  # ---- The places ----

  def find(self):
    digest = hashlib.sha1((inspect.getsource(Finder) + inspect.getsource(Place)).encode())
    for file in sorted((ROOT / "zelbase").rglob("*.h")) + [ROOT / f for f in self.files()]:
      digest.update(file.read_bytes())
    self.digest = digest.hexdigest()
    cache = self.build / "places.pickle"
    if cache.exists():
      known, places = pickle.loads(cache.read_bytes())
      if known == self.digest:
        return places
    found, texts = {}, {}
    index = clang.cindex.Index.create()
    any_command = self.commands[self.sources[0]]
    for file in self.sources + [f for f in self.files() if f.endswith(".h")]:
      arguments = self.flags(self.commands.get(file, any_command)) + ["-resource-dir", "/usr/lib/llvm-14/lib/clang/14.0.6", "-x", "c++"]
      unit = index.parse(str(ROOT / file), args=arguments)
      Finder(self.name, found, texts).unit(unit.cursor)
    places = list(found.values())
    cache.write_bytes(pickle.dumps((self.digest, places)))
    return places

  @staticmethod
  def flags(command):
    words = shlex.split(command)
    return [w for w in words if re.match(r"-(std|D|I|isystem|m)", w)]

  def choose(self, places):
    """The same places every time, whatever changes elsewhere: the order of a file's places is that of their texts' hashes.
    Each file gives its share, and one at least."""
    def order(place):
      return hashlib.sha1(repr((place.key(), place.kind)).encode("latin-1")).digest()

    files = {}
    for place in sorted(places, key=order):
      if self.identity(place) not in self.dropped:
        files.setdefault(place.file, []).append(place)
    total = sum(map(len, files.values()))
    taken = {file: [] for file in files}

    def take(file, wanted):
      while files[file] and len(taken[file]) < wanted:
        place = files[file].pop(0)
        if len(nested(taken[file] + [place])) == len(taken[file]) + 1:
          taken[file].append(place)

    shares = {file: self.count * len(own) / max(total, 1) for file, own in files.items()}
    for file, share in shares.items():
      take(file, max(1, int(share)))
    for file in sorted(shares, key=lambda f: (int(shares[f]) - shares[f], f)) * 3:
      if sum(map(len, taken.values())) < self.count:
        take(file, len(taken[file]) + 1)
    chosen = sorted((p for own in taken.values() for p in own), key=lambda p: (p.file, p.start, -p.end))[:]
    for number, place in enumerate(chosen, 1):
      place.number = number
    return chosen

  @staticmethod
  def identity(place):
    return (place.file, place.start, place.end, place.kind, place.becomes)

  # ---- The program with all mutants in it ----

  def compile_all(self, places):
    """The chosen places, compiled: those that do not compile gave way to others."""
    self.remember_dropped()
    self.write_header()
    (self.build / "mutant.cpp").write_text(SUPPORT_SOURCE)
    for _ in range(40):
      chosen = self.choose(places)
      ranges = {}
      for file in self.files():
        ranges[file] = write_copy(file, [p for p in chosen if p.file == file], self.name, self.copy)
      refused = self.compile_sources(ranges)
      if not refused:
        break
      self.dropped |= {self.identity(p) for p in refused}
      (self.build / "dropped.json").write_text(json.dumps([self.digest, sorted(self.dropped)]))
      print(f"  {len(refused)} places do not compile as a choice; others take their turn", flush=True)
    else:
      sys.exit("scripts/mutate: the places do not come to compile")
    self.compile_tests({p.file for p in chosen if p.template and p.file.endswith(".h")})
    self.link()
    return chosen

  # The test files' own copies of inline functions give way to the changed ones, which are linked before them; the templates of a
  # header come to the tests only by compiling those again.
  def compile_tests(self, templates):
    self.test_objects = []
    for test in self.tests:
      words = shlex.split(self.commands[test])
      ready = words[words.index("-o") + 1]
      needed = run(["ninja", "-C", str(CLEAN), "-t", "deps", ready]).stdout if templates else ""
      if any(needed_file in needed for needed_file in templates):
        self.compile(test, ROOT / test, must=True)
        ready = str(self.object_of(test))
      self.test_objects.append(ready)

  def remember_dropped(self):
    known = self.build / "dropped.json"
    if known.exists():
      digest, dropped = json.loads(known.read_text())
      self.dropped = set(map(tuple, dropped)) if digest == self.digest else set()

  # With the standard headers of the folder, compiled beforehand: they are most of what there is to compile.
  def write_header(self):
    standard = {h for f in self.files() for h in re.findall(r"^#include (<[a-z_]+>)", text_of(ROOT / f), flags=re.M)}
    content = SUPPORT_HEADER + "".join(f"#include {h}\n" for h in sorted(standard))
    header = self.build / "mutant.h"
    ready = self.build / "mutant.h.gch"
    if ready.exists() and header.exists() and header.read_text() == content:
      return
    header.write_text(content)
    words = self.words(self.sources[0])
    self.must_in_clean(words + ["-x", "c++-header", str(header), "-o", str(ready)])

  # The command of a file without its source and target.
  def words(self, file):
    words = shlex.split(self.commands[file])
    at = words.index("-o")
    words = words[:at] + words[at + 2:]
    return [w for w in words if w not in ("-c", "-g", "-Werror", str(ROOT / file))] + ["-w"]

  def object_of(self, file):
    return self.build / "objects" / (file + ".o")

  def compile(self, file, source, must=False):
    target = self.object_of(file)
    target.parent.mkdir(parents=True, exist_ok=True)
    words = self.words(file)
    compiler = next(i for i, w in enumerate(words) if re.search(r"(g\+\+|c\+\+|clang\+\+)[-\d.]*$", w)) + 1
    copy = ["-I", str(self.copy), "-include", str(self.build / "mutant.h")]
    words = words[:compiler] + copy + words[compiler:] + ["-c", str(source), "-o", str(target)]
    headers = self.copied_headers() + (self.test_headers() if file in self.tests else b"")
    key = self.digest + hashlib.sha1(repr(words).encode() + Path(source).read_bytes() + headers).hexdigest()
    stamp = target.with_suffix(".key")
    if target.exists() and stamp.exists() and stamp.read_text() == key:
      return subprocess.CompletedProcess(words, 0, "", "")
    result = run(words, cwd=CLEAN)
    if result.returncode == 0:
      stamp.write_text(key)
    else:
      stamp.unlink(missing_ok=True)
    if must and result.returncode != 0:
      sys.exit(f"scripts/mutate: {file} does not compile:\n{result.stderr[-3000:]}")
    return result

  # All inline functions of the folder's headers, whether or not its sources use them.
  def write_headers(self):
    included = "".join(f'#include "{f}"\n' for f in self.files() if f.endswith(".h"))
    self.headers = f"zelbase/{self.name}/AllHeadersOfTheFolder.cpp"
    plain = next(f for f in self.sources if "Kernels" not in f)
    self.commands[self.headers] = self.commands[plain].replace(str(ROOT / plain), str(ROOT / self.headers)) + " -fkeep-inline-functions"
    (self.copy / self.headers).write_text(included)

  def copied_headers(self):
    return b"".join(p.read_bytes() for p in sorted(self.copy.rglob("*.h")))

  @staticmethod
  def test_headers():
    return b"".join(p.read_bytes() for p in sorted((ROOT / "tests").rglob("*.h")))

  def compile_sources(self, ranges):
    refused = []
    self.write_headers()
    files = self.sources + [self.headers]
    with ThreadPoolExecutor(self.jobs) as pool:
      results = list(pool.map(lambda file: self.compile(file, self.copy / file), files))
    for file, result in zip(files, results):
      if result.returncode == 0:
        continue
      here = self.blamed(result.stderr, ranges)
      if not here:
        sys.exit(f"scripts/mutate: {file} does not compile:\n{result.stderr[-3000:]}")
      refused += here
    return refused

  def blamed(self, errors, ranges):
    blamed = {}
    for name, line, column in re.findall(r"^(\S+?):(\d+):(\d+): (?:fatal )?(?:error|note|  required)", errors, flags=re.M):
      path = (CLEAN / name).resolve()
      if not path.is_relative_to(self.copy):
        continue
      file = str(path.relative_to(self.copy))
      lines = text_of(path).splitlines(keepends=True)
      offset = sum(map(len, lines[:int(line) - 1])) + int(column) - 1
      hit = [r for r in ranges.get(file, []) if r[0] <= offset <= r[1]]
      if hit:
        place = min(hit, key=lambda r: r[1] - r[0])[2]
        blamed[self.identity(place)] = place
    if not blamed:  # an error behind a place, such as a size that is no constant any more: all of that function
      for name, line, column in re.findall(r"^(\S+?):(\d+):(\d+): error", errors, flags=re.M):
        path = (CLEAN / name).resolve()
        if path.is_relative_to(self.copy):
          file = str(path.relative_to(self.copy))
          near = sorted(ranges.get(file, []), key=lambda r: abs(text_of(path).count("\n", 0, r[0]) + 1 - int(line)))[:3]
          blamed |= {self.identity(r[2]): r[2] for r in near}
    return list(blamed.values())

  def link(self):
    self.must(["g++", "-std=c++20", "-O1", "-c", str(self.build / "mutant.cpp"), "-o", str(self.build / "mutant.o")])
    listed = run(["ninja", "-C", str(CLEAN), "-t", "commands", f"{self.name}_tests"]).stdout.splitlines()
    line = next(l for l in reversed(listed) if f" -o tests/{self.name}_tests " in l)
    part = next(p for p in line.split(" && ") if f" -o tests/{self.name}_tests " in p)
    words = shlex.split(part)
    at = words.index("-o")
    own = [i for i, w in enumerate(words) if w.endswith(".o")]
    changed = [str(self.object_of(f)) for f in self.sources + [self.headers]]
    objects = changed + [str(self.build / "mutant.o")] + self.test_objects
    kept = [w for i, w in enumerate(words) if i not in own and i not in (at, at + 1)]
    first = min(i for i, w in enumerate(kept) if w.endswith(".a") or w.endswith(".so"))
    words = kept[:first] + objects + kept[first:] + ["-o", str(self.program)]
    self.must_in_clean(words)

  def must_in_clean(self, words):
    result = run(words, cwd=CLEAN)
    if result.returncode != 0:
      sys.exit(f"scripts/mutate: linking failed:\n{result.stderr[-3000:]}")

  # ---- The runs ----

  def start(self, number, tests, seconds, trace=None):
    """True if all of `tests` pass within the time; with a trace, all but those and the long ones."""
    with tempfile.TemporaryDirectory(prefix="mutant") as place:
      flags = Path(place) / "flags"
      chosen = ":".join(tests) if trace is None else ":".join(["-*Long.*", "*Long/*"] + tests)
      flags.write_text(f"--gtest_filter={chosen}\n--gtest_brief=1\n" + ("--gtest_fail_fast\n" if trace is None else ""))
      work = Path(place) / "work"
      work.mkdir()
      environment = {**os.environ, "ZELBASE_MUTANT": str(number), "TMPDIR": str(work)}
      if trace is not None:
        environment["ZELBASE_MUTANT_TRACE"] = str(trace)

      cpu = int(seconds) + 2
      limits = ["prlimit", f"--cpu={cpu}:{cpu + 1}", f"--as={MEMORY}", f"--fsize={BIGGEST_FILE}", "--core=0"]
      log = (Path(place) / "log").open("wb")
      process = subprocess.Popen(limits + [str(self.program), f"--gtest_flagfile={flags}"], cwd=work, env=environment, stdout=log,
                                 stderr=log, stdin=subprocess.DEVNULL, start_new_session=True)
      try:
        return process.wait(timeout=BUSY * seconds + 60) == 0
      except subprocess.TimeoutExpired:
        return False
      finally:
        try:
          os.killpg(process.pid, signal.SIGKILL)  # the program and what it started: a session of its own
        except ProcessLookupError:
          pass
        process.wait()
        log.close()
        if trace is not None or tests == ["*"]:
          shutil.copy(Path(place) / "log", self.build / "last.log")

  # Notes which test comes by which places. Tests that an earlier run saw to be slow are not asked again.
  def clean_run(self):
    trace, known = self.build / "trace", self.build / "costs.json"
    costs = json.loads(known.read_text()) if known.exists() else {}
    slow = [name for name, seconds in costs.items() if seconds > self.patience]
    if not self.start(0, slow, 1800, trace):
      sys.exit(f"scripts/mutate: the tests fail without a mutant:\n{(self.build / 'last.log').read_text(errors='replace')[-3000:]}")
    self.by_place, self.cost = {}, {}
    for line in trace.read_text().splitlines():
      name, milliseconds, *reached = line.split()
      if name == ".":
        continue
      self.cost[name] = int(milliseconds) / 1000
      for number in reached:
        self.by_place.setdefault(int(number), []).append(name)
    known.write_text(json.dumps({**costs, **self.cost}))

  def noticed(self, place):
    tests = [t for t in self.by_place.get(place.number, []) if self.cost[t] <= self.patience]
    reaching = sorted(tests, key=lambda t: (self.cost[t], t))
    stem = Path(place.file).stem
    reaching.sort(key=lambda t: stem not in t.split(".")[0] or self.cost[t] > QUICK_SECONDS)
    quick, spent = [], 0.0
    for test in reaching:
      spent += self.cost[test]
      if spent > QUICK_SECONDS and quick:
        break
      quick.append(test)
    slow = reaching[len(quick):]
    for batch in (quick, slow):
      if batch and not self.start(place.number, batch, 10 * sum(self.cost[t] for t in batch) + 1):
        return True
    # What shows in a test that did not come by the place in the whole run: what the first use of all settles, and what a program
    # that the test starts does.
    others = [t for t in self.cost if t not in reaching and self.cost[t] <= SHORT_SECONDS]
    return not self.start(place.number, quick + others, 10 * sum(self.cost[t] for t in quick + others) + 1)

  def explained(self):
    """{key: reason} of tests/mutants/FOLDER.txt: blocks of `file`, `line`, `change` and `why`, parted by empty lines."""
    path = ROOT / "tests/mutants" / f"{self.name}.txt"
    reasons = {}
    if not path.exists():
      return reasons
    text = "\n".join(l for l in path.read_text(encoding="latin-1").splitlines() if not l.startswith("#"))
    for block in re.split(r"\n\s*\n", text.strip()):
      fields = dict(re.findall(r"^(file|line|change|why):\s*(.*(?:\n .*)*)", block, flags=re.M))
      if set(fields) != {"file", "line", "change", "why"}:
        sys.exit(f"scripts/mutate: {path.name}: a block is not whole:\n{block}")
      plain = {k: " ".join(v.split()) for k, v in fields.items()}
      reasons[(plain["file"], plain["line"], plain["change"])] = plain["why"]
    return reasons


def show(place):
  print(f"  {place.file}:{place.line}   (mutant {place.number})\n    line:   {place.line_text}\n    change: {place.was} -> {place.becomes}")


def main():
  parser = argparse.ArgumentParser(prog="scripts/mutate")
  parser.add_argument("folder")
  parser.add_argument("count", nargs="?", type=int, default=300)
  parser.add_argument("--survivors", action="store_true", help="those only that the last run did not see noticed")
  parser.add_argument("--one", type=int, help="this mutant only, all tests that are not long, with their output")
  parser.add_argument("-j", "--jobs", type=int, default=os.cpu_count() or 1, help="compilers, and test programs, at a time")
  parser.add_argument("--build", action="store_true", help="compiles only")
  parser.add_argument("--patient", action="store_true", help="with the tests that take longer than SLOW_SECONDS, too")
  options = parser.parse_args()
  folder = Folder(options.folder, options.count)
  folder.jobs = options.jobs
  if options.patient:
    folder.patience = float("inf")
  folder.prepare()
  places = folder.find()
  print(f"{options.folder}: {len(places)} possible changes; compiling {options.count}", flush=True)
  chosen = folder.compile_all(places)
  if options.one is not None:
    show(next(p for p in chosen if p.number == options.one))
    passed = folder.start(options.one, ["*"], 600)
    print((folder.build / "last.log").read_text(errors="replace")[-3000:], "passed" if passed else "noticed")
    return 0
  if options.build:
    return 0
  folder.clean_run()
  results = folder.build / "results.json"
  before = set(map(tuple, json.loads(results.read_text()))) if options.survivors and results.exists() else None
  print(f"  the tests take {sum(folder.cost.values()):.1f} s; {len(chosen)} mutants", flush=True)
  survivors, begun = [], time.time()
  asked = [p for p in chosen if before is None or p.key() in before]
  with ThreadPoolExecutor(folder.jobs) as pool:
    for at, (place, noticed) in enumerate(zip(asked, pool.map(folder.noticed, asked)), 1):
      if not noticed:
        survivors.append(place)
        print(f"  survived: {place.file}:{place.line}  {place.was} -> {place.becomes}", flush=True)
      if at % 50 == 0:
        print(f"  {at} of {len(asked)}, {time.time() - begun:.0f} s", flush=True)
  results.write_text(json.dumps([p.key() for p in survivors]))
  reasons = folder.explained()
  explained = [p for p in survivors if p.key() in reasons]
  open_ones = [p for p in survivors if p.key() not in reasons]
  for title, some in (("Explained", explained), ("Not explained", open_ones)):
    if some:
      print(f"{title}:")
      for place in some:
        show(place)
        if place.key() in reasons:
          print(f"    why:    {reasons[place.key()]}")
  seen = len(chosen) - len(survivors)
  share = seen / max(len(chosen), 1)
  print(f"{options.folder}: {len(chosen)} places, {seen} noticed ({100 * share:.1f} %), {len(explained)} survivors explained, "
        f"{len(open_ones)} not")
  return 0 if share >= NOTICED_ENOUGH else 1


if __name__ == "__main__":
  sys.exit(main())
