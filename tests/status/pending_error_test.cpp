#include "status/recording_handler.h"

#include <orvix/gsl/error_handler.h>
#include <orvix/gsl/pending_error.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>
#include <thread>
#include <vector>

namespace {

using orvix::test::error;
using orvix::test::Onlooker;
using orvix::test::Recorder;
using testing::ElementsAre;
using testing::IsEmpty;

std::string message() {
    std::string text = "untouched";
    get_pending_error(&text);
    return text;
}

template <class Call>
std::string printed_by(Call call) {
    testing::internal::CaptureStderr();
    call();
    return testing::internal::GetCapturedStderr();
}

class PendingError : public testing::Test {
protected:
    void SetUp() override { clear(); }
    void TearDown() override { clear(); }

    static void clear() {
        set_pending_error("");
        reset_pending_error_and_location();
    }
};

TEST_F(PendingError, SettingRaisesTheFlagAndReplacesTheMessage) {
    EXPECT_FALSE(error_pending());
    set_pending_error("one");
    EXPECT_TRUE(error_pending());
    EXPECT_TRUE(AerrFlag);
    set_pending_error(std::string("two"));
    EXPECT_EQ(message(), "two");
}

TEST_F(PendingError, TwoTextsAreJoinedByOneNewline) {
    set_pending_error("a", "b");
    EXPECT_EQ(message(), "a\nb");
    set_pending_error("a\n", "b");
    EXPECT_EQ(message(), "a\nb");
    set_pending_error("a", "\nb");
    EXPECT_EQ(message(), "a\nb");
    set_pending_error("", "b");
    EXPECT_EQ(message(), "b");
}

TEST_F(PendingError, EmptySecondTextStillGetsItsNewline) {
    set_pending_error("a", "");
    EXPECT_EQ(message(), "a\n");
    set_pending_error(std::string("a"), std::string());
    EXPECT_EQ(message(), "a\n");
}

TEST_F(PendingError, TwoStringsAreJoinedLikewise) {
    set_pending_error(std::string("a"), std::string("b"));
    EXPECT_EQ(message(), "a\nb");
    EXPECT_TRUE(error_pending());
}

TEST_F(PendingError, ThreeTextsAreJoinedOneByOne) {
    set_pending_error("a", "b", "c");
    EXPECT_EQ(message(), "a\nb\nc");
    set_pending_error("", "", "c");
    EXPECT_EQ(message(), "c");
    set_pending_error("a", "", "c");
    EXPECT_EQ(message(), "a\nc");
    set_pending_error("a", "b\n", "\nc");
    EXPECT_EQ(message(), "a\nb\n\nc");
    EXPECT_TRUE(error_pending());
}

TEST_F(PendingError, NullTextsCountAsEmpty) {
    const char* const nothing = nullptr;
    set_pending_error(nothing);
    EXPECT_EQ(message(), "");
    set_pending_error(nothing, "b");
    EXPECT_EQ(message(), "b");
    set_pending_error("a", nothing, "c");
    EXPECT_EQ(message(), "a\nc");
    set_pending_error_no_lock(nothing);
    EXPECT_EQ(message(), "");
}

TEST_F(PendingError, SettingWithoutTheLockDoesTheSame) {
    set_pending_error("old");
    reset_pending_error();
    set_pending_error_no_lock("new");
    EXPECT_TRUE(error_pending());
    EXPECT_EQ(message(), "new");
}

TEST_F(PendingError, MessageOutlivesAReset) {
    set_pending_error("m");
    reset_pending_error();
    EXPECT_FALSE(error_pending());
    std::string text;
    EXPECT_TRUE(get_pending_error(&text));
    EXPECT_EQ(text, "m");
}

TEST_F(PendingError, EmptyMessageGivesFalseAndEmptiesTheResult) {
    std::string text = "before";
    EXPECT_FALSE(get_pending_error(&text));
    EXPECT_EQ(text, "");
}

TEST_F(PendingError, AnEmptyMessageCanBePending) {
    set_pending_error("");
    EXPECT_TRUE(error_pending());
    std::string text;
    EXPECT_FALSE(get_pending_error(&text));
}

TEST_F(PendingError, ReadingClearsNothing) {
    set_pending_error("m");
    std::string text;
    EXPECT_TRUE(get_pending_error(&text));
    EXPECT_TRUE(get_pending_error(nullptr));
    EXPECT_TRUE(error_pending());
    EXPECT_EQ(message(), "m");
}

TEST_F(PendingError, EmptyLocationKeepsTheEarlierOne) {
    add_error_location_info("L");
    add_error_location_info("");
    EXPECT_EQ(get_pending_error_with_location(), "L");
}

TEST_F(PendingError, LocationIsReplaced) {
    add_error_location_info("L");
    add_error_location_info("x");
    EXPECT_EQ(get_pending_error_with_location(), "x");
}

TEST_F(PendingError, LocationStandsBeforeTheMessageOnALineOfItsOwn) {
    set_pending_error("M");
    EXPECT_EQ(get_pending_error_with_location(), "M");
    add_error_location_info("L");
    EXPECT_EQ(get_pending_error_with_location(), "L\nM");
    add_error_location_info("L\n");
    EXPECT_EQ(get_pending_error_with_location(), "L\nM");
    set_pending_error("");
    EXPECT_EQ(get_pending_error_with_location(), "L\n");
}

TEST_F(PendingError, MessageThatBeginsWithANewlineKeepsItBehindALocation) {
    set_pending_error("\nM");
    add_error_location_info("L");
    EXPECT_EQ(get_pending_error_with_location(), "L\n\nM");
}

TEST_F(PendingError, LocationOutlivesAPlainReset) {
    add_error_location_info("L");
    set_pending_error("first");
    reset_pending_error();
    set_pending_error("second");
    EXPECT_EQ(get_pending_error_with_location(), "L\nsecond");
}

TEST_F(PendingError, FullResetKeepsTheMessage) {
    set_pending_error("M");
    add_error_location_info("L");
    reset_pending_error_and_location();
    EXPECT_FALSE(error_pending());
    EXPECT_EQ(get_pending_error_with_location(), "M");
}

TEST_F(PendingError, ReportingWithTheFlagClearDoesNothing) {
    Recorder handler;
    set_pending_error("M");
    add_error_location_info("L");
    reset_pending_error();
    report_pending_error();
    aerr_report();
    EXPECT_THAT(handler.messages, IsEmpty());
    EXPECT_EQ(get_pending_error_with_location(), "L\nM");
}

TEST_F(PendingError, ReportingClearsFlagMessageAndLocation) {
    const Recorder handler;
    set_pending_error("M");
    add_error_location_info("L");
    report_pending_error();
    EXPECT_FALSE(error_pending());
    EXPECT_EQ(get_pending_error_with_location(), "");
}

TEST_F(PendingError, HandlersAreGivenLocationAndMessage) {
    Recorder handler;
    set_pending_error("bad value");
    add_error_location_info("parse.c");
    aerr_report();
    EXPECT_THAT(handler.messages, ElementsAre(error("parse.c\nbad value")));
}

TEST_F(PendingError, DeclinedErrorGoesDownTheChain) {
    Recorder a;
    Onlooker b;
    set_pending_error("M");
    report_pending_error();
    EXPECT_THAT(b.messages, ElementsAre(error("M")));
    EXPECT_THAT(a.messages, ElementsAre(error("M")));
}

TEST_F(PendingError, NewestHandlerThatSkipsLocationsIsGivenTheMessageAlone) {
    Recorder handler;
    handler.skip_location_info();
    set_pending_error("M");
    add_error_location_info("L");
    report_pending_error();
    EXPECT_THAT(handler.messages, ElementsAre(error("M")));
    EXPECT_EQ(get_pending_error_with_location(), "");
}

TEST_F(PendingError, OnlyTheNewestHandlersWishCounts) {
    Recorder a;
    a.skip_location_info();
    Onlooker b;
    set_pending_error("M");
    add_error_location_info("L");
    report_pending_error();
    EXPECT_THAT(a.messages, ElementsAre(error("L\nM")));
}

TEST_F(PendingError, WithoutHandlersLocationAndMessageArePrintedOnOneLine) {
    set_pending_error("bad value");
    add_error_location_info("parse.c");
    EXPECT_EQ(printed_by(report_pending_error), "ERROR: parse.c: bad value\n");
}

TEST_F(PendingError, WithoutHandlersWhatIsEmptyIsLeftOut) {
    set_pending_error("M");
    EXPECT_EQ(printed_by(report_pending_error), "ERROR: M\n");
    set_pending_error("");
    add_error_location_info("L");
    EXPECT_EQ(printed_by(aerr_report), "ERROR: L\n");
    set_pending_error("");
    EXPECT_EQ(printed_by(report_pending_error), "ERROR: \n");
}

class Thrower : public ErrorHandler {
    void capture_message(Category, const std::string&) override { throw std::runtime_error("no"); }
};

TEST_F(PendingError, StaysPendingWhenAHandlerThrows) {
    {
        const Thrower handler;
        set_pending_error("M");
        add_error_location_info("L");
        EXPECT_THROW(report_pending_error(), std::runtime_error);
    }
    EXPECT_TRUE(error_pending());
    EXPECT_EQ(printed_by(report_pending_error), "ERROR: L: M\n");
}

class Setter : public ErrorHandler {
    void capture_message(Category, const std::string&) override {
        set_pending_error("from the handler");
        add_error_location_info("in the handler");
    }
};

TEST_F(PendingError, ErrorSetByAHandlerIsWipedWithTheRest) {
    const Setter handler;
    set_pending_error("M");
    report_pending_error();
    EXPECT_FALSE(error_pending());
    EXPECT_EQ(get_pending_error_with_location(), "");
}

TEST_F(PendingError, SurvivesThreadsThatSetAndReadAtOnce) {
    const std::string text(100, 'x');
    std::vector<std::thread> threads;
    bool whole[4] = {true, true, true, true};
    for (bool& mine : whole) {
        threads.emplace_back([&mine, &text] {
            for (int i = 0; i < 1000; ++i) {
                set_pending_error(text);
                mine = mine && message() == text;
            }
        });
    }
    for (std::thread& thread : threads) thread.join();
    EXPECT_THAT(whole, testing::Each(true));
}

TEST(FormatLegacyErrorMessage, LocationComesFirst) { EXPECT_EQ(format_legacy_error_message("m", "l"), "l\nm"); }

TEST(FormatLegacyErrorMessage, NewlineIsNotDoubled) {
    EXPECT_EQ(format_legacy_error_message("\nm", "l"), "l\nm");
    EXPECT_EQ(format_legacy_error_message("m", "l\n"), "l\nm");
}

TEST(FormatLegacyErrorMessage, BothNewlinesStay) { EXPECT_EQ(format_legacy_error_message("\nm", "l\n"), "l\n\nm"); }

TEST(FormatLegacyErrorMessage, WithoutALocationTheMessageStandsAlone) {
    EXPECT_EQ(format_legacy_error_message("m", ""), "m");
    EXPECT_EQ(format_legacy_error_message("\nm", ""), "\nm");
}

TEST(FormatLegacyErrorMessage, WithoutAMessageTheLocationStandsAsItIs) {
    EXPECT_EQ(format_legacy_error_message("", "l"), "l");
    EXPECT_EQ(format_legacy_error_message("", "l\n"), "l\n");
    EXPECT_EQ(format_legacy_error_message("", ""), "");
}

}  // namespace
