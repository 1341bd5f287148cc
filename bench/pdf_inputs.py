#!/usr/bin/env python3
# SPDX-FileCopyrightText: Quirn contributors
# SPDX-License-Identifier: GPL-3.0-or-later

"""Writes the documents that bench/pdf.sh measures on: pdf_inputs.py FOLDER [PHOTO.jpg...]

part-*.pdf are 20 documents of text, 5,428 pages together; long.pdf has 2,000 pages; photos.pdf has 60 pages, each with
one of the photos.
"""

import pathlib
import random
import struct
import sys
import zlib

WORDS = ("the of and a to in is you that it he was for on are as with his they at be this have from or one had by word "
         "but not what all were we when your can said there use an each which she do how their if will up other").split()


class Document:
    def __init__(self, path):
        self.file = open(path, "wb")
        self.offsets = []
        self.pages = []
        self.file.write(b"%PDF-1.5\n%\xBF\xF7\xA2\xFE\n")
        self.catalog, self.tree = self.reserve(), self.reserve()

    def reserve(self):
        self.offsets.append(None)
        return len(self.offsets)

    def write(self, number, text, data=None):
        self.offsets[number - 1] = self.file.tell()
        self.file.write(b"%d 0 obj\n" % number)
        if data is None:
            self.file.write(text.encode())
        else:
            self.file.write(f"{text[:-2]} /Length {len(data)} >>\nstream\n".encode() + data + b"\nendstream")
        self.file.write(b"\nendobj\n")
        return number

    def add(self, text, data=None):
        return self.write(self.reserve(), text, data)

    def page(self, resources, content, width=595, height=842):
        contents = self.add("<< /Filter /FlateDecode >>", zlib.compress(content.encode()))
        self.pages.append(self.add(
            f"<< /Type /Page /Parent {self.tree} 0 R /MediaBox [0 0 {width} {height}] /Resources {resources} "
            f"/Contents {contents} 0 R >>"))

    def close(self):
        kids = " ".join(f"{page} 0 R" for page in self.pages)
        self.write(self.tree, f"<< /Type /Pages /Count {len(self.pages)} /Kids [{kids}] >>")
        self.write(self.catalog, f"<< /Type /Catalog /Pages {self.tree} 0 R >>")
        start = self.file.tell()
        self.file.write(f"xref\n0 {len(self.offsets) + 1}\n0000000000 65535 f \n".encode())
        for offset in self.offsets:
            self.file.write(b"%010d 00000 n \n" % offset)
        self.file.write(f"trailer\n<< /Size {len(self.offsets) + 1} /Root {self.catalog} 0 R >>\n"
                        f"startxref\n{start}\n%%EOF\n".encode())
        self.file.close()


def text_document(path, count):
    document = Document(path)
    fonts = " ".join(f"/F{i} " + str(document.add(f"<< /Type /Font /Subtype /Type1 /BaseFont /{name} >>")) + " 0 R"
                     for i, name in enumerate(("Helvetica", "Times-Roman", "Courier")))
    resources = f"<< /Font << {fonts} >> >>"
    for page in range(count):
        lines = [f"BT /F1 11 Tf 72 780 Td 14 TL (Page {page + 1}) Tj T*"]
        lines += [f"({' '.join(random.choices(WORDS, k=14))}) Tj T*" for _ in range(48)]
        document.page(resources, "\n".join(lines) + "\nET")
    document.close()


def jpeg_size(data):
    at = 2
    while True:
        marker, length = struct.unpack_from(">xBH", data, at)
        if 0xC0 <= marker <= 0xC2:
            return struct.unpack_from(">HH", data, at + 5)[::-1]
        at += 2 + length


def photo_document(path, photos):
    document = Document(path)
    for number in range(60):
        data = pathlib.Path(photos[number % len(photos)]).read_bytes()
        width, height = jpeg_size(data)
        image = document.add(f"<< /Type /XObject /Subtype /Image /Width {width} /Height {height} /ColorSpace /DeviceRGB "
                             f"/BitsPerComponent 8 /Filter /DCTDecode >>", data)
        document.page(f"<< /XObject << /I {image} 0 R >> >>", "595 0 0 446 0 198 cm /I Do")
    document.close()


folder = pathlib.Path(sys.argv[1])
random.seed(1)
for part in range(20):
    text_document(folder / f"part-{part:02}.pdf", 272 if part < 8 else 271)
text_document(folder / "long.pdf", 2000)
if len(sys.argv) > 2:
    photo_document(folder / "photos.pdf", sys.argv[2:])
