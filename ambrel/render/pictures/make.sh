#!/usr/bin/env bash
# make.sh: makes the encoded pictures of the decoder's tests anew, with ImageMagick. Sixteen by sixteen pixels in four
# quarters: red, green, blue and, at the lower right, white that is half transparent where the format can say so.
set -euo pipefail
cd "$(dirname "$0")"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
convert -size 8x8 "(" xc:'#FF0000' xc:'#00FF00' +append ")" "(" xc:'#0000FF' xc:'#FFFFFF80' +append ")" -append +repage \
    "PNG32:$work/quarters.png"
convert "$work/quarters.png" -background white -flatten -alpha off "$work/opaque.png"

convert "$work/quarters.png" -strip -define png:exclude-chunks=all -interlace PNG PNG32:quarters-interlaced.png
convert "$work/quarters.png" -strip -define png:exclude-chunks=all PNG64:quarters-16-bit.png
convert "$work/opaque.png" -strip -define png:exclude-chunks=all PNG8:quarters-palette.png
convert "$work/opaque.png" -strip -quality 95 -sampling-factor 1x1 JPEG:quarters.jpg
convert "$work/opaque.png" -strip -quality 95 -sampling-factor 1x1 -interlace JPEG JPEG:quarters-progressive.jpg
convert "$work/opaque.png" -strip -colorspace Gray -quality 95 JPEG:quarters-grey.jpg

# Four frames of 6 by 4 pixels: red stays; a blue square takes itself back; a green one leaves a hole; a white pixel.
square() { echo "(" -size "$2" "xc:$1" ")"; }
# shellcheck disable=SC2046
convert -dispose None -delay 5 -page 6x4+0+0 $(square '#FF0000' 6x4) \
    -dispose Previous -delay 20 -page 6x4+2+1 $(square '#0000FF' 2x2) \
    -dispose Background -delay 0 -page 6x4+0+0 $(square '#00FF00' 2x2) \
    -dispose None -delay 7 -page 6x4+5+3 $(square '#FFFFFF' 1x1) -loop 3 GIF:disposal.gif

# Four inks: as photo editors write them (inverted, with a marker that says so; the first three rotated to luma and
# chroma), the same not rotated, and the bare form without a marker, where 0 is no ink.
convert "$work/opaque.png" -strip -colorspace CMYK -quality 95 -sampling-factor 1x1 JPEG:quarters-ycck.jpg
cat > "$work/inks.c" <<'END'
#include <stdio.h>
#include <string.h>

#include <jpeglib.h>
int main(int argc, char** argv)
{
    static const JSAMPLE inks[4][4] = {{0, 255, 255, 0}, {255, 0, 255, 0}, {255, 255, 0, 0}, {0, 0, 0, 0}};
    const int isInverted = argc > 1 && strcmp(argv[1], "inverted") == 0;
    struct jpeg_compress_struct c;
    struct jpeg_error_mgr errors;
    c.err = jpeg_std_error(&errors);
    jpeg_create_compress(&c);
    jpeg_stdio_dest(&c, stdout);
    c.image_width = c.image_height = 16;
    c.input_components = 4;
    c.in_color_space = JCS_CMYK;
    jpeg_set_defaults(&c);
    jpeg_set_quality(&c, 95, TRUE);
    c.write_Adobe_marker = isInverted;
    jpeg_start_compress(&c, TRUE);
    for (int y = 0; y < 16; ++y) {
        JSAMPLE row[16][4];
        JSAMPROW rows[] = {row[0]};
        for (int x = 0; x < 16; ++x)
            for (int i = 0; i < 4; ++i)
                row[x][i] = inks[x / 8 + y / 8 * 2][i] ^ (isInverted ? 255 : 0);
        jpeg_write_scanlines(&c, rows, 1);
    }
    jpeg_finish_compress(&c);
    return 0;
}
END
cc -o "$work/inks" "$work/inks.c" -ljpeg
"$work/inks" inverted > quarters-cmyk.jpg
"$work/inks" bare > quarters-cmyk-bare.jpg
