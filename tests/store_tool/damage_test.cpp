// What verify says of files that were damaged at a known place.
#include "file_source.h"
#include "store_tool/run_tool.h"
#include "verify.h"

#include <gtest/gtest.h>

#include <functional>

namespace {

using namespace orvix::test;

// The store of four_nets() on pages of 64 bytes, which docs/store-format.md shows:
//
//     pages 0 to 7    header
//     page 8          bucket 0: VCC
//     page 9          bucket 1: GND, and a link to page 11
//     page 10         overflow bitmap: pages 0 to 2 are in use, and no more were allocated
//     pages 11, 12    overflow pages 1 and 2, addresses 0x802 and 0x803: the big pair RST
//     page 13         bucket 2: CLK
class StoreDamage : public testing::Test {
protected:
    static constexpr std::size_t page_size = 64;

    void set_bytes(std::size_t page, std::size_t offset, std::string_view bytes) {
        bytes_.replace(page * page_size + offset, bytes.size(), bytes);
    }
    // Words of pages, from the first one on.
    void set_words(std::size_t page, std::size_t first, const std::vector<unsigned>& words) {
        for (std::size_t i = 0; i < words.size(); ++i) {
            const char low = static_cast<char>(words[i]);
            const char high = static_cast<char>(words[i] >> 8);
            const char bytes[2] = {is_big_ ? high : low, is_big_ ? low : high};
            set_bytes(page, 2 * (first + i), {bytes, 2});
        }
    }
    void set_field(std::size_t offset, unsigned value) {
        for (std::size_t i = 0; i < 4; ++i) bytes_[offset + i] = static_cast<char>(value >> (24 - 8 * i));
    }
    // A byte of the bitmap's first word.
    void set_bitmap(std::size_t byte, unsigned value) {
        const char bits = static_cast<char>(value);
        set_bytes(10, is_big_ ? 3 - byte : byte, {&bits, 1});
    }
    std::string bitmap_byte(std::size_t byte) const { return std::to_string(is_big_ ? 3 - byte : byte); }
    void cut(std::size_t bytes) { bytes_.resize(bytes); }

    // Damages the store, in either byte order, and compares all that verify finds.
    void expect(const std::function<void()>& damage, const std::function<std::string()>& findings) {
        for (const bool is_big : {false, true}) {
            SCOPED_TRACE(is_big ? "big" : "little");
            is_big_ = is_big;
            ASSERT_EQ(
                tool_.output({"load", "--new", "--page-size", "64", "--byte-order", is_big ? "big" : "little", "nets"},
                             four_nets()),
                "");
            bytes_ = tool_.read("nets");
            ASSERT_EQ(bytes_.size(), 14 * page_size);
            damage();
            tool_.write("nets", bytes_);
            gslstore::FileSource source("nets");
            EXPECT_EQ(gslstore::verify_file(&source).text(), findings());
        }
    }
    void expect(const std::function<void()>& damage, const std::string& findings) {
        expect(damage, [&] { return findings; });
    }
    // One finding in the header.
    void expect_field(std::size_t offset, unsigned value, const std::string& finding) {
        SCOPED_TRACE(offset);
        expect([=, this] { set_field(offset, value); },
               "fault: page 0, offset " + std::to_string(offset) + ": " + finding + "\n");
    }

    static std::string count(int pairs) {
        return "fault: page 0, offset 56: the header counts 4 of " + std::to_string(pairs) + " pairs\n";
    }
    std::string unused(int overflow_page) const {
        return "fault: page 10, offset " + bitmap_byte(0) + ": overflow page " + std::to_string(overflow_page) +
               " is marked as used and in no chain\n";
    }

    const ToolPlace tool_{};
    std::string bytes_;
    bool is_big_ = false;
};

TEST_F(StoreDamage, SoundStoreHasNoFinding) {
    expect([] {}, "");
}

TEST_F(StoreDamage, FieldsOfTheHeaderThatCannotBe) {
    expect_field(0, 0x61562, "the file is no hash store");
    expect_field(4, 3, "the version is 3, neither 1 nor 2");
    expect_field(8, 4322, "the byte order is 4322, neither 1234 nor 4321");
    expect_field(12, 63, "the page size is 63, which is no power of two from 64 to 65536");
    expect_field(12, 131072, "the page size is 131072, which is no power of two from 64 to 65536");
    expect_field(16, 7, "7 is not the logarithm of the page size");
    expect_field(24, 255, "the segment size is 255, which is no power of two up to 65536");
    expect_field(24, 131072, "the segment size is 131072, which is no power of two up to 65536");
    expect_field(28, 9, "9 is not the logarithm of the segment size");
    expect_field(52, 0, "the fill factor is 0");
    expect_field(60, 1, "the header takes 1 pages instead of 8");
}

TEST_F(StoreDamage, FieldsOfTheHeaderThatDoNotBelongTogether) {
    expect_field(20, 0, "the directory has no room for 2 buckets");
    expect_field(32, 32, "there is no split point 32");
    expect_field(32, 1, "the split point is 1, which has no bucket 2");
    expect_field(36, 4, "the hint to a free overflow page lies behind all of them");
    expect_field(44, 7, "the high mask is 7 instead of 3");
    expect_field(48, 2, "the low mask is 2, which masks no low bits");
    expect_field(48, 0xffffffff, "the low mask is 4294967295, which masks no low bits");
}

TEST_F(StoreDamage, SplitPointOfTooManyPages) {
    expect(
        [this] {
            set_field(72, 2048);
            set_field(76, 2048);
        },
        "fault: page 0, offset 72: split point 1 has 2048 overflow pages, more than 2047\n");
}

TEST_F(StoreDamage, OverflowPagesThatGrowFewer) {
    expect([this] { set_field(68, 4); }, "fault: page 0, offset 72: the number of overflow pages falls to 3\n");
}

TEST_F(StoreDamage, LastBucketOutsideTheMasks) {
    expect([this] { set_field(40, 0); },
           [this] {
               return "fault: page 0, offset 40: the last bucket is 0, not one from 1 to 3\n" + unused(1) + unused(2) +
                      count(1);
           });
}

TEST_F(StoreDamage, BitmapWithoutAPage) {
    expect([this] { set_bytes(0, 196, std::string_view("\0\0", 2)); },
           "fault: page 0, offset 196: the page of overflow bitmap 0 was never allocated\n");
}

TEST_F(StoreDamage, WrongNumberOfPairs) {
    expect([this] { set_field(56, 5); }, "fault: page 0, offset 56: the header counts 5 of 4 pairs\n");
    expect([this] { set_field(56, 3); }, "remark: page 0, offset 56: the header counts 3 of 4 pairs\n");
    expect([this] { set_field(56, 0xffffffff); }, "remark: page 0, offset 56: the header counts -1 of 4 pairs\n");
}

TEST_F(StoreDamage, FileThatEndsEarly) {
    expect([this] { cut(13 * page_size); }, "fault: page 0, offset 40: the file ends before bucket 2\n" + count(3));
    expect([this] { cut(13 * page_size + 10); },
           "fault: page 0, offset 40: the file ends before bucket 2\n"
           "fault: page 13, offset 10: the file ends within the page\n" +
               count(3));
    expect([this] { cut(259); }, "fault: page 0, offset 0: the file is shorter than the header of a hash store\n");
}

TEST_F(StoreDamage, LastBucketThatNoFileCanHave) {
    expect(
        [this] {
            set_field(40, 0x40000000);
            set_field(44, 0x7fffffff);
            set_field(48, 0x3fffffff);
            set_field(32, 31);
            for (std::size_t split = 2; split < 32; ++split) set_field(68 + 4 * split, 3);
            set_field(20, 0x40000000);
        },
        "fault: page 0, offset 40: bucket 1073741824 would lie beyond 4 GiB\n"
        "remark: page 8, offset 2: the pair belongs in bucket 95932, not in 0, and is not found\n"
        "remark: page 9, offset 2: the pair belongs in bucket 79961, not in 1, and is not found\n"
        "remark: page 11, offset 2: the pair belongs in bucket 92121, not in 1, and is not found\n"
        "remark: page 13, offset 2: the pair belongs in bucket 75546, not in 2, and is not found\n");
}

TEST_F(StoreDamage, WordsThatDoNotFit) {
    for (const unsigned words : {3U, 60U, 0xfffeU}) {
        expect([=, this] { set_words(8, 0, {words}); }, "fault: page 8, offset 0: the page cannot have " +
                                                            std::to_string(words) + " words of entries\n" + count(3));
    }
}

TEST_F(StoreDamage, OffsetsOutOfOrder) {
    expect([this] { set_words(8, 1, {65}); },
           "fault: page 8, offset 2: the key begins at 65, not between 10 and 64\n" + count(3));
    expect([this] { set_words(8, 1, {9}); },
           "fault: page 8, offset 2: the key begins at 9, not between 10 and 64\n" + count(3));
    expect([this] { set_words(8, 2, {62}); },
           "fault: page 8, offset 4: the value begins at 62, not between 10 and 61\n" + count(3));
    expect([this] { set_words(8, 2, {9}); },
           "fault: page 8, offset 4: the value begins at 9, not between 10 and 61\n" + count(3));
}

TEST_F(StoreDamage, WordsBehindTheEntries) {
    expect([this] { set_words(8, 3, {5}); }, "fault: page 8, offset 6: 5 bytes are told to be free, not 27\n");
    expect([this] { set_words(8, 4, {9}); }, "fault: page 8, offset 8: the data begins at 9, not between 10 and 64\n");
    expect(
        [this] {
            set_words(8, 3, {20, 30});
        },
        "fault: page 8, offset 8: the data begins at 30, but what lies lowest at 37\n");
}

TEST_F(StoreDamage, LinkBeforeOtherEntries) {
    expect(
        [this] {
            set_words(9, 1, {0x803, 0});
        },
        "fault: page 9, offset 4: the mark 0 stands where only a pair can\n" + count(3));
}

TEST_F(StoreDamage, KeyInTheWrongBucket) {
    expect([this] { set_bytes(8, 61, "W"); },
           "remark: page 8, offset 2: the pair belongs in bucket 1, not in 0, and is not found\n");
}

TEST_F(StoreDamage, KeyThatStandsThereTwice) {
    expect([this] { set_bytes(11, 61, "GND"); }, "fault: page 11, offset 2: the key stands in the store twice\n");
}

TEST_F(StoreDamage, LinkToAPageThatWasNeverAllocated) {
    expect(
        [this] { set_words(9, 3, {0x7fff}); },
        [this] {
            return "fault: page 9, offset 6: the chain goes on at overflow address 32767, which was never allocated\n" +
                   unused(1) + unused(2) + count(3);
        });
}

TEST_F(StoreDamage, LinkToABitmap) {
    expect([this] { set_words(9, 3, {0x801}); },
           [this] {
               return "fault: page 9, offset 6: the chain goes on at page 10, which is for an overflow bitmap\n" +
                      unused(1) + unused(2) + count(3);
           });
}

TEST_F(StoreDamage, ChainThatClosesOnItself) {
    expect([this] { set_words(11, 3, {0x802}); },
           [this] {
               return "fault: page 11, offset 6: the chain goes on at page 11 and closes on itself there\n" +
                      unused(2) + count(3);
           });
}

TEST_F(StoreDamage, PageThatTwoChainsUse) {
    expect(
        [this] {
            set_words(13, 0, {4, 61, 48, 0x802, 0, 34, 48});
        },
        "fault: page 13, offset 6: the chain goes on at page 11, which belongs to the chain of bucket 1\n");
}

TEST_F(StoreDamage, PagesThatNoChainUses) {
    expect([this] { set_words(9, 0, {2, 61, 58, 48, 58}); }, [this] { return unused(1) + unused(2) + count(3); });
}

TEST_F(StoreDamage, BigPairOnThePageOfABucket) {
    expect([this] { set_words(8, 2, {1}); },
           "fault: page 8, offset 4: a big pair begins on the page of a bucket\n"
           "fault: page 8, offset 0: the page of a big pair has 2 words of entries\n" +
               count(3));
}

TEST_F(StoreDamage, PartsOfABigPairOutOfOrder) {
    expect([this] { set_words(11, 1, {65}); },
           [this] {
               return "fault: page 11, offset 2: the part of a big pair begins at 65, not between 14 and 64\n" +
                      unused(2) + count(3);
           });
    expect([this] { set_words(11, 4, {62}); },
           [this] {
               return "fault: page 11, offset 8: the value begins at 62, not between 14 and 61\n" + unused(2) +
                      count(3);
           });
    expect([this] { set_words(12, 0, {0}); },
           "fault: page 12, offset 0: the page belongs to a big pair and has no part of it\n" + count(3));
    expect([this] { set_words(12, 2, {2}); },
           "fault: page 12, offset 0: the page of a big pair has 2 words of entries\n" + count(3));
    expect(
        [this] {
            set_words(12, 0, {4, 57, 1, 0x803, 0, 43, 57});
        },
        "fault: page 12, offset 4: a part of a key stands within a value\n" + count(3));
}

TEST_F(StoreDamage, PartOfABigPairThatReachesBelowTheData) {
    expect([this] { set_words(12, 1, {52}); },
           "fault: page 12, offset 8: the data begins at 57, but what lies lowest at 52\n");
}

TEST_F(StoreDamage, KeyOfABigPairThatEndsNowhere) {
    expect([this] { set_words(11, 2, {1}); },
           "fault: page 11, offset 12: the data begins at 14, but what lies lowest at 61\n"
           "fault: page 12, offset 0: a value begins behind the key without a word for its offset\n" +
               count(3));
}

TEST_F(StoreDamage, BitsThatDoNotMatchThePages) {
    expect([this] { set_bitmap(0, 0xfd); },
           [this] {
               return "fault: page 10, offset " + bitmap_byte(0) + ": overflow page 1 is in use and marked as free\n";
           });
    expect([this] { set_bitmap(0, 0xfe); },
           [this] {
               return "fault: page 10, offset " + bitmap_byte(0) + ": overflow page 0 is in use and marked as free\n";
           });
    expect([this] { set_bitmap(1, 0xfe); },
           [this] {
               return "fault: page 10, offset " + bitmap_byte(1) +
                      ": a page that was never allocated is marked as free\n";
           });
}

TEST_F(StoreDamage, BitmapOnAnotherPage) {
    tool_.run({"load", "--page-size", "64", "nets"}, four_nets());
    bytes_ = tool_.read("nets");
    set_bytes(0, 196, "\x08\x02");
    tool_.write("nets", bytes_);
    gslstore::FileSource source("nets");
    EXPECT_NE(gslstore::verify_file(&source).text().find(
                  "fault: page 11, offset 0: overflow bitmap 0 is not the first page it tells of\n"),
              std::string::npos);
}

TEST_F(StoreDamage, FreePagesBeforeTheHint) {
    tool_.run({"put", "--page-size", "64", "nets", "big", "-f", "-"}, std::string(3000, 'v'));
    tool_.run({"del", "nets", "big"});
    ASSERT_EQ(tool_.output({"verify", "nets"}), "0 faults, 0 remarks, 0 pairs\n");
    bytes_ = tool_.read("nets");
    set_field(36, 33);
    tool_.write("nets", bytes_);
    gslstore::FileSource source("nets");
    EXPECT_NE(gslstore::verify_file(&source).text().find(
                  "fault: page 10, offset 3: overflow page 31 is free and the header's hint lies behind it\n"),
              std::string::npos)
        << gslstore::verify_file(&source).text();
}

TEST_F(StoreDamage, VerifyPrintsFindingsAndGivesStatusOne) {
    tool_.run({"load", "--page-size", "64", "nets"}, four_nets());
    bytes_ = tool_.read("nets");
    set_words(9, 3, {0x7fff});
    tool_.write("nets", bytes_);
    const ToolRun verify = tool_.run({"verify", "nets"});
    EXPECT_EQ(verify.status, 1);
    EXPECT_EQ(verify.output,
              "fault: page 9, offset 6: the chain goes on at overflow address 32767, which was never allocated\n" +
                  unused(1) + unused(2) + count(3) + "4 faults, 0 remarks, 3 pairs\n");
    EXPECT_EQ(verify.error, "");
    const ToolRun quiet = tool_.run({"verify", "-q", "nets"});
    EXPECT_EQ(quiet.status, 1);
    EXPECT_EQ(quiet.output + quiet.error, "");
    EXPECT_EQ(tool_.read("nets"), bytes_);
}

TEST_F(StoreDamage, PairThatIsNotFoundGivesStatusOneAndTooLowACountDoesNot) {
    tool_.run({"load", "--page-size", "64", "nets"}, four_nets());
    const std::string sound = tool_.read("nets");
    bytes_ = sound;
    set_field(56, 3);
    tool_.write("nets", bytes_);
    EXPECT_EQ(tool_.output({"verify", "nets"}),
              "remark: page 0, offset 56: the header counts 3 of 4 pairs\n0 faults, 1 remark, 4 pairs\n");
    bytes_ = sound;
    set_bytes(8, 61, "W");
    tool_.write("nets", bytes_);
    EXPECT_EQ(tool_.status({"verify", "nets"}), 1);
}

TEST_F(StoreDamage, StatTellsThatThereAreFaults) {
    tool_.run({"load", "--page-size", "64", "nets"}, four_nets());
    bytes_ = tool_.read("nets");
    set_field(32, 1);
    tool_.write("nets", bytes_);
    const ToolRun stat = tool_.run({"stat", "nets"});
    EXPECT_EQ(stat.status, 1);
    EXPECT_NE(stat.output.find("\nspare_point           1\n"), std::string::npos);
    EXPECT_EQ(stat.error, "gslstore: nets: the file has faults; gslstore verify names them\n");
}

TEST_F(StoreDamage, DumpPrintsWhatCanBeReached) {
    tool_.run({"load", "--page-size", "64", "nets"}, four_nets());
    bytes_ = tool_.read("nets");
    set_words(9, 3, {0x7fff});
    tool_.write("nets", bytes_);
    const ToolRun dump = tool_.run({"dump", "nets"});
    EXPECT_EQ(dump.status, 1);
    EXPECT_EQ(dump.output, "VCC\t3.3 V, from regulator U2\nGND\t0 V\nCLK\tclock, 25 MHz\n");
    EXPECT_EQ(dump.error,
              "gslstore: nets: fault: page 9, offset 6: the chain goes on at overflow address 32767, which was never "
              "allocated\n");
}

TEST_F(StoreDamage, ChangeOfADamagedStoreFails) {
    tool_.run({"load", "--page-size", "64", "nets"}, four_nets());
    bytes_ = tool_.read("nets");
    set_words(9, 0, {3});
    tool_.write("nets", bytes_);
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{"put", "nets", "GND", "v"}, {"get", "nets", "GND"}, {"del", "nets", "GND"}}) {
        const ToolRun result = tool_.run(arguments);
        EXPECT_EQ(result.status, 2);
        EXPECT_EQ(result.error, "gslstore: nets: the store is damaged\n");
    }
    const ToolRun load = tool_.run({"load", "nets"}, "CLK\t1\nGND\t2\n");
    EXPECT_EQ(load.status, 2);
    EXPECT_EQ(load.error, "gslstore: standard input, line 2: nets: the store is damaged\n");
}

}  // namespace
