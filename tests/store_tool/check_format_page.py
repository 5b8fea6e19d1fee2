#!/ usr / bin / env python3
"""check_format_page.py GSLSTORE PAGE: the example of docs/store-format.md is what the tool makes of its pairs."""

import subprocess
import sys
import tempfile
from pathlib import Path


def bytes_of_dump(dump):
    """The bytes of lines as `hexdump -C` prints them; a star stands for more lines like the one before."""
    data, last = b"", b""
    for line in dump.splitlines():
        offset = line.split("  ")[0]
        if offset != "*":
            data += last * ((int(offset, 16) - len(data)) // max(len(last), 1))
            last = bytes.fromhex(line[10:58])
            data += last
    return data


def main():
    tool, page = sys.argv[1], Path(sys.argv[2]).read_text(encoding="utf-8")
    blocks = page.split("```\n")[1::2]
    pairs, expected = blocks[0], bytes_of_dump(blocks[1])
    assert len(expected) == 896, len(expected)
    with tempfile.TemporaryDirectory() as place:
        store = Path(place, "nets.db")
        command = [tool, "load", "--page-size", "64", store]
        subprocess.run(command, input=pairs.encode(), check=True)
        actual = store.read_bytes()
    assert actual == expected, "the file differs from the page's dump:\n" + actual.hex(" ", 16)
    print("the page shows the file that the tool makes")


main()
