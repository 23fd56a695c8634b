#!/usr/bin/env python3
"""Packs a skin's source folder into the zip archive that goes into the module.

    pack_skin.py FOLDER --palette light.ini --output 2080.zip

Every .xml file of the folder goes in with its {{token}}s written as 0x00BBGGRR. Every "NAME.svg" is rendered at 100,
125, 150 and 200 percent into NAME, NAME@125, NAME@150 and NAME@200 ("a.png" gives "a@150.png"), always as PNG data
whatever the name's ending.
The same sources give the same bytes: entries are sorted and carry a fixed time.
"""

import argparse
import io
import pathlib
import sys
import xml.etree.ElementTree as ElementTree
import zipfile

import crisp_svg

SCALES = (100, 125, 150, 200)
EARLIEST_ZIP_TIME = (1980, 1, 1, 0, 0, 0)


def bgr(colour):
    """'#RRGGBB' as skins write it."""
    return f"0x00{colour[5:7]}{colour[3:5]}{colour[1:3]}"


def scaled_name(name, percent):
    """The name of a picture's version for a scale; the picture itself at 100 percent."""
    if percent == 100:
        return name
    stem, dot, extension = name.rpartition(".")
    return f"{stem}@{percent}{dot}{extension}"


def package_entries(folder, palette, renderer):
    """File name to data of everything in the package."""
    entries = {}
    for source in sorted(folder.glob("*.xml")):
        text = crisp_svg.substitute(source.read_text(encoding="utf-8"), palette, source, bgr)
        try:
            ElementTree.fromstring(text.encode())
        except ElementTree.ParseError as error:
            raise crisp_svg.SourceError(f"{source}: {error}") from None
        entries[source.name] = text.encode()
    for source in sorted(folder.glob("*.svg")):
        for percent in SCALES:
            entries[scaled_name(source.stem, percent)] = crisp_svg.render(source, palette, percent / 100, renderer)
    return entries


def archive(entries):
    """A zip archive of the entries; the same entries give the same bytes."""
    buffer = io.BytesIO()
    with zipfile.ZipFile(buffer, "w", zipfile.ZIP_DEFLATED, compresslevel=9) as packed:
        for name in sorted(entries):
            info = zipfile.ZipInfo(name, EARLIEST_ZIP_TIME)
            info.compress_type = zipfile.ZIP_DEFLATED
            info.create_system = 0
            packed.writestr(info, entries[name])
    return buffer.getvalue()


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("folder", type=pathlib.Path)
    parser.add_argument("--palette", type=pathlib.Path, required=True)
    parser.add_argument("--output", type=pathlib.Path, required=True)
    parser.add_argument("--renderer", default="rsvg-convert", help="the program that turns SVG into PNG")
    arguments = parser.parse_args()
    try:
        palette = crisp_svg.read_palette(arguments.palette)
        entries = package_entries(arguments.folder, palette, arguments.renderer)
    except crisp_svg.SourceError as error:
        sys.exit(f"pack_skin: {error}")
    arguments.output.write_bytes(archive(entries))


if __name__ == "__main__":
    main()
