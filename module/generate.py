#!/usr/bin/env python3
"""generate.py CLASS_TABLE SOURCE_DIR OUTPUT_DIR FRAGMENT...: makes what follows from class_table.toml.

    controls.idl            forward declarations, then every control's IDL fragment
    control_interfaces.idl  the controls' interfaces as one compilable unit: C++ header and marshalling
    coclasses.idl           event interfaces and component classes
    morvane.idl             the type library's source, in the library's code page
    class_table.cpp         the class table of the module
    scripts/N.rgs           the registration scripts
    registration.rc         resources: the scripts and the type library

FRAGMENT is the path of a control's IDL below SOURCE_DIR. Files whose text would not change are not written.
"""
import re
import sys
import tomllib
from pathlib import Path

GENERATED = "// Generated from module/class_table.toml.\n"


class Class:
    """One [[class]] with the defaults of its group and of the table filled in."""

    def __init__(self, entry, table):
        given = table["defaults"] | table["group"].get(entry.get("group"), {}) | entry
        self.name = given["name"]
        self.clsid = given["clsid"]
        self.interface = given["interface"]
        self.events_iid = given.get("events")
        self.in_toolbox = given["kind"] == "control"
        self.script = given.get("script", 0)
        self.threading = given["threading"]
        self.progid = f'{given["word"]}.{given.get("progid", self.name)}'
        self.description = given["description"].format(name=self.name)
        self.script_clsid = given.get("script_clsid", self.clsid)
        self.script_typelib = given.get("script_typelib", given.get("typelib", table["library"]["id"]))
        self.component = given.get("component")
        self.header = given.get("header")

    @property
    def events(self):
        return f"_{self.interface}Events"


def check(table, classes):
    """Stops at mistakes that a compiler would not see."""
    names = [c.name for c in classes]
    order = table["table"]["order"]
    used = [c.script for c in classes if c.script] + [int(n) for n in table["spare_scripts"]]
    used += [s["script"] for s in table["application_script"]]
    identifiers = [c.clsid for c in classes] + [c.events_iid for c in classes if c.events_iid]
    for what, values in (("class", names), ("script", used), ("identifier", identifiers)):
        twice = sorted({v for v in values if values.count(v) > 1})
        if twice:
            sys.exit(f"class_table.toml: {what} given twice: {twice}")
    unknown = [n for n in order if n not in names]
    scriptless = [c.name for c in classes if c.name in order and not c.script]
    half_built = [c.name for c in classes if bool(c.component) != bool(c.header)]
    for what, values in (("not a class", unknown), ("in the table without a script", scriptless),
                         ("component without header", half_built)):
        if values:
            sys.exit(f"class_table.toml: {what}: {values}")


# --- IDL --------------------------------------------------------------------------------------------------------------

def controls_idl(classes, fragments):
    forward = "\n".join(f"interface {c.interface};" for c in classes)
    includes = "\n".join(f'#include "{f}"' for f in sorted(fragments))
    return f"{GENERATED}\n{forward}\n\n{includes}\n"


def control_interfaces_idl(table):
    return f"""{GENERATED}
import "oaidl.idl";
import "ocidl.idl";
import "host.idl";

#include "module/controls.idl"

{library_attributes(table, help_text=False)}
library {table["library"]["name"]}
{{
    #include "module/coclasses.idl"
}}
"""


def library_attributes(table, help_text=True):
    library = table["library"]
    attributes = [f'uuid({library["id"]})', f'version({library["version"]})', f'lcid({library["lcid"]})']
    if help_text:
        attributes.append(f'helpstring("{library["help"]}")')
    return "[\n    " + ",\n    ".join(attributes) + "\n]"


def morvane_idl(table, host_fragments):
    includes = "\n".join(f'#include "host/idl/{f}"' for f in host_fragments)
    return f"""{GENERATED}
import "oaidl.idl";
import "ocidl.idl";

{library_attributes(table)}
library {table["library"]["name"]}
{{
importlib("stdole2.tlb");

{includes}

#include "module/controls.idl"

#include "module/coclasses.idl"
}}
"""


def event_interface(c):
    return f"""[
    uuid({c.events_iid}),
    helpstring("Events of {c.name}; none is ever fired")
]
dispinterface {c.events}
{{
    properties:
    methods:
}};
"""


def coclass(c):
    source = f"\n    [default, source] dispinterface {c.events};" if c.events_iid else ""
    return f"""[
    uuid({c.clsid}),
    helpstring("{c.description}")
]
coclass {c.name}
{{
    [default] interface {c.interface};{source}
}};
"""


def coclasses_idl(classes):
    events = [event_interface(c) for c in classes if c.events_iid]
    return GENERATED + "\n" + "\n".join(events + [coclass(c) for c in classes])


# --- Registration scripts ---------------------------------------------------------------------------------------------

def class_script(c):
    return f"""HKCR
{{
    {c.progid}.1 = s '{c.description}'
    {{
        CLSID = s '{{{c.script_clsid}}}'
    }}
    {c.progid} = s '{c.description}'
    {{
        CLSID = s '{{{c.script_clsid}}}'
        CurVer = s '{c.progid}.1'
    }}
    NoRemove CLSID
    {{
        ForceRemove {{{c.script_clsid}}} = s '{c.description}'
        {{
            ProgID = s '{c.progid}.1'
            VersionIndependentProgID = s '{c.progid}'
            ForceRemove 'Programmable'
            InprocServer32 = s '%MODULE%'
            {{
                val ThreadingModel = s '{c.threading}'
            }}
            val AppID = s '%APPID%'
            'TypeLib' = s '{{{c.script_typelib}}}'
        }}
    }}
}}
"""


def application_script(description):
    return f"""HKCR
{{
    NoRemove AppID
    {{
        '%APPID%' = s '{description}'
        'Morvane.dll'
        {{
            val AppID = s '%APPID%'
        }}
    }}
}}
"""


def scripts(table, classes):
    """Script number -> text."""
    named = {c.name: c for c in classes}
    result = {c.script: class_script(c) for c in classes if c.script}
    result |= {int(n): class_script(named[name]) for n, name in table["spare_scripts"].items()}
    result |= {s["script"]: application_script(s["description"]) for s in table["application_script"]}
    return dict(sorted(result.items()))


def registration_rc(numbers):
    lines = [f'{n} REGISTRY "scripts/{n}.rgs"' for n in numbers]
    return GENERATED + "\n".join(['1 TYPELIB "morvane.tlb"'] + lines) + "\n"


# --- C++ --------------------------------------------------------------------------------------------------------------

def guid_literal(text):
    a, b, c, d, e = text.split("-")
    tail = ", ".join(f"0x{(d + e)[i:i + 2]}" for i in range(0, 16, 2))
    return f"{{0x{a}, 0x{b}, 0x{c}, {{{tail}}}}}"


def table_row(c):
    create = f"&Instance<{c.component}>::create" if c.component else "nullptr"
    toolbox = "true" if c.in_toolbox else "false"
    return f'    {{L"{c.name}", {guid_literal(c.clsid)}, {c.script}, {toolbox}, {create}}},'


def class_table_cpp(table, classes):
    named = {c.name: c for c in classes}
    entries = [named[n] for n in table["table"]["order"]]
    built = [c for c in classes if c.component and c in entries]
    headers = sorted({c.header for c in built} | ({"frame/com/instance.h"} if built else set()))
    includes = "".join(f'#include "{h}"\n' for h in headers)
    rows = "\n".join(table_row(c) for c in entries)
    return f"""{GENERATED}#include "module/class_table.h"

{includes}
namespace morvane {{

namespace {{
const ComponentClass kClasses[] = {{
{rows}
}};
}} // namespace

const GUID kToolboxCategory = {guid_literal(table["toolbox"]["category"])};
const GUID kTypeLibraryId = {guid_literal(table["library"]["id"])};

std::span<const ComponentClass> classTable() noexcept {{ return kClasses; }}

}} // namespace morvane
"""


# --- Files ------------------------------------------------------------------------------------------------------------

def write(path, text, encoding="utf-8"):
    data = text.encode(encoding)
    if not path.exists() or path.read_bytes() != data:
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(data)


def main(table_path, source_dir, output_dir, *fragments):
    table = tomllib.loads(Path(table_path).read_text(encoding="utf-8"))
    classes = [Class(entry, table) for entry in table["class"]]
    check(table, classes)
    host_idl = (Path(source_dir) / "host/idl/host.idl").read_text(encoding="utf-8")
    host_fragments = re.findall(r'^#include "(\w+\.idl)"', host_idl, re.MULTILINE)
    out = Path(output_dir)
    write(out / "controls.idl", controls_idl(classes, fragments))
    write(out / "control_interfaces.idl", control_interfaces_idl(table))
    write(out / "coclasses.idl", coclasses_idl(classes))
    write(out / "morvane.idl", morvane_idl(table, host_fragments), table["library"]["codepage"])
    write(out / "class_table.cpp", class_table_cpp(table, classes))
    texts = scripts(table, classes)
    for number, text in texts.items():
        write(out / "scripts" / f"{number}.rgs", text, "ascii")
    write(out / "registration.rc", registration_rc(texts))


if __name__ == "__main__":
    main(*sys.argv[1:])
