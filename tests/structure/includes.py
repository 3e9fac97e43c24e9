"""Each floor of src/ includes only floors below it; the virtual printer knows none of them, and no system stands in an #if outside
src/platform."""
import pathlib
import re
import sys

FLOORS = ["text", "platform", "automation", "util", "serial", "printer", "documents", "reports", "interface"]
SYSTEM = re.compile(r"#\s*(if|elif).*(_WIN32|__linux__|__unix__|_MSC_VER)")


def includes(path):
    return re.findall(r'#include "([^"/]+)/', path.read_text(encoding="utf-8"))


def main(root):
    faults = []
    files = 0
    for path in sorted([*root.glob("src/**/*.h"), *root.glob("src/**/*.cpp")]):
        files += 1
        floor = path.relative_to(root / "src").parts[0]
        if floor not in FLOORS:
            continue  # zentaro.h, the whole
        for used in includes(path):
            if used not in FLOORS or FLOORS.index(used) > FLOORS.index(floor):
                faults.append(f"{path}: {floor} may not include {used}")
    for path in root.glob("virtual-printer/**/*"):
        if path.suffix in (".h", ".cpp"):
            files += 1
            faults += [f"{path}: the printer may not know the library's {used}" for used in includes(path)
                       if used in FLOORS]
    for folder in ("src", "tools", "virtual-printer"):
        for path in (root / folder).glob("**/*"):
            if path.suffix in (".h", ".cpp") and "platform" not in path.relative_to(root).parts:
                faults += [f"{path}: {line.strip()}" for line in path.read_text(encoding="utf-8").splitlines()
                           if SYSTEM.match(line)]
    print("\n".join(faults) or f"{files} files keep the rule")
    return 1 if faults or files < 50 else 0


sys.exit(main(pathlib.Path(sys.argv[1])))
