#!/usr/bin/env python3
"""Keeps docs/cli.md and the man page in step with the program's own help.

docs/cli.md holds, between "<!-- help: COMMAND -->" and "<!-- /help -->", the
exact text `glyphwright-cli COMMAND --help` prints (COMMAND "all": the whole
help). With --write the blocks are rewritten from the program; without it each
block is compared, and every option the helps name must appear in the man page.
Prints what differs and exits 1.
  scripts/check_cli_doc.py CLI [--write]
"""
import pathlib
import re
import subprocess
import sys

root = pathlib.Path(__file__).resolve().parent.parent
cli = sys.argv[1]
write = "--write" in sys.argv[2:]
doc_path = root / "docs" / "cli.md"
man = (root / "data" / "man" / "glyphwright-cli.1").read_text(encoding="utf-8").replace("\\-", "-")
doc = doc_path.read_text(encoding="utf-8")
block = re.compile(r"(<!-- help: ([a-z-]+) -->\n```\n)(.*?)(```\n<!-- /help -->)", re.S)


def help_text(command):
    args = [cli, "--help"] if command == "all" else [cli, command, "--help"]
    run = subprocess.run(args, capture_output=True, text=True)
    if run.returncode != 0:
        sys.exit(f"{' '.join(args)} exited {run.returncode}: {run.stderr}")
    return run.stdout


problems = []
options = set()
commands = block.findall(doc)
if not commands:
    problems.append("docs/cli.md has no help blocks")


def replace(m):
    text = help_text(m.group(2))
    options.update(re.findall(r"(?<![\w-])--[a-z][a-z0-9-]*", text))
    if not write and text != m.group(3):
        problems.append(f"docs/cli.md: the block of '{m.group(2)} --help' differs from the program's help")
    return m.group(1) + text + m.group(4)


new = block.sub(replace, doc)
if write:
    doc_path.write_text(new, encoding="utf-8")
for option in sorted(options):
    if option not in man:
        problems.append(f"data/man/glyphwright-cli.1 does not mention {option}")
for p in problems:
    print(p)
print(f"{len(commands)} help blocks, {len(options)} options checked, {len(problems)} problems")
sys.exit(1 if problems else 0)
