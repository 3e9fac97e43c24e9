"""links.py FOLDER: in all pages below it, every link to a file leads to one, and every # to a heading of it."""
import pathlib
import re
import sys

LINK = re.compile(r"\]\(([^)\s]+)\)")


def text_of(page):
    return re.sub(r"^```.*?^```", "", page.read_text("utf-8"), flags=re.S | re.M)


def anchors(page):
    headings = re.findall(r"^#+ (.*)$", text_of(page), re.M)
    return {re.sub(r"[^\w\- ]", "", heading.lower()).replace(" ", "-") for heading in headings}


def broken(folder):
    for page in sorted(folder.rglob("*.md")):
        for link in LINK.findall(text_of(page)):
            if "://" in link:
                continue
            name, _, anchor = link.partition("#")
            target = (page.parent / name) if name else page
            if not target.exists():
                yield f"{page}: {link} leads nowhere"
            elif anchor and anchor not in anchors(target):
                yield f"{page}: {target.name} has no heading #{anchor}"


root = pathlib.Path(sys.argv[1])
faults = list(broken(root))
print("\n".join(faults))
sys.exit(1 if faults or not list(root.rglob("LEEME.md")) else 0)
