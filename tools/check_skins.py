#!/usr/bin/env python3
"""Checks the built skin archives and the palettes; prints every fault and ends with status 1 when there is one.

    check_skins.py build/native/generated/skins --palettes resources/skins/palettes

In each archive: every name that an object or resource refers to exists, every short key of the key map has a value or a
default and no value lacks its key, every section lies inside its picture at every scale with borders that fit and fall
on whole pixels, and pictures are PNG data. In each palette: the contrasts of contrast.ini, and no text
colour that contrast.ini does not know.
"""

import argparse
import configparser
import pathlib
import re
import struct
import sys
import xml.etree.ElementTree as ElementTree
import zipfile

import crisp_svg
import pack_skin

PNG_SIGNATURE = b"\x89PNG\r\n\x1a\n"
SECTIONS = ("PreDefColors", "Images", "FontExs", "GradientColor", "ImageSecs", "TextStyles", "FontFiles", "Sounds",
            "Customs", "PluginFiles", "ImageFonts", "SkinCursors", "Apps")
# The attribute that names a resource, and the section of shareres.xml it is found in.
KINDS = {"ImageSecId": "ImageSecs", "TextStyleId": "TextStyles", "GradientColorId": "GradientColor",
         "SkinCursorId": "SkinCursors", "SkinRgnId": "SkinRgns", "PicId": "Images", "PreFontGUID": "FontExs",
         "PreFontGUID0": "FontExs"}
COLOUR = re.compile(r"0x[0-9A-F]{8}")


class Package:
    """One archive: its documents, the resources by section, and the faults found in it."""

    def __init__(self, path):
        self.name = path.name
        self.faults = []
        with zipfile.ZipFile(path) as archive:
            self.files = {name: archive.read(name) for name in archive.namelist()}
        self.share = self.document("shareres.xml").find("share")
        self.resources = {section.tag: {entry.tag: entry for entry in section} for section in self.share}

    def document(self, name):
        return ElementTree.fromstring(self.files[name])

    def fault(self, text):
        self.faults.append(f"{self.name}: {text}")

    def refer(self, kind, name, where):
        """Notes a reference to a resource; an empty one refers to nothing."""
        if name and name not in self.resources.get(KINDS[kind], {}):
            self.fault(f"{where}: there is no '{name}' in {KINDS[kind]}")


def png_size(data):
    """Width and height of PNG data, None for anything else."""
    return struct.unpack(">II", data[16:24]) if data.startswith(PNG_SIGNATURE) else None


def check_sections(package):
    for section in SECTIONS:
        if section not in package.resources:
            package.fault(f"shareres.xml: no section {section}")
    for section, entries in package.resources.items():
        if len(entries) != len(package.share.find(section)):
            package.fault(f"shareres.xml: {section} has two entries of one name")
        for name, entry in entries.items():
            for attribute, value in entry.attrib.items():
                if attribute in KINDS:
                    package.refer(attribute, value, f"shareres.xml: {name}/{attribute}")
                if attribute.startswith("clr") and not COLOUR.fullmatch(value):
                    package.fault(f"shareres.xml: {name}/{attribute} is not a colour: {value}")


def check_pictures(package):
    """Every picture exists at every scale and the sections lie inside it."""
    for name, entry in package.resources["Images"].items():
        file = entry.get("Caption")
        for percent in pack_skin.SCALES:
            scaled = pack_skin.scaled_name(file, percent)
            size = png_size(package.files.get(scaled, b""))
            if not size:
                package.fault(f"{scaled} is missing or not PNG data")
                continue
            for section in package.resources["ImageSecs"].values():
                if section.get("PicId") == name:
                    check_section(package, section, scaled, size, percent)


def check_section(package, section, file, size, percent):
    left, top, right, bottom = (int(section.get(edge)) for edge in ("left", "top", "right", "bottom"))
    borders = [int(section.get(border)) for border in ("LeftWidth", "RightWidth", "TopHeight", "BottHeight")]
    where = f"shareres.xml: {section.get('Name')} at {percent} percent"
    inside = right * percent <= size[0] * 100 and bottom * percent <= size[1] * 100
    if not 0 <= left < right or not 0 <= top < bottom or not inside:
        package.fault(f"{where} lies outside {file}")
    if borders[0] + borders[1] > right - left or borders[2] + borders[3] > bottom - top:
        package.fault(f"{where}: its fixed borders overlap")
    if any(length * percent % 100 for length in (left, top, *borders)):
        package.fault(f"{where} does not begin, or has borders that do not end, on a whole pixel")


def check_full_objects(package):
    """The full layout keeps the names of resources in attributes such as ItemHotImage.ImageSecId."""
    for element in package.document("objects.xml").find("Objects").iter():
        for attribute, value in element.attrib.items():
            kind = attribute.rpartition(".")[2]
            if kind in KINDS:
                package.refer(kind, value, f"objects.xml: {element.tag}/{attribute}")


def check_compact_objects(package):
    """The compact layout keeps them in prop.xml under the short keys of mapattrib.xml."""
    mapped = {}
    for element in package.document("mapattrib.xml").iter():
        for attribute, value in element.attrib.items():
            if attribute in KINDS or attribute == value:
                if value in mapped:
                    package.fault(f"mapattrib.xml: the key {value} stands twice")
                mapped[value] = (attribute if attribute in KINDS else None, element)
    objects = {element.tag for element in package.document("objects.xml").find("Objects")}
    for element in package.document("prop.xml").find("Property"):
        if element.tag not in objects:
            package.fault(f"prop.xml: objects.xml has no {element.tag}")
        given = {name: value for name, value in element.attrib.items() if re.fullmatch(r"V\d+", name)}
        for key in sorted(given.keys() - mapped.keys()):
            package.fault(f"prop.xml: mapattrib.xml does not list {key}")
        for key, (kind, property_element) in mapped.items():
            if key not in given and property_element.get("Default") is None:
                package.fault(f"mapattrib.xml: {key} ({property_element.tag}) has neither a value nor a default")
            if kind:
                package.refer(kind, given.get(key, ""), f"prop.xml: {key} ({property_element.tag})")


def check_package(path):
    package = Package(path)
    check_sections(package)
    check_pictures(package)
    if "mapattrib.xml" in package.files:
        check_compact_objects(package)
    else:
        check_full_objects(package)
    return package


def luminance(colour):
    """Relative luminance of '#RRGGBB', 0 to 1."""
    channels = (int(colour[index:index + 2], 16) / 255 for index in (1, 3, 5))
    linear = [value / 12.92 if value <= 0.04045 else ((value + 0.055) / 1.055) ** 2.4 for value in channels]
    return 0.2126 * linear[0] + 0.7152 * linear[1] + 0.0722 * linear[2]


def contrast(one, other):
    """Contrast ratio of two colours, 1 to 21."""
    darker, lighter = sorted((luminance(one), luminance(other)))
    return (lighter + 0.05) / (darker + 0.05)


def check_palette(path, rules):
    """The faults of a palette by the rules of contrast.ini."""
    palette = crisp_svg.read_palette(path)
    faults = []
    for section in ("text", "marks"):
        least = float(rules["ratios"][section])
        for token, fills in rules[section].items():
            for fill in fills.split():
                ratio = contrast(palette[token], palette[fill])
                if ratio < least:
                    faults.append(f"{path.name}: {token} on {fill} has a contrast of {ratio:.2f}, below {least}")
    return faults


def check_text_colours(packages, palette, rules):
    """Text styles use only the colours whose contrast is checked."""
    known = {pack_skin.bgr(palette[token]) for token in rules["text"]}
    return [f"{package.name}: {style.get('Name')} uses {style.get('clrText')}, which contrast.ini does not list as text"
            for package in packages for style in package.resources["TextStyles"].values()
            if style.get("clrText") not in known]


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("folder", type=pathlib.Path, help="the folder of the built archives")
    parser.add_argument("--palettes", type=pathlib.Path, required=True)
    arguments = parser.parse_args()
    rules = configparser.ConfigParser(interpolation=None)
    rules.read(arguments.palettes / "contrast.ini", encoding="utf-8")
    paths = sorted(arguments.folder.glob("*.zip"))
    faults = [] if paths else [f"{arguments.folder}: no archives"]
    for name in ("light", "dark"):
        path = arguments.palettes / f"{name}.ini"
        packages = [check_package(archive) for archive in paths if (".dark." in archive.name) == (name == "dark")]
        faults += [fault for package in packages for fault in package.faults]
        faults += check_palette(path, rules)
        faults += check_text_colours(packages, crisp_svg.read_palette(path), rules)
    for fault in faults:
        print(fault, file=sys.stderr)
    sys.exit(1 if faults else 0)


if __name__ == "__main__":
    main()
