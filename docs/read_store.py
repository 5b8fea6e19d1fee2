#!/usr/bin/env python3
"""Reads hash store files as docs/store-format.md tells. `read_store.py STORE` prints all pairs."""

import struct
import sys

LINK, KEY_PART, KEY_END, LAST = 0, 1, 2, 3  # marks
FIELDS = ("magic version byte_order page_size page_shift dir_size seg_size seg_shift spare_point free_hint top_bucket "
          "mask_high mask_low fill_factor key_count header_pages check_hash").split()
CHECK_TEXT = bytes.fromhex("25 24 73 6e 69 67 6c 65 74 5e 26 00")


def default_hash(key):
    value = 0
    for byte in key:
        value = (value * 33 + byte) & 0xFFFFFFFF
    return value


class Store:
    def __init__(self, name):
        with open(name, "rb") as file:
            self.data = file.read()
        for field, value in zip(FIELDS, struct.unpack_from(">14Ii2I", self.data)):
            setattr(self, field, value)
        self.spare_counts = struct.unpack_from(">32I", self.data, 68)
        if self.magic != 0x61561 or self.version not in (1, 2):
            raise ValueError("no hash store")
        self.word_format = {1234: "<H", 4321: ">H"}[self.byte_order]

    def page_of_bucket(self, bucket):
        before = self.spare_counts[bucket.bit_length() - 1] if bucket else 0
        return self.header_pages + bucket + before

    def page_of_address(self, address):
        split, number = address >> 11, address & 2047
        if split > self.spare_point or number == 0:
            raise ValueError(f"no overflow page has the address {address}")
        return self.page_of_bucket((1 << split) - 1) + number

    def page(self, number):
        begin = number * self.page_size
        page = self.data[begin:begin + self.page_size]
        return Page(page or bytes(self.page_size), self.word_format)

    def chain(self, bucket):
        """The pages of a bucket, one behind the other. Ends at a page that was met before."""
        number = self.page_of_bucket(bucket)
        met = set()
        while number not in met:
            met.add(number)
            page = self.page(number)
            yield page
            if page.link == 0:
                return
            number = self.page_of_address(page.link)
        raise ValueError(f"the chain of bucket {bucket} closes on itself")

    def pairs_of(self, bucket):
        chain = self.chain(bucket)
        for page in chain:
            yield from ([page.big_pair(chain)] if page.is_big else page.regular_pairs())

    def pairs(self):
        for bucket in range(self.top_bucket + 1):
            yield from self.pairs_of(bucket)

    def get(self, key):
        """The value of a key, None if it is absent."""
        if default_hash(CHECK_TEXT) != self.check_hash:
            raise ValueError("made with another hash function")
        bucket = default_hash(key) & self.mask_high
        if bucket > self.top_bucket:
            bucket = default_hash(key) & self.mask_low
        return next((value for found, value in self.pairs_of(bucket) if found == key), None)


class Page:
    def __init__(self, data, word_format):
        self.data, self.word_format = data, word_format
        self.n = self.word(0)
        self.is_big = self.n != 0 and self.word(2) in (KEY_PART, KEY_END, LAST)
        has_link = self.n == 4 if self.is_big else self.n != 0 and self.word(self.n) == LINK
        self.link = self.word(self.n - 1) if has_link else 0

    def word(self, i):
        return struct.unpack_from(self.word_format, self.data, 2 * i)[0]

    def offset(self, i):
        return self.word(i) or 65536

    def regular_pairs(self):
        end = len(self.data)
        for i in range(1, self.n, 2):
            if self.word(i + 1) == LINK:
                return
            key, value = self.offset(i), self.word(i + 1)
            yield self.data[key:end], self.data[value:key]
            end = value

    def part(self):
        return self.data[self.offset(1):]

    def big_pair(self, chain):
        """The big pair that begins here; its further pages are taken from the chain."""
        page = self
        key = page.part()
        while page.word(2) == KEY_PART:
            page = next(chain)
            key += page.part()
        value = b""
        if page.word(2) == LAST:
            value = page.data[page.word(4):page.offset(1)]
            if page.word(page.n + 1) != 0:  # bytes are free
                return key, value
        while True:
            page = next(chain)
            value += page.part()
            if page.word(2) == LAST:
                return key, value


if __name__ == "__main__":
    for pair in Store(sys.argv[1]).pairs():
        print(*pair)
