#include "text/expect_clumps.h"

#include <gtest/gtest.h>
#include <orvix/gsl/memory_parser.h>
#include <orvix/gsl/status.h>
#include <support/buffer.h>
#include <support/random_text.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <vector>

using namespace orvix::test;

namespace {

struct Plain {
    static constexpr auto parse = gparse_parline_mem;
    static constexpr auto free = gparse_parline_free_mem;
    static constexpr auto free_all = gparse_parline_free_all_mem;
    static constexpr bool frees_what_was_never_parsed = false;
};

struct Efficient {
    static constexpr auto parse = gparse_efficient_parline_mem;
    static constexpr auto free = gparse_efficient_parline_free_mem;
    static constexpr auto free_all = gparse_efficient_parline_free_all_mem;
    static constexpr bool frees_what_was_never_parsed = true;
};

parserecMem fresh() {
    parserecMem record{"garbage", 7, nullptr, 7};
    gparse_init_parserecMem(&record);
    return record;
}

std::string text(parserecMem* record, std::size_t index) {
    Buffer dst = room_for(std::string(record->line).size() + 1);
    return gparse_getclump_mem(record, index, dst) ? dst.text() : "none";
}

std::vector<std::string> texts(parserecMem* record) {
    std::vector<std::string> all;
    for (std::size_t i = 0; i < record->nclumps; ++i) all.push_back(text(record, i));
    return all;
}

std::string stretch(parserecMem* record, std::size_t first, std::size_t last) {
    Buffer dst("before", std::string(record->line).size() + 8);
    gparse_getplinstr_mem(record, first, last, dst);
    return dst.text();
}

using Texts = std::vector<std::string>;

}  // namespace

TEST(GparseInitParserecMem, ClearsAllFields) {
    const parserecMem record = fresh();
    EXPECT_EQ(record.line, nullptr);
    EXPECT_EQ(record.nclumps, 0U);
    EXPECT_EQ(record.clumps, nullptr);
    EXPECT_EQ(record.slot, 0U);
}

// Each test begins with an empty registry, and leaves none of its records behind.
template <class Form>
class MemoryParser : public testing::Test {
protected:
    MemoryParser() { Form::free_all(); }
    ~MemoryParser() override {
        for (parserecMem* record : records_) {
            gmem_ee_free(reinterpret_cast<char*>(record->clumps));
            delete record;
        }
        Form::free_all();
    }
    MemoryParser(const MemoryParser&) = delete;
    MemoryParser& operator=(const MemoryParser&) = delete;

    parserecMem* new_record() {
        records_.push_back(new parserecMem(fresh()));
        return records_.back();
    }

    static bool parse(parserecMem* record, const char* line) { return Form::parse(line, " ", "=", '!', record); }

    parserecMem* parsed(const char* line) {
        parserecMem* const record = new_record();
        EXPECT_TRUE(parse(record, line));
        return record;
    }

private:
    std::vector<parserecMem*> records_;
};

using Forms = testing::Types<Plain, Efficient>;
TYPED_TEST_SUITE(MemoryParser, Forms);

// ---------------------------------------------------------------------------------------------------------------------
// Clumps

TYPED_TEST(MemoryParser, CutsLinesAsTheOtherParserDoes) {
    parserecMem* const record = this->parsed("a=1 2.5! note");
    EXPECT_EQ(texts(record), (Texts{"a", "=", "1", "2.5"}));
    EXPECT_TRUE(record->clumps[2].is_int && record->clumps[2].is_real);
    EXPECT_EQ(record->clumps[2].int_value, 1);
    EXPECT_EQ(record->clumps[2].real_value, 1);
    EXPECT_TRUE(!record->clumps[3].is_int && record->clumps[3].is_real);
    EXPECT_EQ(record->clumps[3].int_value, 0);
    EXPECT_EQ(record->clumps[3].real_value, 2.5);
    EXPECT_TRUE(!record->clumps[0].is_int && !record->clumps[0].is_real);
    EXPECT_EQ(record->clumps[0].real_value, 0);
    EXPECT_EQ(record->clumps[3].start, 4);
    EXPECT_EQ(record->clumps[3].end, 6);
}

TYPED_TEST(MemoryParser, LineIsNotCopied) {
    const char line[] = "a";
    parserecMem* const record = this->parsed(line);
    EXPECT_EQ(record->line, line);
}

TYPED_TEST(MemoryParser, KeepsMoreThanThreeHundredClumps) {
    std::string line;
    for (int i = 0; i < 1000; ++i) line += std::to_string(i) + ' ';
    parserecMem* const record = this->parsed(line.c_str());
    ASSERT_EQ(record->nclumps, 1000U);
    for (int i = 0; i < 1000; ++i) EXPECT_EQ(record->clumps[i].int_value, i);
}

TYPED_TEST(MemoryParser, LineOfDelimitersHasNoClumps) {
    for (const char* line : {"   ", "! note"}) {
        SCOPED_TRACE(line);
        parserecMem* const record = this->parsed(line);
        EXPECT_EQ(record->nclumps, 0U);
        EXPECT_EQ(record->clumps, nullptr);
        EXPECT_EQ(record->line, line);
        EXPECT_NE(record->slot, 0U);
    }
}

TYPED_TEST(MemoryParser, LineWithoutClumpsTakesTheEarlierOnesAway) {
    parserecMem* const record = this->parsed("a b");
    EXPECT_TRUE(this->parse(record, "  "));
    EXPECT_EQ(record->nclumps, 0U);
    EXPECT_EQ(record->clumps, nullptr);
}

TYPED_TEST(MemoryParser, EmptyLineClearsTheRecordAndKeepsItsSlot) {
    parserecMem* const record = this->parsed("a b");
    const std::uint32_t slot = record->slot;
    EXPECT_TRUE(this->parse(record, ""));
    EXPECT_EQ(record->line, nullptr);
    EXPECT_EQ(record->nclumps, 0U);
    EXPECT_EQ(record->clumps, nullptr);
    EXPECT_EQ(record->slot, slot);
    EXPECT_TRUE(this->parse(record, "c"));
    EXPECT_EQ(record->slot, slot);
    EXPECT_EQ(texts(record), (Texts{"c"}));
}

TYPED_TEST(MemoryParser, EmptyLineDoesNotRegisterARecord) {
    parserecMem* const record = this->parsed("");
    EXPECT_EQ(record->slot, 0U);
    EXPECT_EQ(this->parsed("a")->slot, 1U);
}

TYPED_TEST(MemoryParser, EmptyDelimitersAreRefusedAndLeaveTheRecordUntouched) {
    const char line[] = "a b";
    parserecMem* const record = this->parsed(line);
    EXPECT_FALSE(TypeParam::parse("c", "", "=", '\0', record));
    EXPECT_FALSE(TypeParam::parse("", "", "=", '\0', record));
    EXPECT_EQ(record->line, line);
    EXPECT_EQ(texts(record), (Texts{"a", "b"}));
}

TYPED_TEST(MemoryParser, DelimitersOfOneCallAreNotThoseOfTheNext) {
    parserecMem* const record = this->new_record();
    TypeParam::parse("a,b;c", ",", ";", 'x', record);
    EXPECT_EQ(texts(record), (Texts{"a", "b", ";", "c"}));
    TypeParam::parse("a,b;c", "b", "", '\0', record);
    EXPECT_EQ(texts(record), (Texts{"a,", ";c"}));
}

// ---------------------------------------------------------------------------------------------------------------------
// The registry

TYPED_TEST(MemoryParser, RecordsAreNumberedFromOne) {
    EXPECT_EQ(this->parsed("a")->slot, 1U);
    EXPECT_EQ(this->parsed("b")->slot, 2U);
    EXPECT_EQ(this->parsed("c")->slot, 3U);
}

TYPED_TEST(MemoryParser, ParsingTwiceLeavesOneEntry) {
    parserecMem* const record = this->parsed("a b");
    EXPECT_TRUE(this->parse(record, "c"));
    EXPECT_EQ(texts(record), (Texts{"c"}));
    EXPECT_EQ(record->slot, 1U);
    EXPECT_EQ(this->parsed("d")->slot, 2U);
}

TYPED_TEST(MemoryParser, FreedRecordCanBeParsedAgain) {
    parserecMem* const record = this->parsed("a b");
    EXPECT_TRUE(TypeParam::free(record));
    EXPECT_EQ(record->line, nullptr);
    EXPECT_EQ(record->nclumps, 0U);
    EXPECT_EQ(record->clumps, nullptr);
    EXPECT_EQ(record->slot, 0U);
    EXPECT_TRUE(this->parse(record, "c"));
    EXPECT_EQ(texts(record), (Texts{"c"}));
    EXPECT_EQ(record->slot, 1U);
}

TYPED_TEST(MemoryParser, LastEntryMovesToThePlaceOfTheFreedOne) {
    parserecMem* const first = this->parsed("a");
    parserecMem* const second = this->parsed("b");
    parserecMem* const third = this->parsed("c");
    EXPECT_TRUE(TypeParam::free(first));
    EXPECT_EQ(third->slot, 3U);
    EXPECT_TRUE(this->parse(third, "d e"));
    EXPECT_EQ(texts(third), (Texts{"d", "e"}));
    EXPECT_TRUE(TypeParam::free(third));
    EXPECT_TRUE(this->parse(second, "f"));
    EXPECT_TRUE(TypeParam::free(second));
    EXPECT_EQ(this->parsed("g")->slot, 1U);
}

TYPED_TEST(MemoryParser, NumbersAreThoseOfTheCountAndMayComeTwice) {
    parserecMem* const first = this->parsed("a");
    this->parsed("b");
    parserecMem* const third = this->parsed("c");
    TypeParam::free(first);
    parserecMem* const fourth = this->parsed("d");
    EXPECT_EQ(fourth->slot, 3U);
    EXPECT_TRUE(this->parse(third, "e"));
    EXPECT_TRUE(this->parse(fourth, "f"));
    EXPECT_TRUE(TypeParam::free(fourth));
    EXPECT_TRUE(this->parse(third, "g"));
    EXPECT_EQ(texts(third), (Texts{"g"}));
    EXPECT_TRUE(TypeParam::free(third));
}

TYPED_TEST(MemoryParser, UnknownSlotMakesTheParseFail) {
    this->parsed("a");
    parserecMem* const record = this->new_record();
    record->slot = 4711;
    EXPECT_FALSE(this->parse(record, "b"));
    EXPECT_EQ(record->nclumps, 0U);
    EXPECT_EQ(record->slot, 4711U);
    EXPECT_FALSE(TypeParam::free(record));
    record->slot = std::numeric_limits<std::uint32_t>::max();
    EXPECT_FALSE(this->parse(record, "b"));
}

TYPED_TEST(MemoryParser, FreeOnAnEmptyRegistryDoesNothing) {
    parserecMem* const record = this->new_record();
    record->slot = 4711;
    EXPECT_TRUE(TypeParam::free(record));
    EXPECT_EQ(record->slot, 4711U);
}

TYPED_TEST(MemoryParser, FreeOfARecordThatWasNeverParsed) {
    parserecMem* const record = this->new_record();
    EXPECT_TRUE(TypeParam::free(record));
    this->parsed("a");
    EXPECT_EQ(TypeParam::free(record), TypeParam::frees_what_was_never_parsed);
}

TYPED_TEST(MemoryParser, FreeAllOnAnEmptyRegistryIsNoFailure) {
    EXPECT_TRUE(TypeParam::free_all());
    EXPECT_TRUE(TypeParam::free_all());
}

TYPED_TEST(MemoryParser, FreeAllLeavesTheRecordsReadable) {
    parserecMem* const record = this->parsed("a b");
    EXPECT_TRUE(TypeParam::free_all());
    EXPECT_EQ(texts(record), (Texts{"a", "b"}));
    EXPECT_EQ(record->slot, 1U);
}

TYPED_TEST(MemoryParser, RecordIsUnknownAfterFreeAllUntilItIsMadeReady) {
    parserecMem* const record = this->parsed("a b");
    TypeParam::free_all();
    EXPECT_FALSE(this->parse(record, "c"));
    EXPECT_EQ(record->slot, 1U);
    gmem_ee_free(reinterpret_cast<char*>(record->clumps));
    gparse_init_parserecMem(record);
    EXPECT_TRUE(this->parse(record, "c"));
    EXPECT_EQ(texts(record), (Texts{"c"}));
}

TYPED_TEST(MemoryParser, ManyRecordsLiveTogether) {
    std::vector<parserecMem*> records;
    std::vector<std::string> lines;
    for (int i = 0; i < 500; ++i) lines.push_back(std::to_string(i) + " x");
    for (const std::string& line : lines) records.push_back(this->parsed(line.c_str()));
    for (std::size_t i = 0; i < records.size(); ++i) {
        EXPECT_EQ(records[i]->slot, i + 1);
        EXPECT_EQ(texts(records[i]), (Texts{std::to_string(i), "x"}));
    }
    for (parserecMem* record : records) EXPECT_TRUE(TypeParam::free(record));
    EXPECT_EQ(this->parsed("a")->slot, 1U);
}

TEST(MemoryParserForms, KeepRegistriesOfTheirOwn) {
    parserecMem plain = fresh();
    parserecMem also_plain = fresh();
    parserecMem efficient = fresh();
    gparse_parline_mem("a", " ", "", '\0', &plain);
    gparse_parline_mem("b", " ", "", '\0', &also_plain);
    gparse_efficient_parline_mem("c", " ", "", '\0', &efficient);
    EXPECT_EQ(also_plain.slot, 2U);
    EXPECT_EQ(efficient.slot, 1U);
    EXPECT_FALSE(gparse_efficient_parline_free_mem(&also_plain));
    EXPECT_EQ(text(&also_plain, 0), "b");
    EXPECT_TRUE(gparse_efficient_parline_free_mem(&efficient));
    EXPECT_TRUE(gparse_parline_free_mem(&also_plain));
    EXPECT_TRUE(gparse_parline_free_mem(&plain));
}

// ---------------------------------------------------------------------------------------------------------------------
// Accessors

TYPED_TEST(MemoryParser, NoSuchClumpLeavesTheBufferUntouched) {
    parserecMem* const record = this->parsed("a");
    Buffer dst("before");
    EXPECT_FALSE(gparse_getclump_mem(record, 1, dst));
    EXPECT_FALSE(gparse_getclump_mem(record, static_cast<std::size_t>(-1), dst));
    EXPECT_EQ(dst.text(), "before");
}

TYPED_TEST(MemoryParser, StretchTakesTheDelimitersBetweenAlong) {
    parserecMem* const record = this->parsed(" one  two three ");
    EXPECT_EQ(stretch(record, 0, 1), "one  two");
    EXPECT_EQ(stretch(record, 2, 2), "three");
}

TYPED_TEST(MemoryParser, StretchIsEmptyFromBehindItsEndOrWithoutSuchClumps) {
    parserecMem* const record = this->parsed("a b");
    EXPECT_EQ(stretch(record, 1, 0), "");
    EXPECT_EQ(stretch(record, 0, 2), "");
    EXPECT_EQ(stretch(record, static_cast<std::size_t>(-1), 0), "");
}

TYPED_TEST(MemoryParser, NumbersAreGivenAndElseZero) {
    parserecMem* const record = this->parsed("12 0.1 x");
    int whole = 99;
    EXPECT_TRUE(gparse_intclump_mem(record, 0, &whole));
    EXPECT_EQ(whole, 12);
    double real = 99;
    EXPECT_TRUE(gparse_d_relclump_mem(record, 0, &real));
    EXPECT_EQ(real, 12);
    EXPECT_TRUE(gparse_d_relclump_mem(record, 1, &real));
    EXPECT_EQ(real, 0.1);
    float single = 99;
    EXPECT_TRUE(gparse_s_relclump_mem(record, 1, &single));
    EXPECT_EQ(single, 0.1F);
    for (const std::size_t index : {2U, 3U}) {
        whole = 99;
        real = 99;
        single = 99;
        EXPECT_FALSE(gparse_intclump_mem(record, index, &whole));
        EXPECT_FALSE(gparse_d_relclump_mem(record, index, &real));
        EXPECT_FALSE(gparse_s_relclump_mem(record, index, &single));
        EXPECT_EQ(whole, 0);
        EXPECT_EQ(real, 0);
        EXPECT_EQ(single, 0);
    }
    EXPECT_FALSE(gparse_intclump_mem(record, 1, &whole));
}

// ---------------------------------------------------------------------------------------------------------------------
// Against the models

namespace {

// The slots of the entries, in order.
class RegistryModel {
public:
    explicit RegistryModel(bool is_efficient) : is_efficient_(is_efficient) {}

    bool parse(std::uint32_t* slot) {
        if (*slot != 0) return std::find(slots_.begin(), slots_.end(), *slot) != slots_.end();
        *slot = static_cast<std::uint32_t>(slots_.size() + 1);
        slots_.push_back(*slot);
        return true;
    }

    bool free(std::uint32_t* slot) {
        if (slots_.empty()) return true;
        if (*slot == 0) return is_efficient_;
        auto entry = std::find(slots_.begin(), slots_.end(), *slot);
        if (is_efficient_ && *slot <= slots_.size() && slots_[*slot - 1] == *slot) entry = slots_.begin() + *slot - 1;
        if (entry == slots_.end()) return false;
        *entry = slots_.back();
        slots_.pop_back();
        *slot = 0;
        return true;
    }

    void free_all() { slots_.clear(); }

private:
    bool is_efficient_;
    std::vector<std::uint32_t> slots_;
};

}  // namespace

TYPED_TEST(MemoryParser, AgreesWithTheModelOnRandomLines) {
    parserecMem* const record = this->new_record();
    for (unsigned seed = 0; seed < 5000; ++seed) {
        SCOPED_TRACE(seed);
        RandomText random(seed);
        const std::string line = random.text("a1 2,=!.+-eEx0", 60) + 'a';
        const std::string delims = ' ' + random.text(",=1e.", 3);
        const std::string singles = random.text("=, -2", 2);
        const char comment = random.coin() ? '!' : '\0';
        ASSERT_TRUE(TypeParam::parse(line.c_str(), delims.c_str(), singles.c_str(), comment, record));
        expect_clumps(*record, *model::parsed(line, delims, singles, comment));
    }
}

TYPED_TEST(MemoryParser, AgreesWithTheModelOverRandomLivesOfRecords) {
    RandomText random(1);
    RegistryModel model(TypeParam::frees_what_was_never_parsed);
    struct Life {
        parserecMem* record;
        std::uint32_t slot;
        std::string line;
    };
    std::vector<Life> lives;
    for (int i = 0; i < 40; ++i) lives.push_back({this->new_record(), 0, ""});
    for (int step = 0; step < 20000; ++step) {
        SCOPED_TRACE(step);
        Life& life = lives[random.number(lives.size() - 1)];
        const std::size_t choice = random.number(400);
        if (choice == 0) {
            EXPECT_TRUE(TypeParam::free_all());
            model.free_all();
            for (Life& each : lives) {
                gmem_ee_free(reinterpret_cast<char*>(each.record->clumps));
                gparse_init_parserecMem(each.record);
                each.slot = 0;
            }
        } else if (choice < 150) {
            ASSERT_EQ(TypeParam::free(life.record), model.free(&life.slot));
        } else {
            life.line = random.text("a 1=", 12);
            const bool expected = life.line.empty() || model.parse(&life.slot);
            ASSERT_EQ(this->parse(life.record, life.line.c_str()), expected);
            if (expected) expect_clumps(*life.record, *model::parsed(life.line, " ", "=", '!'));
        }
        ASSERT_EQ(life.record->slot, life.slot);
    }
}
