"""Gives a type library written by widl a fixed date, so that the same IDL
always gives the same bytes. widl stamps the time of the run into the
library's custom data, as the text "Created by WIDL version V at DATE" and
then as a number; both are replaced by SOURCE_DATE_EPOCH (0 if unset).

Usage: fix-typelib-date.py TLB
"""
import os
import re
import struct
import sys
import time


def main(path):
    data = open(path, "rb").read()
    stamp = int(os.environ.get("SOURCE_DATE_EPOCH", "0"))
    # The text (asctime's 24 characters and a line end), the padding widl
    # fills with 'W', then the time as a VT_UI4 (0x0013) value.
    pattern = re.compile(rb"(Created by WIDL version [^\n]* at )(.{24})(\n(?:W)*\x13\x00)(.{4})", re.DOTALL)
    found = pattern.search(data)
    if not found or pattern.search(data, found.end()):
        sys.exit(f"{path}: widl's date stamp not found once; has widl's output changed?")
    date = time.asctime(time.gmtime(stamp)).encode()
    fixed = found.group(1) + date + found.group(3) + struct.pack("<I", stamp)
    data = data[:found.start()] + fixed + data[found.end():]
    with open(path, "wb") as out:
        out.write(data)


if __name__ == "__main__":
    main(sys.argv[1])
