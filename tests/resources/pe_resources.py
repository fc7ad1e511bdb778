"""Reads the resources of a Windows program or library: strings, dialogs, groups of icons and versions."""

import struct
from typing import NamedTuple

from expected_resources import Control, Dialog

RT_ICON, RT_DIALOG, RT_STRING, RT_GROUP_ICON, RT_VERSION, RT_MANIFEST = 3, 5, 6, 14, 16, 24


class Resource(NamedTuple):
    type: object
    id: object
    language: int
    data: bytes


class Reader:
    """Reads little-endian values from bytes, one after the other."""

    def __init__(self, data):
        self.data = data
        self.offset = 0

    def read(self, layout):
        values = struct.unpack_from("<" + layout, self.data, self.offset)
        self.offset += struct.calcsize("<" + layout)
        return values[0] if len(values) == 1 else values

    def align(self):
        self.offset = -(-self.offset // 4) * 4

    def read_text(self):
        """A text that ends in a null unit."""
        units = []
        while unit := self.read("H"):
            units.append(unit)
        return struct.pack(f"<{len(units)}H", *units).decode("utf-16-le")

    def read_text_or_code(self):
        """A text, or a number behind the unit 0xFFFF."""
        if struct.unpack_from("<H", self.data, self.offset)[0] == 0xFFFF:
            return self.read("HH")[1]
        return self.read_text()


def read_resources(path):
    """Every resource of the file."""
    with open(path, "rb") as file:
        image = file.read()
    header = struct.unpack_from("<I", image, 0x3C)[0]
    if image[:2] != b"MZ" or image[header:header + 4] != b"PE\0\0":
        raise ValueError("not a Windows program or library")
    section_count, optional_size = struct.unpack_from("<H12xH", image, header + 6)
    optional = header + 24
    is_64_bit = struct.unpack_from("<H", image, optional)[0] == 0x20B
    directory = struct.unpack_from("<I", image, optional + (112 if is_64_bit else 96) + 2 * 8)[0]
    sections = [struct.unpack_from("<8x4I", image, optional + optional_size + 40 * i) for i in range(section_count)]

    def to_offset(address):
        for virtual_size, start, raw_size, raw in sections:
            if start <= address < start + max(virtual_size, raw_size):
                return raw + address - start
        raise ValueError(f"address {address:#x} lies in no section")

    base = to_offset(directory)

    def read_name(name):
        if not name >> 31:
            return name
        at = base + (name & 0x7FFFFFFF)
        length = struct.unpack_from("<H", image, at)[0]
        return image[at + 2:at + 2 + 2 * length].decode("utf-16-le")

    def walk(at, path):
        named, numbered = struct.unpack_from("<12xHH", image, base + at)
        for i in range(named + numbered):
            name, child = struct.unpack_from("<II", image, base + at + 16 + 8 * i)
            names = path + (read_name(name),)
            if child >> 31:
                yield from walk(child & 0x7FFFFFFF, names)
            else:
                address, size = struct.unpack_from("<II", image, base + child)
                start = to_offset(address)
                yield Resource(*names, image[start:start + size])

    return list(walk(0, ()))


def read_strings(resources):
    """The string table: id to text. An empty slot of a block of sixteen is an absent string."""
    strings = {}
    for resource in resources:
        if resource.type != RT_STRING:
            continue
        reader = Reader(resource.data)
        for i in range(16):
            length = reader.read("H")
            text = reader.data[reader.offset:reader.offset + 2 * length].decode("utf-16-le")
            reader.offset += 2 * length
            if length:
                strings[(resource.id - 1) * 16 + i] = text
    return strings


def read_dialog(data):
    """An extended dialog template."""
    reader = Reader(data)
    version, signature, help_id, extended_style, style = reader.read("HHIII")
    if (version, signature) != (1, 0xFFFF):
        raise ValueError("not an extended template")
    count, x, y, width, height = reader.read("Hhhhh")
    menu, window_class, caption = reader.read_text_or_code(), reader.read_text_or_code(), reader.read_text()
    if menu or window_class:
        raise ValueError("has a menu or a window class of its own")
    size, weight, italic, character_set = reader.read("HHBB")
    font = (reader.read_text(), size, weight, italic, character_set)
    controls = []
    for _ in range(count):
        reader.align()
        control_help_id, control_extended_style, control_style, *rectangle, control_id = reader.read("IIIhhhhI")
        control_class, text = reader.read_text_or_code(), reader.read_text_or_code()
        if reader.read("H"):
            raise ValueError(f"control {control_id} has creation data")
        controls.append(Control(control_id, control_class, control_style, text, *rectangle,
                                control_extended_style, control_help_id))
    reader.align()
    if reader.offset < len(data):
        raise ValueError(f"{len(data) - reader.offset} bytes behind the last control")
    return Dialog(caption, width, height, style, extended_style, controls, x, y, help_id, font)


class GroupImage(NamedTuple):
    width: int
    height: int
    colour_count: int
    planes: int
    depth: int
    byte_count: int
    image_id: int


def read_icon_group(data):
    reader = Reader(data)
    reserved, kind, count = reader.read("HHH")
    if (reserved, kind) != (0, 1):
        raise ValueError("not a group of icons")
    images = []
    for _ in range(count):
        width, height, colour_count, _, planes, depth, byte_count, image_id = reader.read("BBBBHHIH")
        images.append(GroupImage(width, height, colour_count, planes, depth, byte_count, image_id))
    return images


class VersionNode(NamedTuple):
    key: str
    value: object  # text, or bytes
    children: list


def read_version_node(data):
    """A node of a version block with all below it, and its length."""
    reader = Reader(data)
    length, value_length, is_text = reader.read("HHH")
    key = reader.read_text()
    reader.align()
    if is_text:
        value = data[reader.offset:reader.offset + 2 * value_length].decode("utf-16-le").rstrip("\0")
        reader.offset += 2 * value_length
    else:
        value = data[reader.offset:reader.offset + value_length]
        reader.offset += value_length
    reader.align()
    children = []
    while reader.offset < length:
        child, child_length = read_version_node(data[reader.offset:length])
        children.append(child)
        reader.offset += child_length
        reader.align()
    return VersionNode(key, value, children), length


def read_version_fixed(value):
    """The fixed part of a version block by the names of its fields."""
    (signature, structure, file_high, file_low, product_high, product_low, mask, flags, system, kind,
     subtype, _, _) = struct.unpack("<13I", value)

    def split(high, low):
        return high >> 16, high & 0xFFFF, low >> 16, low & 0xFFFF

    return {
        "signature": signature,
        "structure version": structure,
        "file version": split(file_high, file_low),
        "product version": split(product_high, product_low),
        "flags": flags & mask,
        "operating system": system,
        "file type": kind,
        "file subtype": subtype,
    }
