"""Captures as libDtv writes them."""
import struct

COMMAND, ANSWER, EVENT, REFUSED = 1, 2, 3, 4


def block(kind, body):
    size = 12 + len(body)
    return struct.pack("<II", kind, size) + body + struct.pack("<I", size)


class Capture:
    """A pcapng file as libDtv writes it."""

    def __init__(self):
        self.now = 1774998843 * 10**9
        self.count = 0
        self.blocks = [
            block(0x0a0d0d0a, struct.pack("<IHHq", 0x1a2b3c4d, 1, 0, -1)),
            block(1, struct.pack("<HHI", 147, 0, 65536) + struct.pack("<HHB3xI", 9, 1, 9, 0))]

    def add_packet(self, packet, left_out=0, comment=b""):
        self.count += 1
        option = struct.pack("<HH", 1, len(comment)) + comment + bytes(-len(comment) % 4)
        self.blocks.append(block(6, struct.pack(
            "<IIIII", 0, self.now >> 32, self.now & 0xffffffff, len(packet),
            len(packet) + left_out) + packet + bytes(-len(packet) % 4) +
            (option + bytes(4) if comment else b"")))

    def add(self, kind, number, record=b"", *, value=0, size=None, thread=10, name=b"evening",
            surfaces=0, left_out=0, comment=b""):
        self.add_packet(struct.pack("<BBBBIIii16s", 1, kind, surfaces, 0, thread, number, value,
                                    len(record) if size is None else size, name) + record,
                        left_out, comment)

    def write(self, path):
        path.write_bytes(b"".join(self.blocks))
