#!/usr/bin/env python3
"""check_layers.py: checks that the tree keeps its own rules. Prints each offence as file:line: what; status 1 if any.

- An #include only points down the layers:
      gallery > ambrel > module > controls > frame > host > base
  The runtime is a second implementation beside the controls, so it sees only host/, base/, and of frame/ what knows no
  control (frame/com, frame/platform). Nothing below includes module/. Controls never include another control's folder;
  what several of a subsystem share lies in the subsystem's own folder or in one named "shared".
- Source files stay below 700 lines; interface definitions, which are lists, may be longer.
- Sources do not point at numbered parts of papers outside the tree: the comment must say it itself.
- base/ is portable: no platform header.
"""
import re
import subprocess
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
SOURCES = {".cpp", ".h", ".c", ".idl", ".rc", ".hpp"}
TEXTS = SOURCES | {".py", ".sh", ".cmake", ".toml", ".js", ".xml", ".md", ".txt"}
LONGEST_FILE = 700

# What each layer may include besides itself.
BELOW = {
    "base": set(),
    "host": {"base"},
    "frame": {"host", "base"},
    "controls": {"frame", "host", "base"},
    "module": {"controls", "frame", "host", "base"},
    "ambrel": {"host", "base", "frame/com", "frame/platform"},
    # Applications speak to the components through their interfaces; the helpers for that lie below.
    "gallery": {"ambrel", "host", "base", "frame/com", "frame/platform"},
}
# What tests of a layer may include beyond that: a test of the runtime builds its controls with the controls' own frame.
BELOW_TESTS = {"ambrel": {"frame"}}
# Tests may also use what tests share.
TEST_LAYERS = {"tests"}

INCLUDE = re.compile(r'^\s*#\s*include\s+"([^"]+)"')
FOREIGN_PAPER = re.compile(r"\bPart\s+\d+\.\d+|\bspecification\b", re.IGNORECASE)
PLATFORM = re.compile(r"^\s*#\s*include\s+[<\"](windows\.h|objbase\.h|ole2\.h|gdiplus\.h|host/windows_headers\.h)[>\"]")


def tracked_files():
    """Files of the tree that are or may become part of it: tracked ones and new ones that nothing ignores."""
    listed = subprocess.run(
        ["git", "ls-files", "--cached", "--others", "--exclude-standard", "-z"],
        cwd=ROOT, check=True, capture_output=True, text=True).stdout
    return [ROOT / name for name in listed.split("\0") if name and (ROOT / name).is_file()]


def is_test(path):
    return path.stem.endswith("_test") or path.parts[0] == "tests" or path.stem.startswith("test_") \
        or path.parts[0] in ("fuzz", "bench")


def control_folder(path):
    """("controls", subsystem, control) of a path below a control's own folder, else None."""
    parts = path.parts
    if len(parts) >= 4 and parts[0] == "controls" and parts[2] != "shared":
        return parts[:3]
    return None


def resolve(source, name):
    """The file in the tree that an include names, as a path from the root; None for generated and outside ones."""
    for candidate in (source.parent / name, ROOT / name):
        if candidate.is_file() and candidate.resolve().is_relative_to(ROOT):
            return candidate.resolve().relative_to(ROOT)
    return None


def forbidden(source, target):
    """Why `source` may not include `target` (both from the root), or None."""
    layer, aim = source.parts[0], target.parts[0]
    if layer not in BELOW:
        return None
    if aim in TEST_LAYERS or aim in ("fuzz", "bench"):
        return None if is_test(source) else f"{layer}/ includes test code"
    own, other = control_folder(source), control_folder(target)
    if other and own and own != other:
        return f"a control includes another control's folder ({'/'.join(other)})"
    if aim == layer or aim not in BELOW:
        return None
    allowed = BELOW[layer] | (BELOW_TESTS.get(layer, set()) if is_test(source) else set())
    if aim in allowed or "/".join(target.parts[:2]) in allowed:
        return None
    return f"{layer}/ includes {aim}/"


def check_source(path, lines):
    source = path.relative_to(ROOT)
    if path.suffix != ".idl" and len(lines) > LONGEST_FILE:
        yield 1, f"{len(lines)} lines; a file beyond {LONGEST_FILE} has a second responsibility"
    for number, line in enumerate(lines, 1):
        if source.parts[0] == "base" and PLATFORM.match(line):
            yield number, "base/ is portable and includes no platform header"
        match = INCLUDE.match(line)
        if not match:
            continue
        target = resolve(path, match.group(1))
        reason = target and forbidden(source, target)
        if reason:
            yield number, f'#include "{match.group(1)}": {reason}'


def check_text(lines):
    for number, line in enumerate(lines, 1):
        if FOREIGN_PAPER.search(line):
            yield number, "points at a paper outside the tree; say what it says"


def main():
    offences = 0
    checked = 0
    for path in tracked_files():
        if path.suffix not in TEXTS and path.name not in ("CMakeLists.txt", "Makefile"):
            continue
        lines = path.read_text(encoding="utf-8", errors="replace").splitlines()
        findings = list(check_source(path, lines)) if path.suffix in SOURCES else []
        if path != Path(__file__).resolve():
            findings += check_text(lines)
        checked += 1
        for number, what in findings:
            offences += 1
            print(f"{path.relative_to(ROOT)}:{number}: {what}")
    if checked == 0:
        print("no file was checked: is this a clone of the repository?")
        return 1
    print(f"{checked} files, {offences} offences")
    return 1 if offences else 0


if __name__ == "__main__":
    sys.exit(main())
