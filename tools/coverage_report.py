#!/usr/bin/env python3
"""Adds up which lines the tests reach: by folder, and what is reached least.

Usage: coverage_report.py ROOT NATIVE.lcov WINDOWS_BUILD REPORT
NATIVE.lcov is what llvm-cov exports; WINDOWS_BUILD holds the .gcda files that the Windows tests wrote, and may be
missing. REPORT gets, for each file, the lines that no test reaches.
"""

import concurrent.futures
import gzip
import json
import os
import pathlib
import subprocess
import sys
import tempfile

OURS = ("base", "host", "frame", "controls", "module", "ambrel", "gallery")
# What gcov of a cross compiler is called; the version must be that of the compiler.
GCOV = "x86_64-w64-mingw32-gcov-posix"


def is_ours(name):
    return name.split("/")[0] in OURS and not name.endswith("_test.cpp") and not name.startswith("build/")


def add(lines, name, number, count):
    """Keeps the larger count: a line may stand in several objects, a template in many."""
    known = lines.setdefault(name, {})
    known[number] = max(known.get(number, 0), count)


def native_lines(root, path):
    lines, name = {}, None
    for entry in open(path):
        if entry.startswith("SF:"):
            name = os.path.relpath(entry[3:].strip(), root)
        elif entry.startswith("DA:") and is_ours(name):
            number, count = entry[3:].split(",")[:2]
            add(lines, name, int(number), int(count))
    return lines


def counted_by(data_files):
    """What gcov says about some .gcda files, or .gcno files of objects that never ran."""
    with tempfile.TemporaryDirectory() as folder:
        subprocess.run([GCOV, "--json-format", *data_files], cwd=folder, check=True, stdout=subprocess.DEVNULL,
                       stderr=subprocess.DEVNULL)
        return [json.loads(gzip.open(path).read()) for path in pathlib.Path(folder).glob("*.gcov.json.gz")]


def windows_lines(root, build):
    # An object that never ran has no data file, but its lines count as well.
    notes = [path for path in pathlib.Path(build).absolute().rglob("*.gcno") if "_test" not in path.name]
    lines = {}
    with concurrent.futures.ThreadPoolExecutor() as pool:
        # gcov names its results after the sources, which may have the same name in two folders: one at a time.
        for results in pool.map(lambda path: counted_by([str(path)]), notes):
            for result in results:
                for source in result["files"]:
                    name = os.path.relpath(os.path.join(result["current_working_directory"], source["file"]), root)
                    if not is_ours(name):
                        continue
                    for line in source["lines"]:
                        add(lines, name, line["line_number"], line["count"])
    return lines


def together(native, windows):
    """Where both measured a file, the lines are those of the Windows build, reached when either reached them."""
    result = {name: dict(lines) for name, lines in native.items()}
    for name, lines in windows.items():
        known = native.get(name, {})
        result[name] = {number: max(count, known.get(number, 0)) for number, count in lines.items()}
    return result


def reached(lines):
    return sum(count > 0 for count in lines.values())


def folder_of(name):
    return "/".join(name.split("/")[:-1][:2])


def percent(part, whole):
    return f"{100 * part / whole:5.1f} %" if whole else "      -"


def print_folders(columns):
    """columns: name of the column -> {file: lines}."""
    folders = sorted({folder_of(name) for lines in columns.values() for name in lines})
    print("lines reached, by folder")
    print(f"  {'':28}" + "".join(f"{title:>10}" for title in columns) + "     lines")
    for folder in [*folders, ""]:
        cells, count = "", 0
        for lines in columns.values():
            of_folder = [each for name, each in lines.items() if not folder or folder_of(name) == folder]
            count = sum(map(len, of_folder))
            cells += f"{percent(sum(map(reached, of_folder)), count):>10}"
        print(f"  {folder or 'everything':28}{cells}  {count:8}")


def ranges(numbers):
    text, begin, last = [], None, None
    for number in [*sorted(numbers), None]:
        if last is not None and number != last + 1 if number is not None else last is not None:
            text.append(str(begin) if begin == last else f"{begin}-{last}")
            begin = number
        begin, last = (number if begin is None else begin), number
    return ", ".join(text)


def main():
    root, native_path, windows_build, report = sys.argv[1:]
    native = native_lines(root, native_path)
    windows = windows_lines(root, windows_build) if os.path.isdir(windows_build) else {}
    all_lines = together(native, windows)
    print_folders({"native": native, "Windows": windows, "both": all_lines})

    missing = {name: [number for number, count in lines.items() if not count] for name, lines in all_lines.items()}
    print("\nmost lines not reached")
    for name, numbers in sorted(missing.items(), key=lambda item: -len(item[1]))[:20]:
        if numbers:
            print(f"  {len(numbers):5} of {len(all_lines[name]):5}  {name}")
    with open(report, "w") as out:
        for name, numbers in sorted(missing.items()):
            if numbers:
                print(f"{name}: {ranges(numbers)}", file=out)


if __name__ == "__main__":
    main()
