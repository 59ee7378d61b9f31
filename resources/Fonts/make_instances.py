"""Makes the static fonts of the interface from the variable sources.

Qt before 6.7 draws a variable font at its default only, so each weight, width
and optical size in use becomes a font of its own, with its own family name.
Each is marked as upright and as regular or bold, whichever is nearer, so that
what the theme asks for is there: nothing is emboldened or slanted on top, and
a fallback font is asked for the same weight. From Qt 6.7 on the fonts keep
their axes instead.

Usage: make_instances.py TABLE OUTPUT_FOLDER FILE...
Makes the named files of the table. The sources lie beside TABLE.
"""

import io
import sys
import unicodedata
from pathlib import Path
from typing import NamedTuple

from fontTools.pens.transformPen import TransformPen
from fontTools.pens.ttGlyphPen import TTGlyphPen
from fontTools.subset import Options, Subsetter
from fontTools.ttLib import TTFont
from fontTools.ttLib.tables._g_l_y_f import Glyph
from fontTools.ttLib.tables.TupleVariation import TupleVariation
from fontTools.varLib.instancer import instantiateVariableFont

FEATURES = ["ccmp", "kern", "liga", "lnum", "mark", "mkmk", "onum", "pnum", "rvrn", "tnum"]
COPYRIGHT, FAMILY, STYLE, UNIQUE_ID, FULL_NAME, VERSION, POSTSCRIPT_NAME = range(7)
LICENSE, LICENSE_ADDRESS = 13, 14
CARON_AS_APOSTROPHE = "ďľĽť"
NO_BREAK_SPACE, NARROW_NO_BREAK_SPACE = 0x00A0, 0x202F
# Of the no-break space: about a sixth of the letters' height, as French printers set it.
NARROW = 2 / 3
RIGHT_ARROW, UP_RIGHT_ARROW = 0x2192, 0x2197
ALL_AXES = "*"
BOLD, REGULAR, USE_TYPOGRAPHIC_METRICS = 1 << 5, 1 << 6, 1 << 7
BOLD_FROM = 600


class Instance(NamedTuple):
    file: str
    source: str
    #: Absent where the font keeps its axes, empty where the source has none.
    axes: dict[str, float] | None
    family: str


def read_table(path: Path) -> list[Instance]:
    instances = []
    for line in path.read_text(encoding="utf-8").splitlines():
        if not line.strip() or line.startswith("#"):
            continue
        file, source, axes, family = line.split(maxsplit=3)
        instances.append(Instance(file, source, read_axes(axes), family.strip()))
    return instances


def read_axes(text: str) -> dict[str, float] | None:
    if text == ALL_AXES:
        return None
    if text == "-":
        return {}
    return {tag: float(value) for tag, value in (axis.split("=") for axis in text.split(","))}


def load_source(path: Path) -> bytes:
    """The font without what Qt never reads, as plain bytes that open quickly."""
    options = Options(
        layout_features=FEATURES,
        hinting=False,
        glyph_names=True,
        notdef_outline=True,
        name_IDs=[COPYRIGHT, VERSION, LICENSE, LICENSE_ADDRESS],
    )
    # Advance widths are also in the outlines' variations, where instancing finds them.
    options.drop_tables += ["HVAR", "STAT", "gasp"]
    font = TTFont(path, recalcTimestamp=False)
    font.flavor = None
    subsetter = Subsetter(options)
    subsetter.populate(unicodes=font.getBestCmap())
    subsetter.subset(font)
    return save(font)


def save(font: TTFont) -> bytes:
    buffer = io.BytesIO()
    font.save(buffer, reorderTables=None)
    return buffer.getvalue()


def open_instance(source: bytes, axes: dict[str, float] | None) -> TTFont:
    font = TTFont(io.BytesIO(source), recalcTimestamp=False)
    if axes:
        font = instantiateVariableFont(font, axes, inplace=True)
    return font


def lookups_of(table, tag: str) -> list[int]:
    """The indices of the lookups that a feature runs, in their order."""
    records = table.FeatureList.FeatureRecord
    return sorted({index for record in records if record.FeatureTag == tag for index in record.Feature.LookupListIndex})


def apply_required_variations(font: TTFont) -> None:
    """Maps characters to the glyphs that the "rvrn" feature puts in their place.

    Some heavy or narrow instances have simplified glyphs; a direct mapping
    needs no shaping, and it survives the merge.
    """
    if "GSUB" not in font:
        return
    table = font["GSUB"].table
    for index in lookups_of(table, "rvrn"):
        for subtable in table.LookupList.Lookup[index].SubTable:
            replaced = getattr(subtable, "ExtSubTable", subtable).mapping
            for mapping in font["cmap"].tables:
                mapping.cmap = {code: replaced.get(glyph, glyph) for code, glyph in mapping.cmap.items()}


def kern_like_base_letters(font: TTFont, added: dict[int, str]) -> None:
    """Puts each added accented letter into the kerning classes of its base letter.

    The subsets hold no pair across their border, so that "To" would be kerned
    and "Tő" not. The family's own accented letters share these classes.
    """
    characters = font.getBestCmap()
    alike = {}
    for code, glyph in added.items():
        base = characters.get(ord(unicodedata.normalize("NFD", chr(code))[0]))
        if base and base != glyph:
            alike[glyph] = base
    with_apostrophe = {characters.get(ord(letter)) for letter in CARON_AS_APOSTROPHE}

    table = font["GPOS"].table
    for index in lookups_of(table, "kern"):
        for subtable in table.LookupList.Lookup[index].SubTable:
            if subtable.LookupType != 2 or subtable.Format != 2:
                continue
            first, second = subtable.ClassDef1.classDefs, subtable.ClassDef2.classDefs
            covered = set(subtable.Coverage.glyphs)
            for glyph, base in alike.items():
                if base in covered and glyph not in with_apostrophe:
                    covered.add(glyph)
                    if base in first:
                        first[glyph] = first[base]
                if base in second:
                    second[glyph] = second[base]
            subtable.Coverage.glyphs = sorted(covered, key=font.getGlyphID)


def merge(font: TTFont, other: TTFont) -> None:
    """Adds the glyphs and characters that only the other font has.

    Both are cut from one font, so equal glyph names mean equal glyphs.
    """
    outlines, widths, kinds = font["glyf"], font["hmtx"], font["GDEF"].table.GlyphClassDef.classDefs
    other_kinds = other["GDEF"].table.GlyphClassDef.classDefs
    # Read before the order of the glyphs changes under it.
    variations = font["gvar"].variations if "gvar" in font else None
    known = font.getGlyphOrder()
    added = [glyph for glyph in other.getGlyphOrder() if glyph not in known]
    font.setGlyphOrder([*known, *added])
    for glyph in added:
        outlines[glyph] = other["glyf"][glyph]
        widths[glyph] = other["hmtx"][glyph]
        if glyph in other_kinds:
            kinds[glyph] = other_kinds[glyph]
        if variations is not None:
            variations[glyph] = other["gvar"].variations.get(glyph, [])

    present = font.getBestCmap()
    characters = {code: glyph for code, glyph in other.getBestCmap().items() if code <= 0xFFFF and code not in present}
    for mapping in font["cmap"].tables:
        mapping.cmap.update(characters)
    kern_like_base_letters(font, characters)


def add_glyph(font: TTFont, code: int, outline: Glyph, width: int, name: str) -> None:
    font.setGlyphOrder([*font.getGlyphOrder(), name])
    font["glyf"][name] = outline
    left = getattr(outline, "xMin", 0)
    font["hmtx"][name] = (width, left)
    if "gvar" in font:
        font["gvar"].variations[name] = []
    for mapping in font["cmap"].tables:
        mapping.cmap[code] = name


def add_narrow_space(font: TTFont) -> None:
    """French sets a narrow space that does not break before high punctuation and in numbers.

    The subsets lack it, and a fallback font's would be as wide as that font likes.
    """
    wide = font.getBestCmap()[NO_BREAK_SPACE]
    name = "uni202F"
    add_glyph(font, NARROW_NO_BREAK_SPACE, Glyph(), round(font["hmtx"][wide][0] * NARROW), name)
    if "gvar" in font:
        font["gvar"].variations[name] = [
            TupleVariation(change.axes, [point and (round(point[0] * NARROW), point[1]) for point in change.coordinates])
            for change in font["gvar"].variations[wide]
        ]


def add_arrows(font: TTFont) -> None:
    """Arrows in the stroke of the hyphen, which the subsets of the mono family lack."""
    characters = font.getBestCmap()
    width = font["hmtx"][characters[ord("-")]][0]
    hyphen = font["glyf"][characters[ord("-")]]
    stroke = hyphen.yMax - hyphen.yMin
    middle = (hyphen.yMax + hyphen.yMin) / 2
    reach, head = 0.42 * width, 0.34 * width
    half, corner = stroke / 2, stroke * 2**0.5
    straight = [
        [(-reach, -half), (-reach, half), (reach - half, half), (reach - half, -half)],
        [(reach, 0), (reach - head, -head), (reach - head - corner / 2, -head + corner / 2),
         (reach - corner, 0), (reach - head - corner / 2, head - corner / 2), (reach - head, head)],
    ]
    turn = 0.5**0.5
    for code, name, (c, s) in ((RIGHT_ARROW, "arrowright", (1, 0)), (UP_RIGHT_ARROW, "arrowupright", (turn, turn))):
        pen = TTGlyphPen(None)
        placed = TransformPen(pen, (c, s, -s, c, width / 2, middle))
        for outline in straight:
            placed.moveTo(outline[0])
            for point in outline[1:]:
                placed.lineTo(point)
            placed.closePath()
        arrow = pen.glyph()
        arrow.coordinates.toInt()
        arrow.recalcBounds(font["glyf"])
        add_glyph(font, code, arrow, width, name)


def rename(font: TTFont, family: str, bold: bool) -> None:
    names = font["name"]
    names.names = [record for record in names.names if record.platformID == 3]
    postscript_name = family.replace(" ", "")
    version = names.getDebugName(VERSION)
    for identifier, text in {
        FAMILY: family,
        STYLE: "Bold" if bold else "Regular",
        UNIQUE_ID: f"{version};{postscript_name}",
        FULL_NAME: family,
        POSTSCRIPT_NAME: postscript_name,
    }.items():
        names.setName(text, identifier, 3, 1, 0x409)

    system = font["OS/2"]
    system.usWeightClass = 700 if bold else 400
    system.usWidthClass = 5
    system.fsSelection = (BOLD if bold else REGULAR) | (system.fsSelection & USE_TYPOGRAPHIC_METRICS)
    system.recalcUnicodeRanges(font)
    font["head"].macStyle = 1 if bold else 0
    font["post"].formatType = 3.0


def weight_of(instance: Instance, font: TTFont) -> float:
    if instance.axes is None:
        return 400
    return instance.axes.get("wght", font["OS/2"].usWeightClass)


def make(instance: Instance, sources: list[bytes]) -> bytes:
    font, *others = [open_instance(source, instance.axes) for source in sources]
    for part in (font, *others):
        if instance.axes is not None:
            apply_required_variations(part)
    for other in others:
        merge(font, other)
    add_narrow_space(font)
    if font["post"].isFixedPitch:
        add_arrows(font)
    if instance.axes is None:
        # Named styles would be as many styles of the family; the axes alone choose.
        font["fvar"].instances = []
    rename(font, instance.family, weight_of(instance, font) >= BOLD_FROM)
    return save(font)


def main() -> None:
    table, output, files = Path(sys.argv[1]), Path(sys.argv[2]), sys.argv[3:]
    output.mkdir(parents=True, exist_ok=True)
    loaded: dict[str, list[bytes]] = {}
    for instance in read_table(table):
        if instance.file not in files:
            continue
        if instance.source not in loaded:
            names = [instance.source.replace("*", subset) for subset in ("latin", "latin-ext")]
            loaded[instance.source] = [load_source(table.parent / f"{name}.woff2") for name in names]
        (output / instance.file).write_bytes(make(instance, loaded[instance.source]))


if __name__ == "__main__":
    main()
