#!/usr/bin/env -S python3 -B
"""Compares the resources of a built library with the tables of expected_resources.py.

    check_resources.py FILE

Prints each difference, then one line "N passed, M failed"; fails when anything differs.
"""

import re
import struct
import sys
import xml.etree.ElementTree as ElementTree
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[1]))

import expected_resources as expected
from counting import Checks
from pe_resources import (RT_DIALOG, RT_GROUP_ICON, RT_ICON, RT_MANIFEST, RT_STRING, RT_VERSION, read_dialog,
                          read_icon_group, read_resources, read_strings, read_version_fixed, read_version_node)

ICONS_FOLDER = Path(__file__).resolve().parents[2] / "library" / "resources" / "icons"


def check_inventory(checks, resources):
    """Nothing is missing, nothing is there that nobody knows, and all is in the one language."""
    ids = {}
    for resource in resources:
        ids.setdefault(resource.type, []).append(resource.id)
        checks.equal(f"language of resource {resource.type}/{resource.id}", resource.language, expected.LANGUAGE)
    checks.equal("types of resources", sorted(ids, key=str),
                 sorted([RT_ICON, RT_DIALOG, RT_STRING, RT_GROUP_ICON, RT_VERSION, RT_MANIFEST], key=str))
    checks.equal("dialogs", sorted(ids.get(RT_DIALOG, [])), sorted(expected.DIALOGS))
    checks.equal("icon groups", sorted(ids.get(RT_GROUP_ICON, [])), sorted(expected.ICON_GROUPS))
    checks.equal("icon images", len(ids.get(RT_ICON, [])), expected.IMAGE_COUNT)
    checks.equal("version blocks", ids.get(RT_VERSION), [1])
    checks.equal("manifests", ids.get(RT_MANIFEST), [expected.MANIFEST_ID])


def check_strings(checks, resources):
    found = read_strings(resources)
    address = found.pop(expected.PLACEHOLDER_ADDRESS_ID, "")
    checks.true("placeholder address in a domain for documentation",
                re.fullmatch(r"[\w.]+@(\w+\.)*example(\.com|\.net|\.org)?", address))
    for string_id in sorted(expected.STRINGS.keys() | found.keys()):
        checks.equal(f"string {string_id}", found.get(string_id), expected.STRINGS.get(string_id))


def fold_class(control):
    """Windows compares the names of window classes without regard to case, and resource compilers change it."""
    name = control.window_class
    return control._replace(window_class=name.lower() if isinstance(name, str) else name)


def check_dialogs(checks, resources):
    for resource in resources:
        wanted = expected.DIALOGS.get(resource.id)
        if resource.type != RT_DIALOG or wanted is None:
            continue
        found = read_dialog(resource.data)
        checks.equal(f"dialog {resource.id}", found._replace(controls=[]), wanted._replace(controls=[]))
        checks.equal(f"dialog {resource.id}: controls", len(found.controls), len(wanted.controls))
        for i, (control, wanted_control) in enumerate(zip(found.controls, wanted.controls)):
            checks.equal(f"dialog {resource.id}: control {i}", fold_class(control), fold_class(wanted_control))


def check_image(checks, what, entry, image):
    """The bitmap is what its group says, and shows something on a transparent ground."""
    header_size, width, height, planes, depth, compression = struct.unpack_from("<IiiHHI", image)
    colour_count = {4: 16, 8: 256, 32: 0}[depth]
    stride, mask_stride = width * depth // 8, -(-width // 32) * 4
    checks.equal(f"{what}: header", (header_size, width, height, planes, depth, compression),
                 (40, entry.width, 2 * entry.height, 1, entry.depth, 0))
    checks.equal(f"{what}: bytes", len(image), 40 + 4 * colour_count + entry.height * (stride + mask_stride))
    mask = image[-entry.height * mask_stride:]
    transparent = sum(mask[y * mask_stride + x // 8] >> 7 - x % 8 & 1
                      for y in range(entry.height) for x in range(width))
    checks.true(f"{what}: part of it transparent", 0 < transparent < width * entry.height)
    if depth == 32:
        opacities = set(image[43:40 + entry.height * stride:4])
        checks.true(f"{what}: soft edges", {0, 255} < opacities)
    if depth == 4:
        palette = set(struct.unpack_from("<16I", image, 40))
        checks.true(f"{what}: sixteen colours of the standard palette",
                    len(palette) == 16 and all(colour >> shift & 0xFF in (0, 0x80, 0xC0, 0xFF)
                                               for colour in palette for shift in (0, 8, 16)))


def check_icons(checks, resources):
    images = {resource.id: resource.data for resource in resources if resource.type == RT_ICON}
    used = []
    for resource in resources:
        if resource.type != RT_GROUP_ICON or resource.id not in expected.ICON_GROUPS:
            continue
        group = read_icon_group(resource.data)
        what = f"icon group {resource.id}"
        checks.equal(f"{what}: images", sorted((entry.width, entry.depth) for entry in group),
                     sorted(expected.ICON_GROUPS[resource.id]))
        for entry in group:
            used.append(entry.image_id)
            what_image = f"{what}: image {entry.width}x{entry.height} at {entry.depth} bits"
            image = images.get(entry.image_id, b"")
            checks.equal(f"{what_image}: size of the data", len(image), entry.byte_count)
            if len(image) >= 40:
                check_image(checks, what_image, entry, image)
    checks.equal("images used by the groups, each once", sorted(used), sorted(images))


def check_icon_files(checks, resources):
    """The icon files are those that their drawings give, and the library holds these files' images."""
    sys.path.insert(0, str(ICONS_FOLDER))
    import draw_icons

    drawn = []
    for name in draw_icons.ICONS:
        data = draw_icons.encode_icon(name)
        path = ICONS_FOLDER / f"{name}.ico"
        checks.true(f"{path.name} is as drawn", path.read_bytes() == data)
        for i in range(struct.unpack_from("<H", data, 4)[0]):
            size, offset = struct.unpack_from("<II", data, 6 + 16 * i + 8)
            drawn.append(data[offset:offset + size])
    carried = [resource.data for resource in resources if resource.type == RT_ICON]
    checks.true("the library's images are those drawn", sorted(carried) == sorted(drawn))


def check_version(checks, resources):
    for resource in resources:
        if resource.type != RT_VERSION:
            continue
        root, _ = read_version_node(resource.data)
        checks.equal("version block: key", root.key, "VS_VERSION_INFO")
        fixed = read_version_fixed(root.value)
        for field, value in expected.VERSION_FIXED.items():
            checks.equal(f"version block: {field}", fixed[field], value)
        children = {child.key: child.children for child in root.children}
        checks.equal("version block: parts", sorted(children), ["StringFileInfo", "VarFileInfo"])
        tables = {table.key: {node.key: node.value for node in table.children}
                  for table in children.get("StringFileInfo", [])}
        checks.equal("version block: string tables", list(tables), [expected.VERSION_TABLE])
        strings = tables.get(expected.VERSION_TABLE, {})
        for key in sorted(expected.VERSION_STRINGS.keys() | strings.keys()):
            checks.equal(f"version block: {key}", strings.get(key), expected.VERSION_STRINGS.get(key))
        translations = [node.value for node in children.get("VarFileInfo", []) if node.key == "Translation"]
        checks.equal("version block: translation", translations, [struct.pack("<HH", *expected.VERSION_TRANSLATION)])


def check_manifest(checks, resources):
    for resource in resources:
        if resource.type != RT_MANIFEST:
            continue
        root = ElementTree.fromstring(resource.data)
        v3 = "{urn:schemas-microsoft-com:asm.v3}"
        settings = "{http://schemas.microsoft.com/SMI/2005/WindowsSettings}"
        checks.equal("manifest: root", (root.tag, root.attrib),
                     ("{urn:schemas-microsoft-com:asm.v1}assembly", {"manifestVersion": "1.0"}))
        level = root.find(f"{v3}trustInfo/{v3}security/{v3}requestedPrivileges/{v3}requestedExecutionLevel")
        checks.equal("manifest: execution level", None if level is None else level.attrib,
                     {"level": "asInvoker", "uiAccess": "false"})
        checks.equal("manifest: dots per inch",
                     root.findtext(f"{v3}application/{v3}windowsSettings/{settings}dpiAware"), "true")


def main(arguments):
    if len(arguments) != 1:
        print(__doc__, file=sys.stderr)
        return 2
    checks = Checks()
    try:
        resources = read_resources(arguments[0])
        for check in (check_inventory, check_strings, check_dialogs, check_icons, check_icon_files, check_version,
                      check_manifest):
            check(checks, resources)
    except (OSError, ValueError, struct.error, ElementTree.ParseError) as error:
        checks.fail(f"{arguments[0]}: cannot be read: {error}")
    return checks.finish()


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
