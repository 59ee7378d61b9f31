"""Makes the static fonts of the interface from the variable sources.

Qt before 6.7 draws a variable font at its default only, so each weight, width
and optical size in use becomes a font of its own, with its own family name.
Each is marked as upright and of regular weight, so that a family name alone
finds it and nothing is emboldened or slanted on top.

Usage: make_instances.py TABLE OUTPUT_FOLDER
The sources lie beside TABLE.
"""

import io
import sys
import unicodedata
from pathlib import Path
from typing import NamedTuple

from fontTools.subset import Options, Subsetter
from fontTools.ttLib import TTFont
from fontTools.varLib.instancer import instantiateVariableFont

FEATURES = ["ccmp", "kern", "liga", "lnum", "mark", "mkmk", "onum", "pnum", "rvrn", "tnum"]
COPYRIGHT, FAMILY, STYLE, UNIQUE_ID, FULL_NAME, VERSION, POSTSCRIPT_NAME = range(7)
LICENSE, LICENSE_ADDRESS = 13, 14
CARON_AS_APOSTROPHE = "ďľĽť"
REGULAR, USE_TYPOGRAPHIC_METRICS = 1 << 6, 1 << 7


class Instance(NamedTuple):
    file: str
    source: str
    axes: dict[str, float]
    family: str


def read_table(path: Path) -> list[Instance]:
    instances = []
    for line in path.read_text(encoding="utf-8").splitlines():
        if not line.strip() or line.startswith("#"):
            continue
        file, source, axes, family = line.split(maxsplit=3)
        values = {} if axes == "-" else dict(axis.split("=") for axis in axes.split(","))
        instances.append(Instance(file, source, {tag: float(value) for tag, value in values.items()}, family.strip()))
    return instances


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


def open_instance(source: bytes, axes: dict[str, float]) -> TTFont:
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
    known = font.getGlyphOrder()
    added = [glyph for glyph in other.getGlyphOrder() if glyph not in known]
    font.setGlyphOrder([*known, *added])
    for glyph in added:
        outlines[glyph] = other["glyf"][glyph]
        widths[glyph] = other["hmtx"][glyph]
        if glyph in other_kinds:
            kinds[glyph] = other_kinds[glyph]

    present = font.getBestCmap()
    characters = {code: glyph for code, glyph in other.getBestCmap().items() if code <= 0xFFFF and code not in present}
    for mapping in font["cmap"].tables:
        mapping.cmap.update(characters)
    kern_like_base_letters(font, characters)


def rename(font: TTFont, family: str) -> None:
    names = font["name"]
    names.names = [record for record in names.names if record.platformID == 3]
    postscript_name = family.replace(" ", "")
    version = names.getDebugName(VERSION)
    for identifier, text in {
        FAMILY: family,
        STYLE: "Regular",
        UNIQUE_ID: f"{version};{postscript_name}",
        FULL_NAME: family,
        POSTSCRIPT_NAME: postscript_name,
    }.items():
        names.setName(text, identifier, 3, 1, 0x409)

    system = font["OS/2"]
    system.usWeightClass = 400
    system.usWidthClass = 5
    system.fsSelection = REGULAR | (system.fsSelection & USE_TYPOGRAPHIC_METRICS)
    system.recalcUnicodeRanges(font)
    font["head"].macStyle = 0
    font["post"].formatType = 3.0


def make(instance: Instance, sources: list[bytes]) -> bytes:
    font, *others = [open_instance(source, instance.axes) for source in sources]
    for part in (font, *others):
        apply_required_variations(part)
    for other in others:
        merge(font, other)
    rename(font, instance.family)
    return save(font)


def main() -> None:
    table, output = Path(sys.argv[1]), Path(sys.argv[2])
    output.mkdir(parents=True, exist_ok=True)
    loaded: dict[str, list[bytes]] = {}
    for instance in read_table(table):
        if instance.source not in loaded:
            names = [instance.source.replace("*", subset) for subset in ("latin", "latin-ext")]
            loaded[instance.source] = [load_source(table.parent / f"{name}.woff2") for name in names]
        (output / instance.file).write_bytes(make(instance, loaded[instance.source]))


if __name__ == "__main__":
    main()
