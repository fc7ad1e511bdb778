"""What the library's resources must be. Kept apart from the resource script on purpose: the two are compared. Only the
version is taken from where it is set."""

import re
from pathlib import Path
from typing import NamedTuple

PROJECT = (Path(__file__).resolve().parents[2] / "CMakeLists.txt").read_text(encoding="utf-8")
VERSION = re.search(r"^project\(.* VERSION (\d+\.\d+\.\d+\.\d+)", PROJECT, re.MULTILINE).group(1)

LANGUAGE = 1033

STRINGS = {
    1: "Warning",
    2: "Primary",
    3: "Primary(Business)",
    4: "Secondary(Home)",
    5: "Other Fax Number",
    6: "No Fax Number",
    7: "Your selection does not contain any destinations with fax numbers.",
    8: "The destination you selected is already in the list",
    9: "By Selecting Cancel At This Time, You Will Loose Your Changes\nOK To Continue?",
    10: "You have selected too many destinations in [Destination List].\r\nThe maximum number of destinations is %d.",
    11: "Your selection does not contain any destinations with fax numbers that are not already in the destination list.",
    12: "Destination Name",
    13: "Fax Number",
    14: "Information",
    15: "Company",
    16: "Dept./Div.",
    17: "Primary Fax",
    18: "Business Fax",
    19: "Home Fax",
    20: "[Primary]",
    21: "[Business]",
    22: "[Secondary]",
    23: "[Home]",
    24: "[Other]",
    25: "Could not find any items matching the specified keyword. Specify another keyword.",
    27: "FAX",
    28: "%s - %s",
    29: "\r\n",
    50: "Tessivar Address Book Profile Editor",
    51: "No profile name specified",
    52: "Profile already exists",
    53: "Permanently delete the selected item(s)",
    54: "The selected item does not support the \"Properties\" method.",
    55: "There are no registered address books.",
    56: "Are you sure you want to delete the selected entries?",
    57: "Are you sure you want to delete the selected entry?",
    58: "Not all items were deleted",
    59: "Could not register the address book due to insufficient memory.",
    60: "SMTP",
    62: "The \"Delete\" method does not support Containers.",
    63: "QDXL7RA.DLL",
    65: "QDXL7RC.DLL",
    66: "Description",
    67: "Notes",
    68: "5",
    69: "The selected destinations are already in [Destination List].\nCould not add %1!d! out of %2!d! of the selected destinations.",
    70: "(Home Fax)",
    80: "(Business Fax)",
    90: "(Other Fax)",
    2007: "Select Destinations from Address Book Dialog Box",
    2008: "Select Destination Fax Number Dialog Box",
    2009: "Select Destination Fax Number Dialog Box",
}

# The string that holds any address reserved for documentation.
PLACEHOLDER_ADDRESS_ID = 61


class Control(NamedTuple):
    id: int
    window_class: object  # the code of a predefined class, or a name
    style: int
    text: str
    x: int
    y: int
    width: int
    height: int
    extended_style: int = 0
    help_id: int = 0


class Dialog(NamedTuple):
    caption: str
    width: int
    height: int
    style: int
    extended_style: int
    controls: list
    x: int = 0
    y: int = 0
    help_id: int = 0
    font: tuple = ("MS Shell Dlg", 8, 400, 0, 1)  # face, size, weight, italic, character set


NO_ID = 0xFFFFFFFF
BUTTON, EDIT, STATIC, LISTBOX, COMBOBOX = 0x80, 0x81, 0x82, 0x83, 0x85
TREE, LIST = "SysTreeView32", "SysListView32"


def choice_of_fax_number(first, second):
    return Dialog("Select Destination Fax Number", 195, 106, 0x80C800C0, 0, [
        Control(2004, STATIC, 0x50020000, "The destination has more than one registered fax number.\nSelect one of the following three to add to the destination list.", 7, 7, 181, 26),
        Control(1060, BUTTON, 0x50030009, "&Both", 12, 60, 120, 10),
        Control(1062, BUTTON, 0x50010009, first, 12, 35, 120, 10),
        Control(1061, BUTTON, 0x50010009, second, 12, 47, 120, 10),
        Control(1063, STATIC, 0x50020010, "", 7, 76, 181, 1),
        Control(1, BUTTON, 0x50030001, "OK", 15, 84, 55, 14),
        Control(2, BUTTON, 0x50010000, "Cancel", 74, 84, 55, 14),
        Control(2006, BUTTON, 0x50030000, "&Help", 133, 84, 55, 14),
    ])


DIALOGS = {
    101: Dialog("", 238, 178, 0x80C820C0, 0x400, [
        Control(NO_ID, STATIC, 0x50020000, "The following profiles are defined for the current user:", 7, 7, 222, 9),
        Control(1000, LISTBOX, 0x50A10503, "", 7, 18, 224, 61),
        Control(1001, BUTTON, 0x50010000, "&Add...", 7, 85, 50, 14),
        Control(1002, BUTTON, 0x50010000, "&Remove", 65, 85, 50, 14),
        Control(1003, BUTTON, 0x50010000, "P&roperties", 123, 85, 50, 14),
        Control(1004, BUTTON, 0x50010000, "Cop&y...", 181, 85, 50, 14),
        Control(NO_ID, STATIC, 0x50020010, "", 7, 108, 224, 1),
        Control(NO_ID, STATIC, 0x50020000, "When displaying the Tessivar Address Book use the profile:", 7, 117, 224, 9),
        Control(1005, COMBOBOX, 0x50210103, "", 7, 129, 224, 63),
        Control(NO_ID, STATIC, 0x50020010, "", 7, 150, 224, 1),
        Control(2, BUTTON, 0x50010001, "Close", 94, 157, 50, 14),
    ]),
    102: Dialog("", 227, 69, 0x80C820C0, 0x400, [
        Control(NO_ID, STATIC, 0x50020002, "Profile Name:", 7, 17, 51, 10),
        Control(1010, EDIT, 0x50810080, "", 63, 16, 157, 12),
        Control(NO_ID, STATIC, 0x50020010, "", 7, 38, 220, 1),
        Control(1, BUTTON, 0x50030001, "OK", 51, 48, 50, 14),
        Control(2, BUTTON, 0x50010000, "Cancel", 125, 48, 50, 14),
    ]),
    103: Dialog("Select Destinations from Address Book", 410, 274, 0x80C800C0, 0, [
        Control(2001, STATIC, 0x50020000, "Address &Book List:", 7, 9, 115, 10),
        Control(1021, TREE, 0x50810087, "Address Book List", 7, 19, 115, 105),
        Control(2003, STATIC, 0x50020000, "&Keyword:", 126, 9, 58, 10),
        Control(1020, EDIT, 0x50810080, "", 186, 7, 163, 14),
        Control(1069, BUTTON, 0x50030000, "&Search", 353, 7, 50, 14),
        Control(1064, STATIC, 0x50020000, "A&ddress List:", 125, 24, 278, 8),
        Control(1022, LIST, 0x50810149, "Address List", 125, 34, 278, 90),
        Control(1065, STATIC, 0x50020000, "D&etails:", 7, 128, 396, 10),
        Control(1040, EDIT, 0x50A108C4, "", 7, 139, 396, 22),
        Control(1043, BUTTON, 0x50030000, "Add to &List", 145, 165, 118, 14),
        Control(2002, STATIC, 0x50020000, "Destinati&on List:", 7, 185, 115, 10),
        Control(2005, LIST, 0x5083C009, "", 125, 183, 278, 40),
        Control(1067, STATIC, 0x50020000, "Number of Destinations:", 7, 229, 115, 10),
        Control(1041, STATIC, 0x50020000, "Count", 126, 229, 135, 10),
        Control(1044, BUTTON, 0x50010000, "&Remove from List", 263, 227, 140, 14),
        Control(1, BUTTON, 0x50030001, "OK", 245, 254, 50, 14),
        Control(2, BUTTON, 0x50010000, "Cancel", 299, 254, 50, 14),
        Control(2006, BUTTON, 0x50030000, "&Help", 353, 254, 50, 14),
        Control(1063, STATIC, 0x50020010, "", 7, 171, 136, 1),
        Control(1066, STATIC, 0x50020010, "", 267, 171, 136, 1),
        Control(1068, STATIC, 0x50020010, "", 7, 247, 396, 1),
    ]),
    104: choice_of_fax_number("&Primary", "&Secondary"),
    105: choice_of_fax_number("Busi&ness", "H&ome"),
    106: Dialog("Address Book", 347, 201, 0x90C800C0, 0x40000, [
        Control(NO_ID, STATIC, 0x50020002, "&Type name or select from list:", 48, 9, 108, 8),
        Control(1020, EDIT, 0x50810080, "", 159, 7, 121, 12),
        Control(NO_ID, STATIC, 0x50020010, "", 7, 24, 333, 1),
        Control(1021, TREE, 0x50810087, "Tree1", 7, 33, 98, 115),
        Control(1022, LIST, 0x50810049, "List1", 105, 33, 235, 115),
        Control(1030, BUTTON, 0x50010000, "&New", 41, 155, 50, 14),
        Control(1003, BUTTON, 0x50010000, "P&roperties", 148, 155, 50, 14),
        Control(1031, BUTTON, 0x50010000, "D&elete", 255, 155, 50, 14),
        Control(NO_ID, STATIC, 0x50020010, "", 7, 174, 333, 1),
        Control(1, BUTTON, 0x50030001, "&Close", 148, 180, 50, 14),
    ]),
    107: Dialog("New Entry", 248, 81, 0x80C820C0, 0x400, [
        Control(NO_ID, BUTTON, 0x50000007, "Create entry", 7, 7, 234, 46),
        Control(1050, BUTTON, 0x50000009, "&In the", 13, 18, 41, 14),
        Control(1051, BUTTON, 0x50000009, "In &destination list only", 13, 35, 92, 14),
        Control(1052, COMBOBOX, 0x50210003, "", 55, 18, 177, 46),
        Control(1, BUTTON, 0x50030001, "OK", 60, 60, 50, 14),
        Control(2, BUTTON, 0x50010000, "Cancel", 138, 60, 50, 14),
    ]),
}

# Each icon group's images as (size, bits per pixel).
SMALL_ICON = [(16, 4), (16, 8), (16, 32)]
LARGE_ICON = [(32, 4), (16, 4), (32, 8), (16, 8), (32, 32), (16, 32)]
ICON_GROUPS = {
    200: SMALL_ICON,
    201: SMALL_ICON,
    202: [(32, 4), (16, 4)],
    203: SMALL_ICON,
    204: SMALL_ICON,
    205: LARGE_ICON,
    206: LARGE_ICON,
}
IMAGE_COUNT = 26

# The fixed part of the version block.
VERSION_FIXED = {
    "signature": 0xFEEF04BD,
    "structure version": 0x00010000,
    "file version": tuple(int(number) for number in VERSION.split(".")),
    "product version": tuple(int(number) for number in VERSION.split(".")),
    "flags": 0,
    "operating system": 0x00000004,
    "file type": 2,
    "file subtype": 0,
}
VERSION_TABLE = "040904B0"
VERSION_TRANSLATION = (0x0409, 0x04B0)
VERSION_STRINGS = {
    "Comments": "Tessivar Address Book Interface Library",
    "CompanyName": "Quorvane",
    "FileDescription": "QDXL7RC.DLL for AMD64",
    "FileVersion": VERSION,
    "InternalName": "QDXL7RC",
    "LegalCopyright": "Copyright (C) 2026 the Seed 89f8f24e maintainers. MIT licence.",
    "OriginalFilename": "QDXL7RC.DLL",
    "ProductName": "Tessivar Address Book Interface Library",
    "ProductVersion": ".".join(VERSION.split(".")[:2]),
}

MANIFEST_ID = 2
