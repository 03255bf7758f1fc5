"""Reads and writes pictures in PNG files, by Python's own library: those of whole bytes a channel, not interlaced."""
import struct
import zlib

CHANNELS = {0: 1, 2: 3, 3: 1, 6: 4}


def read(path):
    """Width, height and the rows of (red, green, blue)."""
    data = open(path, "rb").read()
    if data[:8] != b"\x89PNG\r\n\x1a\n":
        raise ValueError(f"{path}: no PNG file")
    at, packed, palette = 8, b"", b""
    while at < len(data):
        size, kind = struct.unpack(">I4s", data[at:at + 8])
        body = data[at + 8:at + 8 + size]
        if kind == b"IHDR":
            width, height, depth, colours, _, _, laced = struct.unpack(">IIBBBBB", body)
        elif kind == b"PLTE":
            palette = body
        elif kind == b"IDAT":
            packed += body
        at += size + 12
    if depth != 8 or laced or colours not in CHANNELS:
        raise ValueError(f"{path}: depth {depth}, colours {colours}")
    step = CHANNELS[colours]
    plain, rows, before, place = zlib.decompress(packed), [], bytes(step * width), 0
    for _ in range(height):
        before = unfiltered(plain[place], plain[place + 1:place + 1 + step * width], before, step)
        place += 1 + step * width
        if colours == 3:
            rows.append([tuple(palette[3 * c:3 * c + 3]) for c in before])
        elif step == 1:
            rows.append([(c, c, c) for c in before])
        else:
            rows.append([tuple(before[i:i + 3]) for i in range(0, len(before), step)])
    return width, height, rows


def unfiltered(kind, row, above, step):
    row = bytearray(row)
    for i in range(len(row) if kind else 0):
        left, up = row[i - step] if i >= step else 0, above[i]
        if kind == 4:
            corner = above[i - step] if i >= step else 0
            guess = left + up - corner
            row[i] = (row[i] + min((left, up, corner), key=lambda v: abs(guess - v))) & 255
        else:
            row[i] = (row[i] + (left, up, (left + up) // 2)[kind - 1]) & 255
    return bytes(row)


def write(path, rows):
    """With a palette of the colours that occur, 256 at most."""
    colours = sorted({c for row in rows for c in row})
    number = {c: i for i, c in enumerate(colours)}
    plain = b"".join(b"\0" + bytes(number[c] for c in row) for row in rows)

    def part(kind, body):
        return struct.pack(">I", len(body)) + kind + body + struct.pack(">I", zlib.crc32(kind + body))

    with open(path, "wb") as file:
        file.write(b"\x89PNG\r\n\x1a\n" + part(b"IHDR", struct.pack(">IIBBBBB", len(rows[0]), len(rows), 8, 3, 0, 0, 0))
                   + part(b"PLTE", bytes(v for c in colours for v in c)) + part(b"IDAT", zlib.compress(plain, 9)) + part(b"IEND", b""))
