#!/usr/bin/env python3
"""Makes a Windows icon (.ico) or cursor (.cur) from a drawing.

    make_icon.py icons/button.svg --palette light.ini --output button.ico

Icons hold 16, 24, 32 and 48 pixels, cursors 32, 48 and 64, each as a 32-bit bitmap with alpha and a mask, which every
loader accepts. At 16 pixels "button.16.svg" beside the drawing takes its place when there is one. A cursor's drawing
names its hot spot in its own units: <svg m:hotspot="4 4">.
"""

import argparse
import pathlib
import struct
import sys
import zlib

import crisp_svg

SIZES = {".ico": (16, 24, 32, 48), ".cur": (32, 48, 64)}
KINDS = {".ico": 1, ".cur": 2}


def decode_png(data):
    """Width, height and the rows of RGBA bytes of an 8-bit RGBA PNG, top row first."""
    width = height = 0
    packed = b""
    position = 8
    while position < len(data):
        length, kind = struct.unpack(">I4s", data[position:position + 8])
        body = data[position + 8:position + 8 + length]
        if kind == b"IHDR":
            width, height, depth, colour, _, _, interlace = struct.unpack(">IIBBBBB", body)
            if (depth, colour, interlace) != (8, 6, 0):
                raise crisp_svg.SourceError("the renderer wrote something other than 8-bit RGBA")
        elif kind == b"IDAT":
            packed += body
        position += 12 + length
    return width, height, unfilter(zlib.decompress(packed), width * 4, height)


def unfilter(data, stride, height):
    """Undoes the PNG row filters (four bytes to a pixel)."""
    rows = []
    above = bytearray(stride)
    for y in range(height):
        start = y * (stride + 1)
        kind, row = data[start], bytearray(data[start + 1:start + 1 + stride])
        for x in range(stride):
            left = row[x - 4] if x >= 4 else 0
            corner = above[x - 4] if x >= 4 else 0
            row[x] = (row[x] + predicted(kind, left, above[x], corner)) & 255
        rows.append(bytes(row))
        above = row
    return rows


def predicted(kind, left, above, corner):
    """What a PNG row filter adds to a byte."""
    if kind == 4:
        guess = left + above - corner
        return min((left, above, corner), key=lambda neighbour: abs(guess - neighbour))
    return (0, left, above, (left + above) // 2)[kind]


def bitmap(rows, width, height):
    """A 32-bit device-independent bitmap, bottom row first, with the mask of fully transparent pixels after it."""
    header = struct.pack("<IiiHHIIiiII", 40, width, height * 2, 1, 32, 0, 0, 0, 0, 0, 0)
    colours = bytearray()
    mask = bytearray()
    for row in reversed(rows):
        pixels = [row[x:x + 4] for x in range(0, width * 4, 4)]
        for red, green, blue, alpha in pixels:
            colours += bytes((blue, green, red, alpha))
        bits = "".join("0" if pixel[3] else "1" for pixel in pixels).ljust((width + 31) // 32 * 32, "0")
        mask += int(bits, 2).to_bytes(len(bits) // 8, "big")
    return header + bytes(colours) + bytes(mask)


def directory(kind, frames):
    """The file: a directory of (size, hot spot, data) frames and the frames themselves."""
    head = struct.pack("<HHH", 0, kind, len(frames))
    offset = 6 + 16 * len(frames)
    entries = b""
    for size, hotspot, data in frames:
        planes, bits = hotspot if kind == KINDS[".cur"] else (1, 32)
        entries += struct.pack("<BBBBHHII", size & 255, size & 255, 0, 0, planes, bits, len(data), offset)
        offset += len(data)
    return head + entries + b"".join(data for _, _, data in frames)


def frame(drawing, palette, size, renderer):
    """One size of the picture with its hot spot."""
    root = crisp_svg.load(drawing, palette)
    scale = size / crisp_svg.size_of(root)[0]
    spot = (root.get(f"{{{crisp_svg.CRISP}}}hotspot") or "0 0").split()
    width, height, rows = decode_png(crisp_svg.render(drawing, palette, scale, renderer))
    if (width, height) != (size, size):
        raise crisp_svg.SourceError(f"{drawing}: not square")
    return size, tuple(int(float(value) * scale) for value in spot), bitmap(rows, width, height)


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("drawing", type=pathlib.Path)
    parser.add_argument("--palette", type=pathlib.Path, required=True)
    parser.add_argument("--output", type=pathlib.Path, required=True)
    parser.add_argument("--renderer", default="rsvg-convert", help="the program that turns SVG into PNG")
    arguments = parser.parse_args()
    extension = arguments.output.suffix
    small = arguments.drawing.with_suffix(".16.svg")
    try:
        palette = crisp_svg.read_palette(arguments.palette)
        frames = []
        for size in SIZES[extension]:
            drawing = small if size == 16 and small.exists() else arguments.drawing
            frames.append(frame(drawing, palette, size, arguments.renderer))
    except crisp_svg.SourceError as error:
        sys.exit(f"make_icon: {error}")
    arguments.output.write_bytes(directory(KINDS[extension], frames))


if __name__ == "__main__":
    main()
