"""Shows that the package and its library work: `python -m zentaro`."""
import zentaro


def main():
    printer = zentaro.CZentaro()
    frame = printer.BuildOMB(0x38, ["N"])
    if frame[0] != "\x02" or printer.nLastCommand != 0x38:
        raise SystemExit("the library builds no frames")
    print(f"zentaro {zentaro.__version__}: {', '.join(zentaro._classes)}; a frame: {frame!r}")


main()
