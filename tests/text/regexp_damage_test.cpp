// Programs that were changed since they were compiled.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <orvix/gsl/regular_expressions.h>
#include <support/abort.h>
#include <support/random_text.h>
#include <support/regexp_record.h>

#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>

using namespace orvix::test;
using namespace orvix::test::regexp;

namespace {

// A pattern with some bytes of its program changed, after a search that may have learnt from the sound program.
class Damaged {
public:
    Damaged(const std::string& pattern, std::size_t offset, unsigned char byte) : record_(pattern) {
        gsl_regexec(record_.get(), "");
        record_->program[offset] = byte;
    }

    int search(const char* subject) const { return gsl_regexec(record_.get(), subject); }

private:
    Record record_;
};

auto fatal(const char* message) { return testing::Eq(std::string("\nFATAL ERROR: regexp(3): ") + message); }

bool ended_in_peace_or_abort(int status) { return ended_by_abort(status) || testing::ExitedWithCode(0)(status); }

}  // namespace

TEST(DamagedProgram, WrongCheckByte) {
    EXPECT_EXIT(Damaged("a", 0, 155).search("a"), ended_by_abort, fatal("corrupted program"));
}

TEST(DamagedProgram, OpcodesThatDoNotExist) {
    for (const char byte : std::string_view("\14\23\24\36\50\143\377")) {  // 12, 19, 20, 30, 40, 99, 255
        const auto opcode = static_cast<unsigned char>(byte);
        SCOPED_TRACE(static_cast<int>(opcode));
        EXPECT_EXIT(Damaged("ab", 1, opcode).search("ab"), ended_by_abort, fatal("memory corruption"));
        EXPECT_EXIT(Damaged("ab", 4, opcode).search("ab"), ended_by_abort, fatal("memory corruption"));
    }
}

TEST(DamagedProgram, ANodeWithoutNextOne) {
    EXPECT_EXIT(Damaged("ab", 6, 0).search("ab"), ended_by_abort, fatal("corrupted pointers"));
    EXPECT_EXIT(Damaged(".", 6, 0).search("ab"), ended_by_abort, fatal("corrupted pointers"));
    EXPECT_EXIT(Damaged("a*", 6, 0).search("ab"), ended_by_abort, fatal("corrupted pointers"));
}

TEST(DamagedProgram, ARepeatOfWhatIsNotOneByte) {
    EXPECT_EXIT(Damaged("a*", 7, 0).search("a"), ended_by_abort, fatal("internal foulup"));
    EXPECT_EXIT(Damaged("[ab]+", 7, 6).search("a"), ended_by_abort, fatal("internal foulup"));
}

TEST(DamagedProgram, IsMetOnlyWhereTheWalkComesBy) {
    EXPECT_EQ(Damaged("a|b", 12, 99).search("ab"), 1);
    EXPECT_EQ(Damaged("ab", 10, 99).search("ac"), 0);
    EXPECT_EQ(Damaged("ab", 1, 99).search("xy"), 0);
}

TEST(DamagedProgram, ChangedBytesOfATextCount) {
    EXPECT_EQ(Damaged(".b", 10, 'c').search("ab"), 0);
    EXPECT_EQ(Damaged(".b", 10, 'c').search("ac"), 1);
}

TEST(DamagedProgram, ALinkOutOfTheProgramIsCorrupted) {
    EXPECT_EXIT(Damaged("ab", 5, 255).search("ab"), ended_by_abort, fatal("corrupted pointers"));
    EXPECT_EXIT(Damaged("(ab)*", 23, 255).search("ab"), ended_by_abort, fatal("corrupted pointers"));
}

TEST(DamagedProgram, ATextWithoutEndIsCorrupted) {
    // The zero byte behind the text, and all behind that.
    EXPECT_EXIT(
        {
            const Record record("abc");
            std::memset(record->program + 10, 1, 4);
            gsl_regexec(record.get(), "abc\1\1\1\1\1\1\1\1\1\1\1\1\1\1\1\1\1");
        },
        ended_by_abort, fatal("memory corruption"));
}

TEST(DamagedProgram, ALoopThatTakesNothingEnds) {
    // The star's rx_back leads to itself by way of a branch without body.
    EXPECT_EXIT(
        {
            const Record record("(a)*b");
            std::memcpy(record->program + 7, "\7\0\3", 3);
            gsl_regexec(record.get(), "aaab");
            std::_Exit(0);
        },
        ended_in_peace_or_abort, "");
}

TEST(DamagedProgram, RandomDamageStaysInsideTheProgram) {
    RandomText random(6);
    const char* const patterns[] = {"a|b", "(ab|c)*d", "[a-f]+x?", "((a*)b)+c", "^.*abc$"};
    for (int i = 0; i < 150; ++i) {
        SCOPED_TRACE(i);
        EXPECT_EXIT(
            {
                const Record record(patterns[random.number(4)]);
                const std::size_t size = record.program().size();
                for (std::size_t j = random.number(3); j < 4; ++j) {
                    const std::size_t low_byte = random.number(40);
                    record->program[1 + random.number(size - 2)] = static_cast<unsigned char>(low_byte);
                }
                gsl_regexec(record.get(), "abcdefabcxabababab");
                std::_Exit(0);
            },
            ended_in_peace_or_abort, "");
        random.number(static_cast<std::size_t>(i));  // the next child sees other numbers
    }
}

// A record of somebody else's making has no more than what the fields tell.
TEST(DamagedProgram, AProgramMadeByHandIsWalkedAsItIs) {
    alignas(__gsl_regexp) char block[sizeof(__gsl_regexp) + 32] = {};
    auto* const record = reinterpret_cast<__gsl_regexp*>(block);
    std::memcpy(record->program, "\x9c\6\0\12\10\0\7abc\0\0\0\0", 14);
    const char* const subject = "xxabcxx";
    ASSERT_EQ(gsl_regexec(record, subject), 1);
    EXPECT_EQ(record->startp[0], subject + 2);
    EXPECT_EQ(record->endp[0], subject + 5);
    EXPECT_EQ(gsl_regexec(record, "xxab"), 0);
}
