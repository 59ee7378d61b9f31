"""Draws the mark: a ring of mosaic tiles with a nib for its tail.

It is a Q, a speech bubble and a mosaic at once. The script writes the vector
drawing and each bitmap from one list of shapes, with the standard library
alone, so that they cannot drift apart.

Usage: make_tessel_mark.py [--icons FOLDER]
Without the option it writes tessel-mark.svg and tessel-mark.png beside itself;
with it, the application's icons into a "hicolor" folder.
"""

import math
import struct
import sys
import zlib
from pathlib import Path
from typing import NamedTuple

Point = tuple[float, float]

SIZE = 512
APPLICATION = "chat.quillmere.mac"
MARK_SIZE = 128
ICON_SIZES = (48, 64, 128, 256)

PAPER = "#F6EFE0"
YELLOW, BLUE, CORAL, MAGENTA, GREEN = "#FFE014", "#0032FF", "#FF6347", "#E6007E", "#12805C"

CENTRE = (238.0, 238.0)
OUTER_RADIUS, INNER_RADIUS = 200.0, 94.0
BULGE = 1.025
GROUT = 12.0
CORNER = 9.0
TAIL_ANGLE = 45.0

# Clockwise from the tail. A pair is a slot split into an outer and an inner tile; the number
# after the colours is the slot's share of the ring, uneven as in tiles cut by hand.
SLOTS = [
    ((GREEN,), 0.92),
    ((YELLOW, CORAL), 1.06),
    ((MAGENTA,), 0.96),
    ((BLUE,), 1.04),
    ((CORAL, YELLOW), 0.98),
    ((GREEN,), 1.05),
    ((YELLOW,), 0.94),
    ((MAGENTA, BLUE), 1.08),
    ((CORAL,), 0.97),
]
TAIL_SHARE = 1.15


class Shape(NamedTuple):
    colour: str
    corners: list[Point]
    rounding: float


def at(angle: float, radius: float, shift: float = 0.0) -> Point:
    """The point at an angle (degrees, clockwise from the right) and a radius, moved sideways by a shift."""
    direction = math.radians(angle)
    along, across = (math.cos(direction), math.sin(direction)), (-math.sin(direction), math.cos(direction))
    return tuple(CENTRE[axis] + along[axis] * radius + across[axis] * shift for axis in (0, 1))


def tile(colour: str, start: float, end: float, inner: float, outer: float) -> Shape:
    """A tile between two angles, with half of the grout left free at each side."""
    middle = (start + end) / 2
    corners = [
        at(start, inner, GROUT / 2),
        at(start, outer, GROUT / 2),
        at(middle, outer * BULGE),
        at(end, outer, -GROUT / 2),
        at(end, inner, -GROUT / 2),
    ]
    return Shape(colour, corners, CORNER)


def mosaic() -> list[Shape]:
    shapes = []
    degrees = 360 / (TAIL_SHARE + sum(share for _, share in SLOTS))
    angle = TAIL_ANGLE + TAIL_SHARE * degrees / 2
    for colours, share in SLOTS:
        end = angle + share * degrees
        if len(colours) == 1:
            shapes.append(tile(colours[0], angle, end, INNER_RADIUS, OUTER_RADIUS))
        else:
            seam = INNER_RADIUS + 0.46 * (OUTER_RADIUS - INNER_RADIUS)
            shapes.append(tile(colours[0], angle, end, seam + GROUT / 2, OUTER_RADIUS))
            shapes.append(tile(colours[1], angle, end, INNER_RADIUS, seam - GROUT / 2))
        angle = end
    return shapes + nib(TAIL_SHARE * degrees)


def nib(width: float) -> list[Shape]:
    """The tail: a pen's nib from within the ring to the corner, with its hole and its slit."""
    half = OUTER_RADIUS * math.sin(math.radians(width) / 2) - GROUT / 2
    back, hole, shoulder, tip = 70.0, 176.0, 186.0, 316.0
    body = [
        at(TAIL_ANGLE, back, -half * 0.42),
        at(TAIL_ANGLE, back, half * 0.42),
        at(TAIL_ANGLE, shoulder, half),
        at(TAIL_ANGLE, tip, 0),
        at(TAIL_ANGLE, shoulder, -half),
    ]
    slit = [at(TAIL_ANGLE, along, across) for along, across in ((hole, -4), (hole, 4), (tip - 16, 0.5), (tip - 16, -0.5))]
    diamond = [at(TAIL_ANGLE, hole + along, across) for along, across in ((-21, 0), (0, 15), (21, 0), (0, -15))]
    return [Shape(BLUE, body, CORNER), Shape(PAPER, slit, 0), Shape(PAPER, diamond, 4)]


def ground(inset: float, rounding: float) -> Shape:
    near, far = inset, SIZE - inset
    return Shape(PAPER, [(near, near), (far, near), (far, far), (near, far)], rounding)


def scaled(shape: Shape, factor: float) -> Shape:
    middle = SIZE / 2
    return Shape(
        shape.colour,
        [tuple(middle + (value - middle) * factor for value in corner) for corner in shape.corners],
        shape.rounding * factor,
    )


def rounded(shape: Shape) -> list[tuple[Point, Point, Point]]:
    """For each corner where the curve begins, the corner itself, and where the curve ends."""
    curves = []
    count = len(shape.corners)
    for index, corner in enumerate(shape.corners):
        ends = []
        for neighbour in (shape.corners[index - 1], shape.corners[(index + 1) % count]):
            distance = math.dist(corner, neighbour)
            reach = min(shape.rounding, distance / 2) / distance if distance else 0
            ends.append(tuple(corner[axis] + (neighbour[axis] - corner[axis]) * reach for axis in (0, 1)))
        curves.append((ends[0], corner, ends[1]))
    return curves


def outline(shape: Shape) -> list[Point]:
    points = []
    steps = 12
    for start, corner, end in rounded(shape):
        for step in range(steps + 1):
            t = step / steps
            points.append(
                tuple((1 - t) ** 2 * start[axis] + 2 * t * (1 - t) * corner[axis] + t**2 * end[axis] for axis in (0, 1))
            )
    return points


def number(value: float) -> str:
    return f"{value:.2f}".rstrip("0").rstrip(".")


def svg(shapes: list[Shape]) -> str:
    lines = [f'<svg xmlns="http://www.w3.org/2000/svg" width="{SIZE}" height="{SIZE}" viewBox="0 0 {SIZE} {SIZE}">']
    for shape in shapes:
        path = ""
        for start, corner, end in rounded(shape):
            path += f"{'L' if path else 'M'}{number(start[0])} {number(start[1])}"
            path += f"Q{number(corner[0])} {number(corner[1])} {number(end[0])} {number(end[1])}"
        lines.append(f'  <path fill="{shape.colour}" d="{path}z"/>')
    return "\n".join([*lines, "</svg>", ""])


def coverage(points: list[Point], size: int) -> dict[int, list[float]]:
    """How much of each pixel of each row lies inside the outline, from 0 to 1."""
    lines_per_row = 8
    rows: dict[int, list[float]] = {}
    edges = list(zip(points, points[1:] + points[:1]))
    top = max(0, math.floor(min(y for _, y in points)))
    bottom = min(size, math.ceil(max(y for _, y in points)))
    for row in range(top, bottom):
        amounts = rows.setdefault(row, [0.0] * size)
        for line in range(lines_per_row):
            y = row + (line + 0.5) / lines_per_row
            crossings = sorted(
                x1 + (y - y1) * (x2 - x1) / (y2 - y1) for (x1, y1), (x2, y2) in edges if (y1 <= y) != (y2 <= y)
            )
            for left, right in zip(crossings[::2], crossings[1::2]):
                left, right = max(left, 0.0), min(right, float(size))
                for column in range(math.floor(left), math.ceil(right)):
                    amounts[column] += max(0.0, min(right, column + 1) - max(left, column)) / lines_per_row
    return rows


def png(shapes: list[Shape], size: int) -> bytes:
    """The shapes painted one over the other, as a bitmap with transparency."""
    pixels = [[(0.0, 0.0, 0.0, 0.0)] * size for _ in range(size)]
    for shape in shapes:
        colour = [int(shape.colour[index : index + 2], 16) for index in (1, 3, 5)]
        points = [(x * size / SIZE, y * size / SIZE) for x, y in outline(shape)]
        for row, amounts in coverage(points, size).items():
            for column, amount in enumerate(amounts):
                if amount > 0:
                    below = pixels[row][column]
                    above = (*(channel * amount for channel in colour), amount)
                    pixels[row][column] = tuple(above[i] + below[i] * (1 - amount) for i in range(4))

    # What is clear has the colour of the ground: a reader that shrinks the picture mixes it in.
    clear = bytes.fromhex(PAPER[1:])
    data = bytearray()
    for row in pixels:
        data.append(0)
        for *channels, alpha in row:
            data += bytes(round(channel / alpha) for channel in channels) if alpha else clear
            data.append(round(min(alpha, 1.0) * 255))

    def chunk(kind: bytes, content: bytes) -> bytes:
        return struct.pack(">I", len(content)) + kind + content + struct.pack(">I", zlib.crc32(kind + content))

    header = struct.pack(">IIBBBBB", size, size, 8, 6, 0, 0, 0)
    return (
        b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) + chunk(b"IDAT", zlib.compress(bytes(data), 9)) + chunk(b"IEND", b"")
    )


def write(path: Path, content: bytes) -> None:
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_bytes(content)


def main() -> None:
    if sys.argv[1:2] == ["--icons"]:
        folder = Path(sys.argv[2])
        shapes = [ground(20, 112), *(scaled(shape, 0.94) for shape in mosaic())]
        write(folder / "scalable" / "apps" / f"{APPLICATION}.svg", svg(shapes).encode())
        for size in ICON_SIZES:
            write(folder / f"{size}x{size}" / "apps" / f"{APPLICATION}.png", png(shapes, size))
    else:
        folder = Path(__file__).parent
        shapes = [ground(0, 0.22 * SIZE), *mosaic()]
        write(folder / "tessel-mark.svg", svg(shapes).encode())
        # Twice the largest size on screen: a larger picture only costs time at start-up.
        write(folder / "tessel-mark.png", png(shapes, MARK_SIZE))


if __name__ == "__main__":
    main()
