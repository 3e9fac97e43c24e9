"""pages.py ROOT: what a page says in one language, it says in the other. Both have the same headings, by level, and tables of the
same size, in the same places; what stands in a table as code of a first column is the same."""
import pathlib
import re
import sys

PAIRS = {"a-sale": "una-venta", "chain": "cadena", "conventions": "convenciones", "errors": "errores", "host": "host", "languages": "lenguajes"}
LATER = {"web": "web", "windows": "windows"}  # held to it as soon as there are two of them


def shape(page):
    """The headings and tables: ("##", None) or (columns, rows, codes), with the line on which each begins."""
    text = re.sub(r"^```.*?^```$", lambda code: "\n" * code.group().count("\n"), page.read_text("utf-8"), flags=re.S | re.M)
    parts, table = [], []
    for number, line in enumerate([*text.splitlines(), ""], 1):
        if line.startswith("|"):
            table.append(line)
            continue
        if table:
            codes = [re.findall(r"`([^`]*)`", row.split("|")[1]) for row in table[2:]]
            parts.append((number - len(table), (table[0].count("|") - 1, len(table) - 2, codes)))
            table = []
        if heading := re.match(r"(#+) ", line):
            parts.append((number, heading.group(1)))
    return parts


def words(part):
    return f"a heading {part}" if isinstance(part, str) else f"a table of {part[0]} columns and {part[1]} rows"


def differences(english, spanish):
    ours, theirs = shape(english), shape(spanish)
    for (line, one), (other_line, other) in zip(ours, theirs):
        same_codes = isinstance(one, str) or isinstance(other, str) or one[2] == other[2]
        if (one if isinstance(one, str) else one[:2]) != (other if isinstance(other, str) else other[:2]):
            yield f"{english.name}:{line} has {words(one)}, {spanish.name}:{other_line} {words(other)}"
            return
        if not same_codes:
            rows = [f"{a} and {b}" for a, b in zip(one[2], other[2]) if a != b]
            yield f"{english.name}:{line} and {spanish.name}:{other_line}: a first column has {'; '.join(rows)}"
    if len(ours) != len(theirs):
        yield f"{english.name} has {len(ours)} headings and tables, {spanish.name} {len(theirs)}"



def main(root):
    pairs = PAIRS | {english: spanish for english, spanish in LATER.items()
                     if all((root / "docs" / name).exists() for name in (f"{english}.md", f"es/{spanish}.md"))}
    faults = [fault for english, spanish in pairs.items()
              for fault in differences(root / "docs" / f"{english}.md", root / "docs/es" / f"{spanish}.md")]
    print("\n".join(faults) or f"{len(pairs)} pages say the same in both languages")
    return 1 if faults else 0


sys.exit(main(pathlib.Path(sys.argv[1])))
