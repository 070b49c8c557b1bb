#!/usr/bin/env python3
"""Prints the lines that a process has left in a ring of buffered delivery, each after its place.

    ringformat.py /dev/shm/zeltools-log-4711-1.ring

The format has a page, docs/format-ring.md. The ring stays as it is.
"""

import struct
import sys

HEADER_B = 65536
CLOSED = 1 << 62


def tag(position):
    return (position >> 3) * 0x9E3779B97F4A7C15 % 2**64 >> 32


def read_header(ring):
    magic, used, process, capacity = struct.unpack_from("=8sIiQ", ring)
    head, = struct.unpack_from("=Q", ring, 64)
    written, tail = struct.unpack_from("=QQ", ring, 128)
    head &= ~CLOSED
    if (magic != b"ZELRING1" or used != 41344 or len(ring) != HEADER_B + capacity
            or not tail <= written <= head <= tail + capacity or (tail | written | head) % 8):
        sys.exit("This is not a ring, or one of another version.")
    return capacity, written, head


def lines(ring):
    """Yields (place, bytes) of each complete record that is not delivered."""
    capacity, position, head = read_header(ring)
    data = ring[HEADER_B:] * 2  # so that no record is cut at the end
    while position < head:
        at = position % capacity
        word, = struct.unpack_from("=Q", data, at)
        state, size = word & 3, (word & 0xFFFFFFFF) >> 2
        length = 8 + (size + 7) // 8 * 8
        if word >> 32 != tag(position) or state not in (1, 2) or size < 32 or length > capacity:
            position += 8  # a reservation that was not announced, or damage
            continue
        if state == 2 and position + length <= head:
            place, = struct.unpack_from("=h", data, at + 8 + 20)
            yield place, data[at + 8 + 32:at + 8 + size]
        position += length


with open(sys.argv[1], "rb") as file:
    for file_place, line in lines(file.read()):
        sys.stdout.buffer.write(b"%d " % file_place + line)
