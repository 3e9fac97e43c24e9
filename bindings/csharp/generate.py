#!/usr/bin/env python3
"""generate.py TEMPLATE TILL FILE: writes Zentaro.cs, the template with classes and enumerations made of the descriptions, and behind
it the safe sale."""
import pathlib
import sys

sys.path.insert(0, str(pathlib.Path(__file__).parents[1] / "python"))
from zentaro._objects import description, members  # noqa: E402

_types = {"Boolean": "bool", "Int16": "short", "Int32": "int", "Double": "double", "Currency": "decimal", "Date": "DateTime",
          "Text": "string", "Array": "object[]", "Variant": "object", None: "void"}
_enumerations = {described["name"] for described in description["enumerations"]}


def result_type(accessor):
    name = "ENVERR_CODES" if accessor["outcome"] else accessor["result"]
    return _types.get(name, name)


def converted(type_name, expression):
    if type_name in _enumerations:
        return f"({type_name})Convert.ToInt32({expression})"
    return expression if type_name == "object" else f"({type_name}){expression}"


def summary(text):
    escaped = text.replace("&", "&amp;").replace("<", "&lt;").replace(">", "&gt;")
    return f"  /// <summary>{escaped}</summary>"


def method(accessor):
    parameters = ", ".join(("[Optional] " if described["optional"] else "") + "object " + described["name"]
                           for described in accessor["parameters"])
    call = f"Call({', '.join([chr(34) + accessor['name'] + chr(34)] + [described['name'] for described in accessor['parameters']])})"
    type_name = result_type(accessor)
    body = call if type_name == "void" else "return " + converted(type_name, call)
    notes = [f'  /// <param name="{described["name"]}">{described["note"].replace("<", "&lt;")}</param>'
             for described in accessor["parameters"] if described["note"]]
    return [summary(accessor["help"]), *notes, f"  public {type_name} {accessor['name']}({parameters}) {{ {body}; }}"]


def property_of(name, accessors):
    type_name = result_type(next((accessor for accessor in accessors if accessor["kind"] == "get"), accessors[0]))
    kinds = {accessor["kind"] for accessor in accessors}
    body = f"get {{ return {converted(type_name, f'Get({chr(34)}{name}{chr(34)})')}; }}" if "get" in kinds else ""
    if kinds & {"let", "set"}:
        body += f' set {{ Put("{name}", value); }}'
    return [summary(accessors[0]["help"]), f"  public {type_name} {name} {{ {body.strip()} }}"]


def class_of(described):
    name = described["class"].split(".")[1]
    lines = [summary(described["help"])[2:], f"public class {name} : Automation {{",
             f"  internal {name}(IntPtr handle) : base(handle) {{}}"]
    if described["creatable"]:
        lines.append(f'  public {name}() : base(Created("{described["class"]}")) {{}}')
    for member, accessors in members(described).items():
        is_method = accessors[0]["kind"] == "method"
        lines += method(accessors[0]) if is_method else property_of(member, accessors)
    return lines + ["}", ""]


def main(template, till, file):
    names = [described["class"].split(".")[1] for described in description["classes"]]
    lines = []
    for described in description["enumerations"]:
        values = ", ".join(f"{name} = {number}" for name, number in described["values"].items())
        lines += [f"public enum {described['name']} {{ {values} }}", ""]
    for described in description["classes"]:
        lines += class_of(described)
    text = pathlib.Path(template).read_text("utf-8")
    text = text.replace("@CASES@", "\n".join(f'      case "{name}": return new {name}(handle);' for name in names))
    text = text.replace("@MEMBERS@", "\n".join(lines)) + pathlib.Path(till).read_text("utf-8")
    pathlib.Path(file).write_text(text, "utf-8")


main(*sys.argv[1:])
