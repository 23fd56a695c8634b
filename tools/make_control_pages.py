#!/usr/bin/env python3
"""make_control_pages.py DESCRIPTION.json FOLDER: writes the reference pages of docs/controls into FOLDER.

DESCRIPTION.json is what describe.exe wrote: the built library about itself. Each page is a text from docs/controls/_parts
in which a line {{...}} stands for what is not written by hand:

    {{facts CmdButton}}           class, ProgID, interface, type name
    {{properties CmdButton}}      the property table, in order
    {{methods CmdButton}}         the interface's own methods
    {{notifications CmdButton}}   how a fresh control answers
    {{enumerations CmdButton}}    the enumerations its methods use
    {{classes}}                   every class, built and planned
    {{source FILE [REGION]}}      a source file, or what stands between "// [REGION]" and "// [end]" in it

Ends with 1 when the library, module/class_table.toml and the parts disagree on what is built.
"""
import json
import re
import sys
import tomllib
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
PARTS = ROOT / "docs" / "controls" / "_parts"
sys.path.insert(0, str(ROOT / "module"))
sys.dont_write_bytecode = True
from generate import Class  # noqa: E402  the class table's one reader

LANGUAGES = {".cpp": "cpp", ".h": "cpp", ".js": "js", ".toml": "toml"}


class Mistake(Exception):
    """The sources disagree; the text says how."""


def table(head, rows):
    lines = ["| " + " | ".join(head) + " |", "|" + "---|" * len(head)]
    return "\n".join(lines + ["| " + " | ".join(row) + " |" for row in rows])


def code(text):
    return f"`{text}`"


class Pages:
    def __init__(self, description, classes):
        self.described = description["classes"]
        self.enumerations = description["enumerations"]
        self.classes = {c.name: c for c in classes}
        self.page_of = {}  # class name: file name of the page with its facts
        self.makers = {"facts": self.facts, "properties": self.properties, "methods": self.methods,
                       "notifications": self.notifications, "enumerations": self.used_enumerations,
                       "classes": self.class_list, "source": self.source}

    def check(self):
        built = {name for name, c in self.classes.items() if c.component}
        for what, names in (("answers in Morvane.dll but is planned in class_table.toml", self.described.keys() - built),
                            ("is built in class_table.toml but does not answer in Morvane.dll", built - self.described.keys()),
                            ("is built but has no page in docs/controls/_parts", built - self.page_of.keys())):
            if names:
                raise Mistake(f"{', '.join(sorted(names))} {what}")

    def value_name(self, enumeration, value):
        for entry in self.enumerations[enumeration]["values"]:
            if entry["value"] == value:
                return entry["name"]
        return str(value)

    def described_class(self, name):
        if name not in self.described:
            raise Mistake(f"{name} does not answer in Morvane.dll")
        return self.described[name]

    # What the placeholders stand for -----------------------------------------------------------------------------------

    def facts(self, name):
        own, entry = self.described_class(name), self.classes[name]
        interface = own["interface"]
        rows = [("Class", f"{code(name)}, {code(own['classId'])}"),
                ("ProgID", f"{code(entry.progid)}, {code(entry.progid + '.1')}"),
                ("Interface", f"{code(interface['name'])}, {code(interface['id'])}, derives from {code(interface['base'])}")]
        if "events" in own:
            rows.append(("Event interface", code(own["events"])))
        if control := own.get("control"):
            rows += [("Type name", code(control["typeName"])), ("Category", code(control["category"])),
                     ("Takes the focus by Tab", "yes" if control["takesTab"] else "no")]
        rows.append(("Defined in", f"[{entry.header}](../../{entry.header})"))
        return f"{interface['help']}\n\n{table(('', ''), rows)}"

    def properties(self, name):
        """Groups that follow one another with the same properties share their rows."""
        groups = []
        for p in self.described_class(name)["control"]["properties"]:
            row = (code(p["name"]), code(self.value_name("enumPropType", p["type"])), "look" if p["style"] else "content",
                   self.initial(p["initial"]))
            if not groups or groups[-1][0] != p["group"]:
                groups.append((p["group"], []))
            groups[-1][1].append(row)
        merged = []
        for group, rows in groups:
            if merged and merged[-1][1] == rows:
                merged[-1][0].append(group)
            else:
                merged.append(([group], rows))
        lines = []
        for names, rows in merged:
            for i, row in enumerate(rows):
                lines.append(("<br>".join(map(code, names)) if i == 0 else "", *row))
        return table(("Group", "Property", "Type", "Belongs to", "Initially"), lines)

    @staticmethod
    def initial(value):
        if value is None:
            return "none"
        return code(json.dumps(value, ensure_ascii=False))

    def methods(self, name):
        rows = []
        for m in self.described_class(name)["interface"]["methods"]:
            parameters = ", ".join(f"{p['type']} {p['name']}" for p in m["parameters"])
            rows.append((str(m["id"]), code(f"{m['name']}({parameters})"), m["help"]))
        return table(("Id", "Method", "What it does"), rows)

    def notifications(self, name):
        rows = []
        for n in self.described_class(name)["control"]["notifications"]:
            def named(numbers):
                return ", ".join(code(self.value_name("VexMsgID", number)) for number in numbers) or "-"
            rows.append((code(self.value_name("VexMsgID", n["id"])), str(n["id"]), "yes" if n["handled"] else "no",
                         "yes" if n["redraws"] else "no", named(n["callbacks"]),
                         ", ".join(map(str, n["hostMessages"])) or "-"))
        return table(("Notification", "Number", "Handled", "Redraws", "Callbacks run", "Sent to the host window"), rows)

    def used_enumerations(self, name):
        used = []
        for m in self.described_class(name)["interface"]["methods"]:
            for p in m["parameters"]:
                kind = p["type"].rstrip("*")
                if kind in self.enumerations and kind not in used:
                    used.append(kind)
        texts = []
        for kind in used:
            values = self.enumerations[kind]["values"]
            texts.append(f"{code(kind)}: {self.enumerations[kind]['help']}\n\n" +
                         table(("Value", "Number"), [(code(v["name"]), str(v["value"])) for v in values]))
        return "\n\n".join(texts)

    def class_list(self):
        rows = []
        for name, entry in self.classes.items():
            page = self.page_of.get(name)
            title = f"[{code(name)}]({page})" if page else code(name)
            rows.append((title, code(entry.progid), code(entry.interface), "control" if entry.in_toolbox else "part",
                         "built" if entry.component else "planned"))
        built = sum(1 for entry in self.classes.values() if entry.component)
        head = f"{len(self.classes)} classes, {built} of them built."
        return f"{head}\n\n{table(('Class', 'ProgID', 'Interface', 'Kind', 'State'), rows)}"

    def source(self, file, *region):
        lines = (ROOT / file).read_text(encoding="utf-8").splitlines()
        if region:
            begin = f"// [{' '.join(region)}]"
            if begin not in lines:
                raise Mistake(f"{file} has no line {begin}")
            first = lines.index(begin) + 1
            lines = lines[first:lines.index("// [end]", first)]
        text = "\n".join(lines)
        return f"From [{file}](../../{file}):\n\n```{LANGUAGES[Path(file).suffix]}\n{text}\n```"

    # Pages -------------------------------------------------------------------------------------------------------------

    def learn(self, part):
        for name in re.findall(r"^\{\{facts (\w+)\}\}$", part.read_text(encoding="utf-8"), re.MULTILINE):
            self.page_of[name] = part.name

    def page(self, part):
        def made(match):
            kind, *arguments = match.group(1).split()
            if kind not in self.makers:
                raise Mistake(f"{part.name}: there is no {{{{{kind}}}}}")
            return self.makers[kind](*arguments)
        text = re.sub(r"^\{\{(.+)\}\}$", made, part.read_text(encoding="utf-8"), flags=re.MULTILINE)
        return f"<!-- Made by tools/update_control_pages.sh from _parts/{part.name} and the library itself. -->\n{text}"


def main():
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    folder = Path(sys.argv[2])
    toml = tomllib.loads((ROOT / "module" / "class_table.toml").read_text(encoding="utf-8"))
    pages = Pages(json.loads(Path(sys.argv[1]).read_text(encoding="utf-8")), [Class(e, toml) for e in toml["class"]])
    parts = sorted(PARTS.glob("*.md"))
    folder.mkdir(parents=True, exist_ok=True)
    try:
        for part in parts:
            pages.learn(part)
        pages.check()
        for part in parts:
            (folder / part.name).write_text(pages.page(part), encoding="utf-8")
    except Mistake as mistake:
        sys.exit(f"make_control_pages.py: {mistake}")


if __name__ == "__main__":
    main()
