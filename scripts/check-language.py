#!/usr/bin/env python3
"""Check the form of Ferrolund language tables (data/Language/Lang_*.txt).

A language table is ANSI (Windows-1252) text, one record a line, each line
ended by CR LF.  Record i reads  i,"text"  as a BASIC "Write #" statement
writes it: a decimal number, a comma, the text in double quotes.  The text
holds no double quote of its own.  Records 1 to the expected count must all
be present and in order, and nothing may follow the last one.

Usage: check-language.py [--count N] FILE [FILE ...]

Prints one line per fault ("FILE:LINE: message") and exits with status 1 if
any file has a fault, 2 on bad usage, 0 when every file is sound.
"""

import re
import sys

DEFAULT_COUNT = 616
RECORD = re.compile(r'^(\d+),"(.*)"$', re.DOTALL)


def looks_like_utf8(data):
    """True if the bytes hold non-ASCII text that is valid UTF-8.

    A table saved as UTF-8 by mistake still decodes as Windows-1252 (as
    mojibake such as 'Ã¼'), so this has to be tested on its own.  Genuine
    Windows-1252 text with umlauts is almost never valid UTF-8.
    """
    if all(b < 0x80 for b in data):
        return False
    try:
        data.decode("utf-8")
    except UnicodeDecodeError:
        return False
    return True


def check_file(path, count):
    faults = []

    def fault(line, message):
        faults.append("%s:%s: %s" % (path, line, message))

    try:
        with open(path, "rb") as handle:
            data = handle.read()
    except OSError as error:
        fault(0, "cannot read file: %s" % error)
        return faults

    if not data:
        fault(0, "file is empty")
        return faults
    if data.startswith(b"\xef\xbb\xbf"):
        fault(1, "file starts with a UTF-8 byte order mark")
    elif looks_like_utf8(data):
        fault(0, "file looks like UTF-8, expected single-byte Windows-1252")

    if not data.endswith(b"\r\n"):
        fault("end", "last line is not ended by CR LF")

    # Split on LF only, so that every stray CR and every bare LF is seen.
    raw_lines = data.split(b"\n")
    if raw_lines and raw_lines[-1] == b"":
        raw_lines.pop()

    expected = 1
    for number, raw in enumerate(raw_lines, start=1):
        if raw.endswith(b"\r"):
            raw = raw[:-1]
        elif number < len(raw_lines) or data.endswith(b"\n"):
            fault(number, "line ended by LF without CR")
        if b"\r" in raw:
            fault(number, "carriage return inside the line (line end not CR LF)")
            raw = raw.replace(b"\r", b"")

        try:
            text_line = raw.decode("cp1252")
        except UnicodeDecodeError as error:
            fault(number, "not Windows-1252: byte 0x%02X at column %d"
                  % (raw[error.start], error.start + 1))
            text_line = raw.decode("cp1252", errors="replace")

        match = RECORD.match(text_line)
        if not match:
            fault(number, "not of the form n,\"text\": %r" % text_line[:60])
            expected += 1
            continue

        field, text = match.group(1), match.group(2)
        value = int(field)
        if field != str(value):
            fault(number, "number %r has leading zeros" % field)
        if value == 0:
            fault(number, "record number 0 would end the table here")
        if value != expected:
            fault(number, "record number %d, expected %d" % (value, expected))
        if '"' in text:
            fault(number, "text of record %d holds a double quote" % value)
        if text.strip() == "":
            fault(number, "text of record %d is empty" % value)
        if "\t" in text:
            fault(number, "text of record %d holds a tab" % value)
        expected += 1

    found = len(raw_lines)
    if found < count:
        fault("end", "%d records, expected %d (records %d to %d missing)"
              % (found, count, found + 1, count))
    elif found > count:
        fault(count + 1, "%d records, expected %d: nothing may follow record %d"
              % (found, count, count))
    return faults


def main(argv):
    args = list(argv[1:])
    count = DEFAULT_COUNT
    if len(args) >= 2 and args[0] == "--count":
        try:
            count = int(args[1])
        except ValueError:
            sys.stderr.write("--count needs a whole number\n")
            return 2
        args = args[2:]
    if not args or any(a.startswith("-") for a in args):
        sys.stderr.write(__doc__)
        return 2

    all_faults = []
    for path in args:
        all_faults.extend(check_file(path, count))
    for line in all_faults:
        print(line)
    if not all_faults:
        for path in args:
            print("%s: %d records, OK" % (path, count))
    return 1 if all_faults else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv))
