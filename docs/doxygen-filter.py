#!/usr/bin/env python3
"""Turns the plain comments of a header into Doxygen's, for scripts/docs: what stands above a declaration, behind a field, and at the top of
the file. Words of the comments stay words: nothing in them is a command. Number of lines and their order stay as they are, but for one
line at the top.

    docs/doxygen-filter.py HEADER|PAGE
"""
import re
import sys

# What stands indented behind an empty line, or in a table of the header's own, keeps its form; indented lines that go on from an ordinary
# one are text.
KEPT = re.compile(r"^( {2,}|\|)")


ENTITIES = {"*": "&lowast;", "<": "&lt;", ">": "&gt;", "&": "&amp;", "$": "\\$", "`": "&#96;"}


def words(text, has_code=True):
    """Text without meaning to Doxygen, except for `code`, which it may show as such."""
    parts = re.split(r"(`[^`]*`)", text) if has_code else [text]
    for i in range(0, len(parts), 2):
        parts[i] = re.sub(r"([\\@<>&#%*$])", lambda m: ENTITIES.get(m[1], "\\" + m[1]), parts[i])
    for i in range(1, len(parts), 2):
        if "::" in parts[i]:  # no link
            parts[i] = "<code>" + words(parts[i][1:-1], False).replace("::", "\\::") + "</code>"
    return "".join(parts)


def flowing(line):
    """A line of text; numbered points and dashes begin on lines of their own."""
    text = line.strip()
    if re.match(r"\(\d+\) ", text):
        return "<br>" + words(text)
    return "<br>&bull; " + words(text[2:]) if text.startswith("- ") and line.startswith("  ") else words(text)


def block(lines, indent):
    """The comment above a declaration."""
    result, i = [], 0
    while i < len(lines):
        goes_on = lines[i].startswith("  ") and (lines[i].lstrip().startswith("- ") or (i > 0 and lines[i - 1]))
        if goes_on or not KEPT.match(lines[i]):
            result.append(indent + "/// " + flowing(lines[i]))
            i += 1
            continue
        end = i
        while end < len(lines) and (KEPT.match(lines[end]) or (not lines[end] and end + 1 < len(lines) and KEPT.match(lines[end + 1]))):
            end += 1
        for n in range(i, end):
            front = "<pre>" if n == i else ""
            back = "</pre>" if n == end - 1 else ""
            kept = words(lines[n], False).replace('"', "&quot;")
            result.append(f"{indent}/// {front}{kept}{back}")
        i = end
    return result


def main():
    with open(sys.argv[1], encoding="utf-8", errors="replace") as file:
        text = file.read()
    if sys.argv[1].endswith(".md"):  # a backslash as code would be taken for the escape of what follows
        sys.stdout.write(re.sub(r"`([^`\n]*\\[^`\n]*)`", lambda m: "<code>" + words(m[1], False).replace('"', "&quot;") + "</code>", text))
        return
    source = text.split("\n")
    out, i, top = [], 0, True
    while i < len(source):
        line = source[i]
        above = re.match(r"^(\s*)//(?!/)", line)
        if above:
            comment = []
            while i < len(source) and re.match(r"^\s*//(?!/)", source[i]):
                comment.append(re.sub(r"^\s*// ?", "", source[i]).rstrip())
                i += 1
            if top:
                out.append("/// @file")
            if not comment[0].startswith("---") and not comment[0].startswith("NOLINT"):
                out += block(comment, above[1])
            else:
                out += [""] * len(comment)
            top = False
            continue
        top = False
        behind = re.match(r'^((?:[^"/]|"(?:[^"\\]|\\.)*"|/(?!/))*[,;})A-Za-z0-9_])(\s+)//(?!/) ?(.*)$', line)
        if behind and not line.lstrip().startswith(("#", "}")) and re.search(r"[,;]$|^\s*\w+( = .*)?$", behind[1]):
            out.append(f"{behind[1]}{behind[2]}///< {words(behind[3])}")
        else:
            out.append(line)
        i += 1
    sys.stdout.write("\n".join(out))


main()
