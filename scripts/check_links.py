#!/usr/bin/env python3
"""Checks the relative links of README.md and docs/*.md: every linked file or
picture exists, and every #anchor names a heading of its page (headings turned
into anchors the way Markdown renderers of code hosts do). Prints each broken
link and exits 1 when there is one."""
import pathlib
import re
import sys

root = pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else pathlib.Path(__file__).parent.parent)
pages = [root / "README.md"] + sorted((root / "docs").glob("*.md"))
link = re.compile(r"!?\[[^\]]*\]\(([^)\s]+)\)")


def anchors(page):
    names, in_code = set(), False
    for line in page.read_text(encoding="utf-8").splitlines():
        if line.startswith("```"):
            in_code = not in_code
        elif not in_code and line.startswith("#"):
            text = line.lstrip("#").strip().lower()
            text = re.sub(r"[^\w\- ]", "", text)
            names.add(text.replace(" ", "-"))
    return names


broken = 0
checked = 0
for page in pages:
    in_code = False
    for number, line in enumerate(page.read_text(encoding="utf-8").splitlines(), 1):
        if line.startswith("```"):
            in_code = not in_code
            continue
        if in_code:
            continue
        for target in link.findall(line):
            if re.match(r"[a-z]+:", target):
                continue
            checked += 1
            path, _, anchor = target.partition("#")
            dest = (page.parent / path).resolve() if path else page
            problem = None
            if not dest.exists():
                problem = "no such file"
            elif anchor and dest.suffix == ".md" and anchor not in anchors(dest):
                problem = "no such heading"
            if problem:
                broken += 1
                print(f"{page.relative_to(root)}:{number}: {target}: {problem}")
print(f"{checked} links checked, {broken} broken")
sys.exit(1 if broken else 0)
