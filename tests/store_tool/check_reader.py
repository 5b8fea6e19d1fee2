#!/ usr / bin / env python3
"""check_reader.py GSLSTORE DOCS: the reader beside the format's description reads what the tool writes."""

import random
import subprocess
import sys
import tempfile
from pathlib import Path

sys.dont_write_bytecode = True
sys.path.insert(0, sys.argv[2])
from read_store import Store, default_hash  # noqa: E402


def random_pairs(source):
    pairs = {}
    for _ in range(400):
        most = 2000 if source.random() < 0.03 else 40
        key = source.randbytes(source.randrange(source.choice([3, 30, most])))
        pairs[key] = source.randbytes(source.randrange(most))
    return pairs


def text_of(data):
    return "".join(f"\\x{byte:02x}" for byte in data)


def line_of(key, value):
    return text_of(key) + "\t" + text_of(value) + "\n"


def run(tool, *arguments, text=""):
    return subprocess.run([tool, *map(str, arguments)], input=text.encode(), check=True, stdout=subprocess.PIPE).stdout


def check(tool, name, page_size, byte_order, seed):
    pairs = random_pairs(random.Random(seed))
    text = "".join(line_of(*pair) for pair in pairs.items())
    run(tool, "load", "--page-size", page_size, "--byte-order", byte_order, name, text=text)
    for key in list(pairs)[:10]:
        run(tool, "del", "--escapes", name, text_of(key))
        del pairs[key]

    store = Store(name)
    assert store.byte_order == {"little": 1234, "big": 4321}[byte_order]
    found = list(store.pairs())
    assert len(found) == len(pairs), (len(found), len(pairs))
    assert dict(found) == pairs
    assert store.key_count == len(pairs)
    for key, value in pairs.items():
        assert store.get(key) == value
    assert all(store.get(key) is None for key in (b"absent" * 8, b"absent" * 500))


def main():
    tool = sys.argv[1]
    assert [default_hash(key) for key in (b"", b"a", b"GND", b"\xff\xff")] == [0, 97, 79961, 8670]
    with tempfile.TemporaryDirectory() as place:
        for seed, page_size in enumerate((64, 128, 1024, 8192, 32768, 65536)):
            for byte_order in ("little", "big"):
                print(f"seed {seed}, pages of {page_size} bytes, {byte_order}", flush=True)
                check(tool, Path(place, f"{page_size}.{byte_order}"), page_size, byte_order, seed)


main()
