#!/usr/bin/env python3
"""Writes the wheel with the library and the virtual printer in it, with nothing but Python.

wheel.py --name VERSION: how it is called here. wheel.py --info FOLDER VERSION: writes what a distribution's own package says of
itself. wheel.py FILE VERSION LIBRARY PRINTER STUBS [TILL]: writes the wheel; its tag is that in FILE.
"""
import base64
import hashlib
import pathlib
import sys
import sysconfig
import zipfile

here = pathlib.Path(__file__).parent
tag = "py3-none-" + sysconfig.get_platform().replace("-", "_").replace(".", "_")


def contents(tag, version, library, printer, stubs, till=None):
    """(name in the wheel, bytes, executable)"""
    for file in sorted((here / "zentaro").glob("*.py")) + [here / "zentaro" / "py.typed"]:
        yield f"zentaro/{file.name}", file.read_bytes(), False
    yield "zentaro/__init__.pyi", pathlib.Path(stubs).read_bytes(), False
    is_windows = library.endswith(".dll")
    yield f"zentaro/native/{'zentaro_c.dll' if is_windows else 'libzentaro.so.0'}", pathlib.Path(library).read_bytes(), False
    if till:
        yield "zentaro/native/libzentaro-till.so.0", pathlib.Path(till).read_bytes(), False
    yield f"zentaro/native/zentaro-printer{'.exe' if is_windows else ''}", pathlib.Path(printer).read_bytes(), True
    for name, text in information(version).items():
        yield f"zentaro-{version}.dist-info/{name}", text.encode(), False
    yield f"zentaro-{version}.dist-info/WHEEL", f"Wheel-Version: 1.0\nGenerator: zentaro\nRoot-Is-Purelib: false\nTag: {tag}\n".encode(), False


def information(version):
    return {
        "METADATA": f"Metadata-Version: 2.1\nName: zentaro\nVersion: {version}\nLicense: MIT\nRequires-Python: >=3.9\n"
                    "Summary: Drives a fiscal printer over a serial line, with a virtual printer to test against\n",
        # Under the module's own name, so that pytest knows it again where a conftest.py names it, too.
        "entry_points.txt": "[pytest11]\nzentaro.pytest_plugin = zentaro.pytest_plugin\n",
    }


def main(path, version, *parts):
    record = f"zentaro-{version}.dist-info/RECORD"
    lines = []
    with zipfile.ZipFile(path, "w", zipfile.ZIP_DEFLATED) as wheel:
        for name, data, executable in contents(pathlib.Path(path).stem.split("-", 2)[2], version, *parts):
            entry = zipfile.ZipInfo(name)
            entry.compress_type = zipfile.ZIP_DEFLATED
            entry.external_attr = (0o100755 if executable else 0o100644) << 16
            wheel.writestr(entry, data)
            digest = base64.urlsafe_b64encode(hashlib.sha256(data).digest()).rstrip(b"=").decode()
            lines.append(f"{name},sha256={digest},{len(data)}")
        wheel.writestr(record, "\n".join([*lines, f"{record},,", ""]))


if sys.argv[1] == "--name":
    print(f"zentaro-{sys.argv[2]}-{tag}.whl")
elif sys.argv[1] == "--info":
    folder = pathlib.Path(sys.argv[2])
    folder.mkdir(parents=True, exist_ok=True)
    for name, text in information(sys.argv[3]).items():
        (folder / name).write_text(text, "utf-8")
else:
    main(*sys.argv[1:])
