"""Turns our picture sources into pixels that stay crisp at every scale.

The sources are SVG with two additions:

* {{token}} stands for a colour of the palette, so that one drawing serves the light and the dark skin;
* <m:box> is a rectangle whose edges and border fall on whole device pixels at whatever scale it is rendered.

<m:box x y width height [radius] [border] [fill] [line] [opacity] [corners] [open]>: the border lies inside the
rectangle and is as thick as the nearest whole number of device pixels (half a pixel rounds up), at least one. `corners`
names the rounded ones ("tl tr bl br"), all four without it; `open` names the sides that have no border. Translations
around boxes must be multiples of four, then 125 and 150 percent keep them on whole pixels too.
"""

import configparser
import math
import re
import subprocess
import xml.etree.ElementTree as ElementTree

SVG = "http://www.w3.org/2000/svg"
CRISP = "urn:morvane:crisp"
TOKEN = re.compile(r"\{\{([a-z0-9-]+)\}\}")

ElementTree.register_namespace("", SVG)


class SourceError(Exception):
    """A fault in a picture or skin source; the text names the file."""


def read_palette(path):
    """The colours of a palette file, token to '#RRGGBB'."""
    parser = configparser.ConfigParser(interpolation=None)
    with open(path, encoding="utf-8") as file:
        parser.read_file(file)
    palette = dict(parser["colours"])
    for token, colour in palette.items():
        if not re.fullmatch(r"#[0-9A-F]{6}", colour):
            raise SourceError(f"{path}: '{token}' is not a colour like #RRGGBB: {colour}")
    return palette


def substitute(text, palette, source, write=lambda colour: colour):
    """Replaces each {{token}} by its colour in the spelling that `write` gives it."""

    def colour_of(match):
        try:
            return write(palette[match.group(1)])
        except KeyError:
            raise SourceError(f"{source}: the palette has no '{match.group(1)}'") from None

    return TOKEN.sub(colour_of, text)


def round_half_up(value):
    return math.floor(value + 0.5)


def rounded_path(left, top, right, bottom, radius, corners):
    """Path data of a rectangle; a corner that is not in `corners` stays square."""
    radius = max(0, min(radius, (right - left) / 2, (bottom - top) / 2))
    tl, tr, br, bl = (radius if corner in corners else 0 for corner in ("tl", "tr", "br", "bl"))

    def arc(size, x, y):
        return f"A{size:g} {size:g} 0 0 1 {x:g} {y:g}" if size else ""

    return (f"M{left + tl:g} {top:g}H{right - tr:g}{arc(tr, right, top + tr)}"
            f"V{bottom - br:g}{arc(br, right - br, bottom)}"
            f"H{left + bl:g}{arc(bl, left, bottom - bl)}V{top + tl:g}{arc(tl, left + tl, top)}Z")


def box_paths(box, scale):
    """The plain SVG elements that stand for one <m:box> at a scale."""
    x, y, width, height = (float(box.get(name)) for name in ("x", "y", "width", "height"))
    corners = box.get("corners", "tl tr br bl").split()
    left, top = round_half_up(x * scale), round_half_up(y * scale)
    right, bottom = round_half_up((x + width) * scale), round_half_up((y + height) * scale)
    radius = float(box.get("radius", 0)) * scale
    line, fill = box.get("line"), box.get("fill")
    border = max(1, round_half_up(float(box.get("border", 1)) * scale)) if line else 0

    def path(data, colour):
        element = ElementTree.Element(f"{{{SVG}}}path", {"d": data, "fill": colour, "fill-rule": "evenodd"})
        if box.get("opacity"):
            element.set("opacity", box.get("opacity"))
        element.set("transform", f"scale({1 / scale:.9g})")
        return element

    outer = rounded_path(left, top, right, bottom, radius, corners)
    if not line:
        return [path(outer, fill)]

    def inset(by):
        edges = [0 if side in box.get("open", "").split() else by for side in ("left", "top", "right", "bottom")]
        return rounded_path(left + edges[0], top + edges[1], right - edges[2], bottom - edges[3], radius - by, corners)

    ring = path(outer + inset(border), line)
    # The fill reaches under the middle of the border, so that no seam shows between the two.
    return [path(inset(border / 2), fill), ring] if fill else [ring]


def expand(parent, scale):
    """Replaces the boxes below an element, in place and in drawing order."""
    for index in range(len(parent) - 1, -1, -1):
        child = parent[index]
        if child.tag == f"{{{CRISP}}}box":
            parent[index:index + 1] = box_paths(child, scale)
        else:
            expand(child, scale)


def load(path, palette):
    """The drawing of a source file with its colours filled in."""
    with open(path, encoding="utf-8") as file:
        text = substitute(file.read(), palette, path)
    try:
        return ElementTree.fromstring(text)
    except ElementTree.ParseError as error:
        raise SourceError(f"{path}:{error.position[0]}:{error.position[1]}: {error}") from None


def size_of(drawing):
    """Width and height in pixels at 100 percent."""
    return float(drawing.get("width")), float(drawing.get("height"))


def render(path, palette, scale, renderer="rsvg-convert"):
    """PNG data of a source file at a scale (1.0 is 100 percent)."""
    drawing = load(path, palette)
    width, height = size_of(drawing)
    pixels = round_half_up(width * scale), round_half_up(height * scale)
    expand(drawing, scale)
    drawing.set("viewBox", f"0 0 {pixels[0] / scale:.9g} {pixels[1] / scale:.9g}")
    drawing.set("width", str(pixels[0]))
    drawing.set("height", str(pixels[1]))
    result = subprocess.run([renderer, "--format=png"], input=ElementTree.tostring(drawing), capture_output=True)
    if result.returncode != 0:
        raise SourceError(f"{path}: {result.stderr.decode(errors='replace').strip()}")
    return result.stdout
