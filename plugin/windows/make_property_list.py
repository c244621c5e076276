#!/usr/bin/env python3
"""Writes the property list by which the host recognises the plug-in module, as a resource.

make_property_list.py OUT NAME ENTRY

A list is a 16-bit 1, then as 32-bit numbers the list's version 0 and the number of properties. Each
property is four 32-bit numbers (vendor, key, id and length) and its data, padded with zeros to a
multiple of 4. All numbers are little-endian, so four-character codes appear reversed.
"""
import pathlib
import struct
import sys

VENDOR = "ADBE"
KIND = "SPEA"
MESSAGE_INTERFACE = 2


def code(characters):
    return int.from_bytes(characters.encode("ascii"), "big")


def text(characters):
    data = characters.encode("ascii") + b"\0"
    return data + b"\0" * (-len(data) % 4)


def property_of(key, data):
    return struct.pack("<IIiI", code(VENDOR), code(key), 0, len(data)) + data


def property_list(name, entry):
    properties = [
        property_of("kind", struct.pack("<I", code(KIND))),
        property_of("ivrs", struct.pack("<i", MESSAGE_INTERFACE)),
        property_of("wx86", text(entry)),
        property_of("pinm", text(name)),
    ]
    return struct.pack("<Hii", 1, 0, len(properties)) + b"".join(properties)


if __name__ == "__main__":
    pathlib.Path(sys.argv[1]).write_bytes(property_list(sys.argv[2], sys.argv[3]))
