"""readme.py FILE PROGRAM PAGE...: the first program of the pages is FILE to the letter, and prints."""
import pathlib
import re
import subprocess
import sys

source, program, *pages = sys.argv[1:]
wanted = pathlib.Path(source).read_text(encoding="utf-8")
for page in pages:
    shown = re.search(r"```cpp\n(.*?)```", pathlib.Path(page).read_text(encoding="utf-8"), re.S)
    assert shown and shown.group(1) == wanted, f"{page} shows another program"
ran = subprocess.run([program], capture_output=True, text=True, timeout=60, check=True)
assert re.search(r"TOTAL +Bs 29,00", ran.stdout), ran.stdout
