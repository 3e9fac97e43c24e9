"""What pip calls to build the package: CMake builds library and virtual printer, and wheel.py packs them (PEP 517)."""
import os
import pathlib
import shutil
import subprocess
import sys

here = pathlib.Path(__file__).resolve().parent
root = here.parent.parent


def run(*words):
    try:
        subprocess.run(words, check=True)
    except FileNotFoundError:
        raise SystemExit(f"{words[0]} is missing; on Debian: apt-get install cmake g++ libcli11-dev libcpp-httplib-dev libsqlite3-dev "
                         "ninja-build nlohmann-json3-dev") from None
    except subprocess.CalledProcessError as error:
        raise SystemExit(f"cmake ends with {error.returncode}: what it said stands above") from None


def build_wheel(wheel_directory, config_settings=None, metadata_directory=None):
    """Builds in build/pip of the source tree, so that the second time is quick, and returns the name of the wheel."""
    if not (root / "CMakeLists.txt").exists():
        raise SystemExit(f"{here} is a part of Zentaro: install it from its place in the whole source tree")
    build = root / "build" / "pip"
    generator = ["-G", "Ninja"] if shutil.which("ninja") else []
    run("cmake", "-S", str(root), "-B", str(build), *generator, "-Wno-dev", "-DCMAKE_BUILD_TYPE=Release", "-DZENTARO_BUILD_TESTS=OFF",
        "-DZENTARO_BUILD_EXTRAS=OFF", f"-DPython3_EXECUTABLE={sys.executable}")
    for old in build.glob("zentaro-*.whl"):
        old.unlink()
    run("cmake", "--build", str(build), "--target", "python-wheel", "--parallel", str(os.cpu_count() or 1))
    wheel, = build.glob("zentaro-*.whl")
    shutil.copy(wheel, wheel_directory)
    return wheel.name


def build_sdist(sdist_directory, config_settings=None):
    raise SystemExit("There is no source package of this part alone; `pip wheel ./bindings/python` makes a wheel.")
