#!/usr/bin/env python3
# Reads and writes the encrypted format by docs/format-crypt.md alone, with Python's standard library:
#
#     cryptformat.py encrypt|decrypt KEY < IN > OUT
#
# KEY is written in hexadecimal digits. The tests import the functions to compare the page with the
# library.

import hashlib
import struct
import sys
import zlib

COMPRESSED, CHECKSUM, SHA1, METADATA, PLAIN = 1, 2, 4, 8, 16
PROTECTIONS = {"off": 0, "checksum": CHECKSUM, "sha1": SHA1}


def checksum(payload):
    crc = 0xFFFF
    for byte in payload:
        crc ^= byte
        for _ in range(8):
            crc = crc >> 1 ^ (0x8408 if crc & 1 else 0)
    return struct.pack(">H", crc ^ 0xFFFF)


def integrity(flags, payload):
    if flags & CHECKSUM:
        return checksum(payload)
    return hashlib.sha1(payload).digest() if flags & SHA1 else b""


def cipher(body, key, is_encryption):
    parts, last, result = key.to_bytes(8, "little"), 0, bytearray()
    for position, byte in enumerate(body):
        result.append(byte ^ parts[position % 8] ^ last)
        last = result[-1] if is_encryption else byte
    return bytes(result)


def encrypt(text, key, protection="sha1", compression="off", metadata="", plain=False, lead=0xFF):
    flags, payload = PROTECTIONS[protection], text
    if compression != "off":
        compressed = struct.pack(">I", len(text)) + (zlib.compress(text, 9) if text else b"")
        if compression == "forced" or len(compressed) < len(text):
            flags, payload = flags | COMPRESSED, compressed
    header = b""
    if metadata:
        data = metadata.encode()
        flags |= METADATA
        header = struct.pack("<ii", len(data), ~len(data)) + hashlib.sha1(data).digest() + data
    body = bytes([lead]) + integrity(flags, payload) + payload
    flags |= PLAIN if plain else 0
    return bytes([4, flags]) + header + (body if plain else cipher(body, key, True))


def decrypt(data, key):
    if len(data) < 3 or data[0] not in (3, 4):
        raise ValueError("not a cyphertext")
    flags, start = data[1], 2
    if flags & METADATA:
        size, complement = struct.unpack("<ii", data[2:10])
        if size != ~complement or not 0 <= size <= len(data) - 30:
            raise ValueError("header")
        start = 30 + size
    body = data[start:] if flags & PLAIN else cipher(data[start:], key, False)
    payload_start = 1 + len(integrity(flags, b""))
    payload = body[payload_start:]
    if integrity(flags, payload) != body[1:payload_start]:
        raise ValueError("payload")
    if not flags & COMPRESSED:
        return payload
    return zlib.decompress(payload[4:]) if payload[4:] else b""


def info(data):
    flags, lead = data[1], 2
    names = ["compressed", "checksum", "sha1", "metadata", "plain"]
    result = {"version": data[0], "flags": [n for i, n in enumerate(names) if flags >> i & 1]}
    if flags & METADATA:
        lead = 30 + struct.unpack("<i", data[2:6])[0]
        if hashlib.sha1(data[30:lead]).digest() != data[10:30]:
            raise ValueError("metadata")
        result["metadata"] = data[30:lead].decode("latin-1")
    if flags & (CHECKSUM | SHA1):
        result["digestOffset"] = lead + 1
    return {**result, "headerLength": lead + 1 + len(integrity(flags, b""))}


if __name__ == "__main__":
    convert = {"encrypt": encrypt, "decrypt": decrypt}[sys.argv[1]]
    sys.stdout.buffer.write(convert(sys.stdin.buffer.read(), int(sys.argv[2], 16)))
