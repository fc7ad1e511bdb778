#!/usr/bin/env python3
"""Checks the documents against the tree: every link leads to a file, every path in backquotes exists, every name in
backquotes stands in the sources, every piece of C, C++ or XML stands in a sample as it is, the provider's words that
a table quotes are its words, and the changes of this version are told.

usage: docs_test.py    from the top folder of the tree
"""
import re
import subprocess
import sys
from pathlib import Path

from counting import Checks

# Documents that name a file by its last folders mean one below these.
PARTS = ["library", "provider", "platform", "."]
# What a user or a program makes, not the tree.
MADE = re.compile(r"^(build/|dist/|NAME|addressbook\.ini|profiles\.ini|file:line)|\.(vcf|csv|ldif|ldf|ldi|VCF|CSV)$|NAME\.")
NAME = re.compile(r"^[A-Za-z_]\w*(::\w+)*$")


def read_sources():
    files = subprocess.run(["git", "ls-files", "--cached", "--others", "--exclude-standard"], check=True,
                           capture_output=True, text=True).stdout.split()
    texts = {}
    for file in files:
        if not file.endswith((".md", ".ico", ".svg")) and "corpus/" not in file and Path(file).exists():
            texts[file] = Path(file).read_bytes().decode("utf-8", errors="replace")
    return texts


def exists(path):
    pattern = re.sub(r"\{[^}]*\}|<[^>]*>|NAME", "*", path.rstrip("/"))
    # A name without an ending means the header and the source.
    return any(next(iter(Path(part).glob(ending)), None) is not None
               for part in PARTS for ending in (pattern, pattern + ".*"))


def looks_like_path(token):
    return re.fullmatch(r"\.?[\w.*{},-]*(/[\w.*{},-]*)+|[\w-]+\.(h|cpp|c|py|sh|def|inc|rc|txt|md|json)", token)


def without_indents(text):
    return "\n".join(line.strip() for line in text.splitlines())


def check_document(checks, document, sources, words):
    def check(problem, is_right):
        checks.true(f"{document}: {problem}", is_right)

    text = document.read_text(encoding="utf-8")
    for piece in re.findall(r"^```(?:c|cpp|xml)\n(.*?)^```", text, re.DOTALL | re.MULTILINE):
        check(f"no sample has this:\n{piece}", any(without_indents(piece) in without_indents(sources[sample])
                                                   for sample in sources if sample.startswith("samples/")))
    text = re.sub(r"^```.*?^```", "", text, flags=re.DOTALL | re.MULTILINE)
    # The first cells of some tables quote what the provider says.
    for cell in re.findall(r'^\| (".*?") \|', text, re.MULTILINE):
        for quoted in re.findall(r'"([^"]+)"', cell):
            check(f'the provider does not say "{quoted}"',
                  any(quoted in sources[file] for file in sources if file.startswith("provider/")))
    for link in re.findall(r"\]\(([^)#]+)[^)]*\)", text):
        check(f"the link to {link} leads nowhere", re.match(r"\w+:", link) or (document.parent / link).exists())
    for token in re.findall(r"`([^`\n]+)`", text):
        token = token.removeprefix("./")
        if MADE.search(token):
            continue
        if looks_like_path(token):
            check(f"there is no {token}", (document.parent / token).exists() or exists(token) or
                  any(file.endswith("/" + token) for file in sources))
        elif NAME.match(token) and re.search(r"_|::|[a-z][A-Z]", token):
            check(f"no source has the name {token}", all(part in words for part in token.split("::")))


def main():
    checks = Checks()
    sources = read_sources()
    words = set(re.findall(r"\w+", " ".join(sources.values())))
    for document in sorted(Path(".").glob("**/*.md")):
        if document.parts[0] not in ("build", "dist"):
            check_document(checks, document, sources, words)
    version = re.search(r"^project\(.* VERSION ([\d.]+)", sources["CMakeLists.txt"], re.MULTILINE).group(1)
    checks.true(f"CHANGELOG.md does not tell the changes of version {version}",
                f"\n## {version}\n" in Path("CHANGELOG.md").read_text(encoding="utf-8"))
    sys.exit(checks.finish())


main()
